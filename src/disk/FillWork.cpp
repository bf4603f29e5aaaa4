// Writes null bytes until the disk is full. Nothing here pumps messages or shows anything.
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
/// A query for the free space costs some 45 microseconds, a third of the time to write a unit. So
/// it precedes every unit only when the last answer was below this limit, and is otherwise made by
/// time. This changes the outcome only if another program writes more than this within that time;
/// then the failing write still leads to the same end.
constexpr double dblNearEnd = 64 * dblBytesPerMB;
constexpr std::uint64_t lngMillisecondsBetweenQueries = 250;
/// The filling ends after this many successive stretches that did not reduce the free space.
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

/// Detects a file system that compresses null bytes or shares equal blocks: writing takes no free
/// space there, so the disk would never become full. Only the last stretch counts, and several must
/// be flat in a row, because freed space of any amount can spoil one stretch. All of them together
/// are as long as a quarter of the space to fill, and at least 64 MiB.
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

/// Reads the free space when it is due. False when the filling cannot continue.
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

/// After a failed write: keeps only whole clusters of the file, so that purging it later needs no
/// further space.
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
    // More than one unit was written cluster by cluster, so space was freed meanwhile.
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
    // A single cluster may still fit where a long unit does not.
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
        // Bounded: another program that keeps freeing space must not keep this loop running.
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
