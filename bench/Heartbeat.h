// How long the interface stands still: a visible window is sent a message every other millisecond
// by another thread, and the longest time between two that it handles is taken.
#pragma once

#include <functional>

namespace bench {

/// Makes the window on the first call. Runs `work` on this thread; the longest stretch in seconds.
double LongestStretch(const std::function<void()>& work);
void EndHeartbeat(); ///< takes the window away

} // namespace bench
