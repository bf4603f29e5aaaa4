// Facts about drives: clusters, free space, the first drives, readiness.
#include "drives/DiskProc.h"

#include "drives/DriveWork.h"
#include "platform/Drives.h"
#include "support/Numbers.h"
#include "support/SizeText.h"

#include <algorithm>

namespace {
constexpr std::int32_t intSmallestCluster = 512;

/// There are two numberings of drive types. This one has no entry "no such drive"; a fixed disk is
/// 2 in it.
std::int16_t ScriptingDriveType(platform::DriveType type) {
    return static_cast<std::int16_t>(std::max(static_cast<int>(type) - 1, 0));
}
constexpr std::int16_t intScriptingFixed = 2;
} // namespace

std::int32_t GetClusterSizeAndFreeSpace(const std::string& rootPath, double& freeClusterBytes) {
    freeClusterBytes = -1;
    platform::ClusterFacts facts;
    auto fault = platform::Fault::None;
    WorkOnDrive(rootPath, [&] { fault = platform::ReadClusterFacts(rootPath, facts); });
    if (Failed(fault))
        return -1;
    const std::uint64_t clusterSize = std::uint64_t{facts.BytesPerSector} * facts.SectorsPerCluster;
    if (clusterSize < intSmallestCluster)
        return -2;
    freeClusterBytes = static_cast<double>(facts.FreeClusters) * static_cast<double>(clusterSize);
    return static_cast<std::int32_t>(clusterSize);
}

std::int16_t GetDiskSpaceEx(const std::string& path, double& freeBytes, double& totalBytes) {
    std::uint64_t available = 0;
    std::uint64_t total = 0;
    auto fault = platform::Fault::None;
    WorkOnDrive(path,
                [&] { fault = platform::ReadDriveSpace(path.substr(0, 2), available, total); });
    if (Failed(fault))
        return -1;
    freeBytes = static_cast<double>(available);
    totalBytes = static_cast<double>(total);
    return 0;
}

platform::Fault GetFreeSpaceFSO(const std::string& path, double& freeBytes) {
    std::uint64_t available = 0;
    std::uint64_t total = 0;
    const platform::Fault fault = platform::ReadDriveSpace(path.substr(0, 2), available, total);
    if (!Failed(fault))
        freeBytes = static_cast<double>(available);
    return fault;
}

double GetFreeSpaceFSO(const std::string& path) {
    double freeBytes = 0;
    return Failed(GetFreeSpaceFSO(path, freeBytes)) ? 0 : freeBytes;
}

std::int16_t GetFirstDrive(std::string& driveText, std::int16_t& driveType) {
    const std::string letters = platform::DriveLetters();
    driveText.clear();
    driveType = -1;
    if (!letters.empty()) {
        driveText = letters.substr(0, 1) + ":";
        driveType = ScriptingDriveType(platform::TypeOfDrive(driveText + "\\"));
    }
    return static_cast<std::int16_t>(letters.size());
}

std::string FirstFixedDrive() {
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::string drive = std::string(1, letter) + ":";
        const platform::DriveType type = platform::TypeOfDrive(drive + "\\");
        // Deliberate oddity: the first letter without a drive ends the search, even if a fixed
        // drive follows. Callers that need a fixed drive in any case use DriveLetters.
        if (type == platform::DriveType::NoRoot)
            return {};
        if (ScriptingDriveType(type) == intScriptingFixed)
            return drive;
    }
    return {};
}

bool IsDriveReady(const std::string& rootPath) {
    const platform::DriveType type = platform::TypeOfDrive(rootPath);
    if (type == platform::DriveType::Fixed || type == platform::DriveType::RamDisk)
        return true;
    double freeBytes = 0;
    double totalBytes = 0;
    return GetDiskSpaceEx(rootPath, freeBytes, totalBytes) == 0;
}

platform::Fault GetVolumeFacts(const std::string& rootPath, platform::VolumeFacts& facts) {
    auto fault = platform::Fault::None;
    WorkOnDrive(rootPath, [&] { fault = platform::ReadVolumeFacts(rootPath, facts); });
    return fault;
}

std::string FreeSpaceText(const std::string& drive, double freeBytes) {
    std::string text =
        "Drive " + drive.substr(0, 1) + " has " + FormatNumber(freeBytes, 0) + " bytes ";
    if (freeBytes >= dblBytesPerMB)
        text += "(" + FormatNumber(freeBytes / dblBytesPerMB, 2) + " MB) ";
    return text + "free.";
}

std::string FreeSpaceSizeText(const std::string& drive, double freeBytes) {
    return "Drive " + drive.substr(0, 1) + " has " + ByteSizeText(freeBytes, 2) + " free.";
}
