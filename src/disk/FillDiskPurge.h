// Purging and deleting the dummy files that FillDisk wrote.
#pragma once

#include <cstdint>
#include <string>

/// Purges every dummy file by the current purge type and deletes them and their folder. Always
/// true; what became of them is in FillDisk, and blnStop is left set when the user stopped it.
/// Without blnInteractive no dialog is shown. The last argument is not used.
bool PurgeDummyFiles(bool blnInteractive, std::int64_t lngNumDummyFiles, const std::string&);
/// Deletes our dummy files in a folder of ours, then the folder. True when nothing is left.
bool DeleteDummyFiles(const std::string& strFolder);
