#include "engine/FilePurge.h"

#include "engine/DriveWork.h"
#include "engine/EngineNeeds.h"
#include "engine/FileProc.h"
#include "engine/HeldFiles.h"
#include "engine/OverwriteBuffers.h"
#include "engine/OverwriteFile.h"
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

/// What is overwritten together: the file itself, then its alternate data streams.
struct PurgeTarget {
    std::string Path;
    std::int64_t Length = 0;
};

/// What the purge under way will have written in the end, bytes; 0 when none is under way.
double dblBytesToOverwrite = 0;

std::int64_t lngPurgedLength = 0;

bool HasSlack(std::int64_t length, std::int32_t clusterSize) {
    return length < 1 || clusterSize == 0 || length % clusterSize != 0;
}

/// The file and its streams; false when they cannot be found out. A fault must not pass for "no
/// streams": they would be deleted unpurged.
bool FindTargets(const std::string& path, std::uint64_t length, std::vector<PurgeTarget>& targets) {
    std::vector<platform::Stream> streams;
    platform::Fault fault = platform::Fault::None;
    WorkOnDrive(path, [&] { fault = platform::ListStreams(path, streams); });
    if (Failed(fault) && fault != platform::Fault::NotSupported)
        return false;
    targets = {{path, static_cast<std::int64_t>(length)}};
    for (const platform::Stream& stream : streams)
        targets.push_back({stream.Path, static_cast<std::int64_t>(stream.Length)});
    return true;
}

/// One overwrite of the file and of each stream.
std::int16_t OverwriteTargets(const std::vector<PurgeTarget>& targets, std::int16_t value,
                              bool slackOnly, std::int32_t clusterSize) {
    for (const PurgeTarget& target : targets) {
        if (slackOnly && !HasSlack(target.Length, clusterSize))
            continue;
        lngCurrentFileLength = target.Length;
        const std::int16_t result = OverwriteFileOnce(target.Path, value, slackOnly, clusterSize);
        if (result != PurgeDone)
            return result;
    }
    return PurgeDone;
}

/// Freeing the clusters of a file longer than this may take longer than a person should wait for
/// the windows: a file system was seen to take 0.3 s for 1 GiB.
constexpr std::int64_t lngBriefDeletion = std::int64_t{16} << 20;

bool DeletePurgedFile(const PurgeTarget& target) {
    bool blnDeleted = false;
    (void)TryWhileHeld([&] {
        platform::Fault fault = platform::Fault::None;
        RunStepsOnDrive(
            target.Path, target.Length <= lngBriefDeletion ? ui::Effort::Brief : ui::Effort::Long,
            [&] {
                blnDeleted = DeleteFileClearingAttributes(target.Path, true, true, true, &fault);
                return false;
            },
            [] { return true; });
        return fault;
    });
    return blnDeleted;
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

/// Gives the file and its streams back their lengths; false when one of them cannot be had.
bool RestoreLengths(const std::vector<PurgeTarget>& targets) {
    bool blnRestored = true;
    for (const PurgeTarget& target : targets)
        blnRestored = ChangeSizeOf(target.Path, target.Length) >= 0 && blnRestored;
    return blnRestored;
}

std::int16_t PurgeTargets(const std::vector<PurgeTarget>& targets, std::int16_t purgeTypeIndex,
                          std::int16_t numPasses, bool deleteAfter, bool slackOnly) {
    lngHardLinks = 0;
    const std::int32_t clusterSize = GetClusterSize(targets.front().Path);
    if (slackOnly && !HasSlack(targets.front().Length, clusterSize))
        return PurgeDone;
    if (!IsPurgeType(purgeTypeIndex))
        return PurgeBadType;
    // −1 passes this test, deliberately so; it fails where blocks of that size would be made.
    if (clusterSize != -1 && (clusterSize % 512 != 0 || clusterSize < 512 || clusterSize > 65536))
        return PurgeBadClusterSize;

    ReseedRandom();
    intPassesDone = 0;
    blnFirstOverwrite = true;
    dblBytesOverwritten = 0;
    dblBytesToOverwrite = 0;
    for (const PurgeTarget& target : targets)
        dblBytesToOverwrite += static_cast<double>(target.Length) * numPasses *
                               static_cast<double>(OverwritesOfType(purgeTypeIndex).size());
    std::int16_t result = clusterSize < 0 ? PurgeWriteFailed : PurgeDone;
    for (std::int16_t pass = 1; pass <= numPasses && result == PurgeDone; ++pass) {
        ui::DoEvents();
        PrepareOverwriteBuffers(clusterSize);
        for (const std::int16_t value : OverwritesOfType(purgeTypeIndex)) {
            result = OverwriteTargets(targets, value, slackOnly, clusterSize);
            if (result != PurgeDone)
                break;
            blnFirstOverwrite = false;
        }
        ++intPassesDone;
    }
    if (result == PurgeStopped)
        return result;
    if (slackOnly) {
        if (!RestoreLengths(targets) && result == PurgeDone)
            result = PurgeLengthNotRestored;
    } else if (deleteAfter && result == PurgeDone) {
        // Under its other names the file remains, and keeps its length.
        if (lngHardLinks > 1 && !RestoreLengths(targets))
            result = PurgeLengthNotRestored;
        else if (!DeletePurgedFile(targets.front()))
            result = PurgeNotDeleted;
    }
    return result;
}

std::uint32_t ReachOf(std::uint32_t attributes) {
    std::uint32_t reach = 0;
    if ((attributes & platform::AttributeEncrypted) != 0)
        reach |= ReachEncrypted;
    if ((attributes & platform::AttributeCompressed) != 0)
        reach |= ReachCompressed;
    if ((attributes & platform::AttributeSparse) != 0)
        reach |= ReachSparse;
    constexpr std::uint32_t elsewhere = platform::AttributeOffline |
                                        platform::AttributeRecallOnOpen |
                                        platform::AttributeRecallOnDataAccess;
    if ((attributes & elsewhere) != 0)
        reach |= ReachCloudPlaceholder;
    return reach;
}

/// The bytes behind a link belong to another name, which nobody chose. Placeholders of cloud files
/// carry the same attribute and are none.
bool MayBeLink(const std::string& path, std::uint32_t attributes) {
    if ((attributes & platform::AttributeReparsePoint) == 0)
        return false;
    bool blnLink = true;
    WorkOnDrive(path, [&] {
        platform::FileFacts facts;
        blnLink = Failed(platform::ReadFileFacts(path, facts)) || facts.IsLink;
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
    if ((attributes & platform::AttributeFolder) != 0 || MayBeLink(path, attributes))
        return PurgeCannotOpen;
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
    if (!FindTargets(path, length, targets))
        return PurgeCannotOpen;
    lngPurgedLength = targets.front().Length;
    const std::int16_t result =
        PurgeTargets(targets, purgeTypeIndex, numPasses, deleteAfter, slackOnly);
    dblBytesToOverwrite = 0;
    if (lngHardLinks > 1)
        reach |= ReachHardLinks;
    ClearStatus();
    if (result == PurgeSeveralNames) { // all stays as it was
        if ((attributesBefore & platform::AttributeReadOnly) != 0)
            WorkOnDrive(path, [&] { (void)platform::WriteAttributes(path, attributesBefore); });
        return result;
    }
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
    WorkOnDrive(path, [&] { blnKnown = !Failed(platform::ReadFileLength(path, length)); });
    if (!blnKnown || !FindTargets(path, length, targets))
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
