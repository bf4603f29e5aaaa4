// Many small files, each purged by one random pass and deleted, against open, write, flush, close,
// delete of the same.
#include "bench/Bench.h"

#include "engine/FilePurge.h"
#include "platform/Files.h"

#include <algorithm>

namespace {

constexpr std::uint64_t smallLength = 4096;

std::string SmallFile(int number) {
    return bench::InFolder("bench-" + std::to_string(number));
}

void Make(int first, int end) {
    for (int i = first; i < end; ++i)
        bench::Require(bench::MakeFile(SmallFile(i), smallLength), "a file could not be made");
}

void Purge(int first, int end) {
    for (int i = first; i < end; ++i) {
        std::int16_t result = 0;
        bench::Require(
            PurgeFileWithChecks(SmallFile(i), 0, 1, true, false, false, false, 0, result),
            "PurgeFileWithChecks failed");
    }
}

void RewriteAndDelete(int first, int end) {
    static const std::string block(smallLength, 'p');
    for (int i = first; i < end; ++i) {
        platform::File file;
        bench::Require(!Failed(OpenFile(SmallFile(i), platform::Access::Change, file)) &&
                           !Failed(WriteBytes(file, block.data(), block.size())) &&
                           !Failed(FlushBytes(file)) && !Failed(CloseFile(file)) &&
                           !Failed(platform::RemoveFile(SmallFile(i))),
                       "the plain rewriting failed");
    }
}

} // namespace

void bench::BenchSmallFiles() {
    // In small portions by turns, so that what else the disk does falls on both alike.
    constexpr int portion = 50;
    std::vector<double> ours, plain;
    for (int run = 0; run < settings.Runs; ++run) {
        Make(0, 2 * settings.Files);
        ours.push_back(0);
        plain.push_back(0);
        for (int i = 0; i < settings.Files; i += portion) {
            const int end = std::min(i + portion, settings.Files);
            const auto purge = [&] { ours.back() += SecondsFor([&] { Purge(i, end); }); };
            if (i / portion % 2 == 0)
                purge();
            plain.back() +=
                SecondsFor([&] { RewriteAndDelete(settings.Files + i, settings.Files + end); });
            if (i / portion % 2 == 1)
                purge();
        }
    }
    const double ratio = Median(ours) / Median(plain);
    Row(std::to_string(settings.Files) +
            " files of 4 KiB purged by one random pass and deleted, against open, write, flush, "
            "close, delete",
        Text(Median(ours), 3) + " s / " + Text(Median(plain), 3) + " s = " + Text(ratio, 3),
        "at most 1.25", ratio <= 1.25);
}
