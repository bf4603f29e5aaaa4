// The lines that close a run.
#pragma once

#include <string>

/// The lines that close a run, without the closing time.
std::string SummaryText();
