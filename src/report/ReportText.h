// The report's text as kept by its window. run/RunEvents.h has the functions for a run.
#pragma once

#include <cstddef>

/// Characters (UTF-16 units, as in the text box) that the report may hold.
constexpr std::size_t lngMaxReportText = 61440;
/// The limit in force: a program that shows the report in no box may raise it.
inline std::size_t lngReportLimit = lngMaxReportText;

/// Empties the report for a new run.
void ClearReportText();
/// Moves the pending text into the window's text, with the caret at its end.
void MovePendingText();
/// Shortens the report, adds that it is full, and stops a listing run.
void ReportBufferFull();
