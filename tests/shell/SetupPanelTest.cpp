// The setup panel: load, save, clear, restore, and the setup that the next run finds.
#include "fakes/ProgramTest.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/SetupFiles.h"
#include "shell/frmMain.h"
#include "shell/Session.h"
#include "shell/SetupCommands.h"

using fake::user;

namespace {

const std::string strFolder = "C:\\Users\\me\\AppData\\Roaming\\Nullwright\\";
const std::string strOperation = "C:\\ops\\weekly.nws";
const std::string strOtherSetup =
    "1.0\r\n0\r\n1\r\nC:\\data\\\r\nC:\\\r\n2\r\n5\r\n0\r\n1\r\n0\r\n0\r\n"
    "0\r\n0\r\n0\r\n";

struct SetupPanel : ProgramTest {
    FrmMain& f = frmMain;
    void SetUp() override {
        ProgramTest::SetUp();
        fake::PutFolder("C:\\data\\sub");
        fake::PutFolder("C:\\ops");
        StartProgram();
    }
    /// Both panels are gone, the menu is back, "Setup" has the focus.
    void ExpectClosed() {
        EXPECT_FALSE(f.fraSetup.Visible || f.picSaveSetup.Visible);
        EXPECT_TRUE(f.lblSetupFilename.Visible && f.fraMenu.Enabled);
        EXPECT_EQ(&f.cmdSetup, user.Focus);
    }
    /// A text: of the box that complains.
    void Load(const std::string& path, const std::string& text = "",
              const std::string& title = "Error") {
        fake::Click(f.cmdSetup);
        user.Dialog("Specify operation file to be loaded", path);
        if (!text.empty())
            user.Box(title, text, fake::Warns);
        fake::Click(f.cmdLoadSetup);
        ExpectClosed();
    }
    void OpenSavePanel() {
        fake::Click(f.cmdSetup);
        fake::Click(f.cmdSaveSetup);
    }
    void SaveAs(const std::string& path, const fake::Action& boxes = {}) {
        OpenSavePanel();
        user.Dialog("Specify operation file to be saved", path);
        if (boxes)
            boxes();
        fake::Click(f.cmdSaveSetupAsOperationFile);
        ExpectClosed();
    }
};

TEST_F(SetupPanel, OpensOverADisabledMenu) {
    fake::Click(f.cmdSetup);
    EXPECT_FALSE(fake::CanReach(f.cmdQuit));
    EXPECT_TRUE(fake::CanReach(f.cmdLoadSetup));
    EXPECT_FALSE(f.lblSetupFilename.Visible);
    fake::Click(f.cmdKeepSetup);
    ExpectClosed();

    OpenSavePanel();
    EXPECT_FALSE(f.fraSetup.Visible);
    EXPECT_EQ(f.fraSetup.Left, f.picSaveSetup.Left);
    EXPECT_EQ(f.fraMenu.Top + f.cmdSetup.Top - 210, f.picSaveSetup.Top);
    EXPECT_EQ(&f.cmdSaveSetupForNextRun, user.Focus);
    fake::PressEscape(f);
    ExpectClosed();
    EXPECT_EQ("", fake::JournalText());
}

TEST_F(SetupPanel, LoadsAnOperationFile) {
    fake::PutFile(strOperation, strOtherSetup);
    strFilespec = "*.txt";
    Load(strOperation);
    EXPECT_EQ("C:\\data\\", f.lblDirectory.Caption);
    EXPECT_EQ("Not specified", f.lblFiles.Caption);
    EXPECT_EQ("", f.lblFiles2.Caption);
    EXPECT_EQ("Yes", f.lblConfirmFiles.Caption);
    EXPECT_EQ("(Do not operate on files in lower subfolders.)", f.lblSubdirectories2.Caption);
    EXPECT_EQ("Alternate bit patterns plus random bytes, 5 times (= 30 overwrites)",
              f.lblTypeOfPurge.Caption);
    EXPECT_EQ(strOperation, f.lblSetupFilename.Caption);
    EXPECT_EQ(1, frmPurgeConfirmation.chkDoNotDeletePurgedFiles.Value);
    Load(""); // cancelled: no fault, nothing changes
    EXPECT_EQ(strOtherSetup, SetupText());
}

TEST_F(SetupPanel, SaysWhatCouldNotBeLoaded) {
    const std::string strStart = SetupText();
    Load(strOperation, "File " + strOperation + " not found!",
         "Error when attempting to load setup.");
    EXPECT_EQ(strStart, SetupText());

    const auto fail = [&](const std::string& text) {
        fake::PutFile(strOperation, text);
        Load(strOperation, "Error when attempting to load setup from file " + strOperation + "!");
    };
    // Nothing of it takes effect: the setup in force keeps its name.
    f.lblSetupFilename.Caption = "C:\\ops\\other.nws";
    f.lblEstimatedTime.Caption = "3 minutes";
    fail("1.0,0,0,C:\\da,ta\\,,1,2,0,0,0,0,0,0,0");
    EXPECT_EQ(strStart, SetupText());
    EXPECT_EQ("C:\\ops\\other.nws", f.lblSetupFilename.Caption);
    EXPECT_EQ("3 minutes", f.lblEstimatedTime.Caption);

    // A pass count that the type does not have: folder and type are new, and the labels show it.
    fail("1.0,0,0,C:\\data\\,,1,8,0,0,0,0,0,0,0");
    EXPECT_EQ("C:\\data\\", f.lblDirectory.Caption);
    EXPECT_EQ("Alternate bit patterns, 3 times (= 12 overwrites)", f.lblTypeOfPurge.Caption);
    EXPECT_EQ("", f.lblSetupFilename.Caption + f.lblEstimatedTime.Caption);
    // The last line is missing: all before it is in force.
    fail("1.0,1,1,C:\\data\\,,1,2,0,1,0,0,0,0");
    EXPECT_EQ("Yes", f.lblSubdirectories.Caption);
    EXPECT_EQ("Yes", f.lblConfirmFiles.Caption);
    EXPECT_EQ("Alternate bit patterns, twice (= 8 overwrites)", f.lblTypeOfPurge.Caption);
    EXPECT_EQ(1, frmPurgeConfirmation.chkDoNotDeletePurgedFiles.Value);
}

TEST_F(SetupPanel, SavesForTheNextRunAndFindsItThere) {
    for (int intTimes = 0; intTimes < 2; ++intTimes) { // the folder is made once, then used again
        ASSERT_TRUE(ApplySetupText(strOtherSetup));
        f.Left = 3000;
        f.Top = 1500 + intTimes;
        OpenSavePanel();
        fake::Click(f.cmdSaveSetupForNextRun);
        ExpectClosed();
    }
    EXPECT_EQ(strOtherSetup, fake::ContentOf(strFolder + "nullwright.usr"));
    EXPECT_EQ(2u, fake::FilesBelow(strFolder).size()) << "the setup and the window's place";

    ASSERT_TRUE(ApplySetupText("1.0,0,0,,,0,1,0,0,0,0,0,0,0"));
    f.Left = f.Top = 0;
    StartProgram();
    EXPECT_EQ(strOtherSetup, SetupText());
    EXPECT_EQ(3000, f.Left);
    EXPECT_EQ(1501, f.Top);
    EXPECT_EQ(ui::StartPosition::Manual, f.Position);
    fake::PutFile(strFolder + "nullwright.pos", "99999999999\r\nx");
    StartProgram();
    EXPECT_EQ(ui::StartPosition::CenterScreen, f.Position);
}

TEST_F(SetupPanel, SaysThatItCouldNotSave) {
    fake::FailNth(1, platform::Fault::AccessDenied, "MakeFolder");
    OpenSavePanel();
    user.Box("Error", "Cannot save setup!", fake::Warns);
    fake::Click(f.cmdSaveSetupForNextRun);
    ExpectClosed();

    fake::FailNth(1, platform::Fault::DiskFull, "WriteBytes");
    SaveAs(strOperation, [] {
        user.Box("Error", "Cannot save setup in operation file " + strOperation + "!", fake::Warns);
    });
    EXPECT_TRUE(fake::FilesBelow("C:\\ops").empty());
}

TEST_F(SetupPanel, SavesAnOperationFileAndAsksBeforeItReplacesOne) {
    SaveAs("");
    EXPECT_TRUE(fake::FilesBelow("C:\\ops").empty());
    SaveAs("C:\\ops\\weekly"); // the extension is added
    EXPECT_EQ(SetupText(), fake::ContentOf(strOperation));
    SaveAs("C:\\ops\\plan 1.5");
    EXPECT_EQ(SetupText(), fake::ContentOf("C:\\ops\\plan 1.5.nws"));

    blnConfirmFiles = true;
    const std::string strOld = fake::ContentOf(strOperation);
    for (const int intAnswer : {ui::AnswerNo, ui::AnswerCancel, ui::AnswerYes}) {
        SaveAs(strOperation, [intAnswer] {
            user.Box("File exists", "Overwrite existing file " + strOperation + "?", intAnswer,
                     {.Buttons = ui::Buttons::YesNoCancel});
        });
        EXPECT_EQ(intAnswer != ui::AnswerYes, strOld == fake::ContentOf(strOperation));
    }
}

TEST_F(SetupPanel, ClearsAndRestores) {
    fake::PutFile(strOperation, strOtherSetup);
    fake::PutFile(strFolder + "nullwright.usr", strOtherSetup);
    StartProgram();
    fake::PutFile(strOperation, "1.0,0,0,C:\\ops\\,,0,1,0,0,0,0,0,0,0");
    Load(strOperation);
    strFilespec = "*.txt";
    fake::Click(f.cmdSetup);
    fake::Click(f.cmdClearSetup);
    ExpectClosed();
    EXPECT_EQ("", strDirPath + strFilespec);
    EXPECT_EQ("Not specified", f.lblDirectory.Caption);
    EXPECT_EQ("Not specified", f.lblFiles.Caption);
    EXPECT_EQ("", f.lblSetupFilename.Caption);
    EXPECT_EQ("Random bytes, once (= 1 overwrite)", f.lblTypeOfPurge.Caption) << "that stays";

    Load(strOperation);
    fake::Click(f.cmdSetup);
    fake::Click(f.cmdRestoreSetup);
    ExpectClosed();
    EXPECT_EQ(strOtherSetup, SetupText());
    EXPECT_EQ("C:\\data\\", f.lblDirectory.Caption);
    EXPECT_EQ("Yes", f.lblConfirmFiles.Caption);
    EXPECT_EQ(strOperation, f.lblSetupFilename.Caption) << "Restore leaves it alone";

    // Edited by hand, in a form that the program does not write.
    fake::PutFile(strFolder + "nullwright.usr", "1.0,0,0,\"C:\\a,b\",,0,1,0,0,0,0,0,0,0");
    StartProgram();
    Load(strOperation);
    fake::Click(f.cmdSetup);
    fake::Click(f.cmdRestoreSetup);
    EXPECT_EQ("C:\\a,b\\", f.lblDirectory.Caption);
}

} // namespace
