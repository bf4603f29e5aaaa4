// Common parts of the commands on whole drives: choosing a writable drive, and the questions before
// its free space is filled.
#pragma once

#include "selection/frmDrives.h"

#include <string>

/// The letters of the drives, or "" after telling the user that there are none.
std::string FindDrives(const std::string& strTitle);
/// False, after telling the user why, for a drive without a medium, a network drive and a read-only
/// drive.
bool CheckDriveWritable(char chrDrive, const std::string& strTitle);
/// Shows the drive chooser, checks the drive, and offers to remove dummy files that an earlier run
/// left on it. The options that are chosen with the drive are in force from then on, also for the
/// command's run. Returns the letter, or 0.
char ChooseWritableDrive(const std::string& strQuestion, const std::string& strTitle,
                         DriveOptions options);
/// Tells the user that the free space of a drive cannot be read.
void ComplainOfUnknownSpace(char chrDrive, const std::string& strTitle);
/// Warns that filling the system drive leaves other programs without space: OK or Cancel. True at
/// once for other drives.
bool AcceptFillingOf(char chrDrive, const std::string& strTitle);
/// OK/Cancel with the given text; true on OK.
bool AskToContinue(const std::string& strText, const std::string& strTitle,
                   const std::string& strQuestion);
