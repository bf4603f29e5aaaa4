// The dialogs with which files, folders and drives are chosen.
#pragma once

#include <string>

/// Lays the dialogs out and binds their handlers; once, at start-up.
void LoadSelectionForms();

/// The folder browser; a folder path with a drive letter and a trailing backslash, "" when
/// cancelled or refused with a message.
std::string BrowseFolder(const std::string& strTitle);
/// The file-specification dialog for a folder: "*.*", "*.ext", a wildcard form or one file name;
/// "" when cancelled.
std::string AskFileSpecification(const std::string& strFolder);
/// The subfolder chooser: the chosen names, one per line ending in CR LF; "" when none or
/// cancelled. Links to folders are not offered.
std::string SelectSubfolders(const std::string& strFolder, const std::string& strTitle);
/// The drive chooser: one of the letters, or 0 when cancelled.
char ChooseDrive(const std::string& strTitle, const std::string& strLetters);

/// True, with a message, for what cannot be purged where it is: a path that is not on a drive with
/// a letter, and a link, behind which lies what was not chosen and is perhaps on another drive.
bool RefusePath(const std::string& strPath, const std::string& strTitle);
