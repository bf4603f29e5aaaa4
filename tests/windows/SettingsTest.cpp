// Settings made in real dialogs, kept in real files, found again by the next run.
#include "windows/WindowTest.h"

using namespace driver;

struct SettingsTest : WindowTest {
    void SaveSetup(const char* how) {
        for (const char* button : {"cmdSetup", "cmdSaveSetup", how})
            Click(main, button);
    }
    void Restart() {
        Click(main, "cmdQuit");
        EXPECT_EQ(0, WaitForEnd());
        KillProgram();
        main = StartProgram();
    }
};

TEST_F(SettingsTest, SetupIsSavedAndLoaded) {
    Click(main, "cmdConfirmFiles");
    Expect(main, "lblConfirmFiles", "Yes");
    Put("data\\a.txt", "secret");
    SpecifyFolder("data", IDYES);
    SaveSetup("cmdSaveSetupAsOperationFile");
    AnswerDialog("Specify operation file to be saved", scratch + "\\my operation"); // gets .nws
    const std::string path = scratch + "\\my operation.nws";
    Restart();
    Expect(main, "lblDirectory", "Not specified");
    Click(main, "cmdSetup");
    Click(main, "cmdLoadSetup");
    AnswerDialog("Specify operation file to be loaded", path);
    Expect(main, "lblConfirmFiles", "Yes");
    SaveSetup("cmdSaveSetupForNextRun");
    Restart();
    Expect(main, "lblConfirmFiles", "Yes");
    Expect(main, "lblDirectory", scratch + "\\data\\");
    Expect(main, "lblFiles", "Not specified"); // no part of a setup
}
