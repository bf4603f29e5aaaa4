// What the engine asks of the rooms above it, for programs that hold the engine alone.
#include "engine/EngineNeeds.h"
#include "platform/Drives.h"
#include "support/MainWindow.h"

std::int32_t GetClusterSize(const std::string& strDriveLetter) {
    platform::ClusterFacts facts;
    if (Failed(platform::ReadClusterFacts(strDriveLetter + ":\\", facts)))
        return 4096;
    return static_cast<std::int32_t>(facts.BytesPerSector * facts.SectorsPerCluster);
}

std::int16_t GetNumberOfPasses() {
    return 1;
}

void SetMainLine(MainLine, const std::string&) {}
void ClearStatus() {}
void RepaintMain() {}
