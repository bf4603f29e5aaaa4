// Files that another program holds: what fails for that is tried again for a while.
#pragma once

#include "platform/Fault.h"

#include <functional>

/// A run or a command begins: it may spend ten seconds in all on files that stay held.
void ResetHeldFileWaits();
/// Calls `attempt`, and again, with short waits in which messages are pumped, as long as it returns
/// SharingViolation: for two seconds at most, or what is left of the run's ten. A stop (blnStop)
/// ends the waiting. The last outcome. Not to be called inside a step of ui::RunSteps.
platform::Fault TryWhileHeld(const std::function<platform::Fault()>& attempt);
