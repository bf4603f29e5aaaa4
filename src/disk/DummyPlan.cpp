// How much a drive has free, and how many dummy files of which size will fill it.
#include "disk/DummyPlan.h"

#include "drives/DiskProc.h"
#include "platform/Drives.h"
#include "report/run/TimeEstimates.h"
#include "session/Session.h"
#include "support/SizeText.h"

#include <cmath>
#include <string>

namespace {

/// A FAT32 folder holds 65,536 entries, and each of our names takes two. If standard dummy files
/// came near that number, larger ones are used, well below the file system's limit of 4 GiB.
constexpr std::int64_t lngMostFilesOnFat = 16000;
constexpr double dblDummySizeOnFat = 1073741824;

} // namespace

bool ReadFreeSpace(char chrDrive) {
    const std::string strRoot = std::string(1, chrDrive) + ":\\";
    double dblBytes = -1, dblTotal = 0;
    if (GetClusterSizeAndFreeSpace(strRoot, dblBytes) < 0 &&
        GetDiskSpaceEx(strRoot, dblBytes, dblTotal) != 0)
        return false;
    dblSpaceInFreeClusters = dblBytes;
    return true;
}

void PlanDummyFiles(char chrDrive) {
    const auto Count = [] {
        return static_cast<std::int64_t>(std::ceil(dblSpaceInFreeClusters / dblMaxSizeDummyFile));
    };
    dblMaxSizeDummyFile = dblStandardDummySize;
    intNumDummyFiles = Count();
    platform::VolumeFacts facts;
    if (intNumDummyFiles > lngMostFilesOnFat &&
        !Failed(GetVolumeFacts(std::string(1, chrDrive) + ":\\", facts)) &&
        facts.FileSystem.starts_with("FAT")) {
        dblMaxSizeDummyFile = dblDummySizeOnFat;
        intNumDummyFiles = Count();
    }
}

double SecondsToFill(char chrDrive) {
    const float sngSpeed = sngPurgeSpeeds[static_cast<std::size_t>(chrDrive - 'A')];
    if (sngSpeed <= 0 || intNumDummyFiles <= 0)
        return 0;
    return dblSpaceInFreeClusters / dblBytesPerMB / sngSpeed *
           AdjustmentFactor(std::string(1, chrDrive) + ":\\", BytesPerDummy() / dblBytesPerMB);
}

double BytesPerDummy() {
    return dblSpaceInFreeClusters / static_cast<double>(intNumDummyFiles);
}
