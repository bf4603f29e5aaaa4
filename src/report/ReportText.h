// The report's text as the batch driver works on it, beyond AppendReport.
#pragma once

#include <cstddef>
#include <string>

/// Empties the report for a new run.
void ClearReportText();
/// Moves the pending text into the window's text, with the caret at its end.
void MovePendingText();
/// Pending text included: where the report ends now, as a position for ReplaceReportTail.
std::size_t ReportEnd();
/// Replaces everything from a position on by another text, at once. Nothing when the report is
/// full: the position means nothing any more then.
void ReplaceReportTail(std::size_t lngFrom, const std::string& strTail);
/// Ends the last line if it has no line end yet.
void EndReportLine();
/// Writes the text that closes a run, whatever the limit: a run of any size tells what it did.
void AppendClosingText(const std::string& strText);
