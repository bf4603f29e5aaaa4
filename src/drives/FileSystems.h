// What the engine needs to know about the file system of a file.
#pragma once

#include <string>

/// Whether small files may lie in the file system's own records, outside all clusters. True also
/// when the file system is unknown.
bool RecordsMayHoldFiles(const std::string& path);
/// Whether overwriting may write to a new place and leave the old bytes where they were.
bool MayKeepOlderCopies(const std::string& path);
/// Forgets the answers at the start of a run.
void ForgetFileSystems();
