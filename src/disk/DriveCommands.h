// The commands on whole drives, as the main window starts them.
#pragma once

#include <string>
#include <vector>

/// "Test purge speed", from the first query to the result.
void TestPurgeSpeedCommand();
/// "Purge disk".
void PurgeDiskCommand();
/// "Purge free space".
void PurgeFreeSpaceCommand();
/// "Purge folders".
void PurgeFoldersCommand(const std::string& strTitle);
/// Looks for dummy folders that a crash left on the drives of this computer, fixed and removable,
/// and offers to remove them.
void OfferToRemoveLeftoverDummies();
