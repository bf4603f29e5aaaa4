// The report window: the running text of a listing or purge run, and its controls.
#pragma once

#include "ui/Controls.h"

#include <cstddef>
#include <cstdint>
#include <string>

struct FrmReport : ui::Form {
    ui::TextBox txbText;
    ui::Label lblDots, lblPausedDone, lblProgress;
    ui::ProgressBar barProgress;
    ui::Button cmdPauseContinue, cmdStop, cmdCopyToClipboard, cmdClose;

    // State of one run.
    std::string strDirPath;  ///< top folder, with trailing backslash
    std::string strFilespec; ///< "*.*" means all files
    bool blnPurgeFiles = false;
    bool blnListFiles = false;
    bool blnDisplayFolderNames = false;
    bool blnDisplayFileNames = false;
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

/// Characters (UTF-16 units, as the text box counts) that the report may hold.
constexpr std::size_t lngMaxReportText = 61440;

/// Lays the window out and binds its handlers; once, at start-up.
void LoadReportForm();
void AppendReport(const std::string& strText, bool blnFlush);
void CheckPauseStop();
void ReportBufferFull();
void SetRunButtons();
/// The main window's "Report": the window with its text, or "Nothing to report!".
void ShowReportAgain();
