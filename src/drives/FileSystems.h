// What the engine needs to know of the file system under a file.
#pragma once

#include <string>

/// Small files may lie in the file system's own records, outside all clusters; so it is also said
/// of a file system that is unknown.
bool RecordsMayHoldFiles(const std::string& path);
/// What is overwritten may be written to another place, and the old bytes stay.
bool MayKeepOlderCopies(const std::string& path);
/// A run begins: the drives are asked again.
void ForgetFileSystems();
