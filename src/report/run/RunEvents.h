// What a run reports, asks and polls: text, progress, questions, pause and stop. Declared here for
// the run; defined in report/ by the window that shows it.
#pragma once

#include "ui/Interface.h"

#include <cstddef>
#include <string>

// ---- Text (ReportText.cpp) ---------------------------------------------------------------------

/// Appends text to the report. With `blnFlush` the text is shown at once and messages are pumped.
/// Does nothing once the report is full.
void AppendReport(const std::string& strText, bool blnFlush);
/// Appends a line and shows it at once: the next text may come much later.
void WriteReportLine(const std::string& strLine);
/// The current end of the text, as a position for ReplaceReportTail.
std::size_t ReportEnd();
/// Replaces everything after a position by another text and shows it at once. Does nothing when the
/// report is full, because positions are then invalid.
void ReplaceReportTail(std::size_t lngFrom, const std::string& strTail);
/// Ends the last line if it has no line end yet.
void EndReportLine();
/// Appends text even beyond the limit: every run must report how it ended.
void AppendBeyondLimit(const std::string& strText);
/// True when the report takes no more text, so that none needs to be composed.
bool ReportIsFull();
/// Whether this many more characters would fill the report.
bool ReportIsNearlyFull(std::size_t lngMore);

// ---- Progress (ReportProgress.cpp) -------------------------------------------------------------

/// Shows the new state of the clock.
void ShowReportProgress();
/// Shows that the run is counting its files; the clock is not running yet.
void ShowCounting();
/// Shows the result of the whole run. The clock may never have started.
void ShowRunEnd();

// ---- Polls and questions (RunWindow.cpp) -------------------------------------------------------

/// Pumps messages, and waits here while the run is paused. The caller checks blnStop afterwards.
void CheckPauseStop();
/// Shows a box over the run, after all pending text. The time until the answer does not count as
/// time of the run.
int AskInReport(const std::string& strText, ui::Buttons buttons, const std::string& strTitle,
                const std::string& strQuestion, int intDefault);
/// Asks the file-monitoring question. False: cancel the run.
bool AskAboutMonitoring(bool& blnNone);
/// Shows the purge advice before a file that is probably watched. False: cancel the run.
bool ShowPurgeAdvice(const std::string& strPath);
/// Asks for confirmation of one file. False: do not purge it.
bool AskToPurgeFile(const std::string& strPath);
