// "Purge folders": purges all files in chosen subfolders of a folder.
#pragma once

#include <string>

/// Runs the whole command; `strTitle` is the title of its boxes.
void PurgeFoldersCommand(const std::string& strTitle);
