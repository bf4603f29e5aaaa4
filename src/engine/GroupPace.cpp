// The number of threads grows as long as that gains something, at first by steps of four. A
// rotating disk may prefer one. What is best may change while others use the disk, and is tried
// again from time to time.
#include "engine/GroupPace.h"

#include "support/Paths.h"
#include "support/Workers.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace {

/// A group has this many files for each thread, so that none of the threads waits long for others.
constexpr int intFilesPerThread = 8;
/// But while a number of threads is tried, fewer.
constexpr int intTrialFilesPerThread = 2;
constexpr std::size_t intFirstFiles = 4;
/// More threads must take at most this share of the time.
constexpr double dblWorthwhile = 0.9;
/// Seconds: a group takes about so long at most, since a stop waits for its pass.
constexpr double dblLongestGroup = 1;
/// After so many files the next numbers of threads are tried again; after each vain trial after
/// twice as many.
constexpr std::size_t intFilesBetweenTrials = 512;
constexpr std::size_t intMostBetweenTrials = 8192;

struct Pace {
    int Threads = 1;     ///< of the next group
    int Base = 1;        ///< the best so far ...
    double BaseTime = 0; ///< ... in seconds a file; 0: not measured
    bool Settled = false;
    std::size_t Files = 0; ///< measured with `Threads`; when settled since the last trial
    double Seconds = 0;
    std::size_t UntilTrial = intFilesBetweenTrials;
    int Step = 4; ///< so many times the threads are tried next
};

/// By letter; the last entry is for paths without a letter.
std::array<Pace, 27> paces;

Pace& PaceOf(const std::string& path) {
    const int drive = DriveIndexOf(path);
    return paces[drive < 0 ? 26 : static_cast<std::size_t>(drive)];
}

/// How many files tell how good a number of threads is.
std::size_t FilesOfTrial(int threads) {
    return std::max(intFirstFiles, static_cast<std::size_t>(threads * intTrialFilesPerThread));
}

void Try(Pace& pace, int threads) {
    pace.Threads = threads;
    pace.Settled = false;
    pace.Files = 0;
    pace.Seconds = 0;
}

void Settle(Pace& pace) {
    Try(pace, pace.Base);
    pace.Settled = true;
    pace.Step = 2;
}

/// What a trial has told leads to the next one, or to the best of them.
void Judge(Pace& pace) {
    const double dblTime = pace.Seconds / static_cast<double>(pace.Files);
    const bool blnBetter = pace.Threads == pace.Base || dblTime <= pace.BaseTime * dblWorthwhile;
    const bool blnFewer = pace.Threads < pace.Base;
    if (blnFewer ? dblTime <= pace.BaseTime : blnBetter) {
        if (pace.Threads != pace.Base)
            pace.UntilTrial = intFilesBetweenTrials;
        pace.Base = pace.Threads;
        pace.BaseTime = dblTime;
        if (!blnFewer && pace.Threads < intMostWorkers)
            return Try(pace, std::min(pace.Threads * pace.Step, intMostWorkers));
        return Settle(pace);
    }
    // More was worse than the base: perhaps less is better.
    const bool blnTriedMore = pace.Threads > pace.Base;
    if (blnTriedMore && pace.Base > 1 && pace.UntilTrial > intFilesBetweenTrials)
        return Try(pace, pace.Base / 2);
    pace.UntilTrial = std::min(pace.UntilTrial * 2, intMostBetweenTrials);
    Settle(pace);
}

} // namespace

void ForgetGroupPaces() {
    paces = {};
}

int ThreadsForGroup(const std::string& path) {
    return intGroupThreads > 0 ? intGroupThreads : PaceOf(path).Threads;
}

std::size_t FilesForGroup(const std::string& path) {
    const Pace& pace = PaceOf(path);
    const int threads = ThreadsForGroup(path);
    std::size_t files = static_cast<std::size_t>(threads * intFilesPerThread);
    if (intGroupThreads > 0)
        return files;
    if (!pace.Settled)
        files = FilesOfTrial(threads);
    if (pace.BaseTime > 0)
        files = std::min(files, static_cast<std::size_t>(dblLongestGroup / pace.BaseTime));
    return std::max(files, static_cast<std::size_t>(threads));
}

void NoteGroupPace(const std::string& path, int intThreads, std::size_t intFiles,
                   double dblSeconds) {
    Pace& pace = PaceOf(path);
    if (intThreads != pace.Threads || intFiles == 0) // a file on its own amid groups
        return;
    pace.Files += intFiles;
    pace.Seconds += dblSeconds;
    if (!pace.Settled) {
        if (pace.Files >= FilesOfTrial(pace.Threads))
            Judge(pace);
    } else if (pace.Files >= pace.UntilTrial && intMostWorkers > 1) {
        // What the best takes now is measured once more before others are compared with it.
        Try(pace, pace.Base);
    }
}
