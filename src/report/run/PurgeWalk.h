// The purge walk over a folder tree.
#pragma once

#include <string>

/// Purge walk of the current run: one folder and, if blnSubdirectories, all beneath it.
void NWesPurgeRecursive(const std::string& strFolder, const std::string& strSpec,
                        bool blnSlackOnly);

/// Writes the line of a link. It is left alone, and the user should know.
void TellLink(const std::string& strPath);
