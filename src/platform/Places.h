// What a path leads to: the folder itself however it is spelled, the real path, the volume.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <string>

namespace platform {

/// What a folder is, the same for every path that leads to it: the volume's serial number and the
/// folder's number on it.
struct FolderIdentity {
    std::uint64_t Volume = 0;
    std::uint64_t Low = 0, High = 0;
    /// Some file systems have no such numbers.
    bool IsKnown() const { return (Low | High) != 0; }
    bool operator==(const FolderIdentity&) const = default;
};

/// A folder that is held open: nobody can rename or remove it, or put another in its place. A plain
/// handle: let go of it once.
struct FolderHold {
    std::uintptr_t Handle = 0; ///< 0: not held
    FolderIdentity Identity;
    bool IsLink = false; ///< a junction, symbolic link or mount point, which is never held
};

/// Holds a folder; costs one opening. A link is told instead of being held or followed; the root of
/// a drive is none, whatever the letter stands for.
Fault HoldFolder(const std::string& path, FolderHold& hold);
void LetGo(FolderHold& hold);
/// The identity alone, of what a path leads to.
Fault ReadFolderIdentity(const std::string& path, FolderIdentity& identity);

/// Where a path of a file or a folder leads, links on the way, short names and substituted letters
/// resolved, written as on the disk. A link at its end is not followed. NotSupported for a place
/// without a drive letter.
Fault ReadRealPath(const std::string& path, std::string& real);
/// The root of the volume that a path lies on: "C:\", or the folder where the volume is mounted
/// ("C:\mnt\").
Fault ReadVolumeRoot(const std::string& path, std::string& root);
/// Whether names in a folder that differ only in case are different names. False where the file
/// system cannot say.
bool FolderTellsCase(const std::string& path);
/// Whether two names differ only in case, as file systems that do not tell case compare them.
bool SameButForCase(const std::string& name, const std::string& other);

} // namespace platform
