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
    std::uint64_t Length = 0; ///< bytes, from the enumeration
    bool IsLink = false;      ///< the data belong to another name, so do not purge through it
    bool NeverPurged = false; ///< a swap file or one of the program's own files
};

struct FoundFolder {
    std::string Name;
    bool IsLink = false; ///< must not be followed
};

struct FolderList {
    std::vector<FoundFile> Files; ///< files that match the file specification
    std::vector<FoundFolder> Subfolders;
    std::size_t LinkedFiles = 0;   ///< how many of Files are links
    std::vector<std::string> Gone; ///< requested names that do not exist
};

/// Which files of a folder to list.
struct FolderWish {
    std::string strFilespec;
    /// Only these files of the folder, by exact name. Empty: all that match.
    std::vector<std::string> names;
    bool blnSubfolders = false;
    bool blnOwnFolder = false; ///< the folder is the program's own
    bool blnPagefile = false;  ///< treat "pagefile.sys" as a swap file in any folder
    /// Called when blnStop is set during reading; returns true, with blnStop cleared, to go on.
    std::function<bool()> onStop;
};

/// Lists a folder in the file system's order. The list is complete before the first file is
/// processed, so that deleting during the walk neither skips nor repeats a file. After a fault the
/// list holds the entries before it. Ends early when blnStop is set.
platform::Fault TakeFolderList(const std::string& folder, const FolderWish& wish, FolderList& list);
/// Whether a file of this name is a swap file, which is never purged.
bool IsPagingFile(const std::string& strName, bool blnPagefile);
