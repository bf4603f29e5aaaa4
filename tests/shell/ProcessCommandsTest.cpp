// Listing and purging what was chosen, from the first click to the last box.
#include "report/frmAntiVirusQuery.h"
#include "report/frmPurgeWarning.h"
#include "report/frmReport.h"
#include "settings/frmPurgeConfirmation.h"
#include "shell/ShellTest.h"
#include "shell/SpecifyCommands.h"

struct ProcessCommands : CommandsTest {
    FrmPurgeConfirmation& options = frmPurgeConfirmation;

    /// The purge command up to its question whether to purge `what` and destroy what is in `whose`.
    /// `look` is done in the options dialog, `after` adds the boxes that come behind the question.
    void Purge(const std::string& what, const std::string& whose, const fake::Action& look = {},
               int answer = ui::AnswerNo, const fake::Action& after = {}) {
        user.Modal(options, [this, look] {
            if (look)
                look();
            fake::Click(options.cmdDoPurge);
        });
        user.Box("Purge files",
                 "Are you sure that you want to purge " + what +
                     "?\r\nThis will permanently destroy all data in " + whose,
                 answer, fake::AsksYesNo);
        if (after)
            after();
        if (answer != ui::AnswerYes)
            Cancelled();
        fake::Click(f.cmdProcessFiles[1]);
    }
    /// Both commands complain, and do nothing.
    void Refused(const std::string& text) {
        for (ui::Button& command : f.cmdProcessFiles)
            ClickWarned(command, "Error", text);
    }
    static void Cancelled() {
        user.Box("Purge cancelled", "No files purged.", {ui::Icon::None, ui::Buttons::OK, {}});
    }
};

TEST_F(ProcessCommands, ListingAsksAndNamesTheReport) {
    PutFiles("C:\\docs", 2);
    ChooseFolder("C:\\docs", ui::AnswerYes);
    frmReport.Caption = "Report";
    const auto list = [this](int displayNames, const char* caption, bool blnNamesFiles) {
        user.Box("List files", "Display folder names?", displayNames, fake::AsksYesNoCancel);
        fake::Click(f.cmdProcessFiles[0]);
        EXPECT_EQ(caption, frmReport.Caption);
        const std::string& text = frmReport.txbText.Text;
        EXPECT_EQ(blnNamesFiles, text.find("C:\\docs\\f1.txt (1 bytes)") != text.npos);
    };
    list(ui::AnswerCancel, "Report", false);
    list(ui::AnswerYes, "List all files", true);
    list(ui::AnswerNo, "Estimate purge time", false);
    Specify("*.txt");
    list(ui::AnswerYes, "List files", true);
    blnFolderNamesOnly = true;
    list(ui::AnswerYes, "List folders", false);
}

// What both commands look for before they begin; a listing asks first what to display.
TEST_F(ProcessCommands, NothingToListOrPurge) {
    const auto warned = [this](const std::string& text) {
        user.Box("List files", "Display folder names?", ui::AnswerYes);
        ClickWarned(f.cmdProcessFiles[0], "List files, estimate time", text);
        ClickWarned(f.cmdProcessFiles[1], "Purge files", text);
    };
    Refused("No files specified.");
    PutFiles("C:\\docs", 1);
    fake::PutFolder("C:\\docs\\sub");
    ChooseFolder("C:\\docs", ui::AnswerNo);
    Specify("?.doc", "Specify files", "There are no files in C:\\docs\\.");
    warned("There are no files in C:\\docs\\ matching ?.doc.");
    fake::Click(f.cmdSubdirectories);
    ClickWarned(f.cmdProcessFiles[1], "Purge files",
                "\r\nor in any of its subfolders matching ?.doc.");
    ChooseFolder("C:\\docs", ui::AnswerYes);
    fake::TakeAway("C:\\docs\\f0.txt");
    warned("There are no files in C:\\docs\\.");
    fake::FailAlways("EnumerateFolder", "\\docs\\", Fault::AccessDenied); // it may hold some
    warned("No files were found, but this folder could not be read:\r\nC:\\docs\\");
    fake::PutFile("C:\\docs\\a.txt");
    ChooseSingleFile("C:\\docs\\a.txt");
    fake::TakeAway("C:\\docs\\a.txt");
    warned("File C:\\docs\\a.txt not found.");
    fake::TakeAway("C:\\docs");
    Refused("Folder does not exist.");
}

// Between choosing and purging, minutes may pass.
TEST_F(ProcessCommands, TheChosenFolderIsLookedAtAgainAndHeld) {
    PutFiles("C:\\other", 2);
    const auto choose = [this] {
        PutFiles("C:\\docs", 2);
        ChooseFolder("C:\\docs", ui::AnswerYes);
    };
    choose();
    EXPECT_TRUE(fake::ReplaceByLink("C:\\docs", "C:\\other"));
    Refused("C:\\docs\\ is a link.\r\n");
    fake::TakeAway("C:\\docs");
    choose();
    fake::TakeAway("C:\\docs");
    PutFiles("C:\\docs", 1);
    Refused("C:\\docs\\ is not the folder any more that was chosen.\r\n");
    fake::TakeAway("C:\\docs");
    choose();
    Purge(
        "both files in C:\\docs\\ ", "these two files.",
        [] { EXPECT_FALSE(fake::ReplaceByLink("C:\\docs", "C:\\other")); }, ui::AnswerYes);
    EXPECT_TRUE(fake::FilesBelow("C:\\docs").empty());
    EXPECT_EQ(2u, fake::FilesBelow("C:\\other").size());
    EXPECT_TRUE(fake::ReplaceByLink("C:\\docs", "C:\\other")) << "still held";
}

TEST_F(ProcessCommands, QuestionsByCount) {
    const std::tuple<int, std::string, std::string, std::string> cases[] = {
        {1, "the single file in ", "the file ", "this file.)"},
        {20, "all 20 files in ", "the 20 files ", "these twenty files."},
        {21, "all 21 files in ", "the 21 files ", "these 21 files."},
        {1001, "all files in ", "the files ", "these (more than 1000) files."},
    };
    for (const auto& [count, allFiles, texts, whose] : cases) {
        PutFiles("C:\\docs", count);
        ChooseFolder("C:\\docs", ui::AnswerYes);
        Purge(allFiles + "C:\\docs\\ ", whose);
        Specify("*.txt");
        Purge(texts + "C:\\docs\\*.txt ", whose);
        fake::TakeAway("C:\\docs");
    }
    EXPECT_TRUE(fake::journal.empty());
}

TEST_F(ProcessCommands, QuestionsByKind) {
    const auto slack = [this] { fake::Click(options.chkPurgeSlackOnly); };
    PutFiles("C:\\docs", 3);
    fake::PutFiles({"C:\\docs\\one.doc", "C:\\docs\\sub\\two.doc", "C:\\docs\\never.SWP"});
    ChooseFolder("C:\\docs", ui::AnswerNo);
    Specify("*.txt");
    Purge("the slack area of the 3 files C:\\docs\\*.txt ", "these three files.", slack);
    Specify("*.doc");
    fake::Click(f.cmdSubdirectories);
    Purge("the 2 files C:\\docs\\*.doc\r\nand all files of the form \"*.doc\" in all subfolders",
          "these two files.");
    ChooseFolder("C:\\docs", ui::AnswerYes);
    fake::Click(f.cmdSubdirectories);
    Purge("the slack area of all 5 files in C:\\docs\\\r\nand all files in all subfolders",
          "these five files.", slack);
    Specify("*.swp");
    ClickWarned(f.cmdProcessFiles[1], "Purge files", "There are no other files to be purged.");
    EXPECT_TRUE(fake::journal.empty());
}

TEST_F(ProcessCommands, RunsAfterItsQuestions) {
    PutFiles("C:\\docs", 2);
    fake::PutFile("C:\\docs\\sub\\keep.txt", "keep");
    ChooseFolder("C:\\docs", ui::AnswerYes);
    user.During([] { return frmReport.Visible; },
                [&] { // which must come
                    EXPECT_EQ("Purge files", frmReport.Caption);
                    EXPECT_FALSE(fake::CanReach(f.cmdProcessFiles[1]));
                    FilesDroppedOnMain({"C:\\docs\\sub\\keep.txt"}); // not now
                });
    // A file that appears between the question and the run belongs to "all files".
    const auto late = [] { fake::PutFile("C:\\docs\\late.txt"); };
    Purge("both files in C:\\docs\\ ", "these two files.", late, ui::AnswerYes);
    EXPECT_EQ("keep", fake::ContentOf("C:\\docs\\sub\\keep.txt"));
    EXPECT_EQ("*.*", strFilespec);
    EXPECT_NE(std::string::npos, frmReport.txbText.Text.find("Number of files purged: 3"));
}

// Answers to the question about monitoring software, which is asked where such a file is meant.
TEST_F(ProcessCommands, MonitoringQueryBeforeThePurge) {
    PutFiles("C:\\docs", 1, ".doc");
    ChooseSingleFile("C:\\docs\\f0.doc");
    user.Modal(options, [this] { fake::Click(options.cmdCancel); });
    Cancelled();
    fake::Click(f.cmdProcessFiles[1]);
    Purge("the file C:\\docs\\f0.doc ", "this file.", {}, ui::AnswerYes, [] {
        user.Modal(frmAntiVirusQuery, [] { fake::Click(frmAntiVirusQuery.cmdDontKnow); });
        user.BoxLike("Nullwright", "If Drive C has files");
        user.Modal(frmPurgeWarning, [] { fake::Click(frmPurgeWarning.cmdOK); });
    });
    EXPECT_TRUE(fake::FilesBelow("C:\\docs").empty());
}

// In a tree it is asked only where there is one, however far behind those that the question counts.
TEST_F(ProcessCommands, NoMonitoringQueryWithoutAWatchedFile) {
    for (const bool blnWatched : {false, true}) {
        PutFiles("C:\\docs\\sub", 1001);
        if (blnWatched)
            fake::PutFile("C:\\docs\\sub\\deep\\last.doc");
        ChooseFolder("C:\\docs");
        fake::Click(f.cmdSubdirectories);
        Specify("*.*");
        Purge("all files in C:\\docs\\\r\nand all files in all subfolders",
              "these (more than 1000) files.", {}, ui::AnswerYes, [&] {
                  if (!blnWatched) // the run begins, and need not go on
                      return user.During([] { return frmReport.Visible; },
                                         [] { fake::PressF10(); });
                  user.Modal(frmAntiVirusQuery, [] { fake::Click(frmAntiVirusQuery.cmdCancel); });
                  Cancelled();
              });
        EXPECT_EQ(!blnWatched, frmReport.Visible);
        EXPECT_FALSE(blnStop) << "the stop of a run is over with it";
        fake::TakeAway("C:\\docs");
        ui::Hide(frmReport);
    }
}

// Starting the program, dropping a folder, listing and purging it.
TEST_F(ProcessCommands, AnyCallMayFail) {
    bool blnFailed = true;
    for (std::int64_t n = 1; blnFailed; ++n) {
        SCOPED_TRACE(n);
        ProgramTest::SetUp();
        fake::PutFiles({"C:\\docs\\a.txt", "C:\\docs\\sub\\b.txt"});
        fake::PutFile(strNextRun, "1.0,0,0,,,0,1,0,0,0,0,0,0,0");
        user.AnswerOthers = [](const fake::BoxSeen& box) {
            return box.Buttons == ui::Buttons::OK ? ui::AnswerOK : ui::AnswerYes;
        };
        fake::FailNth(n, platform::Fault::NotReady);
        StartProgram();
        EXPECT_LE(user.Boxes.size(), 1u);
        fake::DropFiles(f, {"C:\\docs"});
        fake::Click(f.cmdSubdirectories);
        fake::Click(f.cmdProcessFiles[0]);
        user.Modal(options, [this] { fake::Click(options.cmdDoPurge); });
        fake::Click(f.cmdProcessFiles[1]);
        blnFailed = fake::HasFailed();
        user.Reset(); // the options may not have come up
        EXPECT_TRUE(f.fraMenu.Enabled && f.fraSetup.Enabled && f.cmdProcessFiles[1].Enabled);
        EXPECT_EQ(0, fake::OpenHandles());
    }
    EXPECT_TRUE(fake::FilesBelow("C:\\docs").empty());
}
