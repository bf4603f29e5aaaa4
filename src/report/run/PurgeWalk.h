// The purge walk over a folder tree.
#pragma once

#include "report/run/Run.h"

#include <string>

/// Purge walk of the current run: one folder and, if blnSubdirectories, everything below it.
void NWesPurgeRecursive(const std::string& strFolder, const std::string& strSpec, bool blnSlackOnly,
                        const RunItem& item = {});

/// The purge walk for one item of the run.
void PurgeItem(const RunItem& item);

/// Tells what belongs to no single file: lines that stand in their place between the files, in the
/// report and in what is saved of it. A warning also stands at the end of a report that was full.
void TellBetweenFiles(const std::string& strLines, bool blnWarning);

/// Writes a line for a link, so that the user knows it was not purged.
void TellLink(const std::string& strPath);
/// Warns of a folder that could not be read, and counts it.
void TellUnread(const std::string& strFolder, const std::string& strWhy);
/// Writes a line for a folder that has taken the place of a chosen one, and counts it as unread.
void TellReplaced(const std::string& strFolder);
