// Provisional definitions, replaced one by one by the modules of this room.
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/SetupFiles.h"
FrmTypeOfPurge frmTypeOfPurge;
FrmPurgeConfirmation frmPurgeConfirmation;
void Initialization() {}
std::int16_t GetPurgeType() {
    return 0;
}
std::int16_t GetNumberOfPasses() {
    return 1;
}
std::int16_t GetNumOverwritesPerPass() {
    return 1;
}
std::int16_t GetNumOverwrites() {
    return 1;
}
std::string PurgeTypeNumPasses(std::int16_t, std::int16_t) {
    return {};
}
std::string TypeOfPurgeSummary() {
    return {};
}
void InitializePurgeOptions() {}
std::int32_t GetClusterSize(const std::string&) {
    return 4096;
}
bool AskPurgeOptions(const std::string&, bool, bool) {
    return false;
}
bool ReadSetupFile(const std::string&) {
    return false;
}
bool WriteSetupFile(const std::string&) {
    return false;
}
std::string SetupText() {
    return {};
}
bool ApplySetupText(const std::string&) {
    return false;
}
const std::string& NextRunSetupPath() {
    static const std::string none;
    return none;
}
bool MakeNextRunFolder() {
    return false;
}
void FindNextRunSetupPath() {}
