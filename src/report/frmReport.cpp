// The report window: its layout and its buttons, pause and stop.
#include "report/frmReport.h"

#include "report/frmAntiVirusQuery.h"
#include "report/frmConfirmFiles.h"
#include "report/frmPurgeWarning.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/SaveReport.h"
#include "session/Session.h"
#include "ui/Interface.h"

#include <algorithm>

FrmReport frmReport;

namespace {

constexpr int intMargin = 120;
constexpr int intButtonHeight = 375;
constexpr int intRowHeight = 255;
constexpr int intCloseWidth = 1200;
constexpr int intCopyWidth = 2115;         // "Copy to clipboard"
constexpr int intCopySelectedWidth = 3200; // "Copy selected text to clipboard"

} // namespace

void LayOutReport() {
    FrmReport& f = frmReport;
    const int buttonTop = f.Height - intMargin - intButtonHeight;
    const int rowTop = buttonTop - intMargin - intRowHeight;
    const int inside = f.Width - 2 * intMargin;

    f.txbText.Width = inside;
    f.txbText.Height = std::max(rowTop - 2 * intMargin, intRowHeight);
    f.lblDots.Top = rowTop;
    f.barProgress.Top = rowTop;
    f.lblProgress.Top = rowTop;
    f.lblProgress.Left = intMargin;
    if (currentRun.IsUnderWay() && currentRun.Request.WritesDots())
        f.lblProgress.Left += f.lblDots.Width + intMargin;
    else if (f.barProgress.Visible)
        f.lblProgress.Left += f.barProgress.Width + intMargin;
    f.lblProgress.Width = f.Width - intMargin - f.lblProgress.Left;

    for (ui::Button* button :
         {&f.cmdPauseContinue, &f.cmdStop, &f.cmdSaveReport, &f.cmdCopyToClipboard, &f.cmdClose})
        button->Top = buttonTop;
    f.cmdStop.Left = f.cmdPauseContinue.Left + f.cmdPauseContinue.Width + intMargin;
    f.lblPausedDone.Top = f.cmdStop.Top + 30;
    f.cmdClose.Left = f.Width - intMargin - intCloseWidth;
    f.cmdCopyToClipboard.Left = f.cmdClose.Left - intMargin - f.cmdCopyToClipboard.Width;
    f.cmdSaveReport.Left = f.cmdCopyToClipboard.Left - intMargin - f.cmdSaveReport.Width;
    f.lblPausedDone.Left =
        (f.cmdStop.Visible ? f.cmdStop.Left + f.cmdStop.Width
                           : f.cmdPauseContinue.Left + f.cmdPauseContinue.Width) +
        intMargin;
    f.lblPausedDone.Width = std::max(f.cmdSaveReport.Left - intMargin - f.lblPausedDone.Left, 0);
}

namespace {

void SetCopyCaption(bool blnSelection) {
    frmReport.cmdCopyToClipboard.Caption =
        blnSelection ? "Copy selected text to clipboard" : "Copy to clipboard";
    frmReport.cmdCopyToClipboard.Width = blnSelection ? intCopySelectedWidth : intCopyWidth;
    LayOutReport();
}

void SetPauseButton(const char* caption, int width, char mnemonic) {
    frmReport.cmdPauseContinue.Caption = caption;
    frmReport.cmdPauseContinue.Width = width;
    frmReport.cmdPauseContinue.Mnemonic = mnemonic;
}

void cmdPauseContinue_Click() {
    const bool blnPause = currentRun.State != RunState::Paused;
    currentRun.State = blnPause ? RunState::Paused : RunState::Running;
    if (blnPause) {
        frmReport.cmdStop.Caption = "Stop";
        frmReport.cmdStop.Visible = true;
        frmReport.cmdStop.Width = 1000;
        SetPauseButton("Continue", 1500, 'n');
        frmReport.lblPausedDone.Caption = "Paused";
        frmReport.lblDots.Visible = false;
        LayOutReport();
    } else {
        SetRunButtons();
        frmReport.lblPausedDone.Caption = "";
        frmReport.lblDots.Visible = currentRun.Request.WritesDots();
    }
}

void cmdStop_Click() {
    blnStop = true;
    frmReport.lblPausedDone.Caption = "Stopped";
    ShowClock();
}

void cmdCopyToClipboard_Click() {
    const ui::TextBox& box = frmReport.txbText;
    if (box.Text.empty())
        return;
    const bool blnCopied = ui::PutOnClipboard(box.SelLength > 0 && box.SelStart < box.Text.size()
                                                  ? box.Text.substr(box.SelStart, box.SelLength)
                                                  : box.Text);
    frmReport.lblPausedDone.Caption = blnCopied ? "" : "Not copied";
    SetCopyCaption(false);
}

void cmdClose_Click() {
    // Stop only a run in progress: the flag is shared and would otherwise stop the next command.
    if (currentRun.IsUnderWay() && currentRun.Request.blnInReport) {
        blnStop = true;
        frmReport.lblPausedDone.Caption = "Stopped";
        ShowClock();
    }
    ui::Hide(frmReport);
}

void txbText_MouseUp() {
    SetCopyCaption(frmReport.txbText.SelLength > 0);
}

void frmReport_Activate() {
    SetCopyCaption(false);
    // The button pressed last may have kept the focus: Enter would press it again, and end the run.
    ui::SetFocus(frmReport.txbText);
}

} // namespace

void SetRunButtons() {
    frmReport.cmdStop.Visible = !currentRun.Request.blnPurgeFiles;
    frmReport.cmdStop.Caption = "Stop";
    frmReport.cmdStop.Width = 1000;
    if (currentRun.Request.blnPurgeFiles)
        SetPauseButton("Pause at next purge", 2500, 'P');
    else
        SetPauseButton("Pause", 1000, 'P');
    LayOutReport();
}

void ShowReportAgain() {
    if (frmReport.txbText.Text.empty()) {
        ui::MsgBox("Nothing to report!", ui::Buttons::OK, ui::Icon::None, "Report window");
        return;
    }
    frmReport.txbText.SelStart = frmReport.txbText.Text.size();
    frmReport.txbText.SelLength = 0;
    ui::Show(frmReport);
}

void LoadReportForm() {
    FrmReport& f = frmReport;
    f.Name = "frmReport";
    f.Caption = "Report";
    f.Width = 10800;
    f.Height = 6600;
    f.MinWidth = 10400;
    f.MinHeight = 3000;
    f.Resizable = true;
    f.Activate = frmReport_Activate;
    f.Close = cmdClose_Click;
    f.Resize = LayOutReport;

    ui::PutWords(
        {{&f.txbText, "Report"}, // for screen readers, as the next one
         {&f.barProgress, "Progress"},
         {&f.lblDots, "Each dot represents a folder."},
         {&f.lblPausedDone, "Paused ..."},
         {&f.cmdPauseContinue, "Continue", 0, cmdPauseContinue_Click},
         {&f.cmdStop, "Stop", 'S', cmdStop_Click},
         {&f.cmdSaveReport, "Save report", 'r', SaveReport},
         {&f.cmdCopyToClipboard, "Copy selected text to clipboard", 'y', cmdCopyToClipboard_Click},
         {&f.cmdClose, "Close", 'l', cmdClose_Click}});
    f.txbText.MultiLine = true;
    f.txbText.Locked = true;
    f.txbText.FixedPitch = true;
    f.txbText.MouseUp = txbText_MouseUp;
    f.lblDots.Visible = f.barProgress.Visible = false;
    f.lblPausedDone.Bold = true;
    f.cmdClose.Cancel = true;
    f.cmdSaveReport.Shortcut = 'S';
    f.cmdSaveReport.ToolTip = "Saves all of the report, as text or for other programs (Ctrl+S)";
    f.tmrProgress.Interval = 500;
    f.tmrProgress.Tick = RefreshClock;

    const int row = 5730, buttons = 6105;
    ui::Bind(f, {{&f.txbText, "txbText", intMargin, intMargin, 9360, 5490},
                 {&f.lblDots, "lblDots", intMargin, row, 2700, intRowHeight},
                 {&f.barProgress, "barProgress", intMargin, row, 1500, intRowHeight},
                 {&f.lblProgress, "lblProgress", 1740, row, 7740, intRowHeight},
                 {&f.cmdPauseContinue, "cmdPauseContinue", intMargin, buttons, 1500, 375},
                 {&f.cmdStop, "cmdStop", 1740, buttons, 1000, 375},
                 {&f.lblPausedDone, "lblPausedDone", 2940, buttons + 30, 1100, intRowHeight},
                 {&f.cmdSaveReport, "cmdSaveReport", 3800, buttons, 1400, 375},
                 {&f.cmdCopyToClipboard, "cmdCopyToClipboard", 4960, buttons, 3200, 375},
                 {&f.cmdClose, "cmdClose", 8280, buttons, intCloseWidth, 375}});
    f.Timers = {&f.tmrProgress};
    LayOutReport();

    LoadPurgeWarningForm();
    LoadAntiVirusQueryForm();
    LoadConfirmFilesForm();
}
