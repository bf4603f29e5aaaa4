// The cluster sizes of the drives: the real ones, and the ones that the user chose for the purge.
#include "drives/ClusterSizes.h"

#include "drives/DiskProc.h"
#include "drives/DriveWork.h"
#include "platform/Places.h"
#include "support/Paths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace {

constexpr std::int32_t lngLeastClusterSize = 512; ///< a smaller value in the cache means: unknown
constexpr std::int32_t lngMaxClusterSize = 65536;
constexpr std::int32_t lngClusterSizeUnknownFloppy = 512; ///< drives A and B
constexpr std::int32_t lngClusterSizeUnknown = 4096;      ///< the usual size in most file systems

/// Root of the volume on which the folder settled last lies, if that volume is mounted in a folder
/// and has no letter; else "".
std::string strMountedRoot;
constexpr std::size_t intMounted = 26; ///< its index in the tables, after the letters

/// Per drive letter; below 512: unknown.
std::array<std::int32_t, 27> lngClusterSizes{};
/// The real cluster sizes, also those above 64 KiB; the user's choice does not change them.
std::array<std::int32_t, 27> lngRealClusterSizes{};

/// The index in the tables for a drive letter or a path; one past the end when there is none.
std::size_t PlaceOf(const std::string& strDriveLetter) {
    if (!strMountedRoot.empty() && strDriveLetter.starts_with(strMountedRoot))
        return intMounted;
    const int intDrive = DriveIndexOf(strDriveLetter + ":");
    return intDrive < 0 ? intMounted + 1 : static_cast<std::size_t>(intDrive);
}

std::int32_t FallbackFor(std::size_t intPlace) {
    return intPlace <= 1 ? lngClusterSizeUnknownFloppy : lngClusterSizeUnknown;
}

/// What the system says now; negative when it does not tell.
std::int32_t AskClusterSize(std::size_t intPlace) {
    double dblFree = 0;
    return GetClusterSizeAndFreeSpace(
        intPlace == intMounted ? strMountedRoot
                               : std::string(1, static_cast<char>('A' + intPlace)) + ":\\",
        dblFree);
}

/// There may be another medium in the drive since it was asked. A size that nobody has chosen goes
/// with the old one.
void RenewSizes(std::size_t intPlace) {
    if (intPlace > intMounted ||
        std::max(lngClusterSizes[intPlace], lngRealClusterSizes[intPlace]) < lngLeastClusterSize)
        return; // asked when it is needed
    const std::int32_t lngSize = AskClusterSize(intPlace);
    if (lngSize < lngLeastClusterSize)
        return;
    const std::int32_t lngBefore = std::exchange(lngRealClusterSizes[intPlace], lngSize);
    if (lngClusterSizes[intPlace] ==
        std::min(lngBefore > 0 ? lngBefore : FallbackFor(intPlace), lngMaxClusterSize))
        lngClusterSizes[intPlace] = 0;
}

} // namespace

std::int32_t GetRealClusterSize(const std::string& strDriveLetter) {
    const std::size_t intPlace = PlaceOf(strDriveLetter);
    // Only a mistake of the caller leads here. The usual size does no harm.
    if (intPlace > intMounted)
        return lngClusterSizeUnknown;
    std::int32_t& lngCached = lngRealClusterSizes[intPlace];
    if (lngCached >= lngLeastClusterSize)
        return lngCached;
    const std::int32_t lngSize = AskClusterSize(intPlace);
    if (lngSize >= 0)
        lngCached = lngSize;
    return lngSize >= 0 ? lngSize : FallbackFor(intPlace);
}

std::int32_t GetClusterSize(const std::string& strDriveLetter) {
    const std::size_t intPlace = PlaceOf(strDriveLetter);
    if (intPlace > intMounted)
        return lngClusterSizeUnknown;
    std::int32_t& lngCached = lngClusterSizes[intPlace];
    if (lngCached < lngLeastClusterSize)
        lngCached = std::min(GetRealClusterSize(strDriveLetter), lngMaxClusterSize);
    return lngCached;
}

void SettleVolume(const std::string& strFolder) {
    std::string strRoot;
    auto fault = platform::Fault::None;
    WorkOnDrive(strFolder, [&] { fault = platform::ReadVolumeRoot(strFolder, strRoot); });
    if (Failed(fault) || strRoot.size() <= 3)
        strRoot.clear();
    if (strRoot != strMountedRoot) {
        strMountedRoot = strRoot;
        lngClusterSizes[intMounted] = lngRealClusterSizes[intMounted] = 0;
    }
    RenewSizes(PlaceOf(strFolder));
}

std::int32_t GetCoveredClusterSize(const std::string& strDriveLetter) {
    const std::int32_t lngSize = GetClusterSize(strDriveLetter);
    return lngSize < lngMaxClusterSize ? lngSize
                                       : std::max(lngSize, GetRealClusterSize(strDriveLetter));
}

void ChooseClusterSize(const std::string& strPath, std::int32_t lngSize) {
    const std::size_t intPlace = PlaceOf(strPath);
    if (intPlace <= intMounted)
        lngClusterSizes[intPlace] = lngSize;
}

std::string MountedRootOf(const std::string& strPath) {
    return PlaceOf(strPath) == intMounted ? strMountedRoot : std::string();
}

void ForgetClusterSizes() {
    lngClusterSizes.fill(0);
    lngRealClusterSizes.fill(0);
    strMountedRoot.clear();
}
