// The dialogs with which files, folders and drives are chosen.
#pragma once

#include <string>

/// The folder browser; a folder path with a drive letter, "" when cancelled. A folder without a
/// drive letter (a network share) is refused with a message.
std::string BrowseFolder(const std::string& strTitle);
/// The file-specification dialog for a folder: "*.*", "*.ext", a wildcard form or one file name;
/// "" when cancelled.
std::string AskFileSpecification(const std::string& strFolder);
/// The subfolder chooser: the chosen names, one per line ending in CR LF; "" when none or
/// cancelled.
std::string SelectSubfolders(const std::string& strFolder, const std::string& strTitle);
/// The drive chooser: one of the letters, or 0 when cancelled.
char ChooseDrive(const std::string& strTitle, const std::string& strLetters);
