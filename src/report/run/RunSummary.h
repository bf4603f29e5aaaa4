// The lines that close a run.
#pragma once

#include <string>

/// A person stopped the run: a listing that ends as its report is full was not stopped.
bool WasStopped();
/// The lines that close a run, without the closing time.
std::string SummaryText();
