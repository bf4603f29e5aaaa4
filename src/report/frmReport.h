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
    ui::Button cmdPauseContinue, cmdStop, cmdCopyToClipboard, cmdClose;
    ui::Timer tmrProgress; ///< keeps the elapsed time going while one file takes long

    // What is to be run: set by the caller of ProcessFiles.
    std::string strDirPath;  ///< top folder, with trailing backslash
    std::string strFilespec; ///< "*.*" means all files
    bool blnPurgeFiles = false;
    bool blnListFiles = false;
    bool blnDisplayFolderNames = false;
    bool blnDisplayFileNames = false;
    /// What a count before a purge found, for the progress bar; 0 = not known. ProcessFiles counts
    /// itself when they are 0, and sets them back to 0 at its end.
    std::int64_t lngNumFilesExpected = 0;
    double dblBytesExpected = 0;

    // State of one run.
    bool blnRunning = false;
    bool blnPaused = false;
    bool blnBufferFull = false;
    std::int64_t lngNumFilesProcessed = 0;
    std::int64_t lngNumFilesPurged = 0;
    std::int64_t lngNumFoldersRemoved = 0;
    std::int64_t lngNumFoldersUnread = 0;
    double dblTotalBytesPurged = 0;

    std::string strTextBuff; ///< pending text, not yet in txbText
};
extern FrmReport frmReport;

/// A person stopped the run: a listing that ends as its report is full was not stopped.
bool WasStopped();
/// The run is a listing that writes a dot for each folder instead of its name.
bool WritesDots();
/// Lays out the report window and the dialogs that accompany a run, and binds their handlers;
/// once, at start-up.
void LoadReportForm();
/// Yields, and waits here while the run is paused. The caller tests blnStop afterwards.
void CheckPauseStop();
/// Places everything by the window's size and by what is shown; the text gets what the two rows
/// below it leave.
void LayOutReport();
/// Captions, widths and visibility of Pause and Stop for the current run.
void SetRunButtons();
/// The main window's "Report": the window with its text, or "Nothing to report!".
void ShowReportAgain();
