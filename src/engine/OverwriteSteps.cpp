// The steps of one overwrite: opening, finding out what is to be written, writing, flushing,
// closing. They may run on the I/O thread.
#include "engine/OverwriteSteps.h"

#include <algorithm>
#include <utility>

namespace {

/// On FAT a file ends a byte short of this at the latest, although its last cluster reaches up to
/// it.
constexpr std::int64_t lngFatLimit = std::int64_t{1} << 32;
/// A file system that keeps small files in its own records has no larger records than this: those
/// of NTFS take 1 KiB, and 4 KiB where the disk's sectors are that large.
constexpr std::int64_t lngLargestRecord = 4096;

/// Forces the data to the disk. A device that knows no flush holds nothing back; any other fault
/// means that what was written may never get there.
std::int16_t FlushOverwrite(Overwrite& work) {
    if (std::exchange(work.Flushed, true))
        return PurgeDone;
    const platform::Fault fault = platform::FlushBytes(work.File);
    if (!Failed(fault) || fault == platform::Fault::NotSupported)
        return PurgeDone;
    work.Job.Trouble = fault;
    return PurgeFlushFailed;
}

/// The length in which the file is left. In slack mode that is its own again before anybody else
/// can open it: who adds to it must not do so behind what was written there.
void LeaveFile(Overwrite& work) {
    PurgeTarget& target = work.Target;
    std::uint64_t length = 0;
    if (work.EndUnknown && !Failed(platform::ReadLength(work.File, length)))
        work.FileEnd = static_cast<std::int64_t>(length);
    target.Left = work.FileEnd;
    if (!work.Job.SlackOnly || target.Left == target.Length)
        return;
    if (!Failed(platform::ChangeLength(work.File, static_cast<std::uint64_t>(target.Length))))
        target.Left = target.Length;
    else if (work.Result == PurgeDone)
        work.Result = PurgeLengthNotRestored;
}

} // namespace

platform::Fault OpenTarget(const PurgeTarget& target, platform::File& file,
                           platform::OpenFileFacts& facts) {
    // A link is opened itself, so that what is open can be asked whether it is one.
    platform::File opened;
    platform::Fault fault = platform::OpenFile(
        target.Path,
        target.IsReparsePoint ? platform::Access::Change : platform::Access::ChangeItself, opened);
    if (Failed(fault))
        return fault;
    fault = platform::ReadOpenFileFacts(opened, facts);
    if (!Failed(fault) && !target.IsReparsePoint &&
        (facts.Attributes & platform::AttributeReparsePoint) != 0)
        fault = platform::Fault::AccessDenied;
    if (Failed(fault))
        (void)platform::CloseFile(opened);
    else
        file = opened;
    return fault;
}

void FinishOverwrite(Overwrite& work) {
    if (work.Reading.File.IsOpen())
        (void)platform::CloseFile(work.Reading.File);
    if (work.Written) {
        if (work.Result == PurgeDone)
            work.Result = FlushOverwrite(work);
        LeaveFile(work);
    }
    if (Failed(platform::CloseFile(work.File)) && work.Result == PurgeDone)
        work.Result = PurgeWriteFailed;
}

namespace {

std::int16_t ResultOfWriteFault(Overwrite& work, platform::Fault fault) {
    work.Job.Trouble = fault;
    return fault == platform::Fault::DiskFull ? PurgeDiskFull : PurgeWriteFailed;
}

/// Writes the first bytes of a small file over it without making it longer, and flushes them. The
/// file system may keep so small a file in its own records, and would move it out, leaving the old
/// bytes behind, at the first write that reaches past its end.
std::int16_t OverwriteInItsRecord(Overwrite& work) {
    work.Written = true;
    const platform::Fault fault = platform::WriteBytes(
        work.File, work.Run.data(), static_cast<std::size_t>(work.Target.Length));
    if (Failed(fault))
        return ResultOfWriteFault(work, fault);
    const std::int16_t result = FlushOverwrite(work);
    work.Flushed = false;
    if (result != PurgeDone)
        return result;
    return Failed(platform::SeekTo(work.File, 0)) ? PurgeWriteFailed : PurgeDone;
}

/// Whether slack would be written behind a file that lies in a record. It would be moved out, and
/// its bytes stay in the record, out of every later purge's reach.
bool MayBeInRecord(const Overwrite& work) {
    if (!work.Job.FirstOverwrite || !work.Job.RecordsHoldFiles ||
        work.Target.Length >= lngLargestRecord)
        return false;
    bool blnClusters = false;
    const platform::Fault fault = platform::HasClusters(work.File, blnClusters);
    // Who cannot say leaves it open. Where the drive is gone the write finds that out.
    return fault != platform::Fault::NotReady && (Failed(fault) || !blnClusters);
}

/// What is to be written: all up to the end of the last cluster, or the slack; of a sparse file
/// what has a place on the disk.
std::int16_t FindRanges(Overwrite& work) {
    const std::int64_t length = work.Target.Length;
    const auto from = static_cast<std::uint64_t>(length);
    if (work.Job.SlackOnly) {
        // Random digits in a single block reach past the cluster.
        const std::int64_t end =
            length + (work.BlockSize > work.Slack ? work.BlockSize : work.Slack);
        work.Ranges = {{from, static_cast<std::uint64_t>(end)}};
    } else {
        const std::int64_t end =
            RoundedUp(std::max<std::int64_t>(length, 1), work.Job.Clusters.Covered);
        work.Ranges = {{0, static_cast<std::uint64_t>(end)}};
    }
    if (!work.Target.MayBeSparse || length == 0)
        return PurgeDone;
    std::vector<platform::Range> allocated;
    const platform::Fault fault = platform::ListAllocatedRanges(work.File, from, allocated);
    if (Failed(fault) && fault != platform::Fault::NotSupported)
        return PurgeCannotOpen;
    const bool blnKnown = !Failed(fault);
    const bool blnEndAllocated = blnKnown && !allocated.empty() && allocated.back().To >= from;
    if (work.Job.SlackOnly) {
        if (!blnEndAllocated)
            work.Ranges.clear();
        return PurgeDone;
    }
    const std::uint64_t end = work.Ranges[0].To;
    if (!blnKnown) {
        work.Ranges[0].To = from;
        return PurgeDone;
    }
    work.Ranges = std::move(allocated);
    if (blnEndAllocated)
        work.Ranges.back().To = end;
    return PurgeDone;
}

/// Takes the length that the open file has. What differs from the length in which the last
/// overwrite left it is somebody's: it becomes the file's own, to be covered up to its end.
std::int16_t TakeLength(Overwrite& work, std::int64_t length) {
    PurgeTarget& target = work.Target;
    if (work.Job.SlackOnly && length != target.Length)
        return PurgeFileChanged;
    if (length != target.Left)
        target.Length = length;
    work.FileEnd = length;
    return PurgeDone;
}

std::int16_t SeekToRange(Overwrite& work) {
    const std::uint64_t from = work.Ranges[work.RangeIndex].From;
    const bool blnThere = from == static_cast<std::uint64_t>(work.Position);
    work.Position = static_cast<std::int64_t>(from);
    return blnThere || !Failed(platform::SeekTo(work.File, from)) ? PurgeDone : PurgeWriteFailed;
}

std::int16_t BeginOverwrite(Overwrite& work) {
    PurgeTarget& target = work.Target;
    platform::OpenFileFacts facts;
    work.Opening = work.Job.Trouble = OpenTarget(target, work.File, facts);
    if (Failed(work.Opening))
        return PurgeCannotOpen;
    // Or those of a stream; or of another file that somebody has put in its place meanwhile.
    work.Job.HardLinks = std::max(work.Job.HardLinks, facts.HardLinks);
    if (work.Job.RefuseSeveralNames && work.Job.HardLinks > 1)
        return PurgeSeveralNames;
    std::int16_t result = TakeLength(work, static_cast<std::int64_t>(facts.Length));
    if (result != PurgeDone)
        return result;
    // A stream's name does not tell whether it is sparse.
    target.MayBeSparse = target.MayBeSparse || (facts.Allocated < facts.Length &&
                                                target.Path.find(':', 2) != std::string::npos);
    result = FindRanges(work);
    if (work.Job.SlackOnly && !work.Ranges.empty() && MayBeInRecord(work))
        work.Ranges.clear();
    target.NoSlack = work.Job.SlackOnly && work.Ranges.empty();
    std::int64_t blocks = 0;
    for (const platform::Range& range : work.Ranges)
        blocks += RoundedUp(static_cast<std::int64_t>(range.To - range.From), work.BlockSize) /
                  work.BlockSize;
    work.Blocks = blocks;
    if (result != PurgeDone || blocks == 0)
        return result;
    work.Job.HasWritten = true; // from here on a fault leaves nobody sure of the contrary
    const std::int64_t small = std::max<std::int64_t>(lngLargestRecord, work.Job.Clusters.Block);
    if (work.Job.FirstOverwrite && !work.Job.SlackOnly && target.Length > 0 &&
        target.Length < small && work.Ranges[0].To > facts.Length && work.Ranges[0].From == 0)
        result = OverwriteInItsRecord(work);
    return result == PurgeDone ? SeekToRange(work) : result;
}

/// The run that was to end the file found no room for all of it. What the file has is there: its
/// clusters up to their end, or in a record the bytes themselves. The range then ends there.
platform::Fault WriteWhatHasRoom(Overwrite& work, std::int64_t end) {
    const std::int64_t length = work.Target.Length;
    const std::int64_t realEnd = RoundedUp(length, work.Job.Clusters.Real);
    const std::int64_t shorterEnds[] = {work.Job.SlackOnly ? length + work.Slack : end, realEnd,
                                        lngFatLimit - 1, work.Job.SlackOnly ? realEnd : length};
    for (const std::int64_t shorter : shorterEnds) {
        if (shorter >= end || shorter < length || (work.Job.SlackOnly && shorter == 0))
            continue;
        work.Ranges.back().To = static_cast<std::uint64_t>(std::max(shorter, work.Position));
        if (shorter <= work.Position)
            return platform::Fault::None;
        end = shorter;
        if (Failed(platform::SeekTo(work.File, static_cast<std::uint64_t>(work.Position))))
            return platform::Fault::WriteFault;
        const auto size = static_cast<std::size_t>(shorter - work.Position);
        const platform::Fault fault = platform::WriteBytes(work.File, work.Run.data(), size);
        if (fault != platform::Fault::DiskFull)
            return fault;
    }
    return platform::Fault::DiskFull;
}

std::int16_t WriteRun(Overwrite& work) {
    const platform::Range& range = work.Ranges[work.RangeIndex];
    const std::int64_t wanted =
        work.BlocksDone == 0 && work.FirstBlockAlone ? 1 : work.BlocksPerRun;
    const auto to = static_cast<std::int64_t>(range.To);
    const std::int64_t end = std::min(work.Position + wanted * work.BlockSize, to);
    const std::int64_t size = end - work.Position;
    work.Written = true;
    platform::Fault fault =
        platform::WriteBytes(work.File, work.Run.data(), static_cast<std::size_t>(size));
    work.EndUnknown = work.EndUnknown || Failed(fault);
    if (fault == platform::Fault::DiskFull && work.RangeIndex + 1 == work.Ranges.size() &&
        end == to)
        fault = WriteWhatHasRoom(work, end);
    if (Failed(fault))
        return ResultOfWriteFault(work, fault);
    work.BlocksDone += RoundedUp(size, work.BlockSize) / work.BlockSize;
    work.Position = end;
    work.FileEnd = std::max(work.FileEnd, end);
    if (end < to)
        return PurgeDone;
    ++work.RangeIndex;
    return work.RangeIndex < work.Ranges.size() ? SeekToRange(work) : std::int16_t{PurgeDone};
}

} // namespace

bool StepOverwrite(Overwrite& work) {
    if (!work.File.IsOpen())
        work.Result = BeginOverwrite(work);
    if (work.Result == PurgeDone && work.RangeIndex < work.Ranges.size()) {
        work.Result = WriteRun(work);
        if (work.Result == PurgeDone)
            return true;
    }
    if (work.Result == PurgeDone && work.Job.VerifiesNow && work.Written) {
        work.Result = FlushOverwrite(work);
        if (work.Result == PurgeDone && StepReadBack(work))
            return true;
    }
    if (work.File.IsOpen())
        FinishOverwrite(work);
    work.Ended = true;
    return false;
}
