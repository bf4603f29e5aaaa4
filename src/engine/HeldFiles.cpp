// Waiting for files that a virus scanner, an indexer or a backup holds for a moment.
#include "engine/HeldFiles.h"

#include "platform/System.h"
#include "session/Session.h"
#include "ui/Interface.h"

#include <algorithm>
#include <cstdint>

namespace {

// All in milliseconds.
constexpr std::int64_t lngPerFile = 2'000;
constexpr std::int64_t lngPerRun = 10'000;
constexpr std::int64_t lngAfterStop = 100; ///< nobody feels it, and most holders are gone by then
constexpr int intFirstWait = 10;
constexpr int intLongestWait = 100;

/// What the run may still wait for in vain. A wait that ends well costs it nothing: the next
/// thousand files that a scanner looks into for a moment must not fail for it.
std::int64_t lngLeft = lngPerRun;

} // namespace

void ResetHeldFileWaits() {
    lngLeft = lngPerRun;
}

platform::Fault TryWhileHeld(const std::function<platform::Fault()>& attempt) {
    platform::Fault fault = attempt();
    const std::uint64_t lngBegan = platform::TickCount();
    std::int64_t lngWaited = 0;
    int intWait = intFirstWait;
    while (fault == platform::Fault::SharingViolation &&
           lngWaited < std::min(lngLeft, blnStop ? lngAfterStop : lngPerFile)) {
        ui::Wait(intWait);
        // By the sum of the waits, too: while the program ends they return at once.
        lngWaited = std::max(lngWaited + intWait,
                             static_cast<std::int64_t>(platform::TickCount() - lngBegan));
        intWait = std::min(2 * intWait, intLongestWait);
        fault = attempt();
    }
    if (fault == platform::Fault::SharingViolation)
        lngLeft = std::max<std::int64_t>(lngLeft - lngWaited, 0);
    return fault;
}
