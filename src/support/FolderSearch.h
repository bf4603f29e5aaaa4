// Looking through folders with the windows alive. Declared here, where every room can include it;
// defined in shell/, which owns the main window.
#pragma once

#include "platform/Folders.h"

#include <functional>
#include <string>

/// platform::EnumerateFolder that yields, says after half a second in the status line what it is
/// doing, and ends early, without a fault, when blnStop is set (F10). A `visit` that clears blnStop
/// lets it go on. Outside of RunSearch nothing may be enabled that must not be clicked meanwhile.
platform::Fault SearchFolder(const std::string& strFolder,
                             const std::function<bool(const platform::FolderEntry&)>& visit);

/// What the current search tells the user, "" when there is none or it is not half a second old.
const std::string& SearchInHand();

/// Runs a search of one or many folders outside of a run: clears blnStop first, disables the main
/// window while it takes long, and says "`strDoing` ...". False when F10 ended it: then the status
/// line says "`strDoing` was stopped.", and blnStop is clear again. A search inside a search is
/// part of it.
bool RunSearch(const std::string& strDoing, const std::function<void()>& search);

/// Asks a question about a file or folder, of the platform alone. Where its drive may keep one
/// waiting, the main window is disabled and messages are pumped meanwhile.
void AskOnDrive(const std::string& strPath, const std::function<void()>& question);

/// Whether a folder has a subfolder (a link to a folder is none). A fault: it cannot be read. When
/// F10 ended it before one was found, `blnFound` is untouched.
platform::Fault LookForSubfolders(const std::string& strFolder, bool& blnFound);
