// Folders: enumeration, making, removing.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace platform {

struct FolderEntry {
    std::string Name; ///< last part of the path only
    std::uint32_t Attributes = 0;
    std::uint64_t Length = 0; ///< bytes; 0 for a folder
    bool IsFolder = false;
    bool IsLink = false; ///< junction, symbolic link or mount point: not to be followed
};

/// Calls `visit` for each file and subfolder of a folder in the file system's order, hidden and
/// system ones included, "." and ".." left out; links are told, never followed. `visit` returns
/// false to end early. A fault in the middle is returned after what came before it was visited.
Fault EnumerateFolder(const std::string& folder,
                      const std::function<bool(const FolderEntry&)>& visit);
/// Makes one folder; the folder above it must exist.
Fault MakeFolder(const std::string& path);
/// Removes an empty folder, or a link to a folder (never the link's target).
Fault RemoveFolder(const std::string& path);
bool FolderExists(const std::string& path);
/// Forces the names in a folder to the disk, as far as the system lets this user do so.
Fault FlushFolder(const std::string& path);

} // namespace platform
