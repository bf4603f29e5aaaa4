// The clock of a run: elapsed and remaining time, files and bytes done.
#include "report/run/RunClock.h"

#include "engine/PurgeJob.h"
#include "platform/System.h"
#include "report/run/Run.h"
#include "support/Numbers.h"
#include "support/StrProc.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint64_t lngBeforeRemaining = 2000;    // ms; earlier estimates are unreliable
constexpr double dblLongestRemaining = 365.0 * 86400; // s; longer estimates are meaningless

std::function<double()> shareOfClock; // empty while the clock is stopped
std::function<void()> showOfClock;
std::uint64_t lngStartTick = 0;
std::uint64_t lngPauseTick = 0;
std::uint64_t lngSecondShown = 0;
bool blnInPause = false;
std::int64_t lngFilesDone = 0;
double dblBytesDone = 0;
double dblBytesAtWork = 0, dblFilesAtWork = 0;
/// Of files that were purged side by side and are still to be noted as done.
double dblBytesToNote = 0, dblFilesToNote = 0;

} // namespace

void BeginClock(std::function<double()> share, std::function<void()> show) {
    shareOfClock = std::move(share);
    showOfClock = std::move(show);
    lngStartTick = platform::TickCount();
    blnInPause = false;
    lngFilesDone = 0;
    dblBytesDone = dblBytesAtWork = dblFilesAtWork = dblBytesToNote = dblFilesToNote = 0;
    ShowClock();
}

void EndClock() {
    shareOfClock = nullptr;
    showOfClock = nullptr;
}

bool ClockRuns() {
    return shareOfClock != nullptr;
}

void PauseClock(bool blnPaused) {
    if (blnPaused == blnInPause || !ClockRuns())
        return;
    if (blnPaused)
        lngPauseTick = platform::TickCount();
    else
        lngStartTick += platform::TickCount() - lngPauseTick;
    blnInPause = blnPaused;
    ShowClock();
}

bool ClockIsPaused() {
    return blnInPause;
}

void ShowClock() {
    if (!ClockRuns())
        return;
    lngSecondShown = ClockElapsed() / 1000;
    showOfClock();
}

void RefreshClock() {
    if (ClockElapsed() / 1000 != lngSecondShown) // painting takes milliseconds, too
        ShowClock();
}

std::uint64_t ClockElapsed() {
    return (blnInPause ? lngPauseTick : platform::TickCount()) - lngStartTick;
}

double ClockShare() {
    return ClockRuns() ? std::min(shareOfClock(), 1.0) : -1;
}

std::string ClockText(double dblMilliseconds) {
    const auto seconds = static_cast<std::int64_t>(dblMilliseconds / 1000);
    return SecondsText(seconds, false, seconds >= 3600);
}

std::string ElapsedText() {
    return "Elapsed: " + ClockText(static_cast<double>(ClockElapsed())) + ".";
}

std::string RemainingText() {
    const double share = ClockShare();
    const std::uint64_t elapsed = ClockElapsed();
    if (share <= 0 || share >= 1 || elapsed < lngBeforeRemaining)
        return {};
    const double remaining = static_cast<double>(elapsed) * (1 - share) / share;
    return remaining < dblLongestRemaining * 1000
               ? "Remaining: about " + ClockText(remaining + 999) + "."
               : std::string();
}

namespace {
void TakeFromNote(double bytes) {
    dblBytesToNote = std::max(dblBytesToNote - bytes, 0.0);
    dblFilesToNote = std::max(dblFilesToNote - 1, 0.0);
}
} // namespace

void NoteFileDone(double dblBytes, bool blnPurged) {
    ++lngFilesDone;
    double& expected = currentRun.Request.dblBytesExpected;
    if (blnPurged)
        dblBytesDone += dblBytes;
    else
        expected = std::max(expected - dblBytes, 0.0);
    if (dblFilesAtWork == 0)
        TakeFromNote(dblBytes);
    dblBytesAtWork = dblFilesAtWork = 0;
}

std::int64_t FilesDone() {
    return lngFilesDone;
}

void NoteFileBegun(std::int64_t lngBytes) {
    NoteFilesBegun(static_cast<double>(lngBytes), 1);
    TakeFromNote(dblBytesAtWork);
}

void NoteFilesBegun(double dblBytes, std::int64_t lngFiles) {
    dblBytesAtWork = dblBytes;
    dblFilesAtWork = static_cast<double>(lngFiles);
}

void NoteFilesOverwritten() {
    dblBytesToNote = std::exchange(dblBytesAtWork, 0);
    dblFilesToNote = std::exchange(dblFilesAtWork, 0);
}

// ClockShare limits the result: files may have been added or have grown since the count.
double ShareOfRun() {
    const RunRequest& request = currentRun.Request;
    const double dblShare = PurgeShareDone();
    if (request.dblBytesExpected > 0 && !request.How.blnPurgeSlackOnly)
        return (dblBytesDone + dblBytesToNote + dblShare * dblBytesAtWork) /
               request.dblBytesExpected;
    if (request.lngNumFilesExpected > 0)
        return (static_cast<double>(lngFilesDone) + dblFilesToNote + dblShare * dblFilesAtWork) /
               static_cast<double>(request.lngNumFilesExpected);
    return -1;
}
