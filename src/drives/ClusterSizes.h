// The cluster sizes of the drives: as they have them, and as the user chose them for the purge.
#pragma once

#include <cstdint>
#include <string>

/// The cluster size of the drive in bytes: the user's choice, or what the cache or the operating
/// system says, 65536 at most. A path may stand in the letter's place, see SettleVolume.
std::int32_t GetClusterSize(const std::string& strDriveLetter);
/// The cluster size in bytes that the drive has, above 64 KiB too; the user's choice does not
/// count.
std::int32_t GetRealClusterSize(const std::string& strDriveLetter);
/// Overwrites end at a multiple of this: GetClusterSize, or the real size where it is larger than
/// the list of sizes goes.
std::int32_t GetCoveredClusterSize(const std::string& strDriveLetter);
/// The user's choice for the volume of a path, bytes; it holds until the program ends.
void ChooseClusterSize(const std::string& strPath, std::int32_t lngSize);
/// Finds out on which volume a folder lies whose files are purged next. One that is mounted in a
/// folder has clusters of its own, which paths that lie on it are then given. No walk leads from
/// one volume into another.
void SettleVolume(const std::string& strFolder);
/// Root of the volume settled last, where the path lies on it and it is mounted in a folder and has
/// no letter; "" where it has one.
std::string MountedRootOf(const std::string& strPath);
/// Choices and answers are forgotten, as at start-up.
void ForgetClusterSizes();
