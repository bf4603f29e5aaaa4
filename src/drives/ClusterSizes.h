// The cluster sizes of the drives: the real ones, and the ones that the user chose for the purge.
#pragma once

#include <cstdint>
#include <string>

/// The cluster size for the purge in bytes: the user's choice, else the size from the cache or the
/// operating system, at most 65536. The argument may also be a path, see SettleVolume.
std::int32_t GetClusterSize(const std::string& strDriveLetter);
/// The real cluster size of the drive in bytes, also above 64 KiB; ignores the user's choice.
std::int32_t GetRealClusterSize(const std::string& strDriveLetter);
/// The size to whose multiple overwrites are rounded up: GetClusterSize, or the real size if it
/// exceeds the largest size that the user can choose.
std::int32_t GetCoveredClusterSize(const std::string& strDriveLetter);
/// Stores the user's choice in bytes for the volume of a path, until the program ends.
void ChooseClusterSize(const std::string& strPath, std::int32_t lngSize);
/// Finds the volume of the folder that is purged next, and asks its real cluster size anew: another
/// medium may be in the drive. A size that differs from the last real one was chosen, and stays. A
/// volume mounted in a folder has its own cluster size; paths on it get that size from now on. One
/// call per walk is enough, because no walk crosses from one volume into another.
void SettleVolume(const std::string& strFolder);
/// Root of the volume settled last if it is mounted in a folder, has no letter, and the path lies
/// on it; else "".
std::string MountedRootOf(const std::string& strPath);
/// Clears the user's choices and the cached sizes, as at start-up.
void ForgetClusterSizes();
