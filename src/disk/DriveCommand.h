// What surrounds each command on drives.
#pragma once

#include "report/run/Run.h"

#include <functional>

/// Runs one command with the menu disabled. Afterwards, however the command ended, no dummy file is
/// left, all run flags are reset and the menu is enabled. It returns what it came to: Idle, Done,
/// Stopped or Failed. Until its report begins, the last run and its report stay.
void RunDriveCommand(const std::function<RunState()>& command);
