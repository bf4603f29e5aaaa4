// The file systems of the drives, queried once per run.
#include "drives/FileSystems.h"

#include "drives/DriveWork.h"
#include "platform/Drives.h"
#include "support/Paths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>

namespace {

/// By letter; no value: not queried yet; "": unknown.
std::array<std::optional<std::string>, 26> strFileSystems;

std::string FileSystemOf(const std::string& path) {
    const int drive = DriveIndexOf(path);
    if (drive < 0)
        return {};
    std::optional<std::string>& known = strFileSystems[static_cast<std::size_t>(drive)];
    if (!known) {
        platform::VolumeFacts volume;
        WorkOnDrive(path, [&] {
            // A query to a server may take long, and its answer would be of no use.
            const std::string root = path.substr(0, 2) + "\\";
            if (platform::TypeOfDrive(root) == platform::DriveType::Remote ||
                Failed(platform::ReadVolumeFacts(root, volume)))
                volume = {};
        });
        known = volume.FileSystem;
    }
    return *known;
}

} // namespace

bool RecordsMayHoldFiles(const std::string& path) {
    static constexpr const char* without[] = {"FAT",   "FAT12", "FAT16", "FAT32",
                                              "exFAT", "UDF",   "CDFS"};
    const std::string system = FileSystemOf(path);
    return std::find(std::begin(without), std::end(without), system) == std::end(without);
}

bool MayKeepOlderCopies(const std::string& path) {
    return FileSystemOf(path) == "ReFS";
}

void ForgetFileSystems() {
    strFileSystems = {};
}
