// Overwriting the name and the dates of a file or a folder that is about to go.
#pragma once

#include <string>

/// Renames a file or an empty folder several times, to names as long as its own that mean nothing
/// and that nothing else has; after the first its dates are set to a fixed one (blnDates). `path`,
/// without a trailing backslash, is what it is called in the end, whatever has failed. False:
/// something did not succeed, and name or dates may remain on the disk.
bool OverwriteName(std::string& path, bool blnDates);

/// To be called once all that is to go from a folder has gone: NTFS leaves copies of names in
/// unused parts of a folder's index. Empty files with long names take as much of it as the names
/// that OverwriteName has met there, and are deleted again. Does nothing where there were none.
/// Returns what the report has to tell: "" when all went well. Messages are pumped; F10 ends it.
std::string FillIndexOf(const std::string& folder);
