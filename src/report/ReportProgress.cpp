// The progress of a run in the report window: files done, elapsed and remaining time, the bar.
#include "report/frmReport.h"
#include "report/ReportText.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "session/Session.h"
#include "support/FolderSearch.h"
#include "support/Numbers.h"
#include "ui/Interface.h"

#include <algorithm>
#include <string>

namespace {

std::string FilesText(std::int64_t files) {
    return GroupedDigits(files) + (files == 1 ? " file" : " files");
}

} // namespace

void ShowReportProgress() {
    frmReport.tmrProgress.Enabled = true;
    const std::int64_t expected = currentRun.Request.lngNumFilesExpected;
    const bool blnCounted = expected >= std::max<std::int64_t>(FilesDone(), 1);
    std::string text = blnCounted
                           ? GroupedDigits(FilesDone()) + " of " + FilesText(expected) + ".  "
                           : FilesText(FilesDone()) + ".  ";
    text += ElapsedText();
    // While the user is asked about each file, nobody knows how many of them will be purged.
    const bool blnAsking = blnConfirmFiles && !blnPurgeRemainingFiles;
    const std::string strRemaining = blnAsking ? std::string() : RemainingText();
    if (!SearchInHand().empty())
        text += "  " + SearchInHand();
    else if (!strRemaining.empty())
        text += "  " + strRemaining;
    frmReport.lblProgress.Caption = text;
    const double share = ClockShare();
    // A purge begins with an empty one, even while the number of files is not known.
    const bool blnBar = share >= 0 || (currentRun.Request.blnPurgeFiles && FilesDone() == 0);
    if (frmReport.barProgress.Visible != blnBar) {
        frmReport.barProgress.Visible = blnBar;
        LayOutReport();
    }
    frmReport.barProgress.Fraction = std::max(share, 0.0);
    ui::ShowTaskbarProgress(frmReport, share, ClockIsPaused());
}

void ShowCounting() {
    frmReport.lblProgress.Caption = "Counting files ...";
    ui::Repaint(frmReport);
}

void ShowRunEnd() {
    frmReport.tmrProgress.Enabled = false;
    if (!ClockRuns()) { // the run was stopped before its first file
        frmReport.lblProgress.Caption.clear();
        frmReport.barProgress.Visible = false;
    } else {
        const std::uint64_t elapsed = ClockElapsed();
        frmReport.lblProgress.Caption =
            FilesText(FilesDone()) + " in " +
            (elapsed < 1000 ? "less than a second" : ClockText(static_cast<double>(elapsed))) + ".";
        // After a stop the bar stays where it stood: the current file counts as dealt with now.
        if (!blnStop)
            frmReport.barProgress.Fraction = 1;
    }
    if (WritesDots())
        ClearReportText(); // it holds only the dots
    ui::ShowTaskbarProgress(frmReport, -1, false);
}
