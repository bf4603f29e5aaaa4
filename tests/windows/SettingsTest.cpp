// Settings made in real dialogs, kept in real files.
#include "windows/Driver.h"

using namespace driver;

struct SettingsTest : WindowTest {
    HWND OpenTypeOfPurge() {
        Click(main, "cmdTypeOfPurge");
        return Window("What type of purge should be used?");
    }
    std::string TypeOfPurge() { return TextOf(Named(main, "lblTypeOfPurge")); }
    bool TypeBecomes(const std::string& text) {
        return WaitUntil([&] { return TypeOfPurge() == text; });
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
        EXPECT_TRUE(TypeBecomes(changed)) << TypeOfPurge();
    }
    void SpecifyScratchFolder() {
        Put("data\\a.txt", "secret");
        Click(main, "cmdSpecifyDirectory(0)");
        AnswerDialog("Specify folder containing files to be purged", scratch + "\\data");
        AnswerBox("Specify folder", "Do you wish to purge ALL files in " + scratch + "\\data\\?",
                  IDYES);
        EXPECT_TRUE(WaitUntil([&] { return TextOf(Named(main, "lblFiles")) == "*.*"; }));
    }
    void Restart() {
        Click(main, "cmdQuit");
        EXPECT_EQ(0, WaitForEnd());
        KillProgram();
        main = StartProgram();
        ASSERT_NE(nullptr, main);
    }
    const std::string changed =
        "Alternate bit patterns plus random bytes, 5 times (= 30 overwrites)";
    const std::string initial = "Random bytes, 6 times (= 6 overwrites)";
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
    EXPECT_TRUE(WaitUntil([&] { return !IsWindowVisible(dialog); }));
    EXPECT_EQ(changed, TypeOfPurge());
    OpenTypeOfPurge();
    EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(dialog); }));
    EXPECT_TRUE(IsChecked(Named(dialog, "optPurgeType(2)")));
    EXPECT_EQ("1", ChosenItem(passes));
    // "No" leaves the dialog open.
    Click(dialog, "cmdAccept");
    AnswerBox("Nullwright", "", IDNO);
    EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(dialog, "cmdCancel")); }));
}

TEST_F(SettingsTest, SetupIsSavedForTheNextRun) {
    ChangeType();
    SpecifyScratchFolder();
    Click(main, "cmdSetup");
    Click(main, "cmdSaveSetup");
    Click(main, "cmdSaveSetupForNextRun");
    EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); })) << Describe();
    Restart();
    EXPECT_TRUE(TypeBecomes(changed)) << TypeOfPurge();
    EXPECT_EQ(scratch + "\\data\\", TextOf(Named(main, "lblDirectory")));
    EXPECT_EQ("Not specified", TextOf(Named(main, "lblFiles"))); // no part of a setup
}

TEST_F(SettingsTest, OperationFileIsSavedAndLoaded) {
    ChangeType();
    SpecifyScratchFolder();
    const std::string path = scratch + "\\my operation.nws";
    for (const int overwrite : {0, IDNO}) {
        Click(main, "cmdSetup");
        Click(main, "cmdSaveSetup");
        Click(main, "cmdSaveSetupAsOperationFile");
        // The second time without its extension, which is added.
        AnswerDialog("Specify operation file to be saved",
                     overwrite == 0 ? path : scratch + "\\my operation");
        if (overwrite != 0)
            AnswerBox("File exists", "Overwrite existing file " + path + "?", overwrite);
        EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); })) << Describe();
    }
    EXPECT_TRUE(Exists("my operation.nws"));
    Restart();
    EXPECT_EQ(initial, TypeOfPurge());
    EXPECT_EQ("Not specified", TextOf(Named(main, "lblDirectory")));
    Click(main, "cmdSetup");
    Click(main, "cmdLoadSetup");
    AnswerDialog("Specify operation file to be loaded", path);
    EXPECT_TRUE(TypeBecomes(changed)) << TypeOfPurge();
    EXPECT_EQ(scratch + "\\data\\", TextOf(Named(main, "lblDirectory")));
    EXPECT_EQ(path, TextOf(Named(main, "lblSetupFilename")));
}
