// The clock of a run in the report window: files and bytes done, elapsed and remaining time.
#include "report/ReportProgress.h"

#include "engine/FilePurge.h"
#include "platform/System.h"
#include "report/frmReport.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "support/FolderSearch.h"
#include "support/Numbers.h"
#include "support/StrProc.h"
#include "ui/Interface.h"

#include <algorithm>
#include <string>

namespace {

constexpr std::uint64_t lngBeforeRemaining = 2000;    // ms; an earlier guess is worth nothing
constexpr double dblLongestRemaining = 365.0 * 86400; // s; beyond a year it says nothing

std::uint64_t lngStartTick = 0;
std::uint64_t lngPauseTick = 0;
std::uint64_t lngSecondShown = 0;
bool blnBegun = false;
bool blnInPause = false;
std::int64_t lngFilesDone = 0;
double dblBytesDone = 0;
int intPassesOver = 0; // of the current file
int intPassesInAll = 1;
double dblBytesInHand = 0;

std::uint64_t Elapsed() {
    return (blnInPause ? lngPauseTick : platform::TickCount()) - lngStartTick;
}

double ShareOfFileInHand() {
    return (intPassesOver + PurgeShareDone()) / intPassesInAll;
}

// By bytes where the run writes all of them, else by files; negative: not known. Files that came
// or grew since the count must not carry it beyond the end.
double ShareDone() {
    double share = -1;
    if (frmReport.dblBytesExpected > 0 && !blnPurgeSlackOnly)
        share = (dblBytesDone + ShareOfFileInHand() * dblBytesInHand) / frmReport.dblBytesExpected;
    else if (frmReport.lngNumFilesExpected > 0)
        share = (static_cast<double>(lngFilesDone) + ShareOfFileInHand()) /
                static_cast<double>(frmReport.lngNumFilesExpected);
    return std::min(share, 1.0);
}

// Whole minutes from an hour on: the seconds would say nothing, and the line has to fit.
std::string TimeOf(double milliseconds) {
    const auto seconds = static_cast<std::int64_t>(milliseconds / 1000);
    return SecondsText(seconds, false, seconds >= 3600);
}

std::string FilesText(std::int64_t files) {
    return GroupedDigits(files) + (files == 1 ? " file" : " files");
}

} // namespace

void ShowReportProgress() {
    lngSecondShown = Elapsed() / 1000;
    const double share = ShareDone();
    const auto elapsed = static_cast<double>(Elapsed());
    const bool blnCounted =
        frmReport.lngNumFilesExpected >= std::max<std::int64_t>(lngFilesDone, 1);
    std::string text = blnCounted ? GroupedDigits(lngFilesDone) + " of " +
                                        FilesText(frmReport.lngNumFilesExpected) + ".  "
                                  : FilesText(lngFilesDone) + ".  ";
    text += "Elapsed: " + TimeOf(elapsed) + ".";
    // While the user is asked about each file, nobody knows how many of them will be purged.
    const bool blnAsking = blnConfirmFiles && !blnPurgeRemainingFiles;
    if (!SearchInHand().empty()) {
        text += "  " + SearchInHand();
    } else if (share > 0 && share < 1 && elapsed >= lngBeforeRemaining && !blnAsking) {
        const double remaining = elapsed * (1 - share) / share;
        if (remaining < dblLongestRemaining * 1000)
            text += "  Remaining: about " + TimeOf(remaining + 999) + ".";
    }
    frmReport.lblProgress.Caption = text;
    // A purge begins with an empty one, even while the number of files is not known.
    const bool blnBar = share >= 0 || (frmReport.blnPurgeFiles && lngFilesDone == 0);
    if (frmReport.barProgress.Visible != blnBar) {
        frmReport.barProgress.Visible = blnBar;
        LayOutReport();
    }
    frmReport.barProgress.Fraction = std::max(share, 0.0);
    ui::ShowTaskbarProgress(frmReport, share, blnInPause);
}

void BeginReportProgress() {
    lngStartTick = platform::TickCount();
    blnBegun = true;
    blnInPause = false;
    lngFilesDone = 0;
    dblBytesDone = dblBytesInHand = 0;
    intPassesOver = 0;
    frmReport.tmrProgress.Enabled = true;
    ShowReportProgress();
}

void RefreshReportProgress() {
    // Once for every second that the line can tell: to paint it takes milliseconds, too.
    if (blnBegun && Elapsed() / 1000 != lngSecondShown)
        ShowReportProgress();
}

void PauseReportProgress(bool blnPaused) {
    if (blnPaused == blnInPause || !blnBegun)
        return;
    if (blnPaused)
        lngPauseTick = platform::TickCount();
    else
        lngStartTick += platform::TickCount() - lngPauseTick;
    blnInPause = blnPaused;
    ShowReportProgress();
}

void NoteFileDone(double dblBytes, bool blnPurged) {
    ++lngFilesDone;
    if (blnPurged)
        dblBytesDone += dblBytes;
    else
        frmReport.dblBytesExpected = std::max(frmReport.dblBytesExpected - dblBytes, 0.0);
    intPassesOver = 0;
}

void NotePasses(int intDone, int intPasses, std::int64_t lngFileLength) {
    intPassesOver = intDone;
    intPassesInAll = intPasses;
    dblBytesInHand = static_cast<double>(lngFileLength);
}

void EndReportProgress() {
    frmReport.tmrProgress.Enabled = false;
    if (!blnBegun) { // the run was stopped before its first file
        frmReport.lblProgress.Caption.clear();
        frmReport.barProgress.Visible = false;
    } else {
        frmReport.lblProgress.Caption =
            FilesText(lngFilesDone) + " in " +
            (Elapsed() < 1000 ? "less than a second" : TimeOf(static_cast<double>(Elapsed()))) +
            ".";
        // After a stop the bar stays where it stood: the current file counts as dealt with now.
        if (!blnStop)
            frmReport.barProgress.Fraction = 1;
    }
    blnBegun = false;
    ui::ShowTaskbarProgress(frmReport, -1, false);
}
