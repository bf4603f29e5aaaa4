// Remarks on limits of a drive that the user should know before a purge.
#pragma once

#include <string>

/// One or two sentences on what a purge cannot do well on this drive; "" when nothing relevant is
/// known. The drive may have to spin up: messages are pumped meanwhile.
std::string DriveRemarks(char chrDrive);
