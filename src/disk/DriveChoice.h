// What the commands on whole drives have in common: choosing a drive that can be written to, and
// putting everything back to rest afterwards.
#pragma once

#include <functional>
#include <string>

/// The letters of the drives, or "" after telling the user that there are none.
std::string FindDrives(const std::string& strTitle);
/// False, after telling the user why, for a drive without a medium, a network drive and one that is
/// read-only.
bool CheckDriveWritable(char chrDrive, const std::string& strTitle);
/// The drive chooser, the check, and the offer to remove dummy files that an earlier run left on
/// that drive: the letter, or 0.
char ChooseWritableDrive(const std::string& strQuestion, const std::string& strTitle);
/// Tells that the system does not say how much is free on a drive.
void ComplainOfUnknownSpace(char chrDrive, const std::string& strTitle);
/// Filling the system's own drive leaves other programs without space: OK or Cancel. True at once
/// for other drives.
bool AcceptFillingOf(char chrDrive, const std::string& strTitle);
/// OK/Cancel with the given text; true on OK.
bool AskToContinue(const std::string& strText, const std::string& strTitle);

/// Runs one command: the menu is disabled meanwhile, and afterwards no dummy file is left, every
/// flag of a run is at rest and the menu is enabled, whatever way the command took.
void RunDriveCommand(const std::function<void()>& command);
