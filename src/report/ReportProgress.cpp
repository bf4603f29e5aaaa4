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

// The result of a run in words: files that were only processed are not called purged.
std::string ResultOfRun() {
    const std::int64_t purged = currentRun.Counts.lngNumFilesPurged;
    const auto failed = static_cast<std::int64_t>(currentRun.Failures.size());
    if (!currentRun.Request.blnPurgeFiles)
        return FilesText(FilesDone());
    if (failed == 0 && purged == FilesDone())
        return FilesText(purged) + " purged";
    return GroupedDigits(purged) + " of " + FilesText(FilesDone()) + " purged" +
           (failed > 0 ? ", " + GroupedDigits(failed) + " failed," : std::string());
}

// The share of the processed files that were actually purged.
double ShareWithoutFailures() {
    const auto done = static_cast<double>(FilesDone());
    return done > 0 ? 1 - static_cast<double>(currentRun.Failures.size()) / done : 1;
}

} // namespace

void ShowReportProgress() {
    frmReport.tmrProgress.Enabled = true;
    const std::int64_t expected = currentRun.Request.lngNumFilesExpected;
    const bool blnCounted = expected >= std::max<std::int64_t>(FilesDone(), 1);
    std::string text = blnCounted
                           ? GroupedDigits(FilesDone()) + " of " + FilesText(expected) + ".  "
                           : FilesText(FilesDone()) + ".  ";
    const auto failed = static_cast<std::int64_t>(currentRun.Failures.size());
    if (failed > 0)
        text.replace(text.size() - 3, 3, ", " + GroupedDigits(failed) + " failed.  ");
    text += ElapsedText();
    // While the user confirms each file, the number of files to purge is unknown.
    const bool blnAsking = blnConfirmFiles && !blnPurgeRemainingFiles;
    const std::string strRemaining = blnAsking ? std::string() : RemainingText();
    if (!SearchInHand().empty())
        text += "  " + SearchInHand();
    else if (!strRemaining.empty())
        text += "  " + strRemaining;
    frmReport.lblProgress.Caption = (blnStop ? "Stopping after this pass ...  " : "") + text;
    const double share = ClockShare();
    // A purge starts with an empty bar, even while the number of files is unknown.
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
            ResultOfRun() + " in " +
            (elapsed < 1000 ? "less than a second" : ClockText(static_cast<double>(elapsed))) + ".";
        // After a stop the bar keeps its position, because the current file now counts as
        // processed. Without a stop it is full only if nothing has failed.
        if (!blnStop)
            frmReport.barProgress.Fraction = ShareWithoutFailures();
    }
    if (currentRun.Request.WritesDots())
        ClearReportText(); // the text contains only dots
    ui::ShowTaskbarProgress(frmReport, -1, false);
}
