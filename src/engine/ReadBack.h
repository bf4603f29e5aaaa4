// Reading back what an overwrite has written, and comparing it.
#pragma once

#include "platform/Files.h"

#include <cstddef>
#include <cstdint>
#include <vector>

struct Overwrite;

/// How far the reading is. All of it belongs to the steps.
struct ReadingBack {
    platform::File File{}; ///< the same file, opened a second time
    bool Cached = false;   ///< by ordinary reads: past the cache is not supported here
    std::size_t RangeIndex = 0;
    std::uint64_t Position = 0; ///< of the next read
    std::vector<char> Buffer{};
};

/// One step of reading back what was written and flushed: opens the file, or reads and compares a
/// run. True while there is more; work.Result is PurgeNotVerified when something differs, or cannot
/// be read. May run on the I/O thread.
bool StepReadBack(Overwrite& work);
