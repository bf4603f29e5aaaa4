// Settings made in real dialogs, kept in real files.
#include "windows/Driver.h"

using namespace driver;

struct SettingsTest : WindowTest {
    const std::string changed =
        "Alternate bit patterns plus random bytes, 5 times (= 30 overwrites)";
    HWND OpenTypeOfPurge() {
        Click(main, "cmdTypeOfPurge");
        return Window("What type of purge should be used?");
    }
    /// To type 3 with 5 passes.
    void ChangeType() {
        HWND dialog = OpenTypeOfPurge();
        Click(dialog, "optPurgeType(2)");
        HWND passes = Named(dialog, "cboNumberOfPasses(2)");
        ASSERT_TRUE(WaitUntil([&] { return IsUsable(passes); }));
        EXPECT_EQ((std::vector<std::string>{"1", "2", "3", "4", "5"}), ItemsOf(passes));
        EXPECT_EQ("2", ChosenItem(passes));
        Choose(passes, "5");
        Click(dialog, "cmdAccept");
        AnswerBox("Nullwright",
                  "In the type of purge specified each file will be overwritten 30 times.\r\n"
                  "This is a rather large number of overwrites.  "
                  "Are you sure you want to do this?",
                  IDYES);
        Expect(main, "lblTypeOfPurge", changed);
    }
    void SaveSetup(const std::string& how) {
        for (const std::string& button :
             {std::string("cmdSetup"), std::string("cmdSaveSetup"), how})
            Click(main, button);
    }
    void Restart() {
        Click(main, "cmdQuit");
        EXPECT_EQ(0, WaitForEnd());
        KillProgram();
        main = StartProgram();
        ASSERT_NE(nullptr, main);
    }
};

TEST_F(SettingsTest, TypeOfPurgeIsAcceptedOrCancelled) {
    ChangeType();
    // Cancel brings the type back, but not the passes.
    HWND dialog = OpenTypeOfPurge();
    EXPECT_TRUE(IsChecked(Named(dialog, "optPurgeType(2)")));
    Click(dialog, "optPurgeType(0)");
    HWND passes = Named(dialog, "cboNumberOfPasses(0)");
    ASSERT_TRUE(WaitUntil([&] { return IsUsable(passes); }));
    EXPECT_FALSE(IsWindowVisible(Named(dialog, "cboNumberOfPasses(2)")));
    Choose(passes, "1");
    Click(dialog, "cmdCancel");
    ExpectGone(dialog);
    Expect(main, "lblTypeOfPurge", changed);
    OpenTypeOfPurge();
    EXPECT_TRUE(IsChecked(Named(dialog, "optPurgeType(2)")));
    EXPECT_EQ("1", ChosenItem(passes));
    // "No" leaves the dialog open.
    Click(dialog, "cmdAccept");
    AnswerBox("Nullwright", "", IDNO);
    EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(dialog, "cmdCancel")); }));
}

TEST_F(SettingsTest, SetupIsSavedAndLoaded) {
    Expect(main, "lblTypeOfPurge", "Random bytes, 6 times (= 6 overwrites)");
    const std::string path = scratch + "\\my operation.nws", data = scratch + "\\data\\";
    SaveSetup("cmdSaveSetupAsOperationFile");
    AnswerDialog("Specify operation file to be saved", scratch + "\\my operation"); // gets .nws
    ExpectReady();
    ChangeType();
    Put("data\\a.txt", "secret");
    SpecifyData(IDYES);
    for (const int overwrite : {IDNO, IDYES}) {
        SaveSetup("cmdSaveSetupAsOperationFile");
        AnswerDialog("Specify operation file to be saved", path);
        AnswerBox("File exists", "Overwrite existing file " + path + "?", overwrite);
        ExpectReady();
    }
    Restart();
    Expect(main, "lblDirectory", "Not specified");
    Click(main, "cmdSetup");
    Click(main, "cmdLoadSetup");
    AnswerDialog("Specify operation file to be loaded", path);
    Expect(main, "lblTypeOfPurge", changed);
    Expect(main, "lblSetupFilename", path);
    SaveSetup("cmdSaveSetupForNextRun");
    ExpectReady();
    Restart();
    Expect(main, "lblTypeOfPurge", changed);
    Expect(main, "lblDirectory", data);
    Expect(main, "lblFiles", "Not specified"); // no part of a setup
}
