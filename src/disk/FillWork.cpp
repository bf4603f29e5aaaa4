// Writing null bytes until the disk is full. Nothing here pumps messages or shows anything.
#include "disk/FillWork.h"

#include "disk/FillDisk.h"
#include "drives/DiskProc.h"
#include "platform/System.h"
#include "support/SizeText.h"

#include <algorithm>

namespace {

using platform::Fault;

constexpr std::int64_t lngWriteUnit = 131072; ///< bytes; near the end it becomes one cluster
constexpr std::int64_t lngLongestRun = 8 * lngWriteUnit;
/// Asking for the free space costs some 45 microseconds, a third of what writing a unit does. So it
/// is asked before every unit only when by the last answer less than this is left, and else by
/// time: an outcome other than that of asking always would need another program that writes more
/// than this within that time, and even then the write that fails brings us to the same end.
constexpr double dblNearEnd = 64 * dblBytesPerMB;
constexpr std::uint64_t lngMillisecondsBetweenQueries = 250;
/// So many stretches in a row that leave the free space as it was end the filling.
constexpr std::int16_t intMostFlatStretches = 8;

void WriteByClusters(FillWork& work) {
    work.blnByClusters = true;
    work.lngByClusters = 0;
    // A cluster may be larger than the unit.
    work.lngUnit = std::min(work.lngCluster, lngWriteUnit);
}

void WriteByUnits(FillWork& work) {
    work.blnByClusters = false;
    work.lngUnit = lngWriteUnit;
    work.blnAskFree = true;
}

/// A file system that compresses null bytes or shares equal blocks would never be full: what is
/// written there takes nothing from the free space. Only the last stretch counts, and several in a
/// row: space that is given back at once, however much, spoils one of them. All of them together
/// are as long as a quarter of what there is to write, and at least 64 MiB.
bool LookWhetherItShrinks(FillWork& work) {
    const double dblWritten = work.dblTotal - work.dblTotalAtStretch;
    if (work.dblFreeAtStretch > 0 &&
        dblWritten * intMostFlatStretches < work.dblGoal / 4 + dblNearEnd)
        return true;
    const bool blnFlat = work.dblFreeAtStretch > 0 && dblWritten > 0 &&
                         work.dblFreeAtStretch - work.dblFree < dblWritten / 2;
    work.intFlatStretches =
        blnFlat ? static_cast<std::int16_t>(work.intFlatStretches + 1) : std::int16_t{0};
    work.dblTotalAtStretch = work.dblTotal;
    work.dblFreeAtStretch = work.dblFree;
    if (work.intFlatStretches < intMostFlatStretches)
        return true;
    work.Error = Fault::NotSupported;
    work.strError = "The free space does not shrink as files are written";
    return false;
}

/// Asks for the free space when it is time to. False when the filling cannot go on.
bool LookAtFreeSpace(FillWork& work) {
    const auto lngNow = platform::TickCount();
    if (!work.blnAskFree && work.dblFree > dblNearEnd &&
        lngNow - work.lngLastQuery < lngMillisecondsBetweenQueries)
        return true;
    double dblFree = 0;
    work.Error = GetFreeSpaceFSO(FillDisk.strDriveRoot, dblFree);
    if (Failed(work.Error))
        return false;
    work.dblFree = work.dblFreeShown = dblFree;
    work.dblGoal = std::max(work.dblGoal.load(), work.dblTotal + dblFree);
    work.lngLastQuery = lngNow;
    work.blnAskFree = false;
    return LookWhetherItShrinks(work);
}

/// After a failed write: keeps whole clusters of what it left, so that purging this file later
/// needs no space beyond its own.
void KeepWholeClusters(FillWork& work) {
    std::uint64_t lngLength = 0;
    if (Failed(platform::ReadLength(work.File, lngLength)))
        return;
    const auto lngWhole = static_cast<std::int64_t>(lngLength) / work.lngCluster * work.lngCluster;
    if (Failed(platform::ChangeLength(work.File, static_cast<std::uint64_t>(lngWhole))) ||
        Failed(platform::SeekTo(work.File, static_cast<std::uint64_t>(lngWhole))))
        return;
    work.dblTotal += static_cast<double>(lngWhole - work.lngInFile);
    work.lngInFile = lngWhole;
}

} // namespace

void BeginFilling(FillWork& work, std::int64_t lngCluster) {
    work.lngCluster = lngCluster;
    work.Zeros.assign(static_cast<std::size_t>(lngLongestRun), '\0');
    work.dblFreeAtStretch = 0;
    work.intFlatStretches = 0;
    WriteByUnits(work);
}

bool WriteStep(FillWork& work) {
    // More than the last unit's worth went in cluster by cluster: space was freed meanwhile.
    if (work.blnByClusters && work.lngByClusters >= lngLongestRun)
        WriteByUnits(work);
    bool blnNearEnd = true;
    if (!work.blnByClusters) {
        if (!LookAtFreeSpace(work))
            return false;
        if (work.dblFree <= static_cast<double>(work.lngUnit))
            WriteByClusters(work);
        blnNearEnd = work.dblFree <= dblNearEnd;
    }
    std::int64_t lngSize = work.lngUnit;
    if (!blnNearEnd) {
        const std::int64_t lngLeft = work.lngLimit - work.lngInFile;
        const std::int64_t lngUnits = (lngLeft + work.lngUnit - 1) / work.lngUnit;
        lngSize = std::clamp(lngUnits * work.lngUnit, work.lngUnit, lngLongestRun);
    }
    const auto fault =
        platform::WriteBytes(work.File, work.Zeros.data(), static_cast<std::size_t>(lngSize));
    if (!Failed(fault)) {
        work.lngInFile += lngSize;
        work.lngByClusters += lngSize;
        work.dblFree -= static_cast<double>(lngSize);
        work.dblFreeShown = work.dblFree;
        work.dblTotal += static_cast<double>(lngSize);
        return work.lngInFile < work.lngLimit;
    }
    KeepWholeClusters(work);
    // A long unit may not fit where a cluster still does.
    if (fault == Fault::DiskFull && !work.blnByClusters) {
        WriteByClusters(work);
        return true;
    }
    work.Error = fault;
    return false;
}

std::int64_t WriteRemnant(FillWork& work) {
    for (std::int64_t lngSize = std::min(work.lngCluster / 2, lngLongestRun); lngSize > 0;
         lngSize /= 2) {
        auto fault = Fault::None;
        // Bounded: another program that frees space meanwhile must not keep us here.
        for (int i = 0; i < 128 && !Failed(fault); ++i)
            fault = platform::WriteBytes(work.File, work.Zeros.data(),
                                         static_cast<std::size_t>(lngSize));
        if (Failed(fault) && fault != Fault::DiskFull)
            break;
    }
    std::uint64_t lngLength = 0;
    (void)platform::ReadLength(work.File, lngLength);
    const auto flushed = platform::FlushBytes(work.File);
    if (Failed(flushed) && flushed != Fault::NotSupported && flushed != Fault::DiskFull)
        work.Error = flushed;
    (void)platform::CloseFile(work.File);
    return static_cast<std::int64_t>(lngLength);
}
