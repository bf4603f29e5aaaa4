// Many small files, each purged by one random pass and deleted, against open, write, flush, close,
// delete of the same.
#include "bench/Bench.h"

#include "engine/FilePurge.h"
#include "platform/Files.h"

namespace {

constexpr std::uint64_t smallLength = 4096;

std::string SmallFile(int number) {
    return bench::InFolder("bench-" + std::to_string(number));
}

void MakeSmallFiles() {
    for (int i = 0; i < bench::settings.Files; ++i)
        bench::Require(bench::MakeFile(SmallFile(i), smallLength), "a file could not be made");
}

void PurgeThem() {
    for (int i = 0; i < bench::settings.Files; ++i) {
        std::int16_t result = 0;
        bench::Require(
            PurgeFileWithChecks(SmallFile(i), 0, 1, true, false, false, false, 0, result),
            "PurgeFileWithChecks failed");
    }
}

void RewriteAndDelete() {
    static const std::string block(smallLength, 'p');
    for (int i = 0; i < bench::settings.Files; ++i) {
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
    std::vector<double> ours, plain;
    for (int i = 0; i < 2 * settings.Runs; ++i) {
        MakeSmallFiles();
        if ((i + i / 2) % 2 == 0) // ours, plain, plain, ours ...
            ours.push_back(SecondsFor(PurgeThem));
        else
            plain.push_back(SecondsFor(RewriteAndDelete));
    }
    const double ratio = Median(ours) / Median(plain);
    Row(std::to_string(settings.Files) +
            " files of 4 KiB purged by one random pass and deleted, against open, write, flush, "
            "close, delete",
        Text(Median(ours), 3) + " s / " + Text(Median(plain), 3) + " s = " + Text(ratio, 3),
        "at most 1.25", ratio <= 1.25);
}
