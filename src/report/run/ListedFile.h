// One file of a purge run in the report: whether it may be purged, its questions, its line.
#pragma once

#include "engine/PurgeJob.h"

#include <cstdint>
#include <string>

/// Purges one file, or says on its line why not. `lngLength`: the length in bytes that the folder
/// lists. Ends with blnStop set when the run is to end.
void PurgeListedFile(const std::string& strPath, std::int64_t lngLength);
/// Whether PurgeListedFile would purge the file without a question, and without a ruler.
bool IsPurgedPlainly(const std::string& strPath, std::int64_t lngLength);
/// Tells on its line what became of a file that was purged with others.
void TellPurgedFile(const PurgeJob& job, std::int64_t lngLength);
