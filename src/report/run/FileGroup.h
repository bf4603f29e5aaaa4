// Small files of a run, gathered to be purged side by side. They are told in their order.
#pragma once

#include "engine/PurgeJob.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct GatheredFile {
    std::string strPath;
    std::int64_t lngLength = 0; ///< bytes, as the folder lists it
};

/// The files gathered, all of one folder, and what a command does with them.
struct FileGroup {
    std::vector<GatheredFile> files{};
    double dblBytes = 0; ///< of all of them
    /// Called before the files are checked (0), before the first pass (0 again), and between two
    /// passes. False: all end there.
    std::function<bool(int intPassesDone, const std::string& strFirst)> goOn{};
    /// A file was purged in the group, or was not; the run has counted it.
    std::function<void(PurgeJob& job, const GatheredFile& file)> onPurged{};
    /// A file that is not plain is to be purged on its own.
    std::function<void(const GatheredFile& file)> purgeAlone{};
};

/// Whether a file of this length would be gathered now. Otherwise it is purged on its own, after
/// those gathered before.
bool IsForGroup(const std::string& strPath, std::int64_t lngLength);
/// Gathers a file, and purges all when they are enough.
void GatherFile(FileGroup& group, const std::string& strPath, std::int64_t lngLength);
/// Purges what is gathered.
void PurgeGathered(FileGroup& group);
