// One dummy file being written unit by unit: the part of the filling on the I/O thread.
#pragma once

#include "platform/Files.h"

#include <atomic>
#include <cstdint>
#include <vector>

/// State shared with the I/O thread. While that thread works, the interface thread reads only the
/// atomics. All sizes are bytes.
struct FillWork {
    std::vector<char> Zeros;
    platform::File File;
    std::int64_t lngCluster = 4096; ///< the drive's real cluster size: dummies are whole clusters
    std::int64_t lngUnit = 0;       ///< smallest amount written at a time
    bool blnByClusters = false;     ///< near the end: the unit is one cluster
    std::int64_t lngByClusters = 0; ///< bytes written since then
    std::int64_t lngLimit = 0;      ///< where the file being written ends
    std::atomic<std::int64_t> lngInFile{0};
    double dblFree = 0; ///< by the last query, minus bytes written since
    std::atomic<double> dblFreeShown{0};
    double dblTotal = 0;               ///< written in all files
    std::atomic<double> dblGoal{0};    ///< the largest total to write, by any query so far
    std::uint64_t lngLastQuery = 0;    ///< tick count
    bool blnAskFree = true;            ///< not queried yet
    double dblTotalAtStretch = 0;      ///< dblTotal and dblFree where the last stretch began
    double dblFreeAtStretch = 0;       ///< (see LookWhetherItShrinks)
    std::int16_t intFlatStretches = 0; ///< successive stretches that did not reduce free space
    platform::Fault Error = platform::Fault::None;
    const char* strError = nullptr; ///< replaces the fault's own description
};

/// Prepares the work to fill a drive with clusters of this size, or to continue after it was full.
void BeginFilling(FillWork& work, std::int64_t lngCluster);
/// Writes one unit, or a run of units when far from the end. False when the current file is
/// finished: it has its length, or work.Error holds the fault that ended it.
bool WriteStep(FillWork& work);
/// Fills the remaining space with a last small file, if the file system allocates less than a
/// cluster or stores small files in its own records. The file is open on entry; it is flushed and
/// closed. Returns its length.
std::int64_t WriteRemnant(FillWork& work);
