// One dummy file being written, unit by unit: the part of the filling that runs on the I/O thread.
#pragma once

#include "platform/Files.h"

#include <atomic>
#include <cstdint>
#include <vector>

/// What the writing shares with the I/O thread. While that works, the interface thread reads
/// atomics only. All sizes are bytes.
struct FillWork {
    std::vector<char> Zeros;
    platform::File File;
    std::int64_t lngCluster = 4096; ///< the drive's real one: dummies are whole clusters long
    std::int64_t lngUnit = 0;       ///< what is written at least at a time
    bool blnByClusters = false;     ///< the end is near: the unit is a cluster
    std::int64_t lngByClusters = 0; ///< written since
    std::int64_t lngLimit = 0;      ///< where the file being written ends
    std::atomic<std::int64_t> lngInFile{0};
    double dblFree = 0; ///< by the last query, less what was written since
    std::atomic<double> dblFreeShown{0};
    double dblTotal = 0;               ///< written in all files
    std::atomic<double> dblGoal{0};    ///< the most that, by any query, there was to write in all
    std::uint64_t lngLastQuery = 0;    ///< tick count
    bool blnAskFree = true;            ///< not asked yet
    double dblTotalAtStretch = 0;      ///< dblTotal and dblFree where the last stretch began
    double dblFreeAtStretch = 0;       ///< (see LookWhetherItShrinks)
    std::int16_t intFlatStretches = 0; ///< so many in a row did not shrink the free space
    platform::Fault Error = platform::Fault::None;
    const char* strError = nullptr; ///< instead of the fault's own description
};

/// Makes the work ready to fill a drive with clusters of this size, or to go on filling it after it
/// was full.
void BeginFilling(FillWork& work, std::int64_t lngCluster);
/// Writes one unit, or a run of them far from the end. False when the file being written is done:
/// it has its length, or work.Error says what ended it.
bool WriteStep(FillWork& work);
/// Where the file system gives space out in pieces smaller than the cluster, or holds small files
/// in its own records, a last small file takes what is left. The file is open; it is flushed and
/// closed. The length that it got.
std::int64_t WriteRemnant(FillWork& work);
