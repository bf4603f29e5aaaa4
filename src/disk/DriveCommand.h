// What surrounds each command on drives.
#pragma once

#include <functional>

/// Runs one command with the menu disabled. Afterwards, however the command ended, no dummy file is
/// left, all run flags are reset and the menu is enabled.
void RunDriveCommand(const std::function<void()>& command);
