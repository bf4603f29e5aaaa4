// Start-up, the main window's labels and its own commands.
#include "support/MainWindow.h"
#include "fakes/ProgramTest.h"
#include "report/frmReport.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/SetupFiles.h"
#include "shell/frmMain.h"
#include "shell/Session.h"

#include <map>

using fake::user;

namespace {

const std::string strNextRun = "C:\\Users\\me\\AppData\\Roaming\\Nullwright\\nullwright.usr";

struct MainWindow : ProgramTest {
    FrmMain& f = frmMain;
};

TEST_F(MainWindow, StartsInItsOrder) {
    // What an earlier run of the same process may have left.
    strDirPath = "C:\\old\\";
    strFilespec = "*.*";
    blnStop = blnConfirmFiles = blnPurgingDrive = true;
    dblAF_A = dblMaxSizeDummyFile = 0;
    sngPurgeSpeeds[2] = 7;
    SetMainLine(MainLine::PurgeSpeed, "7 MB/sec.");
    fake::currentFolder = "C:\\Users";
    StartProgram();
    EXPECT_EQ("Nullwright", f.Caption);
    EXPECT_TRUE(f.Visible && blnStartupCompleted);
    EXPECT_FALSE(blnStop || blnConfirmFiles || blnPurgingDrive);
    EXPECT_TRUE(fake::currentFolder.starts_with("C:") && fake::currentFolder.size() <= 3);
    EXPECT_EQ(0.917, dblAF_A);
    EXPECT_EQ(52428800, dblMaxSizeDummyFile);
    EXPECT_EQ(0, sngPurgeSpeeds[2]);
    EXPECT_EQ(&f.cmdSpecifyDirectory[0], user.Focus);

    const std::map<ui::Label*, std::string> expected = {
        {&f.lblSingleFile, "To purge multiple files, specify folder and files."},
        {&f.lblDirectory, "Not specified"},
        {&f.lblFiles, "Not specified"},
        {&f.lblFiles2, ""},
        {&f.lblSubdirectories, "No"},
        {&f.lblSubdirectories2, "(Do not operate on files in lower subfolders.)"},
        {&f.lblConfirmFiles, "No"},
        {&f.lblConfirmFiles2, "(Do not confirm purge operation for each file.)"},
        {&f.lblTypeOfPurge, "Random bytes, 6 times (= 6 overwrites)"},
        {&f.lblPurgeSpeed, ""},
        {&f.lblEstimatedTime, ""},
        {&f.lblLargePurgeMessage, ""},
        {&f.lblPurgeFoldersMessage, ""},
        {&f.lblSetupFilename, ""}};
    for (const auto& [label, text] : expected)
        EXPECT_EQ(text, label->Caption) << label->Name;
    for (const ui::Label* label :
         {&f.lblPurgeSpeed, &f.lblSubdirectories2, &f.lblLargePurgeMessage}) {
        EXPECT_EQ(0u, label->BackColor);
        EXPECT_EQ(0xFFFFFFu, label->ForeColor);
        EXPECT_EQ(!label->Caption.empty(), label->Visible);
    }
    EXPECT_EQ(f.fraMenu.Top + f.cmdTypeOfPurge.Top + 150, f.lblTypeOfPurge.Top);
}

TEST_F(MainWindow, FindsTheSetupOfTheLastRun) {
    fake::PutFile(strNextRun,
                  "1.0\r\n1\r\n1\r\nC:\\data\\\r\nC:\\\r\n1\r\n2\r\n0\r\n1\r\n0\r\n0\r\n"
                  "0\r\n0\r\n0\r\n");
    fake::PutFolder("C:\\data\\sub");
    StartProgram();
    EXPECT_EQ("C:\\data\\", f.lblDirectory.Caption);
    EXPECT_EQ("Not specified", f.lblFiles.Caption);
    EXPECT_EQ("Yes", f.lblSubdirectories.Caption);
    EXPECT_EQ("(Operate on all specified files in lower subfolders.)",
              f.lblSubdirectories2.Caption);
    EXPECT_EQ("Yes", f.lblConfirmFiles.Caption);
    EXPECT_EQ("(Confirm purge operation for each file.)", f.lblConfirmFiles2.Caption);
    EXPECT_EQ("Alternate bit patterns, twice (= 8 overwrites)", f.lblTypeOfPurge.Caption);

    // A link to a folder is no subfolder, and what the label denies must not happen.
    fake::TakeAway("C:\\data\\sub");
    fake::PutFolder("C:\\data\\link").LinkTarget = "C:\\Users";
    UpdateSubdirectoriesLabels();
    EXPECT_EQ("No", f.lblSubdirectories.Caption);
    EXPECT_EQ("(The folder has no subfolders.)", f.lblSubdirectories2.Caption);
    EXPECT_FALSE(blnSubdirectories);
}

TEST_F(MainWindow, SaysWhatIsWrongWithTheFilesItStartsFrom) {
    fake::PutFile(fake::programFolder + "\\nullwright.dat", "");
    fake::PutFile(strNextRun, "1.0\r\n");
    user.BoxLike("Error", "nullwright.dat");
    user.Box("Error", "Error when attempting to load setup from file " + strNextRun + "!",
             fake::Warns);
    StartProgram();
    EXPECT_TRUE(f.Visible);
}

TEST_F(MainWindow, StartsWhateverCallFails) {
    fake::PutFile(strNextRun,
                  "1.0\r\n0\r\n0\r\n\r\n\r\n0\r\n1\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n");
    for (int n = 1;; ++n) {
        fake::FailNth(n, platform::Fault::AccessDenied);
        user.AnswerOthers = [](const fake::BoxSeen&) { return ui::AnswerOK; };
        StartProgram();
        const bool blnFailed = fake::HasFailed();
        EXPECT_LE(user.Boxes.size(), 1u) << n;
        EXPECT_TRUE(f.Visible && blnStartupCompleted && f.fraMenu.Enabled) << n;
        EXPECT_EQ(0, fake::OpenHandles()) << n;
        fake::FailNth(0, platform::Fault::None);
        user.Reset();
        if (!blnFailed)
            break;
    }
}

TEST_F(MainWindow, SaysWhatASpecificationMeans) {
    StartProgram();
    const char* const cases[][2] = {{"*.*", "(All files.)"},
                                    {"*.txt", "(All files with extension txt.)"},
                                    {"a?c.*", "(All files of the form a?c.*.)"},
                                    {"*.t?t", "(All files of the form *.t?t.)"},
                                    {"*", "(All files of the form *.)"},
                                    {"*.", "(All files of the form *..)"},
                                    {"report.txt", ""}};
    for (const auto& c : cases) {
        strFilespec = c[0];
        UpdateFilesLabels();
        EXPECT_EQ(c[0], f.lblFiles.Caption);
        EXPECT_EQ(c[1], f.lblFiles2.Caption);
    }
}

TEST_F(MainWindow, QuitsButNotInTheGuardedSecond) {
    StartProgram();
    StartQuitGuard();
    fake::Click(f.cmdQuit);
    fake::CloseForm(f);
    ui::Wait(900);
    fake::CloseForm(f);
    EXPECT_FALSE(user.Ended);
    ui::Wait(200);
    EXPECT_FALSE(f.Clock2.Enabled);
    fake::Click(f.cmdQuit);
    EXPECT_TRUE(user.Ended);
    EXPECT_EQ("", fake::JournalText()) << "nothing is saved on quit";
}

TEST_F(MainWindow, ClosingItWhileAnOperationRunsAsksForAStop) {
    StartProgram();
    fake::Click(f.cmdSetup);
    fake::CloseForm(f);
    EXPECT_TRUE(user.Ended) << "an open setup panel is no operation";
    user.Ended = false;
    user.AnswerOthers = [this](const fake::BoxSeen&) {
        EXPECT_EQ("", f.HoldsShutdown()) << "nor is the loading of one";
        return ui::AnswerOK;
    };
    user.Dialog("Specify operation file to be loaded", "C:\\gone.nws");
    fake::Click(f.cmdLoadSetup);

    ui::SetFocus(f.cmdProcessFiles[1]);
    EnableMain(false);
    EXPECT_FALSE(fake::CanReach(f.cmdQuit));
    fake::CloseForm(f);
    EXPECT_FALSE(user.Ended);
    EXPECT_TRUE(blnStop);
    EXPECT_FALSE(fake::CanReach(f.lblOnlineDocumentation)) << "a stray Enter opens no browser";
    user.Focus = nullptr;
    EnableMain(true);
    EXPECT_EQ(&f.cmdProcessFiles[1], user.Focus);
    EXPECT_TRUE(fake::CanReach(f.lblOnlineDocumentation));
}

TEST_F(MainWindow, FocusFollowsTheMouse) {
    StartProgram();
    for (ui::Control* control : f.Controls)
        if (control->Kind == ui::ControlKind::Button && fake::CanReach(*control)) {
            fake::HoverOver(*control);
            EXPECT_EQ(control, user.Focus) << control->Name;
        }
    frmReport.Visible = true;
    fake::HoverOver(f.cmdQuit);
    fake::HoverOver(f.cmdReportScreen);
    EXPECT_EQ(&f.cmdQuit, user.Focus) << "the report is on the screen already";
    frmReport.Visible = false;
}

TEST_F(MainWindow, HelpAndLinks) {
    StartProgram();
    const std::string strManual = fake::programFolder + "\\manual.html";
    user.Box("Help", "The user manual should be in the file\r\n" + strManual +
                         "\r\nbut there is no such file.");
    fake::Click(f.cmdHelp);
    fake::PutFile(strManual, "<html>");
    for (const int intAnswer : {ui::AnswerNo, ui::AnswerYes}) {
        user.Box("Help",
                 "The user manual is in the file\r\n" + strManual +
                     "\r\n\r\nDo you wish to open it now?",
                 intAnswer, {.Buttons = ui::Buttons::YesNo});
        fake::Click(f.cmdHelp);
    }
    fake::Click(f.lblCorvaneSystems);
    fake::Click(f.lblCV_URL);
    fake::Click(f.lblOnlineDocumentation);
    const std::string strMaker = f.lblCV_URL.Caption;
    ASSERT_EQ(4u, fake::linksOpened.size());
    EXPECT_EQ(strManual, fake::linksOpened[0]);
    EXPECT_EQ(strMaker, fake::linksOpened[1]);
    EXPECT_EQ(strMaker, fake::linksOpened[2]);
    EXPECT_NE(strMaker, fake::linksOpened[3]);
    fake::FailNth(1, platform::Fault::NotFound, "OpenLink");
    user.BoxLike("Error", "Cannot open " + strMaker + ".\r\n");
    fake::Click(f.lblCV_URL);
}

TEST_F(MainWindow, MnemonicsAreUniqueAndInTheirCaptions) {
    StartProgram();
    std::map<char, const ui::Control*> seen;
    for (const ui::Control* control : f.Controls) {
        if (control->Kind == ui::ControlKind::Button) {
            EXPECT_TRUE(control->Click && control->MouseOver && control->Mnemonic) << control->Name;
        }
        if (control->Mnemonic == 0)
            continue;
        EXPECT_NE(std::string::npos, control->Caption.find(control->Mnemonic)) << control->Name;
        const char chrUpper = static_cast<char>(control->Mnemonic & ~0x20);
        // The two panels are never open together, and each has its "Not now".
        if (seen.contains(chrUpper)) {
            EXPECT_EQ("Not now", control->Caption) << control->Name;
        }
        seen[chrUpper] = control;
    }
}

TEST_F(MainWindow, ControlsDoNotOverlap) {
    StartProgram();
    // Everything that can be shown together, with texts as long as they get.
    strFilespec = "*" + std::string(200, 'm') + "*";
    UpdateFilesLabels();
    SetMainLine(MainLine::LargePurgeMessage, std::string(1000, 'm'));
    SetMainLine(MainLine::Subdirectories2, std::string(200, 'm'));
    SetMainLine(MainLine::PurgeSpeed, std::string(200, 'm'));
    f.fraSetup.Visible = true;
    f.lblSetupFilename.Visible = false;
    for (const ui::Control* a : f.Controls)
        for (const ui::Control* b : f.Controls) {
            if (a >= b || a->Container != b->Container || !a->Visible || !b->Visible)
                continue;
            EXPECT_TRUE(a->Left + a->Width <= b->Left || b->Left + b->Width <= a->Left ||
                        a->Top + a->Height <= b->Top || b->Top + b->Height <= a->Top)
                << a->Name << " and " << b->Name;
        }
    for (const ui::Control* c : f.Controls)
        EXPECT_TRUE(c->Container ||
                    (c->Left + c->Width <= f.Width && c->Top + c->Height <= f.Height))
            << c->Name;
    EXPECT_LE(f.Height, (720 - 48 - 31) * 15) << "a small screen, its taskbar and the title bar";
}

TEST_F(MainWindow, MessageLabelsHaveRoomForTheirText) {
    StartProgram();
    SetMainLine(MainLine::LargePurgeMessage, "1\r\n2\r\n3\r\n4\r\n5\r\n");
    EXPECT_EQ(5 * 240, f.lblLargePurgeMessage.Height);
    SetMainLine(MainLine::LargePurgeMessage, "Purge disk cancelled.");
    EXPECT_EQ(240, f.lblLargePurgeMessage.Height);
    EXPECT_LT(f.lblLargePurgeMessage.Width, 3000);
    SetMainLine(MainLine::LargePurgeMessage, std::string(200, 'm'));
    EXPECT_GE(f.lblLargePurgeMessage.Height, 3 * 240);
    EXPECT_LE(f.lblLargePurgeMessage.Left + f.lblLargePurgeMessage.Width, f.Width - 120);
    SetMainLine(MainLine::PurgeSpeed, "93.1 MB/sec. (1 overwrite) for Drive C.");
    EXPECT_TRUE(f.lblPurgeSpeed.Bold && f.lblPurgeSpeed.Visible);
    SetMainLine(MainLine::PurgeSpeed, "");
    EXPECT_FALSE(f.lblPurgeSpeed.Bold || f.lblPurgeSpeed.Visible);
}

} // namespace
