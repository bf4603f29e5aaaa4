// The third back end of the platform: plain POSIX files, for tests and benches on a real Linux
// disk. The rest of the platform (clock, settings, letters) is that of the fakes.
//
// Names are told by their case. Who has a file open for writing, or holds a folder, has a lock on
// it, which those heed who use this back end; hidden, system and archive are the x bits of a file.
// There are no streams, and nobody tells where a file's bytes lie.
#pragma once

#include "platform/Fault.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <sys/stat.h>

namespace posix {

/// The drives are the folders "A" to "Z" of this one. Nothing outside it can be reached, by ".."
/// and links neither. Ends the program when it cannot be opened. The clock becomes the computer's.
void UseRoot(const std::string& folder);
/// Every call asks the tests' orders first ("the n-th call fails"). Benches do without.
extern bool blnOrders;
/// Another program opens the file and lets nobody else at it; lets go of it.
void Hold(const std::string& path);
void LetGo();

// What the parts of this back end share.

/// What the tests ordered for this call; nullptr: none of the program's.
platform::Fault Start(const char* call, const std::string& path);
platform::Fault LastFault(); ///< of errno
/// The path below the root folder, "C/folder/name", "." and ".." settled; "" when there can be no
/// such name.
std::string PathBelow(const std::string& path);
/// SharingViolation when anybody has a lock on the file or folder.
platform::Fault Exclusively(int folder, const char* name, int flags);
/// Files and folders that the program holds open.
inline std::atomic<int> openHandles = 0;
/// Opens the folder of a full path. -1: see LastFault.
int OpenFolder(const std::string& path, int flags);
/// Asks for orders, then calls `work` with the open folder of the path, and the name in it, "." for
/// a drive's root.
using Work = std::function<platform::Fault(int folder, const char* name)>;
platform::Fault At(const char* call, const std::string& path, const Work& work);
/// The same with what is known of the name; NotFound when there is none. Of a link its own.
using StatWork = std::function<platform::Fault(const struct stat&, int folder, const char* name)>;
platform::Fault OnStat(const char* call, const std::string& path, const StatWork& work);

/// platform::Attribute bits of a name in an open folder.
std::uint32_t AttributesOf(const struct stat& known, int folder, const char* name);

} // namespace posix
