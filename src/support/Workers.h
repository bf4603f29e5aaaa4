// A few threads that work side by side for a short while.
#pragma once

#include <functional>

/// The most threads that any work may have. The tests over the fakes are for one.
inline int intMostWorkers = 16;

/// Calls `work` at the same time on this thread and on up to `intThreads` - 1 others, and returns
/// when all these calls have. With fewer threads where the system gives no more. `work` must not
/// call ui:: functions.
void RunSideBySide(int intThreads, const std::function<void()>& work);
