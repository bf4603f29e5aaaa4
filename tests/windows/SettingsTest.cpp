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
    HWND dialog = OpenTypeOfPurge();
    Click(dialog, "optPurgeType(2)");
    Choose(dialog, "cboNumberOfPasses(2)", "5");
    Click(dialog, "cmdAccept");
    AnswerBox("Nullwright", "", IDYES);
    const std::string changed =
        "Alternate bit patterns plus random bytes, 5 times (= 30 overwrites)";
    Expect(main, "lblTypeOfPurge", changed);
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
    Expect(main, "lblTypeOfPurge", changed);
    SaveSetup("cmdSaveSetupForNextRun");
    Restart();
    Expect(main, "lblTypeOfPurge", changed);
    Expect(main, "lblDirectory", scratch + "\\data\\");
    Expect(main, "lblFiles", "Not specified"); // no part of a setup
}
