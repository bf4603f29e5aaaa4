// Remarks on limits of a drive that the user should know before a purge.
#pragma once

#include <string>
#include <vector>

/// One or two sentences on what a purge cannot do well on this drive; "" when nothing relevant is
/// known. The drive may have to spin up: messages are pumped meanwhile.
std::string DriveRemarks(char chrDrive);
/// The same for the drives of these paths, each once, line by line. Nothing for a volume that is
/// mounted in a folder: nothing is known of its drive.
std::string DriveRemarksOn(const std::vector<std::string>& paths);
