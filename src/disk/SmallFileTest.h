// What purging small files costs on a drive.
#pragma once

#include <string>

/// Writes some small files to one of our folders and purges them as a run does, side by side where
/// that is faster, for about a second. Returns the seconds that a file takes for one overwrite, 0
/// when that could not be measured. Nothing is left of the files.
double SecondsForSmallFile(const std::string& strFolder);
/// The length of these files, bytes.
constexpr int intSmallFileLength = 4096;
