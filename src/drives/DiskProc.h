// Facts about drives. What asks
// a device does so off the interface thread where it may have to wait for it: messages are pumped
// meanwhile.
#pragma once

#include "platform/Drives.h"

#include <cstdint>
#include <string>

/// Cluster size in bytes, and the bytes in free clusters. −1: the system does not tell; −2: the
/// cluster is smaller than 512 bytes; freeClusterBytes is −1 in both cases.
std::int32_t GetClusterSizeAndFreeSpace(const std::string& rootPath, double& freeClusterBytes);
/// Bytes free to the caller, and total bytes. 0 done, −1 failed.
std::int16_t GetDiskSpaceEx(const std::string& path, double& freeBytes, double& totalBytes);
/// Free bytes of the path's drive; 0 when it cannot be read. Costs some 45 microseconds a call.
double GetFreeSpaceFSO(const std::string& path);
/// The same for a caller who must know the fault, on whatever thread that is.
platform::Fault GetFreeSpaceFSO(const std::string& path, double& freeBytes);
/// The number of drives; the first one as "C:" and its type (2 = fixed), or "" and −1.
std::int16_t GetFirstDrive(std::string& driveText, std::int16_t& driveType);
/// The first fixed drive as "C:"; "" when there is none, or when a letter before it has no drive.
std::string FirstFixedDrive();
/// A fixed drive or RAM disk always; any other when its space can be asked about.
bool IsDriveReady(const std::string& rootPath);
/// platform::ReadVolumeFacts.
platform::Fault GetVolumeFacts(const std::string& rootPath, platform::VolumeFacts& facts);
/// "Drive C has 1,048,576 bytes (1.00 MB) free."
std::string FreeSpaceText(const std::string& drive, double freeBytes);
/// "Drive C has 1.00 MB free."
std::string FreeSpaceSizeText(const std::string& drive, double freeBytes);
