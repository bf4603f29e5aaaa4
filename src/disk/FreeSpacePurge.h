// The purge of a drive's free space around the dummy files of FillDisk, with its questions.
#pragma once

#include "disk/FillDiskPurge.h"

#include <string>

enum class FreeSpaceResult {
    Purged,
    NoSpace, ///< there was nothing to purge
    Stopped, ///< by the user
    Failed   ///< the user was told why
};

/// Reads free bytes and cluster facts of a drive into dblSpaceInFreeClusters; false when the system
/// does not tell.
bool ReadFreeSpace(char chrDrive);
/// Computes number and size of the dummy files for dblSpaceInFreeClusters, into intNumDummyFiles
/// and dblMaxSizeDummyFile.
void PlanDummyFiles(char chrDrive);
/// Seconds to write the planned dummy files once, by the drive's measured speed.
double SecondsToFill(char chrDrive);

/// Fills the free space, purges it and removes every trace; sets and clears blnPurgingFreeSpace.
/// Questions are asked unless blnDisplayDialogBoxesDuringRemainderOfPurgeDrive is false.
FreeSpaceResult PurgeFreeSpaceOf(char chrDrive, const std::string& strTitle);
/// Text about the last purge: how many dummy files failed, how many F10 ended while the user
/// continued with the next, and how much free space could not be filled; "" when all was purged.
std::string UnpurgedText(FreeSpaceResult result);
/// Shows a message in the main window, then calls DeleteDummyFiles; does nothing for "".
void DeleteDummiesWithMessage(const std::string& strFolder);
/// "Purge free space".
void PurgeFreeSpaceCommand();
