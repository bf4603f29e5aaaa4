// Provisional definitions, replaced one by one by the modules of this room.
#include "disk/DiskProc.h"
#include "disk/DriveCommands.h"
std::int32_t GetClusterSizeAndFreeSpace(const std::string&, double&) {
    return -1;
}
std::int16_t GetDiskSpaceEx(const std::string&, double&, double&) {
    return -1;
}
double GetFreeSpaceFSO(const std::string&) {
    return 0;
}
std::int16_t GetFirstDrive(std::string&, std::int16_t&) {
    return 0;
}
std::string FirstFixedDrive() {
    return {};
}
bool IsDriveReady(const std::string&) {
    return false;
}
std::string FreeSpaceText(const std::string&, double) {
    return {};
}
std::string FreeSpaceSizeText(const std::string&, double) {
    return {};
}
void TestPurgeSpeedCommand() {}
void PurgeDiskCommand() {}
void PurgeFreeSpaceCommand() {}
void PurgeFoldersCommand(const std::string&) {}
void OfferToRemoveLeftoverDummies() {}
