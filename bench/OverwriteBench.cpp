// One overwrite of a large file by the engine against the plainest loop that writes as much.
#include "bench/Bench.h"
#include "drives/ClusterSizes.h"
#include "engine/FilePurge.h"
#include "platform/Files.h"

namespace {

void PlainOverwrite(const std::string& path, std::uint64_t bytes) {
    static const std::string block(1 << 20, 'p');
    platform::File file;
    bool done = !Failed(OpenFile(path, platform::Access::Change, file));
    for (std::uint64_t at = 0; done && at < bytes; at += block.size())
        done = !Failed(WriteBytes(file, block.data(), block.size()));
    done = done && !Failed(FlushBytes(file)) && !Failed(CloseFile(file));
    bench::Require(done, "the plain overwrite failed");
}

} // namespace

void bench::BenchOverwrite() {
    const std::string path = InFolder("bench-large");
    Require(MakeFile(path, settings.Bytes), "the large file could not be made");
    PlainOverwrite(path, settings.Bytes); // both begin with warm caches
    for (const std::int32_t cluster : {4096, 512}) {
        ChooseClusterSize(path, cluster);
        std::vector<double> ours, plain;
        for (int i = 0; i < settings.Runs; ++i) {
            const auto engine = [&] {
                ours.push_back(SecondsFor([&] {
                    Require(PurgeFile(path, 0, 1, false, false) == PurgeDone, "PurgeFile failed");
                }));
            };
            if (i % 2 == 0)
                engine();
            plain.push_back(SecondsFor([&] { PlainOverwrite(path, settings.Bytes); }));
            if (i % 2 == 1)
                engine();
        }
        const double ratio = Median(ours) / Median(plain);
        Row("one overwrite of " + std::to_string(settings.Bytes >> 20) + " MiB, clusters of " +
                std::to_string(cluster) + ", against plain 1 MiB writes and a flush",
            Text(Median(ours), 3) + " s / " + Text(Median(plain), 3) + " s = " + Text(ratio, 3),
            "at most 1.05", ratio <= 1.05);
    }
    ForgetClusterSizes();
    std::vector<double> once, read; // under Wine from its memory
    for (int i = 0; i < settings.Runs; ++i)
        for (const bool verify : {i % 2 != 0, i % 2 == 0})
            (verify ? read : once).push_back(SecondsFor([&] {
                PurgeJob job{path, 0, 1};
                job.Options.Verify = verify;
                RunPurgeJob(job);
                Require(job.Result == PurgeDone, "RunPurgeJob failed");
            }));
    const double ratio = Median(read) / Median(once);
    Row("the same, read back, against one overwrite that is not",
        Text(Median(read), 3) + " s / " + Text(Median(once), 3) + " s = " + Text(ratio, 3),
        "at most 2.2", ratio <= 2.2);
    Require(!Failed(platform::RemoveFile(path)), "the large file could not be removed");
}
