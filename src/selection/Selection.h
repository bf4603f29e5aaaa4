// The dialogs with which files, folders and drives are chosen.
#pragma once

#include "platform/Places.h"

#include <string>

/// Lays the dialogs out and binds their handlers; once, at start-up.
void LoadSelectionForms();

/// The folder browser; a folder path with a drive letter and a trailing backslash, "" when
/// cancelled or refused with a message.
std::string BrowseFolder(const std::string& strTitle);
/// The file-specification dialog for a folder: "*.*", "*.ext", a wildcard form or one file name;
/// "" when cancelled.
std::string AskFileSpecification(const std::string& strFolder);
/// What becomes of the chosen subfolders: the chooser says it inside.
enum class SubfolderUse { Purge, Keep };
enum class SubfolderChoice {
    Chosen,
    NoneChosen, ///< the user accepted that none is chosen
    Cancelled,
    NotOffered ///< the list could not be read whole, or F10 ended the reading; the user knows
};
/// The subfolder chooser. `strChosen` takes the chosen names, one per line ending in CR LF; "" in
/// every case but the first. Links to folders are not offered.
SubfolderChoice SelectSubfolders(const std::string& strFolder, const std::string& strTitle,
                                 SubfolderUse use, std::string& strChosen);
/// The drive chooser: one of the letters, or 0 when cancelled.
char ChooseDrive(const std::string& strTitle, const std::string& strLetters);

/// Settles the path of a chosen file or folder once: it becomes the real one, which is shown, asked
/// about and purged. A place without a drive letter keeps the letter that it was chosen by. False,
/// with a message, for what cannot be purged where it is: a path that is not on a drive with a
/// letter, a link, behind which lies what was not chosen and is perhaps on another drive, and what
/// cannot be asked whether it is one.
bool TakePath(std::string& strPath, const std::string& strTitle);
/// strDirPath has been set: its path is settled where that was not done yet, and what folder it is
/// is remembered.
void RememberFolder();
/// Holds the folder in strDirPath until it is let go of. False, with a message, when it cannot be
/// reached, has become a link, or is no longer the folder that was chosen.
bool HoldChosenFolder(platform::FolderHold& hold);
/// Whether two paths lead to the same folder.
bool IsSameFolder(const std::string& strFolder, const std::string& strOther);
