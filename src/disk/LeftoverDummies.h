// Dummy folders that an earlier run left behind: found, told, removed when the user wants it.
#pragma once

#include <string>

/// Looks on the drive that was just chosen for a command, and offers to remove what is there.
void OfferToRemoveLeftoversOn(char chrDrive);
/// "There is no free space on the disk in Drive X.", and what fills it when that is ours.
std::string NoFreeSpaceText(char chrDrive);
/// Looks for dummy folders that a crash left on the drives of this computer, fixed and removable,
/// and offers to remove them.
void OfferToRemoveLeftoverDummies();
