#include "engine/OverwriteFile.h"

#include "engine/DriveWork.h"
#include "engine/EngineNeeds.h"
#include "engine/FilePurge.h"
#include "engine/HeldFiles.h"
#include "engine/OverwriteBuffers.h"
#include "platform/Files.h"
#include "shell/Session.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "ui/Interface.h"

#include <algorithm>
#include <atomic>

namespace {

/// The most that goes to the system in one call: the same bytes as block by block, at the disk's
/// speed. Larger runs bring nothing.
constexpr std::int64_t lngLongestRun = std::int64_t{1} << 20;
/// Up to here an overwrite and its flush are done on the interface thread where the drive is quick:
/// handing them to the I/O thread and waiting for it would cost more than they do.
constexpr std::int64_t lngBriefLength = std::int64_t{256} << 10;
/// On FAT a file ends a byte short of this at the latest, although its last cluster reaches up to
/// it.
constexpr std::int64_t lngFatLimit = std::int64_t{1} << 32;
/// In the free-space purge the figure is looked at every so many blocks.
constexpr std::int64_t lngBlocksPerFigure = 50;

ui::Effort EffortFor(std::int64_t lngLength) {
    return lngLength <= lngBriefLength ? ui::Effort::Brief : ui::Effort::Long;
}

/// An overwrite under way. What follows lngBlocksDone belongs to the steps until they have ended.
struct Overwrite {
    std::string Path;
    const std::string* Run = nullptr; ///< what one call writes: the block, as often as will do
    std::int64_t Start = 0;           ///< position of the first write
    std::int64_t BlockSize = 0, Blocks = 0, BlocksPerRun = 1;
    std::int64_t OwnLength = 0; ///< bytes to write and flush before the first block; 0 none
    ui::Effort Effort = ui::Effort::Long;
    bool First = blnFirstOverwrite; ///< of this file
    bool FirstBlockAlone = false, FirstBlockOnly = false;
    std::atomic<std::int64_t> BlocksDone = 0;
    platform::File File;
    platform::Fault Opening = platform::Fault::None;
    std::int16_t Result = PurgeDone;
};

/// Forces the data to the disk. A device that knows no flush holds nothing back; any other fault
/// means that what was written may never get there.
std::int16_t FlushOverwrite(const Overwrite& work) {
    const platform::Fault fault = platform::FlushBytes(work.File);
    return Failed(fault) && fault != platform::Fault::NotSupported ? PurgeFlushFailed : PurgeDone;
}

void FinishOverwrite(Overwrite& work) {
    if (work.Result == PurgeDone)
        work.Result = FlushOverwrite(work);
    if (Failed(platform::CloseFile(work.File)) && work.Result == PurgeDone)
        work.Result = PurgeWriteFailed;
}

/// Writes the first bytes of a small file over it without making it longer, and flushes them. The
/// file system may keep so small a file in its own records, and would move it out, leaving the old
/// bytes behind, at the first write that reaches past its end.
std::int16_t OverwriteInItsRecord(const Overwrite& work) {
    const auto size = static_cast<std::size_t>(work.OwnLength);
    if (Failed(platform::WriteBytes(work.File, work.Run->data(), size)))
        return PurgeWriteFailed;
    const std::int16_t result = FlushOverwrite(work);
    if (result != PurgeDone)
        return result;
    return Failed(platform::SeekTo(work.File, 0)) ? PurgeWriteFailed : PurgeDone;
}

std::int16_t BeginOverwrite(Overwrite& work) {
    work.Opening = platform::OpenFile(work.Path, platform::Access::Change, work.File);
    if (Failed(work.Opening))
        return PurgeCannotOpen;
    std::uint32_t lngNames = 0;
    if (work.First && Failed(platform::ReadHardLinks(work.File, lngNames)))
        return PurgeCannotOpen;
    lngHardLinks = std::max(lngHardLinks, lngNames); // of the file, or now of a stream of it
    if (work.First && blnRefuseSeveralNames && lngHardLinks > 1)
        return PurgeSeveralNames;
    blnBytesWritten = true; // from here on a fault leaves nobody sure of the contrary
    if (work.OwnLength > 0)
        return OverwriteInItsRecord(work);
    if (work.Start > 0 &&
        Failed(platform::SeekTo(work.File, static_cast<std::uint64_t>(work.Start))))
        return PurgeWriteFailed;
    return PurgeDone;
}

std::int16_t WriteRun(Overwrite& work) {
    const std::int64_t done = work.BlocksDone;
    const std::int64_t blocks =
        done == 0 && work.FirstBlockAlone ? 1 : std::min(work.Blocks - done, work.BlocksPerRun);
    const std::int64_t position = done * work.BlockSize;
    const auto size = static_cast<std::size_t>(blocks * work.BlockSize);
    platform::Fault fault = platform::WriteBytes(work.File, work.Run->data(), size);
    if (fault == platform::Fault::DiskFull && done + blocks == work.Blocks &&
        work.Blocks * work.BlockSize == lngFatLimit &&
        !Failed(platform::SeekTo(work.File, static_cast<std::uint64_t>(position))))
        fault = platform::WriteBytes(work.File, work.Run->data(), size - 1);
    if (Failed(fault))
        return PurgeWriteFailed;
    work.BlocksDone = done + blocks;
    return PurgeDone;
}

/// One step; false after the last. May run on the I/O thread.
bool StepOverwrite(Overwrite& work) {
    const bool blnStopHere = work.FirstBlockOnly && work.BlocksDone > 0;
    if (work.BlocksDone < work.Blocks && !blnStopHere) {
        if (!work.File.IsOpen())
            work.Result = BeginOverwrite(work);
        if (work.Result == PurgeDone)
            work.Result = WriteRun(work);
        if (work.Result == PurgeDone)
            return true;
    }
    if (work.File.IsOpen())
        FinishOverwrite(work);
    return false;
}

/// All steps, and again while another program holds the file: what fails for that is the opening,
/// before the first byte.
void RunStepsOf(Overwrite& work, const std::function<bool()>& poll) {
    (void)TryWhileHeld([&] {
        work.Opening = platform::Fault::None;
        work.Result = PurgeDone;
        RunStepsOnDrive(
            work.Path, work.Effort, [&] { return StepOverwrite(work); }, poll);
        return work.Opening;
    });
}

/// The status line of the free-space purge: the figure of the last of the blocks 1, 51, 101 ...
/// that is written, when that is a new one. The writing does not wait for it, so that figures can
/// be left out where the disk is fast. With several overwrites in a pass it runs through the same
/// range again in each of them: deliberately so.
void ShowPurgeFigure(std::int64_t lngBlocksDone, std::int64_t lngBlocks, std::int64_t& lngShown) {
    const std::int64_t i = (lngBlocksDone - 1) / lngBlocksPerFigure * lngBlocksPerFigure + 1;
    if (lngBlocksDone < 1 || i <= lngShown)
        return;
    lngShown = i;
    const double dblAll = std::max<double>(GetNumberOfPasses(), 1) * static_cast<double>(lngBlocks);
    const double dblDone = static_cast<double>(intPassesDone) * static_cast<double>(lngBlocks) +
                           static_cast<double>(i);
    SetMainLine(MainLine::Status, FormatNumber(dblDone * 100 / dblAll, 0) + "% of purge done.");
    RepaintMain();
}

std::int16_t RunOverwrite(Overwrite& work) {
    bool blnStopped = work.FirstBlockOnly;
    std::int64_t lngShown = 0;
    const double dblBefore = dblBytesOverwritten;
    const auto tellBytes = [&] {
        dblBytesOverwritten = dblBefore + static_cast<double>(work.BlocksDone * work.BlockSize);
    };
    RunStepsOf(work, [&] {
        tellBytes();
        if (!blnPurgingFreeSpace)
            return true;
        blnStopped = blnStopped || blnStop;
        if (!blnStopped)
            ShowPurgeFigure(work.BlocksDone, work.Blocks, lngShown);
        return !blnStopped;
    });
    tellBytes();
    if (work.File.IsOpen()) // stopped between two steps
        RunStepsOnDrive(
            work.Path, work.Effort,
            [&] {
                FinishOverwrite(work);
                return false;
            },
            [] { return true; });
    if (work.Result != PurgeDone)
        return work.Result;
    if (blnStopped || (blnPurgingFreeSpace && blnStop)) // the last block, too, counts for a stop
        return PurgeStopped;
    if (blnPurgingFreeSpace)
        ShowPurgeFigure(work.BlocksDone, work.Blocks, lngShown);
    return PurgeDone;
}

std::int16_t OverwriteSlack(const std::string& path, std::int16_t value, std::int64_t clusterSize) {
    const std::int64_t length = lngCurrentFileLength;
    PrepareSlackBuffer(value, (length / clusterSize + 1) * clusterSize - length);
    Overwrite work;
    work.Path = path;
    work.Run = &strSlackFill;
    work.Start = length;
    work.BlockSize = static_cast<std::int64_t>(strSlackFill.size());
    work.Blocks = 1;
    // Neither progress nor a stop here. A flush concerns the whole file.
    work.Effort = EffortFor(length);
    RunStepsOf(work, [] { return true; });
    return work.Result;
}

} // namespace

std::int16_t OverwriteFileOnce(const std::string& path, std::int16_t value, bool slackOnly,
                               std::int32_t clusterSize) {
    if (slackOnly)
        return OverwriteSlack(path, value, clusterSize);

    const std::string& strBlock = BlockOfValue(value);
    Overwrite work;
    work.Path = path;
    work.Run = &strBlock;
    work.BlockSize = clusterSize;
    if (work.First && lngCurrentFileLength < work.BlockSize)
        work.OwnLength = lngCurrentFileLength;
    lngCurrentFileLength = std::max<std::int64_t>(lngCurrentFileLength, 1);
    work.Blocks = (lngCurrentFileLength - 1) / work.BlockSize + 1;

    work.BlocksPerRun = std::clamp<std::int64_t>(lngLongestRun / work.BlockSize, 1, work.Blocks);
    if (blnPurgingFreeSpace) {
        // Runs that end where figures are due, as far as that does not make them too short or long.
        constexpr std::int64_t lngStep = lngBlocksPerFigure;
        work.FirstBlockAlone = true;
        work.FirstBlockOnly = blnStop;
        if (work.BlocksPerRun > lngStep)
            work.BlocksPerRun =
                std::max<std::int64_t>(lngBriefLength / work.BlockSize / lngStep, 1) * lngStep;
    }
    std::string strRun;
    if (work.BlocksPerRun > 1) {
        strRun.reserve(static_cast<std::size_t>(work.BlocksPerRun * work.BlockSize));
        for (std::int64_t i = 0; i < work.BlocksPerRun; ++i)
            strRun += strBlock;
        work.Run = &strRun;
    }
    work.Effort = EffortFor(work.Blocks * work.BlockSize);
    return RunOverwrite(work);
}
