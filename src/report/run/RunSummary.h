// The lines that close a run.
#pragma once

#include <cstddef>
#include <string>

/// A person stopped the run: a listing that ends as its report is full was not stopped.
bool WasStopped();
/// "Files that could not be purged: 27", then as many names, one a line, as `lngMost`, then how
/// many more there are. "" without failures.
std::string FailuresText(std::size_t lngMost);
/// The lines that close a run, without the closing time.
std::string SummaryText();
