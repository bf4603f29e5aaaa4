// The report's text, as its window keeps it. What a run may do with it is in run/RunEvents.h.
#pragma once

#include <cstddef>

/// Characters (UTF-16 units, as the text box counts) that the report may hold.
constexpr std::size_t lngMaxReportText = 61440;
/// The limit in force: a program that shows the report in no box may raise it.
inline std::size_t lngReportLimit = lngMaxReportText;

/// Empties the report for a new run.
void ClearReportText();
/// Moves the pending text into the window's text, with the caret at its end.
void MovePendingText();
/// Cuts the report back, says that it is full, and in a listing run asks for a stop.
void ReportBufferFull();
