// Whatever a setup file holds: no crash, no state that the dialogs could not have, and what was
// read is written and read again as the same.
#include "fakes/FakePlatform.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/SetupFiles.h"
#include "support/Paths.h"

#include <cstdlib>

namespace {

void Require(bool blnTrue) {
    if (!blnTrue)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const bool blnReady = [] {
        fake::Reset();
        return true;
    }();
    Require(blnReady);
    Initialization();
    InitializePurgeOptions();
    strDirPath.clear();
    strBrowsePath.clear();

    fake::PutFile("C:\\a.nws", std::string(reinterpret_cast<const char*>(data), size));
    const bool blnRead = ReadSetupFile("C:\\a.nws");
    for (const OptionBox& option : PurgeOptionBoxes())
        Require(option.Box->Value == 0 || option.Box->Value == 1);
    for (const OptionBox& option : FurtherOptions())
        Require(option.Box->Value == 0 || option.Box->Value == 1);
    Require(GetNumberOfPasses() >= 1 && GetNumOverwrites() >= 1 && GetNumOverwrites() <= 32);
    Require(strDirPath.empty() || (DriveIndexOf(strDirPath) >= 0 && strDirPath.ends_with('\\')));

    // A comma or a quote in a folder's name is not kept by the format.
    if (blnRead && (strDirPath + strBrowsePath).find_first_of(",\"") == std::string::npos) {
        const std::string strWritten = SetupText();
        Require(ApplySetupText(strWritten) && SetupText() == strWritten);
    }
    return 0;
}
