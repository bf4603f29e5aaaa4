// Folder searches that keep the windows responsive. Declared here, where every room can include it;
// defined in shell/, which owns the main window.
#pragma once

#include "platform/Folders.h"

#include <cstddef>
#include <functional>
#include <string>

/// platform::EnumerateFolder that pumps messages. After half a second it shows in the status line
/// what it is doing. It ends early, without a fault, when blnStop is set (F10); a `visit` that
/// clears blnStop lets it go on. Outside of RunSearch, the caller must have disabled everything
/// that must not be clicked meanwhile.
platform::Fault SearchFolder(const std::string& strFolder,
                             const std::function<bool(const platform::FolderEntry&)>& visit);

/// The status text of the current search; "" without a search or in its first half second.
const std::string& SearchInHand();

/// Runs a search of one or many folders outside of a run: clears blnStop first, disables the main
/// window while it takes long, and shows "`strDoing` ...". False when F10 ended it: then the status
/// line shows "`strDoing` was stopped.", and blnStop is clear again. A nested search is part of the
/// outer one.
bool RunSearch(const std::string& strDoing, const std::function<void()>& search);

/// To be called between two parts of a search that is more than SearchFolder: pumps messages, and
/// disables the main window and shows the status text where the search takes long.
void YieldInSearch();

/// Runs a query about a file or folder, which may call the platform only. If the drive may be slow,
/// the main window is disabled and messages are pumped meanwhile.
void AskOnDrive(const std::string& strPath, const std::function<void()>& question);

/// Whether a folder has a subfolder; a link to a folder does not count. A fault: it cannot be read.
/// If F10 ends the search before one is found, `blnFound` is unchanged.
platform::Fault LookForSubfolders(const std::string& strFolder, bool& blnFound);

/// Whether a name that no file of the folder has exactly means the file that has it in another
/// case. `candidates` is the number of files that differ only in case.
bool OtherCaseIsMeant(const std::string& folder, std::size_t candidates);
