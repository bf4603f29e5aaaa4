// A run from its header to its closing lines.
#pragma once

#include <string>
#include <vector>

/// Performs the current run, which BeginRun has set up: header, walk, summary. Returns when it is
/// done, stopped or cancelled.
void PerformRun();
/// How the current run purges, as a line of its report.
std::string UsingText();
/// Further lines of the head, or "": the options that are on and came later, and what should be
/// known of the drives of these places. Messages are pumped while drives spin up.
std::string HeadRemarks(const std::vector<std::string>& places);
/// Date and time as a line of a report.
std::string DateAndTime();
/// Writes the end of the current run's report: the files that could not be purged and, for a purge,
/// the time.
void TellFailuresAndTime();
