// All passes over one file and its streams: the checks before, the deletion or the length after.
#include "engine/PurgeJob.h"

#include "drives/ClusterSizes.h"
#include "drives/DriveWork.h"
#include "drives/FileSystems.h"
#include "engine/FileProc.h"
#include "engine/HeldFiles.h"
#include "engine/OverwriteBuffers.h"
#include "engine/OverwriteFile.h"
#include "engine/OverwriteName.h"
#include "engine/OverwriteSteps.h"
#include "engine/PurgeTypes.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "support/Check.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "ui/Interface.h"

#include <algorithm>
#include <utility>

namespace {

/// The job under way, for the progress alone.
const PurgeJob* jobUnderWay = nullptr;

bool HasSlack(std::int64_t length, std::int32_t clusterSize) {
    return length < 1 || clusterSize == 0 || length % clusterSize != 0;
}

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

/// One overwrite of the file and of each stream.
std::int16_t OverwriteTargets(PurgeJob& job, std::int16_t value) {
    for (PurgeTarget& target : job.Targets) {
        if (job.SlackOnly && !HasSlack(target.Length, job.Clusters.Covered))
            target.NoSlack = true;
        std::int16_t result = OverwriteFileOnce(job, target, value);
        // Asked about at every opening: the file may have got another name meanwhile.
        if (result == PurgeSeveralNames && job.MayPurgeAllNames && job.MayPurgeAllNames()) {
            job.RefuseSeveralNames = false;
            result = OverwriteFileOnce(job, target, value);
        }
        if (result != PurgeDone)
            return result;
    }
    return PurgeDone;
}

/// Freeing the clusters of a file longer than this may take longer than a person should wait for
/// the windows: a file system was seen to take 0.3 s for 1 GiB.
constexpr std::int64_t lngBriefDeletion = std::int64_t{16} << 20;

/// The file gets other names, and its streams with it. One that has changed since it was closed
/// does not: its deletion finds that out.
void OverwriteNameOf(PurgeJob& job) {
    const PurgeTarget& file = job.Targets.front();
    std::uint64_t length = 0;
    auto fault = platform::Fault::None;
    WorkOnDrive(file.Path, [&] { fault = platform::ReadFileLength(file.Path, length); });
    if (Failed(fault))
        job.Reach |= ReachName;
    if (Failed(fault) || length != static_cast<std::uint64_t>(file.Left) || file.Path != job.Path)
        return;
    std::string path = file.Path;
    // The dates are those of its other names, too.
    if (!OverwriteName(path, job.HardLinks < 2))
        job.Reach |= ReachName;
    for (PurgeTarget& target : job.Targets)
        target.Path = path + target.Path.substr(job.Path.size());
}

/// Deletes the file unless somebody has written to it since it was closed. 0, −4, or −16.
std::int16_t DeletePurgedFile(PurgeJob& job) {
    if (job.Options.OverwriteNames)
        OverwriteNameOf(job);
    const PurgeTarget& file = job.Targets.front();
    bool blnDeleted = false;
    job.Trouble = TryWhileHeld([&] {
        platform::Fault fault = platform::Fault::None;
        RunStepsOnDrive(
            file.Path, file.Length <= lngBriefDeletion ? ui::Effort::Brief : ui::Effort::Long,
            [&] {
                blnDeleted =
                    DeleteFileClearingAttributes(file.Path, true, true, true, &fault, file.Left);
                return false;
            },
            [] { return true; });
        return fault;
    });
    return blnDeleted ? PurgeDone : Failed(job.Trouble) ? PurgeNotDeleted : PurgeFileChanged;
}

/// Gives a file its own length back. One that has not the length in which it was left has changed
/// since, and stays as it is. 0, −11, or −16.
std::int16_t RestoreLength(PurgeTarget& target) {
    if (target.Left < 0 || target.Left == target.Length)
        return PurgeDone;
    std::int16_t result = PurgeLengthNotRestored;
    (void)TryWhileHeld([&] {
        platform::Fault fault = platform::Fault::None;
        WorkOnDrive(target.Path, [&] {
            platform::File file;
            platform::OpenFileFacts facts;
            fault = OpenTarget(target, file, facts);
            if (Failed(fault))
                return;
            if (facts.Length != static_cast<std::uint64_t>(target.Left)) {
                result = PurgeFileChanged;
            } else { // who has mapped the file for a moment holds its length alone
                fault = platform::ChangeLength(file, static_cast<std::uint64_t>(target.Length));
                result = Failed(fault) ? PurgeLengthNotRestored : PurgeDone;
            }
            (void)platform::CloseFile(file);
        });
        return fault;
    });
    if (result == PurgeDone)
        target.Left = target.Length;
    return result;
}

/// The file and its streams; the first failure that there is counts, and none ends the rest.
std::int16_t RestoreLengths(PurgeJob& job) {
    std::int16_t result = PurgeDone;
    for (PurgeTarget& target : job.Targets)
        if (const std::int16_t one = RestoreLength(target); result == PurgeDone)
            result = one;
    return result;
}

/// One pass over the file and its streams.
std::int16_t OverwritePass(PurgeJob& job) {
    ui::DoEvents();
    PrepareOverwriteBuffers(job.Clusters.Block);
    const auto values = OverwritesOfType(job.Type);
    for (const std::int16_t& value : values) {
        job.VerifiesNow =
            job.Options.Verify && job.PassesDone + 1 >= job.Passes && &value == &values.back();
        const std::int16_t result = OverwriteTargets(job, value);
        if (result != PurgeDone)
            return result;
        job.FirstOverwrite = false;
    }
    return PurgeDone;
}

/// After the last pass: the file goes, or has its own length again. What somebody has added in the
/// meantime is overwritten before.
std::int16_t EndPurge(PurgeJob& job) {
    constexpr int intMostRepeats = 3;
    std::int16_t result = PurgeFileChanged;
    for (int i = 0; i <= intMostRepeats && result == PurgeFileChanged; ++i) {
        if (i > 0) {
            result = OverwritePass(job);
            if (result != PurgeDone)
                return result;
        }
        // Under its other names the file remains, and keeps its length.
        result =
            job.DeleteAfter && job.HardLinks < 2 ? std::int16_t{PurgeDone} : RestoreLengths(job);
        if (job.DeleteAfter && result == PurgeDone)
            result = DeletePurgedFile(job);
    }
    // Of a file that is kept the length alone decides nothing: its data are overwritten.
    return result == PurgeLengthNotRestored && !job.DeleteAfter ? std::int16_t{PurgeDone} : result;
}

/// The pass loop.
std::int16_t OverwriteAllPasses(PurgeJob& job) {
    while (job.PassesDone < job.Passes) {
        const std::int16_t result = OverwritePass(job);
        if (result != PurgeDone)
            return result;
        ++job.PassesDone;
        if (job.GoOn && job.PassesDone < job.Passes && !job.GoOn())
            return PurgeStopped;
    }
    return PurgeDone;
}

double BytesOfOverwrites(const PurgeJob& job) {
    double bytes = 0;
    for (const PurgeTarget& target : job.Targets)
        bytes += static_cast<double>(
            RoundedUp(std::max<std::int64_t>(target.Length, 1), job.Clusters.Covered));
    const auto overwrites = static_cast<double>(OverwritesOfType(job.Type).size());
    return bytes * (job.Passes * overwrites + (job.Options.Verify ? 1 : 0));
}

std::int16_t PurgeTargets(PurgeJob& job) {
    job.Clusters = ClustersOf(job.Path);
    if (job.SlackOnly && !HasSlack(job.Targets.front().Length, job.Clusters.Covered))
        return PurgeDone;
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
    const std::int16_t result = OverwriteAllPasses(job);
    if (result != PurgeDone)
        return result;
    if (!job.SlackOnly)
        return EndPurge(job);
    return std::all_of(job.Targets.begin(), job.Targets.end(),
                       [](const PurgeTarget& target) { return target.NoSlack; })
               ? PurgeNoSlack
               : PurgeDone;
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

std::int16_t CheckAndPurge(PurgeJob& job) {
    if (job.Path.empty())
        return PurgeEmptyPath;
    std::uint32_t attributes = 0;
    std::uint64_t length = 0;
    WorkOnDrive(job.Path, [&] {
        job.Trouble = platform::LoadAuxiliaryLibrary(); // without it nothing is purged
        if (!Failed(job.Trouble))
            job.Trouble = platform::ReadAttributes(job.Path, attributes, &length);
    });
    if (Failed(job.Trouble))
        return PurgeCannotOpen;
    std::int16_t result = CheckAttributes(job, attributes);
    if (result != PurgeDone)
        return result;
    if ((job.SlackOnly && !CanBeChanged(job)) || !FindTargets(job, length, attributes))
        return PurgeCannotOpen;
    result = PurgeTargets(job);
    job.Length = job.Targets.front().Length;
    if (job.HardLinks > 1)
        job.Reach |= ReachHardLinks;
    ClearStatus();
    if (result == PurgeSeveralNames && (attributes & platform::AttributeReadOnly) != 0)
        WorkOnDrive(job.Path, [&] { (void)platform::WriteAttributes(job.Path, attributes); });
    // Cuts away the growth to the cluster boundary, whatever became of the purge; a file that is
    // gone needs no asking.
    const bool blnDeleted = result == PurgeDone && job.DeleteAfter && !job.SlackOnly;
    if (!blnDeleted)
        (void)RestoreLengths(job);
    return result;
}

} // namespace

void RunPurgeJob(PurgeJob& job) {
    Check(job.Targets.empty(), "a job runs once");
    job.RefuseSeveralNames = job.RefuseSeveralNames && !job.SlackOnly;
    const PurgeJob* const outer = std::exchange(jobUnderWay, &job);
    job.Result = CheckAndPurge(job);
    jobUnderWay = outer;
    Check(job.Result != PurgeDone || job.SlackOnly || job.PassesDone == job.Passes,
          "a purged file has all its passes");
    if (job.Result >= 0)
        job.Trouble = platform::Fault::None;
    if (job.Result < 0 && !job.Targets.empty() && job.Targets.front().Path != job.Path)
        job.LeftAs = job.Targets.front().Path;
}

double PurgeShareDone() {
    return jobUnderWay && jobUnderWay->BytesToOverwrite > 0
               ? std::min(jobUnderWay->BytesOverwritten / jobUnderWay->BytesToOverwrite, 1.0)
               : 0;
}
