// Drives: which exist, their type, clusters, space and volume.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// The operating system's numbering of drive types.
enum class DriveType {
    Unknown = 0,
    NoRoot = 1,
    Removable = 2,
    Fixed = 3,
    Remote = 4,
    CdRom = 5,
    RamDisk = 6
};

struct ClusterFacts {
    std::uint32_t BytesPerSector = 0;
    std::uint32_t SectorsPerCluster = 0;
    std::uint64_t FreeClusters = 0;
    std::uint64_t TotalClusters = 0;
};

struct VolumeFacts {
    std::string Label;
    std::string FileSystem; ///< "NTFS", "FAT32", ...
    bool ReadOnly = false;
};

/// The nature of a drive; a member has no value when the system does not tell.
struct DriveNature {
    std::optional<bool> SolidState; ///< it has no moving heads
    std::optional<bool> Trims;      ///< the system tells the drive which space is free
    std::optional<bool> Compressed; ///< the file system compresses what is written
    std::optional<bool> Encrypted;  ///< by BitLocker
    std::optional<bool> Protected;  ///< the system keeps restore points of it
};

/// The letters of the drives that exist, in order ("ACD").
std::string DriveLetters();
/// `root` is "C:\" (or any text that begins with a drive letter) in all functions below.
DriveType TypeOfDrive(const std::string& root);
/// `root` may also be the folder where a volume is mounted ("C:\mnt\").
Fault ReadClusterFacts(const std::string& root, ClusterFacts& facts);
/// Bytes that this user may still use, and the size of the volume. `freeOnVolume`, when given,
/// receives all bytes that no file uses, including those kept back by a quota or a system reserve.
Fault ReadDriveSpace(const std::string& root, std::uint64_t& freeBytes, std::uint64_t& totalBytes,
                     std::uint64_t* freeOnVolume = nullptr);
Fault ReadVolumeFacts(const std::string& root, VolumeFacts& facts);
/// Needs no administrator's rights. A fault only when there is no such drive or no medium in it.
Fault ReadDriveNature(const std::string& root, DriveNature& nature);
/// The number of records in the NTFS file table, including free ones. A new file gets a lower
/// number unless the table has grown. NotSupported: another file system, or the system does not
/// tell.
Fault ReadRecordCount(const std::string& root, std::uint64_t& records);
/// Makes the file system write its own records to the disk: those of one folder, and also all
/// records and data of the drive if this user has the right to. May take long. None when at least
/// one of the two succeeded.
Fault FlushRecords(const std::string& folder);

} // namespace platform
