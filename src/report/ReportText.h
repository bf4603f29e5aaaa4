// The report's text: how it grows, changes at its end, and is kept within its limit.
#pragma once

#include <cstddef>
#include <string>

/// Characters (UTF-16 units, as the text box counts) that the report may hold.
constexpr std::size_t lngMaxReportText = 61440;

/// Empties the report for a new run.
void ClearReportText();
/// Adds text to the pending text; with `blnFlush` all that is pending goes into the window, and
/// the interface gets its turn. Does nothing once the report is full.
void AppendReport(const std::string& strText, bool blnFlush);
/// Appends a line of its own, flushed: a run may write nothing else for a long time.
void WriteReportLine(const std::string& strLine);
/// Moves the pending text into the window's text, with the caret at its end.
void MovePendingText();
/// Pending text included: where the report ends now, as a position for ReplaceReportTail.
std::size_t ReportEnd();
/// Replaces everything from a position on by another text, at once. Nothing when the report is
/// full: the position means nothing any more then.
void ReplaceReportTail(std::size_t lngFrom, const std::string& strTail);
/// Ends the last line if it has no line end yet.
void EndReportLine();
/// Appends text whatever the limit: a run of any size tells how it ended.
void AppendBeyondLimit(const std::string& strText);
/// Cuts the report back, says that it is full, and in a listing run asks for a stop.
void ReportBufferFull();
