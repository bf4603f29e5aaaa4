// What the tests over the POSIX back end stand on: a folder of their own that holds their drives,
// and the program over it.
#pragma once

#include "posix/Posix.h"

namespace posix {

inline std::string strScratchRoot; ///< a path of the host, "" when there is none
/// Makes it, below NW_TEST_FOLDER or the folder for temporary files, with the drive C.
void MakeScratchRoot();
void RemoveScratchRoot();

/// A program just started that shows its report window, over the drives of the root folder, with so
/// many passes of random bytes; long work on a thread.
void BeginProgram(int passes);
/// A purge run over all files of a folder, subfolders left out. The report's text.
std::string PurgeFolder(const std::string& folder);

} // namespace posix
