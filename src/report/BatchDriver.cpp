// A run from its header to its closing lines: prepares it, starts the walk, closes it.
#include "report/BatchDriver.h"

#include "drives/FileSystems.h"
#include "engine/FileOps.h"
#include "engine/FilePurge.h"
#include "engine/HeldFiles.h"
#include "platform/System.h"
#include "report/frmAntiVirusQuery.h"
#include "report/frmReport.h"
#include "report/ListWalk.h"
#include "report/PurgeWalk.h"
#include "report/ReportProgress.h"
#include "report/ReportText.h"
#include "report/RunSummary.h"
#include "report/TimeEstimates.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "support/MainWindow.h"
#include "support/Paths.h"
#include "ui/Interface.h"

namespace {

constexpr double dblBytesPerMB = 1048576;
// A file gets a progress ruler when one overwrite of it takes so long that a person waits: two
// seconds, by the measured speed, or by the size that takes about that on a slow drive.
constexpr double dblRulerSeconds = 2;
constexpr double dblRulerBytesUnmeasured = 64 * dblBytesPerMB;

std::string DateAndTime() {
    return platform::DateText() + ", " + platform::TimeText() + "\r\n";
}

} // namespace

void ResetReportWindow() {
    FrmReport& f = frmReport;
    ClearReportText();
    f.lblPausedDone.Caption = "";
    f.lblDots.Visible = WritesDots();
    f.barProgress.Visible = f.blnPurgeFiles;
    f.barProgress.Fraction = 0;
    f.lblProgress.Caption = "";
    f.cmdPauseContinue.Enabled = true;
    f.cmdStop.Enabled = true;
    SetRunButtons();
}

namespace {

void ResetRun() {
    FrmReport& f = frmReport;
    f.lngNumFilesProcessed = 0;
    f.lngNumFilesPurged = 0;
    f.lngNumFoldersRemoved = 0;
    f.lngNumFoldersUnread = 0;
    f.dblTotalBytesPurged = 0;
    f.blnPaused = false;
    f.blnBufferFull = false;
    f.blnListFiles = !f.blnPurgeFiles;
    f.blnRunning = true;
    blnStop = false;
    blnPurgeRemainingFiles = false;
    ResetHeldFileWaits();
    ForgetFileSystems();
    ResetReportWindow();
}

void PreparePurge() {
    purgeRun = PurgeRun{};
    purgeRun.blnMonitoringAsked = frmAntiVirusQuery.blnAsked;
    purgeRun.blnNoMonitoring = frmAntiVirusQuery.blnAsked && frmAntiVirusQuery.blnNo;
    frmAntiVirusQuery.blnAsked = false;
    purgeRun.intPurgeType = GetPurgeType();
    purgeRun.intNumberOfPasses = GetNumberOfPasses();
    const float speed = PurgeSpeedOf(frmReport.strDirPath);
    purgeRun.dblRulerLength =
        speed > 0 ? dblRulerSeconds * speed * dblBytesPerMB : dblRulerBytesUnmeasured;
    SettleVolume(frmReport.strDirPath);
    purgeRun.lngClusterSize = GetCoveredClusterSize(frmReport.strDirPath);
    InitSystemExtensions(0);
}

// For the progress bar: what the run will meet, unless the caller has counted already. A single
// folder needs no count of its own: its list is taken as a whole before its first file.
void CountForProgress() {
    if (frmReport.lngNumFilesExpected > 0 || !blnSubdirectories)
        return;
    frmReport.lblProgress.Caption = "Counting files ...";
    ui::Repaint(frmReport);
    CountAhead(frmReport.strDirPath, frmReport.strFilespec, frmReport.lngNumFilesExpected,
               frmReport.dblBytesExpected);
}

std::string RunHeader() {
    const std::string slack = blnPurgeSlackOnly ? "the slack area of " : "";
    std::string text = "Purging " + slack;
    if (frmReport.strFilespec == "*.*") {
        text += "all files in " + frmReport.strDirPath;
        if (blnSubdirectories)
            text += "\r\n(including all files in subfolders) ";
    } else {
        text += "files " + frmReport.strDirPath + frmReport.strFilespec + " ";
        if (blnSubdirectories)
            text += "\r\n(including " + frmReport.strFilespec + " files in subfolders) ";
    }
    return text + "\r\nusing " +
           PurgeTypeNumPasses(purgeRun.intPurgeType, purgeRun.intNumberOfPasses) + ".\r\n\r\n";
}

void RunPurge() {
    PreparePurge();
    AppendReport(DateAndTime(), false);
    AppendReport(RunHeader(), true);
    CountForProgress();
    if (blnStop) // before or while counting
        return;
    BeginReportProgress();
    NWesPurgeRecursive(frmReport.strDirPath, frmReport.strFilespec, blnPurgeSlackOnly);
}

void RunListing() {
    SetMainLine(MainLine::Status, "");
    BeginReportProgress();
    ListFilesRecursive(frmReport.strDirPath, frmReport.strFilespec);
}

void CloseRun() {
    FrmReport& f = frmReport;
    EndReportProgress();
    f.cmdPauseContinue.Enabled = false;
    f.cmdStop.Enabled = false;
    f.cmdClose.Enabled = true;
    if (WritesDots())
        ClearReportText(); // it holds only the dots
    f.lblDots.Visible = false;
    EndReportLine();
    AppendBeyondLimit(SummaryText() + (f.blnPurgeFiles ? DateAndTime() : std::string()));
    if (WasStopped()) // by F10, for example, or out of a pause
        f.lblPausedDone.Caption = "Stopped";
    if (f.lblPausedDone.Caption != "Paused" && f.lblPausedDone.Caption != "Stopped")
        f.lblPausedDone.Caption = "Done";
    f.blnRunning = false;
    f.lngNumFilesExpected = 0;
    f.dblBytesExpected = 0;
    LayOutReport();
    ui::Repaint(f);
}

} // namespace

void ProcessFiles() {
    if (frmReport.blnPurgeFiles && !PurgeLibraryReady())
        return;
    ResetRun();
    ui::HoldEscape(frmReport.blnPurgeFiles);
    if (frmReport.blnPurgeFiles)
        RunPurge();
    else
        RunListing();
    ui::HoldEscape(false);
    CloseRun();
}
