// The closing lines of a run.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Whether the user stopped the run. A listing that ended because its report is full was not
/// stopped.
bool WasStopped();
/// Whether something of what was to be purged was not: files, folders that could not be read, free
/// space; or something that a warning tells.
bool SomethingIsLeft();
/// "Files that could not be purged: 27", then up to `lngMost` names, one per line, then the number
/// of the remaining ones. "" without failures.
std::string FailuresText(std::size_t lngMost = std::string::npos);
/// What the run warns of, each in a line: free space that is left, and notes.
std::vector<std::string> Warnings();
/// As FailuresText: "Warnings: 16", then a line for each.
std::string WarningsText(std::size_t lngMost = std::string::npos);
/// The closing lines of a run, without the closing time.
std::string SummaryText();
