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
    ui::Timer tmrProgress; ///< updates the elapsed time while one file takes long

    bool blnBufferFull = false;
    std::string strTextBuff; ///< pending text, not yet in txbText
};
extern FrmReport frmReport;

/// Lays out the report window and the dialogs of a run, and binds their handlers; called once, at
/// start-up.
void LoadReportForm();
/// Arranges the window by its size and visible controls; the text gets the space above the two
/// bottom rows.
void LayOutReport();
/// Captions, widths and visibility of Pause and Stop for the current run.
void SetRunButtons();
/// The main window's "Report": the window with its text, or "Nothing to report!".
void ShowReportAgain();
