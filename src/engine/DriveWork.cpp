// Which drives are quick enough for the interface thread: a stick may take half a second for a
// flush, a disk that sleeps ten seconds to spin up.
#include "engine/DriveWork.h"

#include "platform/Folders.h"
#include "platform/System.h"
#include "support/Paths.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

/// A step that takes so many milliseconds keeps a person waiting when there are several.
constexpr std::uint64_t lngSlowStep = 50;
/// Milliseconds after which a drive that nobody used may be asleep.
constexpr std::uint64_t lngIdle = 10'000;
/// Steps by which a drive shows whether it is quick. What the system has in memory is there at
/// once even of a drive that sleeps: a single step would prove nothing.
constexpr int intTrials = 16;

struct DriveSpeed {
    bool blnSlow = false; ///< for good
    int intTrialsLeft = intTrials;
    std::uint64_t lngLastUse = 0; ///< tick count
};

/// By letter; the last one for whatever has none.
std::array<DriveSpeed, 27> speeds;

DriveSpeed& SpeedOf(const std::string& path) {
    const char letter = DriveLetterOf(path);
    return speeds[letter >= 'A' && letter <= 'Z' ? static_cast<std::size_t>(letter - 'A') : 26];
}

/// Whether a brief step may be done on this thread. Counts as a trial when it may not yet.
bool TakesBriefSteps(DriveSpeed& speed) {
    if (platform::TickCount() - speed.lngLastUse >= lngIdle)
        speed.intTrialsLeft = intTrials;
    if (speed.blnSlow)
        return false;
    if (speed.intTrialsLeft == 0)
        return true;
    --speed.intTrialsLeft;
    return false;
}

} // namespace

void RunStepsOnDrive(const std::string& path, ui::Effort effort, const std::function<bool()>& step,
                     const std::function<bool()>& poll) {
    DriveSpeed& speed = SpeedOf(path);
    if (effort == ui::Effort::Long) { // long by its size: tells nothing of the drive
        ui::RunSteps(effort, step, poll);
        speed.lngLastUse = platform::TickCount();
        return;
    }
    std::uint64_t lngLongest = 0; // the steps' own until they have ended
    ui::RunSteps(
        TakesBriefSteps(speed) ? ui::Effort::Brief : ui::Effort::Long,
        [&] {
            const std::uint64_t lngBegan = platform::TickCount();
            const bool blnMore = step();
            lngLongest = std::max(lngLongest, platform::TickCount() - lngBegan);
            return blnMore;
        },
        poll);
    speed.blnSlow = speed.blnSlow || lngLongest >= lngSlowStep;
    speed.lngLastUse = platform::TickCount();
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

void WakeDrive(const std::string& folder) {
    DriveSpeed& speed = SpeedOf(folder);
    const bool blnAwake = !speed.blnSlow && speed.intTrialsLeft == 0 &&
                          platform::TickCount() - speed.lngLastUse < lngIdle;
    if (blnAwake)
        speed.lngLastUse = platform::TickCount();
    else
        WorkOnDrive(folder, [&] {
            (void)platform::EnumerateFolder(folder,
                                            [](const platform::FolderEntry&) { return false; });
        });
}

void ForgetDriveSpeeds() {
    speeds = {};
}
