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

/// What a drive is; what the system does not tell has no value.
struct DriveNature {
    std::optional<bool> SolidState; ///< it has no heads to move
    std::optional<bool> Trims;      ///< the system tells it which space is free
    std::optional<bool> Compressed; ///< what is written to it is compressed
    std::optional<bool> Encrypted;  ///< by BitLocker
    std::optional<bool> Protected;  ///< restore points are kept of it
};

/// The letters of the drives that exist, in order ("ACD").
std::string DriveLetters();
/// `root` is "C:\" (or any text that begins with a drive letter) in all of these.
DriveType TypeOfDrive(const std::string& root);
/// Also for the folder where a volume is mounted ("C:\mnt\").
Fault ReadClusterFacts(const std::string& root, ClusterFacts& facts);
/// Bytes that this user may still use, and the size of the volume. `freeOnVolume`, when given,
/// takes all bytes that no file uses: also those that a quota or a reserve of the system keeps
/// back.
Fault ReadDriveSpace(const std::string& root, std::uint64_t& freeBytes, std::uint64_t& totalBytes,
                     std::uint64_t* freeOnVolume = nullptr);
Fault ReadVolumeFacts(const std::string& root, VolumeFacts& facts);
/// Asks for no administrator's rights. A fault only where there is no such drive, or no medium in
/// it.
Fault ReadDriveNature(const std::string& root, DriveNature& nature);
/// How many records NTFS's table of files has, free ones among them: the number of a new file is
/// below that, or the table has grown. NotSupported: it is another file system, or does not tell.
Fault ReadRecordCount(const std::string& root, std::uint64_t& records);
/// Has the file system write its own records to their places on the disk: those of one folder, and
/// where this user may ask for it those of the whole drive, with all data. May take long. None when
/// one of the two was done.
Fault FlushRecords(const std::string& folder);

} // namespace platform
