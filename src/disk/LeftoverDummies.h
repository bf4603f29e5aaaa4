// Finds dummy folders that an earlier run left behind, and removes them on request.
#pragma once

#include <string>

/// Searches the drive just chosen for a command, and offers to remove leftovers.
void OfferToRemoveLeftoversOn(char chrDrive);
/// "There is no free space on the disk in Drive X.", and a note if our own leftovers fill it.
std::string NoFreeSpaceText(char chrDrive);
/// Searches fixed and removable drives for dummy folders left by a crash, and offers to remove
/// them.
void OfferToRemoveLeftoverDummies();
