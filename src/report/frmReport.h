// The report window: the running text of a listing or purge run, and its controls.
#pragma once

#include "report/BatchDriver.h"
#include "ui/Controls.h"

#include <cstdint>
#include <string>

struct FrmReport : ui::Form {
    ui::TextBox txbText;
    ui::Label lblDots, lblPausedDone, lblProgress;
    ui::ProgressBar barProgress;
    ui::Button cmdPauseContinue, cmdStop, cmdSaveReport, cmdCopyToClipboard, cmdClose;
    ui::Timer tmrProgress; ///< keeps the elapsed time going while one file takes long

    bool blnBufferFull = false;
    std::string strTextBuff; ///< pending text, not yet in txbText
};
extern FrmReport frmReport;

/// The run is a listing that writes a dot for each folder instead of its name.
bool WritesDots();
/// Lays out the report window and the dialogs that accompany a run, and binds their handlers;
/// once, at start-up.
void LoadReportForm();
/// Places everything by the window's size and by what is shown; the text gets what the two rows
/// below it leave.
void LayOutReport();
/// Captions, widths and visibility of Pause and Stop for the current run.
void SetRunButtons();
/// The main window's "Report": the window with its text, or "Nothing to report!".
void ShowReportAgain();
