// One file of a purge run: what is asked about it, its passes, and its line in the report.
#pragma once

#include <cstdint>
#include <string>

/// Asks what there is to ask about one file, purges it, and writes its line. `lngLength` is the
/// length in bytes that the folder lists. Ends with blnStop set when the run is to end.
void PurgeOneFile(const std::string& strPath, std::int64_t lngLength, bool blnSlackOnly);
