// How much a drive has free, and how many dummy files of which size will fill it.
#pragma once

/// Reads free bytes and cluster facts of a drive into dblSpaceInFreeClusters; false when the system
/// does not tell.
bool ReadFreeSpace(char chrDrive);
/// Computes number and size of the dummy files for dblSpaceInFreeClusters, into intNumDummyFiles
/// and dblMaxSizeDummyFile.
void PlanDummyFiles(char chrDrive);
/// Seconds to write the planned dummy files once, by the drive's measured speed.
double SecondsToFill(char chrDrive);
/// Bytes of a planned dummy file, on average.
double BytesPerDummy();
