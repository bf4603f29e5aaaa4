// The setup panel: load, save, clear, restore, and the setup that the next run finds.
#include "settings/SetupFiles.h"
#include "shell/ShellTest.h"
#include "shell/SpecifyCommands.h"

const std::string strOperation = "C:\\ops\\weekly.nws";
const std::string strOtherSetup =
    "1.0\r\n1\r\n1\r\nC:\\data\\\r\nC:\\\r\n1\r\n2\r\n0\r\n1\r\n0\r\n0\r\n"
    "0\r\n0\r\n0\r\n";
const std::string strOtherLabels =
    "C:\\data\\|Not specified||Yes|(Operate on all specified files in lower subfolders.)|"
    "Yes(Confirm purge operation for each file.)|Alternate bit patterns, twice (= 8 overwrites)||";
const std::string strThirdSetup = "1.0,0,0,C:\\ops\\,,0,1,0,0,0,0,0,0,0";

struct SetupPanel : StartedShell {
    void SetUp() override {
        StartedShell::SetUp();
        fake::PutFolder("C:\\data\\sub");
        fake::PutFolder("C:\\ops");
    }
    /// A button of the panel is pressed, or of the one behind "Save setup": both panels are gone
    /// then, the menu is back, "Setup" has the focus.
    void Press(ui::Button& button) {
        fake::Click(f.cmdSetup);
        if (button.Container == &f.picSaveSetup)
            fake::Click(f.cmdSaveSetup);
        fake::Click(button);
        EXPECT_FALSE(f.fraSetup.Visible || f.picSaveSetup.Visible);
        EXPECT_TRUE(f.lblSetupFilename.Visible && f.fraMenu.Enabled);
        EXPECT_EQ(&f.cmdSetup, user.Focus);
    }
    /// A text: of the box that complains.
    void Load(const std::string& text = "", const std::string& title = "Error") {
        user.Dialog("Specify operation file to be loaded", strOperation);
        if (!text.empty())
            user.Box(title, text, fake::Warns);
        Press(f.cmdLoadSetup);
    }
    void SaveAs(const std::string& path, const std::string& title = "",
                const std::string& text = "", int answer = ui::AnswerOK,
                fake::Look look = fake::Warns) {
        user.Dialog("Specify operation file to be saved", path);
        if (!text.empty())
            user.BoxLike(title, text, answer, look);
        Press(f.cmdSaveSetupAsOperationFile);
    }
};

TEST_F(SetupPanel, ChangesNothingUnlessToldTo) {
    user.Dialog("Specify operation file to be loaded", "");
    for (ui::Button* button : {&f.cmdKeepSetup, &f.cmdDontSaveSetup, &f.cmdLoadSetup})
        Press(*button);
    SaveAs("");
    EXPECT_EQ("", fake::JournalText());
}

TEST_F(SetupPanel, SaysWhatCouldNotBeLoaded) {
    f.lblSetupFilename.Caption = "C:\\ops\\other.nws";
    f.lblEstimatedTime.Caption = "3 minutes";
    const std::string strLabels = Labels();
    Load("File " + strOperation + " not found!", "Error when attempting to load setup.");
    // What of a broken file is in force, the labels show: nothing, so that the setup in force keeps
    // its name; or all before the last line, which is missing.
    const std::string cases[][2] = {{"1.0,0,0,C:\\da,ta\\,,1,2,0,0,0,0,0,0,0", strLabels},
                                    {"1.0,1,1,C:\\data\\,,1,2,0,1,0,0,0,0", strOtherLabels}};
    for (const auto& [text, labels] : cases) {
        fake::PutFile(strOperation, text);
        Load("Error when attempting to load setup from file " + strOperation + "!");
        EXPECT_EQ(labels, Labels());
    }
}

TEST_F(SetupPanel, SavesForTheNextRunAndFindsItThere) {
    ASSERT_TRUE(ApplySetupText(strOtherSetup));
    f.Left = 3000;
    Press(f.cmdSaveSetupForNextRun);
    f.Top = 1501;
    Press(f.cmdSaveSetupForNextRun); // in the folder that is there now
    EXPECT_EQ(strOtherSetup, fake::ContentOf(strNextRun));
    EXPECT_EQ((std::vector{strNextRun, strWindowPlace}), fake::FilesBelow("C:\\Users"));

    ASSERT_TRUE(ApplySetupText(strThirdSetup));
    f.Left = f.Top = 0;
    StartProgram();
    EXPECT_EQ(strOtherSetup, SetupText());
    EXPECT_EQ((std::pair{3000, 1501}), (std::pair{f.Left, f.Top}));
    EXPECT_EQ(ui::StartPosition::Manual, f.Position);
    fake::PutFile(strWindowPlace, "99999999999\r\nx");
    StartProgram();
    EXPECT_EQ(ui::StartPosition::CenterScreen, f.Position);
    EXPECT_EQ(strOtherLabels, Labels());
    // A link to a folder is no subfolder, and what the label denies must not happen.
    fake::TakeAway("C:\\data\\sub");
    fake::PutFolder("C:\\data\\link").LinkTarget = "C:\\Users";
    UpdateSubdirectoriesLabels();
    EXPECT_EQ("C:\\data\\|Not specified||No|(The folder has no subfolders.)", Choice());
    EXPECT_FALSE(blnSubdirectories);
}

TEST_F(SetupPanel, SaysThatItCouldNotSave) {
    fake::FailNth(1, platform::Fault::AccessDenied, "MakeFolder");
    user.Box("Error", "Cannot save setup!", fake::Warns);
    Press(f.cmdSaveSetupForNextRun);
    fake::FailNth(1, platform::Fault::DiskFull, "WriteBytes");
    SaveAs(strOperation, "Error", "Cannot save setup in operation file " + strOperation + "!");
    EXPECT_TRUE(fake::FilesBelow("C:\\ops").empty());
}

TEST_F(SetupPanel, SaysThatAFolderWithACommaCannotBeLoadedAgain) {
    blnConfirmFiles = true;
    strBrowsePath = "C:\\da,ta\\";
    for (const std::string folder : {"", "C:\\da,ta\\"}) { // as after items were dropped, as chosen
        strDirPath = folder;
        user.BoxLike("Save setup", "The folder\r\nC:\\da,ta\\\r\ncannot be loaded again from a ");
        Press(f.cmdSaveSetupForNextRun);
    }
    ClearSpecification();
    Press(f.cmdSaveSetupForNextRun); // none is left
    StartProgram();                  // without a complaint
    EXPECT_EQ("", strDirPath);
    EXPECT_TRUE(blnConfirmFiles);
}

TEST_F(SetupPanel, SavesAnOperationFileAndAsksBeforeItReplacesOne) {
    SaveAs("C:\\ops\\weekly"); // the extension is added
    blnConfirmFiles = true;
    const std::string strOld = fake::ContentOf(strOperation);
    for (const int intAnswer : {ui::AnswerNo, ui::AnswerCancel, ui::AnswerYes}) {
        SaveAs(strOperation, "File exists", "Overwrite existing file " + strOperation + "?",
               intAnswer, {.Buttons = ui::Buttons::YesNoCancel});
        EXPECT_EQ(intAnswer != ui::AnswerYes, strOld == fake::ContentOf(strOperation));
    }
}

TEST_F(SetupPanel, ClearsAndRestores) {
    fake::PutFile(strNextRun, strOtherSetup);
    StartProgram();
    fake::PutFile(strOperation, strThirdSetup);
    Load();
    strFilespec = "*.txt";
    Press(f.cmdClearSetup);
    EXPECT_EQ("", strDirPath + strFilespec);
    EXPECT_EQ(strNothingChosen + "Random bytes, once (= 1 overwrite)||", Labels()); // with its type
    Load();
    Press(f.cmdRestoreSetup);
    EXPECT_EQ(strOtherSetup, SetupText());
    EXPECT_EQ(strOperation, f.lblSetupFilename.Caption) << "Restore leaves it alone";
}
