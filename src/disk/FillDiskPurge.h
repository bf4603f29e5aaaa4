// Purging and deleting the dummy files that FillDisk wrote.
#pragma once

#include <cstdint>
#include <string>

/// Purges every dummy file by the current purge type, then deletes the files and their folder.
/// Always returns true; FillDisk has the results, and blnStop stays set if the user stopped.
/// Without blnInteractive no dialog is shown. Deliberate oddity: the last argument is unused.
bool PurgeDummyFiles(bool blnInteractive, std::int64_t lngNumDummyFiles, const std::string&);
/// Deletes our dummy files in one of our folders, then the folder. True when nothing is left.
bool DeleteDummyFiles(const std::string& strFolder);
/// Shows a message in the main window, then calls DeleteDummyFiles; does nothing for "".
void DeleteDummiesWithMessage(const std::string& strFolder);
