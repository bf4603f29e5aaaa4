// The dialogs with which files, folders and drives are chosen.
#pragma once

#include "platform/Places.h"

#include <string>

/// Lays the dialogs out and binds their handlers; once, at start-up.
void LoadSelectionForms();

/// The folder browser; a folder path with a drive letter and a trailing backslash, "" when
/// cancelled or refused with a message.
std::string BrowseFolder(const std::string& strTitle);

/// Settles the path of a chosen file or folder once: it becomes the real one, which is shown, asked
/// about and purged. A place without a drive letter keeps the letter that it was chosen by. "", or
/// why it cannot be purged where it is: a path that is not on a drive with a
/// letter, a link, behind which lies what was not chosen and is perhaps on another drive, and what
/// cannot be asked whether it is one.
std::string SettlePath(std::string& strPath);
/// The same; false, with a message, for what cannot be purged.
bool TakePath(std::string& strPath, const std::string& strTitle);
/// strDirPath has been set: its path is settled where that was not done yet, and what folder it is
/// is remembered.
void RememberFolder();
/// Holds the folder in strDirPath until it is let go of. False, with a message, when it cannot be
/// reached, has become a link, or is no longer the folder that was chosen.
bool HoldChosenFolder(platform::FolderHold& hold);
/// Whether two paths lead to the same folder.
bool IsSameFolder(const std::string& strFolder, const std::string& strOther);
