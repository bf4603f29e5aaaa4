// The paths of a command, from the command line and from files, specified for a run.
#pragma once

#include "cli/CommandLine.h"

#include <string>

/// Adds the paths that --from names, and makes all of them full: before the current folder changes.
/// "" or what is wrong.
std::string CompletePaths(CommandLine& line);
/// Specifies what the paths name as the main window does. False, with a message, when one of them
/// is not there or cannot be purged where it is.
bool TakePaths(const CommandLine& line);
