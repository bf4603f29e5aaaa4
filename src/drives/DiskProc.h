// Facts about drives. A query that may have to wait for the device runs off the interface thread,
// and messages are pumped meanwhile.
#pragma once

#include "platform/Drives.h"

#include <cstdint>
#include <string>

/// Cluster size in bytes, and the bytes in free clusters. −1: the system does not tell; −2: the
/// cluster is smaller than 512 bytes. freeClusterBytes is −1 in both cases.
std::int32_t GetClusterSizeAndFreeSpace(const std::string& rootPath, double& freeClusterBytes);
/// Bytes free to the caller, and total bytes. Returns 0 on success, −1 on failure.
std::int16_t GetDiskSpaceEx(const std::string& path, double& freeBytes, double& totalBytes);
/// Free bytes of the path's drive; 0 when it cannot be read. Costs some 45 microseconds a call.
double GetFreeSpaceFSO(const std::string& path);
/// The same for callers that need the fault; may be called on any thread.
platform::Fault GetFreeSpaceFSO(const std::string& path, double& freeBytes);
/// The number of drives; the first one as "C:" and its type (2 = fixed), or "" and −1.
std::int16_t GetFirstDrive(std::string& driveText, std::int16_t& driveType);
/// The first fixed drive as "C:"; "" when there is none or a letter before it has no drive.
std::string FirstFixedDrive();
/// Fixed drives and RAM disks are always ready; any other drive is when its space can be read.
bool IsDriveReady(const std::string& rootPath);
/// platform::ReadVolumeFacts.
platform::Fault GetVolumeFacts(const std::string& rootPath, platform::VolumeFacts& facts);
/// "Drive C has 1,048,576 bytes (1.00 MB) free."
std::string FreeSpaceText(const std::string& drive, double freeBytes);
/// "Drive C has 1.00 MB free."
std::string FreeSpaceSizeText(const std::string& drive, double freeBytes);
