// Many small files, each purged by one random pass and deleted, against open, write, flush, close,
// delete of the same; and purged as a run does it, side by side where that gains anything, against
// one at a time.
#include "bench/Bench.h"

#include "engine/FilePurge.h"
#include "engine/GroupPace.h"
#include "engine/PurgeGroup.h"
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

/// By as many threads as were found to be worth it.
void PurgeAsRun(int first, int end) {
    while (first < end) {
        const std::string path = SmallFile(first);
        const int threads = ThreadsForGroup(path);
        const int count =
            threads > 1 ? std::min(static_cast<int>(FilesForGroup(path)), end - first) : 1;
        PurgeGroup group;
        group.Threads = threads;
        for (int i = first; i < first + count; ++i)
            group.Jobs.push_back({PurgeJob{SmallFile(i), 0, 1, true}});
        if (threads > 1) {
            RunPurgeGroup(group);
        } else {
            RunPurgeJob(group.Jobs.front().Job);
            group.Seconds = group.Jobs.front().Job.Seconds;
        }
        NoteGroupPace(path, threads, group.Jobs.size(), group.Seconds);
        for (const GroupedJob& grouped : group.Jobs)
            bench::Require(!grouped.Alone && grouped.Job.Result == PurgeDone, "a group failed");
        first += count;
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
    std::vector<double> ours, plain, asRun;
    for (int run = 0; run < settings.Runs; ++run) {
        Make(0, 3 * settings.Files);
        ours.push_back(0);
        plain.push_back(0);
        asRun.push_back(0);
        ForgetGroupPaces();
        for (int i = 0; i < settings.Files; i += portion) {
            const int end = std::min(i + portion, settings.Files);
            const auto purge = [&] { ours.back() += SecondsFor([&] { Purge(i, end); }); };
            if (i / portion % 2 == 0)
                purge();
            asRun.back() +=
                SecondsFor([&] { PurgeAsRun(2 * settings.Files + i, 2 * settings.Files + end); });
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
    const double sideBySide = Median(asRun) / Median(ours);
    Row("the same as a run does it (" + std::to_string(ThreadsForGroup(SmallFile(0))) +
            " at a time in the end), against one at a time",
        Text(Median(asRun), 3) + " s / " + Text(Median(ours), 3) + " s = " + Text(sideBySide, 3),
        "at most 1.05", sideBySide <= 1.05);
}
