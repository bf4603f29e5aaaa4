// One folder's files and subfolders, as the walk of a run needs them.
#pragma once

#include "platform/Fault.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct FoundFile {
    std::string Name;
    std::uint64_t Length = 0; ///< bytes, as the enumeration tells it
    bool IsLink = false;      ///< its data belong to another name: not to be purged through
    bool NeverPurged = false; ///< a swap file, or one of the program's own
};

struct FoundFolder {
    std::string Name;
    bool IsLink = false; ///< not to be followed
};

struct FolderList {
    std::vector<FoundFile> Files; ///< those that match the file specification
    std::vector<FoundFolder> Subfolders;
    std::size_t LinkedFiles = 0;   ///< how many of Files are links
    std::vector<std::string> Gone; ///< names that were asked for and are not there
};

/// What is wanted of a folder.
struct FolderWish {
    std::string strFilespec;
    /// These files of the folder, each by its very name, and nothing else. Empty: all that match.
    std::vector<std::string> names;
    bool blnSubfolders = false;
    bool blnOwnFolder = false; ///< the folder is the program's own
    bool blnPagefile = false;  ///< "pagefile.sys" is a swap file, wherever it lies
    /// Asked when blnStop is set while the folder is read: true to go on, with blnStop cleared.
    std::function<bool()> onStop;
};

/// Takes the list of a folder, in the file system's order. The list is taken as a whole before
/// anything is done to the first file, so that deleting while walking neither skips nor repeats
/// one. On a fault the list holds what came before it. Ends early when blnStop is set.
platform::Fault TakeFolderList(const std::string& folder, const FolderWish& wish, FolderList& list);
/// Whether a file of this name is a swap file and never purged.
bool IsPagingFile(const std::string& strName, bool blnPagefile);
