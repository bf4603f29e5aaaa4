// Start-up, the main window's labels and its own commands.
#include "session/Session.h"
#include "shell/ShellTest.h"

#include <set>

using fake::user;

namespace {

using MainWindow = StartedShell;

TEST_F(ShellTest, StartsInItsOrder) {
    // What an earlier run of the same process may have left.
    strDirPath = "C:\\old\\";
    strFilespec = "*.*";
    blnStop = blnConfirmFiles = blnPurgingDrive = true;
    dblAF_A = dblMaxSizeDummyFile = 0;
    fake::currentFolder = "C:\\Users";
    StartProgram();
    EXPECT_TRUE(f.Visible && blnStartupCompleted);
    EXPECT_FALSE(blnStop || blnPurgingDrive);
    EXPECT_TRUE(fake::currentFolder.starts_with("C:") && fake::currentFolder.size() <= 3);
    EXPECT_TRUE(dblAF_A == 0.917 && dblMaxSizeDummyFile == 52428800);
    EXPECT_EQ(&f.cmdSpecifyDirectory[0], user.Focus);
    EXPECT_EQ(strNothingChosen + "Random bytes, 6 times (= 6 overwrites)||", Labels());
}

TEST_F(MainWindow, QuitsButNotInTheGuardedSecondNorWhileAnOperationRuns) {
    StartQuitGuard();
    fake::Click(f.cmdQuit);
    ui::Wait(900);
    fake::CloseForm(f);
    EXPECT_FALSE(user.Ended || blnStop);
    ui::SetFocus(f.cmdProcessFiles[1]);
    EnableMain(false);
    EXPECT_FALSE(fake::CanReach(f.cmdQuit));
    EXPECT_FALSE(fake::CanReach(f.lblOnlineDocumentation)) << "a stray Enter opens no browser";
    ui::Wait(200);
    fake::CloseForm(f);
    EXPECT_FALSE(user.Ended);
    EXPECT_TRUE(blnStop);
    user.Focus = nullptr;
    EnableMain(true);
    EXPECT_EQ(&f.cmdProcessFiles[1], user.Focus);
    fake::Click(f.cmdQuit);
    EXPECT_TRUE(user.Ended);
    EXPECT_EQ("", fake::JournalText()) << "nothing is saved on quit";
}

TEST_F(MainWindow, HelpAndLinks) {
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
    for (ui::Label* link : {&f.lblCorvaneSystems, &f.lblCV_URL, &f.lblOnlineDocumentation})
        fake::Click(*link);
    EXPECT_EQ((std::vector<std::string>{strManual, "https://maker/", "https://maker/",
                                        "https://manual/"}),
              fake::linksOpened);
    fake::FailNth(1, platform::Fault::NotFound, "OpenLink");
    user.BoxLike("Error", "Cannot open https://maker/.\r\n");
    fake::Click(f.lblCV_URL);
}

TEST_F(MainWindow, ButtonsAnswerToMouseAndKeys) {
    std::set<char> mnemonics;
    for (ui::Control* control : f.Controls) {
        SCOPED_TRACE(control->Name);
        if (control->Kind == ui::ControlKind::Button) {
            ASSERT_TRUE(control->Click && control->MouseOver && control->Mnemonic);
            control->MouseOver();
            EXPECT_EQ(fake::CanReach(*control), control == user.Focus) << "it follows the mouse";
        }
        if (control->Mnemonic == 0)
            continue;
        EXPECT_NE(std::string::npos, control->Caption.find(control->Mnemonic));
        // The two panels are never open together, and each has its "Not now".
        EXPECT_TRUE(mnemonics.insert(static_cast<char>(control->Mnemonic & ~0x20)).second ||
                    control->Caption == "Not now");
    }
}

} // namespace
