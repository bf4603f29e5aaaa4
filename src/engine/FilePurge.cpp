// The fronts of the engine that purge a single file at once.
#include "engine/FilePurge.h"

#include "platform/System.h"
#include "ui/Interface.h"

bool PurgeFileWithChecks(const std::string& path, std::int16_t purgeTypeIndex,
                         std::int16_t numPasses, bool deleteAfter, bool okReadOnly, bool okSystem,
                         bool slackOnly, std::int32_t /*reserved*/, std::int16_t& resultCode,
                         std::uint32_t* reach) {
    PurgeJob job{path, purgeTypeIndex, numPasses, deleteAfter, okReadOnly, okSystem, slackOnly};
    RunPurgeJob(job);
    resultCode = job.Result;
    if (reach != nullptr)
        *reach = job.Reach;
    return resultCode >= 0;
}

std::int16_t PurgeFile(const std::string& path, std::int16_t purgeTypeIndex, std::int16_t numPasses,
                       bool deleteAfter, bool slackOnly) {
    std::int16_t result = PurgeDone;
    (void)PurgeFileWithChecks(path, purgeTypeIndex, numPasses, deleteAfter, true, true, slackOnly,
                              0, result);
    return result;
}

bool PurgeLibraryReady() {
    const platform::Fault fault = platform::LoadAuxiliaryLibrary();
    if (!Failed(fault))
        return true;
    std::string text = "The auxiliary library nwaux6.dll ";
    if (fault == platform::Fault::NotFound)
        text += "is missing from the program's folder.";
    else if (fault == platform::Fault::NotSupported)
        text += "in the program's folder does not belong to this program.";
    else
        text += "cannot be loaded: " + platform::FaultText(fault) + ".";
    text += "\r\nWithout it nothing can be purged. Please install Nullwright again.";
    ui::Complain(text);
    return false;
}
