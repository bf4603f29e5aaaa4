// The whole report of a run, of any length: as text, and as JSON lines for other programs.
#pragma once

#include "report/run/RunRecords.h"

#include <cstddef>
#include <functional>
#include <string>

/// Takes a piece of the report; false ends the writing.
using PutText = std::function<bool(const std::string& strText)>;

/// Writes the text that the report window would show without a limit: each file, what stands
/// between the files, and all failures. False when `put` ended it.
bool WriteReportAsText(const PutText& put);
/// Writes one JSON object per line: one for each file, and the run itself as the last. False when
/// `put` ended it.
bool WriteReportAsJson(const PutText& put);
/// One of these lines, without line end.
std::string JsonOfRecord(const FileRecord& record);
std::string JsonOfRun();
