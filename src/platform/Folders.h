// Folders: enumeration, creation, removal.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace platform {

struct FolderEntry {
    std::string Name; ///< last part of the path
    std::uint32_t Attributes = 0;
    std::uint64_t Length = 0; ///< bytes; 0 for a folder
    bool IsFolder = false;
    bool IsLink = false; ///< junction, symbolic link or mount point: must not be followed
};

/// Calls `visit` for each file and subfolder of a folder in the file system's order, including
/// hidden and system ones, except "." and "..". Links are reported but never followed. `visit`
/// returns false to end early. After a fault in the middle, the entries before it have been
/// visited.
Fault EnumerateFolder(const std::string& folder,
                      const std::function<bool(const FolderEntry&)>& visit);
/// Creates one folder; its parent folder must exist.
Fault MakeFolder(const std::string& path);
/// Removes an empty folder, or a link to a folder (never the link's target).
Fault RemoveFolder(const std::string& path);
bool FolderExists(const std::string& path);
/// Forces the names in a folder to the disk, as far as the system lets this user do so.
Fault FlushFolder(const std::string& path);

} // namespace platform
