// All passes over one file and its streams: the checks before, the deletion or the length after.
#include "engine/FilePurge.h"

#include "drives/ClusterSizes.h"
#include "drives/DriveWork.h"
#include "drives/FileSystems.h"
#include "engine/FileProc.h"
#include "engine/HeldFiles.h"
#include "engine/OverwriteBuffers.h"
#include "engine/OverwriteFile.h"
#include "engine/OverwriteSteps.h"
#include "engine/PurgeTypes.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>
#include <vector>

namespace {

/// What the purge under way will have written in the end, bytes; 0 when none is under way.
double dblBytesToOverwrite = 0;

std::int64_t lngPurgedLength = 0;

bool HasSlack(std::int64_t length, std::int32_t clusterSize) {
    return length < 1 || clusterSize == 0 || length % clusterSize != 0;
}

ClusterSizes ClustersOf(const std::string& path) {
    return {GetClusterSize(path), GetCoveredClusterSize(path), GetRealClusterSize(path)};
}

/// What is overwritten together: the file itself, then its alternate data streams. False when they
/// cannot be found out. A fault must not pass for "no streams": they would be deleted unpurged.
bool FindTargets(const std::string& path, std::uint64_t length, std::uint32_t attributes,
                 std::vector<PurgeTarget>& targets) {
    std::vector<platform::Stream> streams;
    platform::Fault fault = platform::Fault::None;
    WorkOnDrive(path, [&] { fault = platform::ListStreams(path, streams); });
    if (Failed(fault) && fault != platform::Fault::NotSupported)
        return false;
    targets.assign(1, {path, static_cast<std::int64_t>(length)});
    for (const platform::Stream& stream : streams)
        targets.push_back({stream.Path, static_cast<std::int64_t>(stream.Length)});
    for (PurgeTarget& target : targets) {
        target.MayBeSparse = (attributes & platform::AttributeSparse) != 0;
        target.IsReparsePoint = (attributes & platform::AttributeReparsePoint) != 0;
    }
    return true;
}

/// One overwrite of the file and of each stream.
std::int16_t OverwriteTargets(std::vector<PurgeTarget>& targets, std::int16_t value, bool slackOnly,
                              const ClusterSizes& clusters) {
    for (PurgeTarget& target : targets) {
        if (slackOnly && !HasSlack(target.Length, clusters.Covered))
            target.NoSlack = true;
        const std::int16_t result = OverwriteFileOnce(target, value, slackOnly, clusters);
        if (result != PurgeDone)
            return result;
    }
    return PurgeDone;
}

/// Freeing the clusters of a file longer than this may take longer than a person should wait for
/// the windows: a file system was seen to take 0.3 s for 1 GiB.
constexpr std::int64_t lngBriefDeletion = std::int64_t{16} << 20;

/// Deletes a file unless somebody has written to it since it was closed. 0, −4, or −16.
std::int16_t DeletePurgedFile(const PurgeTarget& target) {
    bool blnDeleted = false;
    const platform::Fault outcome = TryWhileHeld([&] {
        platform::Fault fault = platform::Fault::None;
        RunStepsOnDrive(
            target.Path, target.Length <= lngBriefDeletion ? ui::Effort::Brief : ui::Effort::Long,
            [&] {
                blnDeleted = DeleteFileClearingAttributes(target.Path, true, true, true, &fault,
                                                          target.Left);
                return false;
            },
            [] { return true; });
        return fault;
    });
    return blnDeleted ? PurgeDone : Failed(outcome) ? PurgeNotDeleted : PurgeFileChanged;
}

/// ChangeFileSize, tried again while another program holds the file.
std::int16_t ChangeSizeOf(const std::string& path, std::int64_t length) {
    std::int16_t result = 0;
    (void)TryWhileHeld([&] {
        WorkOnDrive(path, [&] { result = ChangeFileSize(path, length); });
        return result == intFileHeld ? platform::Fault::SharingViolation : platform::Fault::None;
    });
    return result;
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
            fault = OpenTarget(target, file);
            if (Failed(fault))
                return;
            std::uint64_t length = 0;
            if (Failed(platform::ReadLength(file, length))) {
                result = PurgeLengthNotRestored;
            } else if (length != static_cast<std::uint64_t>(target.Left)) {
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
std::int16_t RestoreLengths(std::vector<PurgeTarget>& targets) {
    std::int16_t result = PurgeDone;
    for (PurgeTarget& target : targets)
        if (const std::int16_t one = RestoreLength(target); result == PurgeDone)
            result = one;
    return result;
}

/// One pass over the file and its streams.
std::int16_t OverwritePass(std::vector<PurgeTarget>& targets, std::int16_t purgeTypeIndex,
                           bool slackOnly, const ClusterSizes& clusters) {
    ui::DoEvents();
    PrepareOverwriteBuffers(clusters.Block);
    for (const std::int16_t value : OverwritesOfType(purgeTypeIndex)) {
        const std::int16_t result = OverwriteTargets(targets, value, slackOnly, clusters);
        if (result != PurgeDone)
            return result;
        blnFirstOverwrite = false;
    }
    return PurgeDone;
}

/// After the last pass: the file goes, or has its own length again. What somebody has added in the
/// meantime is overwritten before.
std::int16_t EndPurge(std::vector<PurgeTarget>& targets, std::int16_t purgeTypeIndex,
                      bool deleteAfter, const ClusterSizes& clusters) {
    constexpr int intMostRepeats = 3;
    std::int16_t result = PurgeFileChanged;
    for (int i = 0; i <= intMostRepeats && result == PurgeFileChanged; ++i) {
        if (i > 0) {
            result = OverwritePass(targets, purgeTypeIndex, false, clusters);
            if (result != PurgeDone)
                return result;
        }
        // Under its other names the file remains, and keeps its length.
        result =
            deleteAfter && lngHardLinks < 2 ? std::int16_t{PurgeDone} : RestoreLengths(targets);
        if (deleteAfter && result == PurgeDone)
            result = DeletePurgedFile(targets.front());
    }
    // Of a file that is kept the length alone decides nothing: its data are overwritten.
    return result == PurgeLengthNotRestored && !deleteAfter ? std::int16_t{PurgeDone} : result;
}

std::int16_t PurgeTargets(std::vector<PurgeTarget>& targets, std::int16_t purgeTypeIndex,
                          std::int16_t numPasses, bool deleteAfter, bool slackOnly) {
    lngHardLinks = 0;
    if (numPasses < 1)
        return PurgeNoPasses;
    const ClusterSizes clusters = ClustersOf(targets.front().Path);
    if (slackOnly && !HasSlack(targets.front().Length, clusters.Covered))
        return PurgeDone;
    if (!IsPurgeType(purgeTypeIndex))
        return PurgeBadType;
    // −1 passes this test, deliberately so; it fails where blocks of that size would be made.
    const std::int32_t block = clusters.Block;
    if (block != -1 && (block % 512 != 0 || block < 512 || block > 65536))
        return PurgeBadClusterSize;

    ReseedRandom();
    intPassesDone = 0;
    intPassesInAll = numPasses;
    blnFirstOverwrite = true;
    blnRecordsHoldFiles = slackOnly && RecordsMayHoldFiles(targets.front().Path);
    dblBytesOverwritten = 0;
    dblBytesToOverwrite = 0;
    for (const PurgeTarget& target : targets)
        dblBytesToOverwrite += static_cast<double>(target.Length) * numPasses *
                               static_cast<double>(OverwritesOfType(purgeTypeIndex).size());
    std::int16_t result = block < 0 ? PurgeWriteFailed : PurgeDone;
    for (std::int16_t pass = 1; pass <= numPasses && result == PurgeDone; ++pass) {
        result = OverwritePass(targets, purgeTypeIndex, slackOnly, clusters);
        ++intPassesDone;
    }
    if (result != PurgeDone)
        return result;
    if (!slackOnly)
        return EndPurge(targets, purgeTypeIndex, deleteAfter, clusters);
    return std::all_of(targets.begin(), targets.end(),
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
bool MayBeLink(const std::string& path, std::uint32_t attributes, std::uint32_t& reach) {
    if ((attributes & platform::AttributeReparsePoint) == 0)
        return false;
    bool blnLink = true;
    WorkOnDrive(path, [&] {
        platform::FileFacts facts;
        blnLink = Failed(platform::ReadFileFacts(path, facts)) || facts.IsLink;
        reach |= ReachOfTag(facts.ReparseTag);
    });
    return blnLink;
}

/// Everything of PurgeFileWithChecks but its outer form.
std::int16_t CheckAndPurge(const std::string& path, std::int16_t purgeTypeIndex,
                           std::int16_t numPasses, bool deleteAfter, bool okReadOnly, bool okSystem,
                           bool slackOnly, std::uint32_t& reach) {
    if (path.empty())
        return PurgeEmptyPath;
    std::uint32_t attributes = 0;
    std::uint64_t length = 0;
    bool blnKnown = false;
    WorkOnDrive(path,
                [&] { blnKnown = !Failed(platform::ReadAttributes(path, attributes, &length)); });
    if (!blnKnown)
        return PurgeCannotOpen;
    const std::uint32_t attributesBefore = attributes;
    reach = ReachOf(attributes);
    if (numPasses < 1)
        return PurgeNoPasses;
    if (IsElsewhere(attributes))
        return PurgeNotLocal;
    if ((attributes & platform::AttributeFolder) != 0 || MayBeLink(path, attributes, reach))
        return PurgeCannotOpen;
    if (MayKeepOlderCopies(path))
        reach |= ReachOlderCopies;
    if ((attributes & platform::AttributeReadOnly) != 0) {
        if (!okReadOnly)
            return PurgeReadOnlyRefused;
        WorkOnDrive(path, [&] {
            (void)platform::WriteAttributes(path, attributes ^ platform::AttributeReadOnly);
            blnKnown = !Failed(platform::ReadAttributes(path, attributes));
        });
        if (!blnKnown)
            return PurgeCannotOpen;
    }
    if ((attributes & platform::AttributeSystem) != 0 && !okSystem)
        return PurgeSystemRefused;
    if (ChangeSizeOf(path, -1) != 0)
        return PurgeCannotOpen;

    std::vector<PurgeTarget> targets;
    if (!FindTargets(path, length, attributesBefore, targets))
        return PurgeCannotOpen;
    const std::int16_t result =
        PurgeTargets(targets, purgeTypeIndex, numPasses, deleteAfter, slackOnly);
    lngPurgedLength = targets.front().Length;
    dblBytesToOverwrite = 0;
    if (lngHardLinks > 1)
        reach |= ReachHardLinks;
    ClearStatus();
    if (result == PurgeSeveralNames && (attributesBefore & platform::AttributeReadOnly) != 0)
        WorkOnDrive(path, [&] { (void)platform::WriteAttributes(path, attributesBefore); });
    // Cuts away the growth to the cluster boundary, whatever became of the purge; a file that is
    // gone needs no asking.
    const bool blnDeleted = result == PurgeDone && deleteAfter && !slackOnly;
    if (!blnDeleted)
        (void)RestoreLengths(targets);
    return result;
}

} // namespace

std::int16_t PurgeFile(const std::string& path, std::int16_t purgeTypeIndex, std::int16_t numPasses,
                       bool deleteAfter, bool slackOnly) {
    if (path.empty())
        return PurgeEmptyPath;
    // A length that cannot be read must not pass for 0: the file would be cut to that.
    std::uint64_t length = 0;
    std::vector<PurgeTarget> targets;
    bool blnKnown = false;
    std::uint32_t attributes = 0;
    WorkOnDrive(path,
                [&] { blnKnown = !Failed(platform::ReadAttributes(path, attributes, &length)); });
    if (!blnKnown || !FindTargets(path, length, attributes, targets))
        return PurgeCannotOpen;
    return PurgeTargets(targets, purgeTypeIndex, numPasses, deleteAfter, slackOnly);
}

bool PurgeFileWithChecks(const std::string& path, std::int16_t purgeTypeIndex,
                         std::int16_t numPasses, bool deleteAfter, bool okReadOnly, bool okSystem,
                         bool slackOnly, std::int32_t /*reserved*/, std::int16_t& resultCode,
                         std::uint32_t* reach, bool refuseSeveralNames) {
    std::uint32_t reachBits = 0;
    blnBytesWritten = false;
    blnRefuseSeveralNames = refuseSeveralNames && !slackOnly;
    resultCode = CheckAndPurge(path, purgeTypeIndex, numPasses, deleteAfter, okReadOnly, okSystem,
                               slackOnly, reachBits);
    blnRefuseSeveralNames = false;
    if (reach != nullptr)
        *reach = reachBits;
    return resultCode >= 0;
}

std::int64_t LengthOfPurgedFile() {
    return lngPurgedLength;
}

bool PurgeHasWritten() {
    return blnBytesWritten;
}

double PurgeShareDone() {
    return dblBytesToOverwrite > 0 ? std::min(dblBytesOverwritten / dblBytesToOverwrite, 1.0) : 0;
}

bool PurgeLibraryReady() {
    const platform::Fault fault = platform::LoadAuxiliaryLibrary();
    if (!Failed(fault))
        return true;
    std::string text = "The auxiliary library nwaux6.dll ";
    if (fault == platform::Fault::NotFound)
        text += "is missing from the program's folder.";
    else if (fault == platform::Fault::NotSupported)
        text += "in the program's folder does not belong to this program.";
    else
        text += "cannot be loaded: " + platform::FaultText(fault) + ".";
    text += "\r\nWithout it nothing can be purged. Please install Nullwright again.";
    ui::Complain(text);
    return false;
}
