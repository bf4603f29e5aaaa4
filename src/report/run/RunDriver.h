// A run from its header to its closing lines.
#pragma once

#include <string>

/// Performs the current run, which BeginRun has set up: header, walk, summary. Returns when it is
/// done, stopped or cancelled.
void PerformRun();
/// Date and time as a line of a report.
std::string DateAndTime();
/// Writes the end of the current run's report: the files that could not be purged and, for a purge,
/// the time.
void TellFailuresAndTime();
