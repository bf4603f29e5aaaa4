// Start-up, the main window's labels and its own commands.
#include "support/MainWindow.h"
#include "report/run/Run.h"
#include "settings/SetupFiles.h"
#include "shell/ShellTest.h"
#include "ui/PathEllipsis.h"
#include "Version.h"

using MainWindow = StartedShell;

TEST_F(ShellTest, StartsInItsOrder) {
    // What an earlier run of the same process may have left.
    strDirPath = "C:\\old\\";
    strFilespec = "*.*";
    blnStop = blnConfirmFiles = blnPurgingDrive = true;
    dblAF_A = dblMaxSizeDummyFile = 0;
    fake::currentFolder = "C:\\Users";
    StartProgram();
    EXPECT_TRUE(f.Visible && blnStartupCompleted && !blnStop && !blnPurgingDrive);
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
    EXPECT_TRUE(blnStop && !user.Ended);
    blnStop = false;
    currentRun.State = RunState::Running; // now of a run in the report
    user.BoxLike("Nullwright", "Do you wish to stop it?", ui::AnswerNo);
    fake::CloseForm(f);
    EXPECT_FALSE(blnStop);
    user.Ending = true;
    fake::CloseForm(f);
    EXPECT_TRUE(blnStop) << "nobody is asked at the end of the session";
    user.Ending = false;
    user.Focus = nullptr;
    EnableMain(true);
    EXPECT_EQ(&f.cmdProcessFiles[1], user.Focus);
    fake::Click(f.cmdQuit);
    EXPECT_TRUE(user.Ended);
    EXPECT_EQ("", fake::JournalText()) << "nothing is saved on quit";
}

TEST_F(MainWindow, HelpAndLinks) {
    const std::string strManual = fake::programFolder + "\\manual.html";
    user.BoxLike("Help", strManual + "\r\nbut there is no such file.");
    fake::Click(f.cmdHelp);
    fake::PutFile(strManual, "<html>");
    for (const int intAnswer : {ui::AnswerNo, ui::AnswerYes}) {
        user.BoxLike("Help", strManual + "\r\n\r\nDo you wish to open it now?", intAnswer,
                     {.Buttons = ui::Buttons::YesNo});
        fake::Click(f.cmdHelp);
    }
    user.KeyHandler(112); // F1
    for (ui::Label* link : {&f.lblCorvaneSystems, &f.lblOnlineDocumentation})
        fake::Click(*link);
    EXPECT_EQ((std::vector<std::string>{strManual, strManual, "https://maker/", "https://manual/"}),
              fake::linksOpened);
    fake::FailNth(1, platform::Fault::NotFound, "OpenLink");
    user.BoxLike("Error", "Cannot open https://maker/.\r\n");
    fake::Click(f.lblCV_URL);
    const auto expectAbout = [&](const std::string& settings) {
        user.Box("About Nullwright",
                 "Nullwright " NW_VERSION "\r\n\r\nCopyright (c) 2026 The Nullwright developers\r\n"
                 "MIT License, without warranty of any kind.\r\n\r\n" +
                     settings,
                 fake::Informs);
        fake::Click(*f.MenuItem);
    };
    expectAbout("Settings: C:\\Users\\me\\AppData\\Roaming\\Nullwright\\");
    fake::PutFile(fake::programFolder + "\\nullwright.portable");
    FindNextRunSetupPath();
    expectAbout("Settings (portable): C:\\Program Files\\Nullwright\\");
}

struct Box {
    int Left = 0, Top = 0, Right = 0, Bottom = 0;
};

/// Where a control stands on the form.
static Box BoxOf(const ui::Control& c) {
    const Box in = c.Container ? BoxOf(*c.Container) : Box{};
    const int left = in.Left + c.Left, top = in.Top + c.Top;
    return {left, top, left + c.Width, top + c.Height};
}

// Inside 1366 x 768 at 150 % with a taskbar there are 6390 twips, 1920 x 1080 at 175 % has 8130.
TEST_F(MainWindow, FitsIntoLowNarrowAndLargeWindows) {
    const int intUsual = f.Height, intPitch = f.cmdSpecifyFiles.Top - f.cmdSpecifyDirectory[0].Top;
    EXPECT_LE(f.ContentHeight, 6390);
    strDirPath = "C:\\data\\";
    strFilespec = "report of the year*.doc";
    UpdateFilesLabels();
    SetMainLine(MainLine::PurgeSpeed, "36.5 MB/sec. (1 overwrite) for Drive C.");
    for (const int intWidth : {f.MinWidth, f.Width, 20000}) {
        for (const int intHeight : {f.MinHeight, 6390, 8130, intUsual, 12000}) {
            for (ui::Frame* panel :
                 std::initializer_list<ui::Frame*>{nullptr, &f.fraSetup, &f.picSaveSetup}) {
                SCOPED_TRACE(testing::Message() << intWidth << " x " << intHeight << " " << panel);
                f.Width = intWidth;
                f.Height = intHeight;
                if (panel)
                    fake::Click(f.cmdSetup);
                if (panel == &f.picSaveSetup)
                    fake::Click(f.cmdSaveSetup);
                SetMainLine(MainLine::LargePurgeMessage, panel ? "" : "1\r\n2\r\n3\r\n4\r\n5");
                f.Resize();
                std::vector<const ui::Control*> shown;
                for (const ui::Control* c : f.Controls)
                    if (c->Visible && (!c->Container || c->Container->Visible) && c != &f.fraMenu)
                        shown.push_back(c);
                for (const ui::Control* a : shown) {
                    const Box one = BoxOf(*a);
                    EXPECT_GE(one.Left, 120) << a->Name;
                    EXPECT_LE(one.Right, intWidth - 120) << a->Name;
                    EXPECT_LE(one.Bottom, std::max(intHeight, f.ContentHeight)) << a->Name;
                    EXPECT_GE(a->Height, a->Kind == ui::ControlKind::Frame ? 15 : 240) << a->Name;
                    for (const ui::Control* b : shown) {
                        const Box two = BoxOf(*b);
                        EXPECT_FALSE(a < b && a->Container != b && b->Container != a &&
                                     one.Left < two.Right && two.Left < one.Right &&
                                     one.Top < two.Bottom && two.Top < one.Bottom)
                            << a->Name << " lies on " << b->Name;
                    }
                }
                if (panel)
                    fake::Click(panel == &f.fraSetup ? f.cmdKeepSetup : f.cmdDontSaveSetup);
            }
            // The rows come closer only where they must, and the foot stays at the foot.
            EXPECT_EQ(intHeight >= intUsual,
                      f.cmdSpecifyFiles.Top - f.cmdSpecifyDirectory[0].Top == intPitch);
            EXPECT_GE(f.lblStatus.Top + 600, intHeight);
        }
        EXPECT_EQ(intWidth - 120, f.lblDirectory.Left + f.lblDirectory.Width);
    }
    SetMainLine(MainLine::LargePurgeMessage, "");
    EXPECT_TRUE(f.lblSetupFilename.Visible && f.lblAbout.Visible) << "uncovered again";
}

TEST(PathEllipsis, KeepsDriveAndNameOfTheFile) {
    const std::tuple<std::string, std::size_t, std::string> cases[] = {
        {R"(C:\Documents and Settings\me\letters\a.txt)", 33,
         R"(C:\Documents and...\letters\a.txt)"},
        {R"(C:\Documents and Settings\me\letters\a.txt)", 20, R"(C:\Document...\a.txt)"},
        {R"(C:\one\two\three\)", 16, R"(C:\one...\three\)"},
        {"a name without end", 9, "a name..."},
        {"\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4", 8, "\u00e4\u00e4..."},
        {R"(Reading C:\data\letters\2019\ ...)", 26, R"(Reading C:\da...\2019\ ...)"},
    };
    for (const auto& [path, room, shown] : cases) {
        const auto fits = [&](const std::string& text) { return text.size() <= room; };
        EXPECT_EQ(shown, ui::ShortenPath(path, fits));
    }
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
