// Lengths, names and the deletion after the last pass.
#include "engine/PurgeEnd.h"

#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "engine/HeldFiles.h"
#include "engine/OverwriteName.h"
#include "engine/OverwriteSteps.h"
#include "engine/PurgePass.h"
#include "platform/Files.h"
#include "support/Check.h"
#include "support/MainWindow.h"
#include "ui/Interface.h"

#include <algorithm>

namespace {

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

} // namespace

std::int16_t EndPurge(PurgeJob& job) {
    if (job.SlackOnly)
        return std::all_of(job.Targets.begin(), job.Targets.end(),
                           [](const PurgeTarget& target) { return target.NoSlack; })
                   ? PurgeNoSlack
                   : PurgeDone;
    if (job.Deleted)
        return PurgeDone;
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

void DeleteAtOnce(PurgeJob& job) {
    const PurgeTarget& file = job.Targets.front();
    if (job.DeleteAfter && !job.SlackOnly && !job.Options.OverwriteNames && job.HardLinks < 2)
        job.Deleted = DeleteFileClearingAttributes(file.Path, true, true, true, nullptr, file.Left);
}

void SettlePurge(PurgeJob& job) {
    // The name came between two overwrites: too late to leave the data as they were.
    if (job.Result == PurgeSeveralNames && job.HasWritten)
        job.Result = PurgeFileChanged;
    if (!job.Targets.empty()) {
        job.Length = job.Targets.front().Length;
        if (job.HardLinks > 1)
            job.Reach |= ReachHardLinks;
        ClearStatus();
        if (job.Result == PurgeSeveralNames && (job.Attributes & platform::AttributeReadOnly) != 0)
            WorkOnDrive(job.Path,
                        [&] { (void)platform::WriteAttributes(job.Path, job.Attributes); });
        // Cuts away the growth to the cluster boundary, whatever became of the purge; a file that
        // is gone needs no asking.
        if (job.Result != PurgeDone || !job.DeleteAfter || job.SlackOnly)
            (void)RestoreLengths(job);
    }
    Check(job.Result != PurgeDone || job.SlackOnly || job.PassesDone == job.Passes,
          "a purged file has all its passes");
    if (job.Result >= 0)
        job.Trouble = platform::Fault::None;
    if (job.Result < 0 && !job.Targets.empty() && job.Targets.front().Path != job.Path)
        job.LeftAs = job.Targets.front().Path;
}
