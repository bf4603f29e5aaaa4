// A run from its header to its closing lines.
#pragma once

#include <string>

/// Performs the current run, which has begun: header, walk, summary. Returns when it is done,
/// stopped or cancelled.
void PerformRun();
/// The date and the time, as a line of a report.
std::string DateAndTime();
/// Ends the report of the current run with the files that could not be purged and, of a purge, the
/// time.
void TellFailuresAndTime();
