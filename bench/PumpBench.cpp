// How long the interface stands still while one large file is purged.
#include "bench/Bench.h"
#include "bench/Heartbeat.h"

#include "engine/FilePurge.h"

#include <algorithm>

namespace {

/// The longest stretch, in seconds, while one file is purged; its deletion included or not.
double StretchOfOneFile(bool deleteAfter) {
    using namespace bench;
    const std::string path = InFolder("bench-large");
    Require(MakeFile(path, settings.Bytes), "the large file could not be made");
    return LongestStretch([&] {
        std::int16_t result = 0;
        Require(PurgeFileWithChecks(path, 0, 1, deleteAfter, false, false, false, 0, result),
                "PurgeFileWithChecks failed");
    });
}

} // namespace

void bench::BenchPumping() {
    for (const bool deleteAfter : {false, true}) {
        double worst = 0;
        for (int i = 0; i < settings.Runs; ++i)
            worst = std::max(worst, StretchOfOneFile(deleteAfter));
        Row("longest stretch without messages while " + std::to_string(settings.Bytes >> 20) +
                " MiB are overwritten and flushed" + (deleteAfter ? ", and deleted" : "") +
                ", worst of " + std::to_string(settings.Runs),
            Text(worst * 1000, 1) + " ms", "under 100 ms", worst < 0.1);
    }
    EndHeartbeat();
}
