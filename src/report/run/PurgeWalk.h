// The purge walk over a folder tree.
#pragma once

#include "report/run/Run.h"

#include <string>

/// Purge walk of the current run: one folder and, if blnSubdirectories, all beneath it.
void NWesPurgeRecursive(const std::string& strFolder, const std::string& strSpec,
                        bool blnSlackOnly);

/// The same for an item of the run.
void PurgeItem(const RunItem& item);

/// Writes the line of a link. It is left alone, and the user should know.
void TellLink(const std::string& strPath);
