// Provisional definitions, replaced one by one by the modules of this room.
#include "disk/DriveCommands.h"
void TestPurgeSpeedCommand() {}
void PurgeDiskCommand() {}
void PurgeFreeSpaceCommand() {}
void PurgeFoldersCommand(const std::string&) {}
void OfferToRemoveLeftoverDummies() {}
