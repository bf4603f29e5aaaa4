// Prepares one overwrite and runs its steps: runs of blocks, progress, stop, waiting for held
// files.
#include "engine/OverwriteFile.h"

#include "drives/DriveWork.h"
#include "engine/HeldFiles.h"
#include "engine/OverwriteBuffers.h"
#include "engine/OverwriteSteps.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "ui/Interface.h"

#include <algorithm>

namespace {

/// The most that goes to the system in one call: the same bytes as block by block, at the disk's
/// speed. Larger runs bring nothing.
constexpr std::int64_t lngLongestRun = std::int64_t{1} << 20;
/// Up to here an overwrite and its flush are done on the interface thread where the drive is quick:
/// handing them to the I/O thread and waiting for it would cost more than they do.
constexpr std::int64_t lngBriefLength = std::int64_t{256} << 10;
/// In the free-space purge the figure is looked at every so many blocks.
constexpr std::int64_t lngBlocksPerFigure = 50;
/// A run holds at least so much: a small file is written in one before it grows.
constexpr std::int64_t lngShortestRun = 4096;

ui::Effort EffortFor(std::int64_t lngLength) {
    return lngLength <= lngBriefLength ? ui::Effort::Brief : ui::Effort::Long;
}

/// All steps, and again while another program holds the file: what fails for that is the opening,
/// before the first byte.
void RunStepsOf(Overwrite& work, const std::function<bool()>& poll) {
    (void)TryWhileHeld([&] {
        work.Opening = platform::Fault::None;
        work.Result = PurgeDone;
        work.Ended = false;
        RunStepsOnDrive(
            work.Target.Path, work.Effort, [&] { return StepOverwrite(work); }, poll);
        return work.Opening;
    });
}

/// The status line of the free-space purge: the figure of the last of the blocks 1, 51, 101 ...
/// that is written, when that is a new one. The writing does not wait for it, so that figures can
/// be left out where the disk is fast. With several overwrites in a pass it runs through the same
/// range again in each of them: deliberately so.
void ShowPurgeFigure(const Overwrite& work, std::int64_t& lngShown) {
    const std::int64_t i = (work.BlocksDone - 1) / lngBlocksPerFigure * lngBlocksPerFigure + 1;
    if (work.BlocksDone < 1 || i <= lngShown)
        return;
    lngShown = i;
    const auto dblBlocks = static_cast<double>(work.Blocks);
    const double dblAll = static_cast<double>(work.Job.Passes) * dblBlocks;
    const double dblDone =
        static_cast<double>(work.Job.PassesDone) * dblBlocks + static_cast<double>(i);
    SetMainLine(MainLine::Status, FormatNumber(dblDone * 100 / dblAll, 0) + "% of purge done.");
    RepaintMain();
}

std::int16_t RunOverwrite(Overwrite& work) {
    std::int64_t lngShown = 0;
    const double dblBefore = work.Job.BytesOverwritten;
    const auto tellBytes = [&] {
        work.Job.BytesOverwritten =
            dblBefore + static_cast<double>(work.BlocksDone * work.BlockSize + work.BytesRead);
    };
    // After the last byte a stop changes nothing any more where only the flush is left to do; what
    // was to be read back and was not is not verified. A program that is ending has no time for the
    // rest of a pass. The thread may write the last blocks while the stop is seen.
    const auto isStopped = [&] {
        const bool blnReads = work.Job.VerifiesNow && !work.Ended;
        return (blnPurgingFreeSpace || ui::Ending()) && blnStop &&
               (work.BlocksDone < work.Blocks || blnReads);
    };
    RunStepsOf(work, [&] {
        tellBytes();
        if (isStopped())
            return false;
        if (blnPurgingFreeSpace)
            ShowPurgeFigure(work, lngShown);
        return true;
    });
    tellBytes();
    const bool blnEnded = !work.File.IsOpen();
    if (!blnEnded) // stopped between two steps
        RunStepsOnDrive(
            work.Target.Path, work.Effort,
            [&] {
                FinishOverwrite(work);
                return false;
            },
            [] { return true; });
    if (work.Result != PurgeDone)
        return work.Result;
    if (isStopped())
        return PurgeStopped;
    if (blnPurgingFreeSpace)
        ShowPurgeFigure(work, lngShown);
    return PurgeDone;
}

/// Random slack is as many draws long as it has bytes; beyond this it repeats them.
constexpr std::int64_t lngLargestSlackBlock = 65536;

/// Neither progress nor a stop there.
void PrepareSlack(Overwrite& work, std::int16_t value) {
    const PurgeTarget& target = work.Target;
    const std::int64_t covered = work.Job.Clusters.Covered;
    const std::int64_t slack = (target.Length / covered + 1) * covered - target.Length;
    const std::string fill = SlackFill(value, std::min(slack, lngLargestSlackBlock));
    work.Slack = slack;
    work.BlockSize = static_cast<std::int64_t>(fill.size());
    work.Blocks = RoundedUp(slack, work.BlockSize) / work.BlockSize;
    work.BlocksPerRun = std::clamp<std::int64_t>(lngLongestRun / work.BlockSize, 1, work.Blocks);
    for (std::int64_t i = 0; i < work.BlocksPerRun; ++i)
        work.Run += fill;
    // A flush concerns the whole file.
    work.Effort = EffortFor(std::max(target.Length, slack));
}

void PrepareWhole(Overwrite& work, std::int16_t value, const OverwriteBlocks& blocks) {
    work.BlockSize = work.Job.Clusters.Block;
    // By the length that is known; how many there are is seen once the file is open.
    const std::int64_t end =
        RoundedUp(std::max<std::int64_t>(work.Target.Length, 1), work.Job.Clusters.Covered);
    work.Blocks = RoundedUp(end, work.BlockSize) / work.BlockSize;
    work.BlocksPerRun = std::clamp<std::int64_t>(lngLongestRun / work.BlockSize, 1, work.Blocks);
    if (blnPurgingFreeSpace) {
        // Runs that end where figures are due, as far as that does not make them too short or long.
        constexpr std::int64_t lngStep = lngBlocksPerFigure;
        work.FirstBlockAlone = true;
        if (work.BlocksPerRun > lngStep)
            work.BlocksPerRun =
                std::max<std::int64_t>(lngBriefLength / work.BlockSize / lngStep, 1) * lngStep;
    }
    work.BlocksPerRun =
        std::max(work.BlocksPerRun, RoundedUp(lngShortestRun, work.BlockSize) / work.BlockSize);
    work.Run = RunOfBlocks(blocks, value, work.BlocksPerRun);
    work.Effort = EffortFor(end);
}

} // namespace

std::int16_t OverwriteFileOnce(PurgeJob& job, PurgeTarget& target, std::int16_t value,
                               const OverwriteBlocks& blocks) {
    Overwrite work{job, target};
    if (job.SlackOnly) {
        if (target.NoSlack)
            return PurgeDone;
        PrepareSlack(work, value);
        RunStepsOf(work, [] { return true; });
        return work.Result;
    }
    if ((blnPurgingFreeSpace || ui::Ending()) && blnStop) // before the first byte
        return PurgeStopped;
    PrepareWhole(work, value, blocks);
    return RunOverwrite(work);
}

std::int16_t OverwriteFileAtOnce(PurgeJob& job, PurgeTarget& target, std::int16_t value,
                                 const OverwriteBlocks& blocks) {
    Overwrite work{job, target};
    if (job.SlackOnly && target.NoSlack)
        return PurgeDone;
    if (job.SlackOnly)
        PrepareSlack(work, value);
    else
        PrepareWhole(work, value, blocks);
    while (StepOverwrite(work)) {
    }
    return work.Result;
}
