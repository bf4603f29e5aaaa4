// What a person should know of a drive before something on it is purged.
#pragma once

#include <string>

/// One or two sentences on what a purge cannot do well on this drive; "" where nothing is known
/// that matters. The drive may have to spin up for it: messages are pumped meanwhile.
std::string DriveRemarks(char chrDrive);
