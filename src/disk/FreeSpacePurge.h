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

/// Free bytes and cluster facts of a drive into dblSpaceInFreeClusters; false when the system does
/// not tell.
bool ReadFreeSpace(char chrDrive);
/// Number and size of the dummy files that fill dblSpaceInFreeClusters, into intNumDummyFiles and
/// dblMaxSizeDummyFile.
void PlanDummyFiles(char chrDrive);
/// Seconds that writing the planned dummy files takes once, by the drive's measured speed.
double SecondsToFill(char chrDrive);

/// Fills the free space, purges it and removes every trace; sets and clears blnPurgingFreeSpace.
/// Questions are asked unless blnDisplayDialogBoxesDuringRemainderOfPurgeDrive is false.
FreeSpaceResult PurgeFreeSpaceOf(char chrDrive, const std::string& strTitle);
/// Tells how many dummy files of the purge just done failed, or were ended by F10 while the user
/// went on with the next, and how much free space could not be filled; "" when all was purged.
std::string UnpurgedText(FreeSpaceResult result);
/// DeleteDummyFiles, after the main window has said so; nothing for "".
void DeleteDummiesWithMessage(const std::string& strFolder);
/// "Purge free space".
void PurgeFreeSpaceCommand();
