// The paths of a command, from the command line and from lists, specified for a run.
#pragma once

#include "cli/CommandLine.h"

#include <string>

/// Adds the paths of the list that --from names, and makes the arguments, if they are paths, and
/// the report's path full: before the current folder changes. "" or what is wrong.
std::string CompletePaths(CommandLine& line, bool blnPaths);
/// Specifies what the paths name as the main window does. False, with a message, when one of them
/// is not there or cannot be purged where it is.
bool TakePaths(const CommandLine& line);
