// One pass over one file.
#pragma once

#include "engine/PurgeJob.h"

inline bool HasSlack(std::int64_t length, std::int32_t clusterSize) {
    return length < 1 || clusterSize == 0 || length % clusterSize != 0;
}

/// The overwrites of one pass, of the file and of each stream, from where the pass stands. May ask
/// about other names. 0, or what OverwriteFileOnce says.
std::int16_t OverwritePass(PurgeJob& job);
/// The same at once, on any thread: without waiting for files that are held, and without a
/// question. After −13, or −2 for a sharing violation, OverwritePass takes over from where the pass
/// stands.
std::int16_t OverwritePassAtOnce(PurgeJob& job);
