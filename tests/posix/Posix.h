// The third back end of the platform: plain POSIX files, for tests and benches on a real Linux
// disk. The rest of the platform (clock, settings, letters) is that of the fakes.
//
// The last name of a path is found whatever its case. Sharing between open files is kept among the
// callers of this back end alone; hidden, system and archive are the x bits of a file. There are no
// streams.
#pragma once

#include "platform/Fault.h"

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
int OpenHandles();

// What the parts of this back end share.

/// What the tests ordered for this call; nullptr: none of the program's.
platform::Fault Start(const char* call, const std::string& path);
platform::Fault LastFault(); ///< of errno
/// The path below the root folder, "C/folder/name", "." and ".." settled; "" when there can be no
/// such name.
std::string PathBelow(const std::string& path);
/// Folders that the program holds open.
int HeldFolders();
bool IsHeldFolder(const struct stat& known);
/// Opens the folder of a full path. -1: see LastFault.
int OpenFolder(const std::string& path, int flags);
/// Asks for orders, then calls `work` with the open folder of the path, and the name in it, "." for
/// a drive's root. When that finds nothing, it is called again with the name that differs in case
/// only. What is made new takes such a name at once.
using Work = std::function<platform::Fault(int folder, const char* name)>;
platform::Fault At(const char* call, const std::string& path, bool blnMakes, const Work& work);
/// The same with what is known of the name; NotFound when there is none. Of a link its own.
using StatWork = std::function<platform::Fault(const struct stat&, int folder, const char* name)>;
platform::Fault OnStat(const char* call, const std::string& path, const StatWork& work);

/// platform::Attribute bits of a name in an open folder.
std::uint32_t AttributesOf(const struct stat& known, int folder, const char* name);

} // namespace posix
