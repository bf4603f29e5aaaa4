// One file of a purge run in the report: whether it may be purged, its questions, its line.
#pragma once

#include <cstdint>
#include <string>

/// Purges one file, or says on its line why not. `lngLength`: the length in bytes that the folder
/// lists. Ends with blnStop set when the run is to end.
void PurgeListedFile(const std::string& strPath, std::int64_t lngLength);
