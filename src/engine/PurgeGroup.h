// The purge of several small files side by side.
#pragma once

#include "engine/PurgeJob.h"

#include <cstdint>
#include <functional>
#include <vector>

/// Files up to this many bytes, with their streams, are purged in groups.
constexpr std::int64_t lngLongestInGroup = std::int64_t{256} << 10;

struct GroupedJob {
    PurgeJob Job;
    /// Nothing was done with the file: it is not plain, and is to be purged by RunPurgeJob with a
    /// new job, which may wait for it and ask about it.
    bool Alone = false;
};

struct PurgeGroup {
    std::vector<GroupedJob> Jobs{}; ///< each of another file, of one drive; all alike in how
    int Threads = 1;
    /// Called before the first pass, when all files have been checked (0), and between two passes.
    /// False stops all jobs. The `GoOn` of the jobs is not called.
    std::function<bool(int passesDone)> GoOn{};
    double Seconds = 0; ///< that it took, without the time between two passes
};

/// Purges the files pass by pass, several at a time, each as RunPurgeJob does: it is flushed before
/// its own next overwrite begins, and deleted after its own last flush. Whatever happens to one of
/// them does not concern the others.
void RunPurgeGroup(PurgeGroup& group);
