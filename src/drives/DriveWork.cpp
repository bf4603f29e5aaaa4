// Decides which drives are quick enough for the interface thread. A flush on a stick may take half
// a second, and a sleeping disk ten seconds to spin up.
#include "drives/DriveWork.h"

#include "platform/System.h"
#include "support/Paths.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <utility>
#include <vector>

namespace {

/// Several steps of this length in milliseconds make the user wait noticeably.
constexpr std::uint64_t lngSlowStep = 50;
/// A drive unused for this many milliseconds may be asleep.
constexpr std::uint64_t lngIdle = 10'000;
/// Number of steps after which a drive counts as quick. A single step would prove nothing: the
/// system's cache answers at once even for a sleeping drive.
constexpr int intTrials = 16;

struct DriveSpeed {
    bool blnSlow = false; ///< never reset by later quick steps
    int intTrialsLeft = intTrials;
    std::uint64_t lngLastUse = 0; ///< tick count
};

/// By letter; the last entry is for paths without a letter.
std::array<DriveSpeed, 27> speeds;

DriveSpeed& SpeedOf(const std::string& path) {
    const char letter = DriveLetterOf(path);
    return speeds[letter >= 'A' && letter <= 'Z' ? static_cast<std::size_t>(letter - 'A') : 26];
}

/// Whether a brief step may run on this thread.
bool IsQuick(DriveSpeed& speed) {
    if (platform::TickCount() - speed.lngLastUse >= lngIdle)
        speed.intTrialsLeft = intTrials;
    return !speed.blnSlow && speed.intTrialsLeft == 0;
}

void NoteStep(DriveSpeed& speed, std::uint64_t lngMilliseconds) {
    speed.blnSlow = speed.blnSlow || lngMilliseconds >= lngSlowStep;
    speed.intTrialsLeft -= speed.intTrialsLeft > 0 ? 1 : 0;
    speed.lngLastUse = platform::TickCount();
}

} // namespace

void RunStepsOnDrive(const std::string& path, ui::Effort effort, const std::function<bool()>& step,
                     const std::function<bool()>& poll) {
    DriveSpeed& speed = SpeedOf(path);
    if (effort == ui::Effort::Long) { // long because of its size: tells nothing about the drive
        ui::RunSteps(effort, step, poll);
        speed.lngLastUse = platform::TickCount();
        return;
    }
    std::uint64_t lngLongest = 0; // used by the steps' thread only, until they have ended
    ui::RunSteps(
        IsQuick(speed) ? ui::Effort::Brief : ui::Effort::Long,
        [&] {
            const std::uint64_t lngBegan = platform::TickCount();
            const bool blnMore = step();
            lngLongest = std::max(lngLongest, platform::TickCount() - lngBegan);
            return blnMore;
        },
        poll);
    NoteStep(speed, lngLongest);
}

void WorkOnDrive(const std::string& path, const std::function<void()>& work) {
    RunStepsOnDrive(
        path, ui::Effort::Brief,
        [&] {
            work();
            return false;
        },
        [] { return true; });
}

bool MayKeepWaiting(const std::string& path) {
    return !IsQuick(SpeedOf(path));
}

platform::Fault EnumerateOnDrive(const std::string& folder,
                                 const std::function<bool(const platform::FolderEntry&)>& visit,
                                 const std::function<void()>& whileWaiting) {
    DriveSpeed& speed = SpeedOf(folder);
    auto fault = platform::Fault::None;
    if (IsQuick(speed)) {
        fault = platform::EnumerateFolder(folder, visit);
        speed.lngLastUse = platform::TickCount();
        return fault;
    }
    std::mutex guard; // protects `found`
    std::vector<platform::FolderEntry> found;
    std::atomic<bool> blnEnded = false; // set when `visit` returns false
    const auto visitFound = [&] {
        std::vector<platform::FolderEntry> entries;
        {
            const std::scoped_lock lock(guard);
            entries.swap(found);
        }
        for (const platform::FolderEntry& entry : entries)
            if (!blnEnded && !visit(entry))
                blnEnded = true;
    };
    const std::uint64_t lngBegan = platform::TickCount();
    std::uint64_t lngUntilFirst = 0;
    ui::RunSteps(
        ui::Effort::Long,
        [&] {
            bool blnFirst = true; // the number of entries tells nothing about the drive
            fault = platform::EnumerateFolder(folder, [&](const platform::FolderEntry& entry) {
                if (std::exchange(blnFirst, false))
                    lngUntilFirst = platform::TickCount() - lngBegan;
                const std::scoped_lock lock(guard);
                found.push_back(entry);
                return !blnEnded;
            });
            return false;
        },
        [&] {
            whileWaiting();
            visitFound();
            return true;
        });
    NoteStep(speed, lngUntilFirst);
    visitFound();
    return blnEnded ? platform::Fault::None : fault;
}

void ForgetDriveSpeeds() {
    speeds = {};
}
