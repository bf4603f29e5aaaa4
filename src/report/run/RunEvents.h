// What a run tells, asks and polls: its text, its progress, its questions, pause and stop. Declared
// here, where the run is; defined in report/, by the window that shows it.
#pragma once

#include "ui/Interface.h"

#include <cstddef>
#include <string>

// ---- Text (ReportText.cpp) ---------------------------------------------------------------------

/// Adds text to what is told; with `blnFlush` at once, and the interface gets its turn. Does
/// nothing once the report is full.
void AppendReport(const std::string& strText, bool blnFlush);
/// A line of its own, told at once: a run may tell nothing else for a long time.
void WriteReportLine(const std::string& strLine);
/// Where the text ends now, as a position for ReplaceReportTail.
std::size_t ReportEnd();
/// Replaces everything from a position on by another text, at once. Nothing when the report is
/// full: the position means nothing any more then.
void ReplaceReportTail(std::size_t lngFrom, const std::string& strTail);
/// Ends the last line if it has no line end yet.
void EndReportLine();
/// Adds text whatever the limit: a run of any size tells how it ended.
void AppendBeyondLimit(const std::string& strText);
/// No text is taken any more: none needs to be composed.
bool ReportIsFull();
/// The text would be full with so many more characters.
bool ReportIsNearlyFull(std::size_t lngMore);

// ---- Progress (ReportProgress.cpp) -------------------------------------------------------------

/// The clock of a run has something new to show.
void ShowReportProgress();
/// Before the clock runs: the run counts the files that it will meet.
void ShowCounting();
/// The work is done: what the whole run took. The clock may not have begun.
void ShowRunEnd();

// ---- Polls and questions (RunWindow.cpp) -------------------------------------------------------

/// Yields, and waits here while the run is paused. The caller tests blnStop afterwards.
void CheckPauseStop();
/// A box over the run, with all that was told so far. The time that the user takes for the answer
/// is none of the run's.
int AskInReport(const std::string& strText, ui::Buttons buttons, const std::string& strTitle,
                int intDefault);
/// The file-monitoring question. False: the run is to be cancelled.
bool AskAboutMonitoring(bool& blnNone);
/// The purge advice before a file that is likely to be watched. False: the run is to be cancelled.
bool ShowPurgeAdvice(const std::string& strPath);
/// The confirmation of one file. False: not to be purged.
bool AskToPurgeFile(const std::string& strPath);
