// Where a path leads: the folder's identity, the real path, the volume.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <string>

namespace platform {

/// Identifies a folder, whatever path leads to it: the volume's serial number and the folder's
/// number on it.
struct FolderIdentity {
    std::uint64_t Volume = 0;
    std::uint64_t Low = 0, High = 0;
    /// False on file systems without such numbers; Volume counts all the same.
    bool IsKnown() const { return (Low | High) != 0; }
    bool operator==(const FolderIdentity&) const = default;
};

/// A folder that is held open: no other program can rename, remove or replace it. A plain handle:
/// release it once.
struct FolderHold {
    std::uintptr_t Handle = 0; ///< 0: not held
    FolderIdentity Identity;
    bool IsLink = false; ///< a junction, symbolic link or mount point; a link is never held
};

/// Holds a folder; costs one opening. A link is only reported, not held or followed. The root of a
/// drive never counts as a link, even if the letter is substituted for a folder.
Fault HoldFolder(const std::string& path, FolderHold& hold);
void LetGo(FolderHold& hold);
/// Only the identity of the folder to which a path leads.
Fault ReadFolderIdentity(const std::string& path, FolderIdentity& identity);

/// The real path of a file or folder as written on the disk: links on the way, short names and
/// substituted letters are resolved. A link at the end of the path is not followed. NotSupported
/// for a place without a drive letter.
Fault ReadRealPath(const std::string& path, std::string& real);
/// The root of the volume that a path lies on: "C:\", or the folder where the volume is mounted
/// ("C:\mnt\").
Fault ReadVolumeRoot(const std::string& path, std::string& root);
/// Whether names in a folder that differ only in case are different names. False when the file
/// system does not tell.
bool FolderTellsCase(const std::string& path);
/// Whether two names differ only in case, compared as case-insensitive file systems do.
bool SameButForCase(const std::string& name, const std::string& other);

} // namespace platform
