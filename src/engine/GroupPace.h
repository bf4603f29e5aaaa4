// How many small files are purged side by side, found out by measuring while a run goes on.
#pragma once

#include <cstddef>
#include <string>

/// For tests and benches: so many threads from the beginning, without measuring; 0: as measured.
inline int intGroupThreads = 0;

/// A run begins: it starts with one file at a time, and tries more.
void ForgetGroupPaces();
/// How many threads the drive of a path is worth now; 1: files go one at a time.
int ThreadsForGroup(const std::string& path);
/// How many files to gather for the next group.
std::size_t FilesForGroup(const std::string& path);
/// Small files were purged, by so many threads, in so many seconds.
void NoteGroupPace(const std::string& path, int intThreads, std::size_t intFiles,
                   double dblSeconds);
