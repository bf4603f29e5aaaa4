// The whole report of a run, however long: as text, and as JSON lines for other programs.
#pragma once

#include "report/run/RunRecords.h"

#include <cstddef>
#include <functional>
#include <string>

/// Takes a piece of the report; false ends the writing.
using PutText = std::function<bool(const std::string& strText)>;

/// What the report window would hold if it had no limit, and every failure by name. False when
/// `put` ended it.
bool WriteReportAsText(const PutText& put);
/// One JSON object a line: one for each file, and the run itself as the last. False when `put`
/// ended it.
bool WriteReportAsJson(const PutText& put);
/// One of these lines, without its end.
std::string JsonOfRecord(const FileRecord& record);
std::string JsonOfRun();
