// The paths of a command, from the command line and from files, settled to what a run works on.
#pragma once

#include "cli/CommandLine.h"
#include "report/run/Run.h"

#include <string>

/// Adds the paths that --from names, and makes all of them full: before the current folder changes.
/// "" or what is wrong.
std::string CompletePaths(CommandLine& line);
/// Settles the paths into items of a run. False, with a message, when one of them is not there or
/// cannot be purged where it is.
bool TakeItems(const CommandLine& line, RunRequest& request);
