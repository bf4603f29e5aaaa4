// The dialogs with which files, folders and drives are chosen.
#pragma once

#include "platform/Places.h"

#include <string>

/// Lays out the dialogs and binds their handlers; called once, at start-up.
void LoadSelectionForms();

/// Shows the folder browser. Returns a folder path with a drive letter and a trailing backslash; ""
/// when cancelled or refused with a message.
std::string BrowseFolder(const std::string& strTitle);

enum class PathKind { NotThere, File, Folder };
/// Replaces the path of a chosen file or folder by its real path, which is then shown, confirmed
/// and purged. A place without a drive letter keeps the letter under which it was chosen. False,
/// with a message, when the path cannot be purged: it is not on a drive with a letter, it is a link
/// (its target was not chosen and may lie on another drive), or the system does not tell whether it
/// is a link. What is not there is taken.
bool TakePath(std::string& strPath, const std::string& strTitle, PathKind* kind = nullptr);
/// The parts of TakePath, to ask about many paths. The first asks nothing. The others call the
/// platform only, and belong into AskOnDrive. Each of the first two returns "" or the reason.
std::string WhyNoLetter(const std::string& strPath);
/// `kind` counts only without a reason.
std::string WhyNotTaken(const std::string& strPath, PathKind& kind);
/// The real path as told by the system; if the system does not tell, the full path.
std::string RealPath(const std::string& strPath);
/// Call after setting strDirPath: settles the path if not done yet, and remembers the folder's
/// identity.
void RememberFolder();
/// Holds the folder in strDirPath until `hold` is released. False, with a message, when the folder
/// cannot be reached, has become a link, or is no longer the chosen folder.
bool HoldChosenFolder(platform::FolderHold& hold);
/// Whether two paths lead to the same folder; false for a place without a drive letter. May pump
/// messages while a slow drive answers.
bool IsSameFolder(const std::string& strFolder, const std::string& strOther);
