// "Purge folders": purges all files of chosen subfolders of some folder.
#pragma once

#include <string>

/// The command, from its first question to its end; `strTitle` is that of its boxes.
void PurgeFoldersCommand(const std::string& strTitle);
