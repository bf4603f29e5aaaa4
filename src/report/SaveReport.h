// "Save report": the whole report in a file.
#pragma once

#include "platform/Fault.h"

#include <string>

/// Writes the report of the last run into a file: as JSON lines when its name ends in ".json" or
/// ".jsonl", else as text. A file that is there is replaced, or stays as it was.
platform::Fault WriteReport(const std::string& strPath);
/// Asks for a file and writes the report of the last run into it. A failure is shown to the user
/// and loses no data.
void SaveReport();
