// Memory does not grow with the file: the peak after a small and after a large file.
#include "bench/Bench.h"

#include "engine/FilePurge.h"

#include <algorithm>

#include <windows.h>

#include <psapi.h>

namespace {

struct Peaks {
    double WorkingSet = 0;
    double Committed = 0;
};

Peaks PeaksAfterPurge(std::uint64_t length) {
    const std::string path = bench::InFolder("bench-memory");
    bench::Require(bench::MakeFile(path, length), "the file could not be made");
    std::int16_t result = 0;
    bench::Require(PurgeFileWithChecks(path, 2, 1, true, false, false, false, 0, result),
                   "PurgeFileWithChecks failed");
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    bench::Require(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) != 0,
                   "the memory counters cannot be read");
    return {static_cast<double>(counters.PeakWorkingSetSize) / (1 << 20),
            static_cast<double>(counters.PeakPagefileUsage) / (1 << 20)};
}

} // namespace

void bench::BenchMemory() {
    const std::uint64_t small = settings.Bytes / 64;
    PeaksAfterPurge(small); // what is loaded and allocated once is not growth
    const Peaks before = PeaksAfterPurge(small);
    const Peaks after = PeaksAfterPurge(settings.Bytes);
    const double growth =
        std::max(after.WorkingSet - before.WorkingSet, after.Committed - before.Committed);
    Row("growth of the peak memory from a file of " + std::to_string(small >> 20) +
            " MiB to one of " + std::to_string(settings.Bytes >> 20) + " MiB (peak working set " +
            Text(after.WorkingSet, 1) + " MiB)",
        Text(growth, 2) + " MiB", "under 1 MiB", growth < 1);
}
