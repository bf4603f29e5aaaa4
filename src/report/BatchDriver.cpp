// A run in the report window: prepares the window, performs the run, shows its end.
#include "report/BatchDriver.h"

#include "engine/FilePurge.h"
#include "report/frmAntiVirusQuery.h"
#include "report/frmReport.h"
#include "report/ReportText.h"
#include "report/run/Run.h"
#include "report/run/RunDriver.h"
#include "session/Session.h"
#include "ui/Interface.h"

void ResetReportWindow() {
    FrmReport& f = frmReport;
    ClearReportText();
    f.lblPausedDone.Caption = "";
    f.lblDots.Visible = currentRun.Request.WritesDots();
    // The main window shows the progress of a command on a drive.
    f.barProgress.Visible = currentRun.Request.blnPurgeFiles && currentRun.Request.blnInReport;
    f.barProgress.Fraction = 0;
    f.lblProgress.Caption = "";
    f.cmdPauseContinue.Enabled = true;
    f.cmdStop.Enabled = true;
    f.cmdSaveReport.Enabled = false;
    SetRunButtons();
}

namespace {

// Completes the request from the settings and from the question asked before the run.
void CompleteRequest(RunRequest& request) {
    request.blnSubdirectories = blnSubdirectories;
    request.How = PurgeHowInForce();
    request.blnMonitoringAsked = frmAntiVirusQuery.blnAsked;
    request.blnNoMonitoring = frmAntiVirusQuery.blnAsked && frmAntiVirusQuery.blnNo;
    frmAntiVirusQuery.blnAsked = false;
}

} // namespace

void ShowEndOfReport() {
    FrmReport& f = frmReport;
    f.cmdPauseContinue.Enabled = false;
    f.cmdStop.Enabled = false;
    f.cmdClose.Enabled = true;
    f.cmdSaveReport.Enabled = true;
    f.lblDots.Visible = false;
    const std::size_t failed = currentRun.Failures.size();
    f.lblPausedDone.Caption = currentRun.State == RunState::Stopped  ? "Stopped"
                              : currentRun.State == RunState::Paused ? "Paused"
                              : currentRun.State == RunState::Failed ? "Failed"
                              : failed == 0                          ? "Done"
                                            : "Done, " + std::to_string(failed) + " failed";
    if (currentRun.State == RunState::Paused)
        currentRun.State = RunState::Done;
    LayOutReport();
    ui::Repaint(f);
}

void ProcessFiles() {
    RunRequest& request = currentRun.Request;
    if (request.blnPurgeFiles && !PurgeLibraryReady())
        return;
    CompleteRequest(request);
    BeginRun(request);
    ResetReportWindow();
    ui::HoldEscape(request.blnPurgeFiles);
    PerformRun();
    ui::HoldEscape(false);
    request.lngNumFilesExpected = 0;
    request.dblBytesExpected = 0;
    ShowEndOfReport();
}
