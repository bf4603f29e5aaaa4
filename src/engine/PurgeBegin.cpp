// The checks before the first pass: attributes, links, streams, slack.
#include "engine/PurgeBegin.h"

#include "drives/ClusterSizes.h"
#include "drives/DriveWork.h"
#include "drives/FileSystems.h"
#include "engine/FileProc.h"
#include "engine/HeldFiles.h"
#include "engine/OverwriteSteps.h"
#include "engine/PurgePass.h"
#include "engine/PurgeTypes.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "support/Numbers.h"

#include <algorithm>

namespace {

ClusterSizes ClustersOf(const std::string& path) {
    return {GetClusterSize(path), GetCoveredClusterSize(path), GetRealClusterSize(path)};
}

/// What is overwritten together: the file itself, then its alternate data streams. False when they
/// cannot be found out. A fault must not pass for "no streams": they would be deleted unpurged.
bool FindTargets(PurgeJob& job, std::uint64_t length, std::uint32_t attributes) {
    std::vector<platform::Stream> streams;
    platform::Fault fault = platform::Fault::None;
    WorkOnDrive(job.Path, [&] { fault = platform::ListStreams(job.Path, streams); });
    if (Failed(fault) && fault != platform::Fault::NotSupported) {
        job.Trouble = fault;
        return false;
    }
    job.Targets.assign(1, {job.Path, static_cast<std::int64_t>(length)});
    for (const platform::Stream& stream : streams)
        job.Targets.push_back({stream.Path, static_cast<std::int64_t>(stream.Length)});
    for (PurgeTarget& target : job.Targets) {
        target.MayBeSparse = (attributes & platform::AttributeSparse) != 0;
        target.IsReparsePoint = (attributes & platform::AttributeReparsePoint) != 0;
    }
    return true;
}

double BytesOfOverwrites(const PurgeJob& job) {
    double bytes = 0;
    for (const PurgeTarget& target : job.Targets)
        bytes += static_cast<double>(
            RoundedUp(std::max<std::int64_t>(target.Length, 1), job.Clusters.Covered));
    const auto overwrites = static_cast<double>(OverwritesOfType(job.Type).size());
    return bytes * (job.Passes * overwrites + (job.Options.Verify ? 1 : 0));
}

std::uint32_t ReachOf(std::uint32_t attributes) {
    std::uint32_t reach = 0;
    if ((attributes & platform::AttributeEncrypted) != 0)
        reach |= ReachEncrypted;
    if ((attributes & platform::AttributeCompressed) != 0)
        reach |= ReachCompressed;
    if ((attributes & platform::AttributeSparse) != 0)
        reach |= ReachSparse;
    if ((attributes & platform::AttributeIntegrity) != 0)
        reach |= ReachOlderCopies;
    return reach;
}

/// The data are in the cloud or in an archive, and would be fetched by whoever opens the file.
bool IsElsewhere(std::uint32_t attributes) {
    constexpr std::uint32_t elsewhere = platform::AttributeOffline |
                                        platform::AttributeRecallOnOpen |
                                        platform::AttributeRecallOnDataAccess;
    return (attributes & elsewhere) != 0;
}

/// Bits of files whose bytes another driver looks after.
std::uint32_t ReachOfTag(std::uint32_t tag) {
    constexpr std::uint32_t cloud = 0x9000001A, cloudMask = 0xFFFF0FFF; // of any provider
    constexpr std::uint32_t deduplicated = 0x80000013;
    return (tag & cloudMask) == cloud ? ReachCloudPlaceholder
           : tag == deduplicated      ? ReachOlderCopies
                                      : 0u;
}

/// The bytes behind a link belong to another name, which nobody chose. Files of the cloud and
/// others carry the same attribute and are none.
bool MayBeLink(PurgeJob& job, std::uint32_t attributes) {
    if ((attributes & platform::AttributeReparsePoint) == 0)
        return false;
    bool blnLink = true;
    WorkOnDrive(job.Path, [&] {
        platform::FileFacts facts;
        blnLink = Failed(platform::ReadFileFacts(job.Path, facts)) || facts.IsLink;
        job.Reach |= ReachOfTag(facts.ReparseTag);
    });
    return blnLink;
}

/// Whether the attributes allow a purge; a read-only file is made writable. 0, or what refuses it.
std::int16_t CheckAttributes(PurgeJob& job, std::uint32_t attributes) {
    job.Reach = ReachOf(attributes);
    if (job.Passes < 1)
        return PurgeNoPasses;
    if (IsElsewhere(attributes))
        return PurgeNotLocal;
    if ((attributes & platform::AttributeFolder) != 0 || MayBeLink(job, attributes))
        return PurgeCannotOpen;
    if (MayKeepOlderCopies(job.Path))
        job.Reach |= ReachOlderCopies;
    if ((attributes & platform::AttributeReadOnly) != 0) {
        if (!job.OKReadOnly)
            return PurgeReadOnlyRefused;
        WorkOnDrive(job.Path, [&] {
            (void)platform::WriteAttributes(job.Path, attributes ^ platform::AttributeReadOnly);
            job.Trouble = platform::ReadAttributes(job.Path, attributes);
        });
        if (Failed(job.Trouble))
            return PurgeCannotOpen;
    }
    return (attributes & platform::AttributeSystem) != 0 && !job.OKSystem ? PurgeSystemRefused
                                                                          : PurgeDone;
}

/// Whether a slack-only purge could write to the file at all: one without slack is not opened
/// otherwise, and a file that another program holds must not pass for one that has none. A whole
/// overwrite finds out for itself.
bool CanBeChanged(const PurgeJob& job) {
    std::int16_t result = 0;
    (void)TryWhileHeld([&] {
        WorkOnDrive(job.Path, [&] { result = ChangeFileSize(job.Path, -1); });
        return result == intFileHeld ? platform::Fault::SharingViolation : platform::Fault::None;
    });
    return result == 0;
}

/// Whether the overwrites can be made at all, and what they will write. 0, or what refuses them.
std::int16_t PreparePasses(PurgeJob& job) {
    if (!IsPurgeType(job.Type))
        return PurgeBadType;
    // −1 passes this test, deliberately so; it fails where blocks of that size would be made.
    const std::int32_t block = job.Clusters.Block;
    if (block != -1 && (block % 512 != 0 || block < 512 || block > 65536))
        return PurgeBadClusterSize;
    if (block < 0)
        return PurgeWriteFailed;
    ReseedRandom();
    job.FirstOverwrite = true;
    job.RecordsHoldFiles = job.SlackOnly && RecordsMayHoldFiles(job.Path);
    job.BytesToOverwrite = BytesOfOverwrites(job);
    return PurgeDone;
}

std::int16_t CheckFile(PurgeJob& job) {
    if (job.Path.empty())
        return PurgeEmptyPath;
    std::uint64_t length = 0;
    WorkOnDrive(job.Path, [&] {
        job.Trouble = platform::LoadAuxiliaryLibrary(); // without it nothing is purged
        if (!Failed(job.Trouble))
            job.Trouble = platform::ReadAttributes(job.Path, job.Attributes, &length);
    });
    if (Failed(job.Trouble))
        return PurgeCannotOpen;
    const std::int16_t result = CheckAttributes(job, job.Attributes);
    if (result != PurgeDone)
        return result;
    return (job.SlackOnly && !CanBeChanged(job)) || !FindTargets(job, length, job.Attributes)
               ? std::int16_t{PurgeCannotOpen}
               : result;
}

} // namespace

bool BeginPurge(PurgeJob& job) {
    job.RefuseSeveralNames = job.RefuseSeveralNames && !job.SlackOnly;
    job.Result = CheckFile(job);
    if (job.Result != PurgeDone)
        return false;
    job.Clusters = ClustersOf(job.Path);
    if (job.SlackOnly && !HasSlack(job.Targets.front().Length, job.Clusters.Covered))
        return false;
    job.Result = PreparePasses(job);
    return job.Result == PurgeDone;
}
