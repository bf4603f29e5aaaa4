// What the engine asks of the purge settings. Declared here, below; defined in settings/.
#pragma once

#include <cstdint>
#include <string>

/// The cluster size in bytes of a drive, by the user's choice, the cache, or the system. A path may
/// stand in the letter's place: its volume can be another one than that of the letter.
std::int32_t GetClusterSize(const std::string& strDriveLetter);
/// The cluster size in bytes that the drive has, whatever was chosen: above 64 KiB too.
std::int32_t GetRealClusterSize(const std::string& strDriveLetter);
/// Overwrites end at a multiple of this: GetClusterSize, or the real size where it is larger than
/// the list of sizes goes.
std::int32_t GetCoveredClusterSize(const std::string& strDriveLetter);
/// The number of passes chosen for the chosen purge type.
std::int16_t GetNumberOfPasses();
