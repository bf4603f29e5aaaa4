// Whatever the file with the program texts holds: every entry has a usable text.
#include "fakes/FakePlatform.h"
#include "support/ProgramTexts.h"
#include "support/Utf8.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const bool blnReady = [] {
        fake::Reset();
        return true;
    }();
    fake::PutFile("C:\\texts.dat", std::string(reinterpret_cast<const char*>(data), size));
    bool blnGood = blnReady && IsUtf8(LoadProgramTexts("C:\\texts.dat"));
    for (const TextNumber number :
         {TextNumber::NextRunStem, TextNumber::AcceptTypeTitle, TextNumber::SettingsFolder,
          TextNumber::SlackOnlyNote, TextNumber::OrdinaryNote, TextNumber::MakerLink,
          TextNumber::DocumentationLink})
        blnGood = blnGood && !ProgramText(number).empty() && IsUtf8(ProgramText(number));
    // These become the name of a file and of a folder.
    for (const TextNumber number : {TextNumber::NextRunStem, TextNumber::SettingsFolder})
        blnGood = blnGood && ProgramText(number).find_first_of("\\/:*?\"<>|") == std::string::npos;
    if (!blnGood)
        std::abort();
    return 0;
}
