// The purge of a drive's free space around the dummy files of FillDisk, with its questions.
#pragma once

#include "disk/FillDiskPurge.h"

#include <string>

enum class FreeSpaceResult {
    Purged,
    NoSpace, ///< there was nothing to purge, or not one dummy file could be written
    Stopped, ///< by the user
    Failed   ///< the user was told why
};

/// Fills the free space, purges it and removes every trace; sets and clears blnPurgingFreeSpace.
/// Questions are asked unless blnDisplayDialogBoxesDuringRemainderOfPurgeDrive is false.
FreeSpaceResult PurgeFreeSpaceOf(char chrDrive, const std::string& strTitle);
/// Text about the last purge: how many dummy files failed, how many F10 ended while the user
/// continued with the next, and how much free space could not be filled; "" when all was purged.
std::string UnpurgedText(FreeSpaceResult result);
/// "Purge free space".
void PurgeFreeSpaceCommand();
