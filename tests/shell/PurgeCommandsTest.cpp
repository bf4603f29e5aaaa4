// The main window's commands from the first click to the last box.
#include "shell/PurgeCommands.h"
#include "fakes/ProgramTest.h"
#include "report/frmAntiVirusQuery.h"
#include "report/frmPurgeWarning.h"
#include "report/frmReport.h"
#include "selection/frmFileSpecification.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/frmMain.h"
#include "shell/Session.h"

using fake::user;

namespace {

constexpr const char* strListCaption = "List files, estimate time";

struct PurgeCommandsTest : ProgramTest {
    FrmMain& m = frmMain;
    FrmPurgeConfirmation& options = frmPurgeConfirmation;

    void SetUp() override {
        ProgramTest::SetUp();
        StartProgram();
    }
    void TearDown() override {
        EXPECT_TRUE(m.fraMenu.Enabled);
        EXPECT_TRUE(m.fraSetup.Enabled);
        EXPECT_TRUE(m.cmdProcessFiles[1].Enabled);
        EXPECT_EQ("", m.lblLargePurgeMessage.Caption);
        ProgramTest::TearDown();
    }
    /// What stands beside the buttons, as a person reads it.
    std::string Labels() const {
        return m.lblDirectory.Caption + "|" + m.lblFiles.Caption + "|" + m.lblFiles2.Caption + "|" +
               m.lblSubdirectories.Caption + "|" + m.lblSubdirectories2.Caption;
    }
    /// `after` adds the boxes that the command must end with.
    void ChooseFolder(const std::string& folder, std::optional<int> purgeAll,
                      const fake::Action& after = {}) {
        user.Dialog("Specify folder containing files to be purged", folder);
        if (purgeAll)
            user.Box("Specify folder", "Do you wish to purge ALL files in " + folder + "\\?",
                     *purgeAll, fake::AsksYesNo);
        if (after)
            after();
        fake::Click(m.cmdSpecifyDirectory[0]);
    }
    void Specify(const std::string& filespec, const std::string& title = "",
                 const std::string& text = "") {
        user.Modal(frmFileSpecification, [filespec] {
            fake::Type(frmFileSpecification.txbForm, filespec);
            fake::Click(frmFileSpecification.cmdOK);
        });
        if (!text.empty())
            user.Box(title, text, fake::Warns);
        fake::Click(m.cmdSpecifyFiles);
    }
    void ChooseSingleFile(const std::string& path, const std::string& complaint = "") {
        user.Dialog("Specify file to be purged.", path);
        if (!complaint.empty())
            user.Box("Single file", complaint, fake::Warns);
        fake::Click(m.cmdSingleFile);
        ui::Wait(1100);
    }
    /// The rest of a purge command, from the options dialog on, in which `look` is done first;
    /// `after` adds the boxes that come behind the question.
    void Accept(const std::string& question, int answer = ui::AnswerYes,
                const fake::Action& look = {}, const fake::Action& after = {}) {
        user.Modal(options, [this, look] {
            if (look)
                look();
            fake::Click(options.cmdDoPurge);
        });
        user.Box("Purge files", question, answer, fake::AsksYesNo);
        if (after)
            after();
        if (answer != ui::AnswerYes)
            Cancelled();
        fake::Click(m.cmdProcessFiles[1]);
    }
    static void Cancelled() {
        user.Box("Purge cancelled", "No files purged.", {ui::Icon::None, ui::Buttons::OK, {}});
    }
    static std::string BothFilesIn(const std::string& folder) {
        return "Are you sure that you want to purge both files in " + folder +
               "\\ ?\r\nThis will permanently destroy all data in these two files.";
    }
    /// A command that does nothing but complain.
    static void ClickWarned(ui::Button& command, const std::string& title,
                            const std::string& text) {
        user.Box(title, text, fake::Warns);
        fake::Click(command);
    }
    void PutFiles(const std::string& folder, int count, const std::string& extension = ".txt") {
        for (int i = 0; i < count; ++i)
            fake::PutFile(folder + "\\f" + std::to_string(i) + extension);
    }
};

TEST_F(PurgeCommandsTest, SingleFile) {
    fake::PutFile("C:\\docs\\a.txt");
    fake::PutFile("C:\\docs\\sub\\b.txt");
    const std::string before = Labels();
    ChooseSingleFile("");
    EXPECT_EQ(before, Labels());
    EXPECT_FALSE(m.blnQuitGuard);

    user.Dialog("Specify file to be purged.", "C:\\docs\\a.txt");
    fake::Click(m.cmdSingleFile);
    fake::Click(m.cmdSingleFile); // within the guarded second nothing happens
    fake::Click(m.cmdSpecifyFiles);
    EXPECT_EQ("C:\\docs\\|a.txt||No|(Do not operate on files in lower subfolders.)", Labels());
    EXPECT_FALSE(blnMultipleFiles);
    EXPECT_EQ("", m.lblPurgeSpeed.Caption);
    EXPECT_EQ("", m.lblEstimatedTime.Caption);
    ui::Wait(1100);

    fake::AddDrive('A', 1 << 20);
    fake::PutFile("A:\\f.txt", "small");
    sngPurgeSpeeds[0] = 0.25F;
    ChooseSingleFile("A:\\f.txt");
    EXPECT_EQ("0.250 MB/sec. (1 overwrite) for Drive A (floppy drive).", m.lblPurgeSpeed.Caption);
    EXPECT_EQ("Less than a minute.", m.lblEstimatedTime.Caption);
    fake::PutBigFile("A:\\f.txt", 600 << 10);
    sngPurgeSpeeds[0] = 0.05F;
    user.Modal(frmTypeOfPurge, [] {
        fake::Choose(frmTypeOfPurge.cboNumberOfPasses[0], "9");
        fake::Click(frmTypeOfPurge.cmdCancel); // the number of passes stays
    });
    fake::Click(m.cmdTypeOfPurge);
    EXPECT_EQ("1 minute and 47 seconds", m.lblEstimatedTime.Caption);

    ChooseSingleFile("\\\\server\\share\\x",
                     "\\\\server\\share\\x is not on a drive with a letter.\r\n"
                     "Nullwright works only on drives that have a letter, not on network shares\r\n"
                     "or other places.");
    fake::PutFile("C:\\docs\\link.txt").LinkTarget = "C:\\docs\\a.txt";
    ChooseSingleFile("C:\\docs\\link.txt", "C:\\docs\\link.txt is a link to a file elsewhere.\r\n"
                                           "Links are not followed: choose the file itself.");
    EXPECT_EQ("A:\\", strDirPath);
}

TEST_F(PurgeCommandsTest, SpecifyFolder) {
    PutFiles("C:\\docs", 1);
    fake::PutFolder("C:\\empty");
    fake::PutFolder("C:\\linked\\link").LinkTarget = "C:\\docs";
    fake::PutFile("C:\\linked\\hidden.txt", "x", platform::AttributeHidden);
    ChooseFolder("C:\\docs", ui::AnswerYes);
    EXPECT_EQ("C:\\docs\\|*.*|(All files.)|No|(The folder has no subfolders.)", Labels());
    EXPECT_TRUE(blnMultipleFiles);
    EXPECT_EQ("C:\\docs\\", strBrowsePath);
    user.Dialog("Specify folder containing files to be purged", "");
    fake::Click(m.cmdSpecifyDirectory[0]);
    EXPECT_EQ("C:\\docs\\|*.*|(All files.)|No|(The folder has no subfolders.)", Labels());
    // The old pattern is not applied to the new folder.
    ChooseFolder("C:\\linked", ui::AnswerNo);
    EXPECT_EQ("C:\\linked\\|Not specified||No|(The folder has no subfolders.)", Labels());
    ChooseFolder("C:\\empty", {});
    EXPECT_EQ("C:\\empty\\|Not specified||No|(The folder has no subfolders.)", Labels());
    ChooseFolder("C:\\gone", {},
                 [] { user.Box("Error", "Cannot access the folder.", fake::Warns); });
}

TEST_F(PurgeCommandsTest, SpecifyFiles) {
    ClickWarned(m.cmdSpecifyFiles, "Folder unspecified", "The folder has not been specified.");

    fake::PutFile("C:\\docs\\a.txt");
    fake::PutFile("C:\\tree\\a.txt");
    fake::PutFile("C:\\tree\\sub\\b.doc");
    fake::PutFolder("C:\\empty");
    ChooseFolder("C:\\docs", ui::AnswerNo);
    Specify("*.txt");
    EXPECT_EQ("*.txt|(All files with extension txt.)",
              m.lblFiles.Caption + "|" + m.lblFiles2.Caption);
    Specify("?.doc", "Empty folder", "The folder contains no matching files and no subfolders.");
    EXPECT_EQ("?.doc|(All files of the form ?.doc.)",
              m.lblFiles.Caption + "|" + m.lblFiles2.Caption);
    ChooseFolder("C:\\empty", {});
    Specify("*.txt", "Empty folder", "The folder contains no files and no subfolders.");

    ChooseFolder("C:\\tree", ui::AnswerNo);
    Specify("?.doc", "Specify files", "There are no files in C:\\tree\\.");
    fake::Click(m.cmdSubdirectories);
    Specify("?.doc"); // found in the subfolder
    Specify("?.xyz", "Specify files",
            "There are no files in C:\\tree\\\r\nor in any of its subfolders.");
    fake::TakeAway("C:\\tree");
    Specify("?.txt", "Error", "Cannot access the folder.");
    user.Modal(frmFileSpecification, [] { fake::PressEscape(frmFileSpecification); });
    fake::Click(m.cmdSpecifyFiles);
    EXPECT_EQ("?.txt", strFilespec);
}

TEST_F(PurgeCommandsTest, TogglesAndClear) {
    fake::Click(m.cmdSubdirectories); // no folder: nothing to toggle
    EXPECT_FALSE(blnSubdirectories);
    fake::PutFile("C:\\flat\\a.txt");
    fake::PutFile("C:\\tree\\sub\\b.doc");
    ChooseFolder("C:\\flat", ui::AnswerYes);
    fake::Click(m.cmdSubdirectories);
    EXPECT_EQ("C:\\flat\\|*.*|(All files.)|No|(The folder has no subfolders.)", Labels());
    ChooseFolder("C:\\tree", {});
    m.lblSetupFilename.Caption = "some.nws";
    fake::Click(m.cmdSubdirectories);
    EXPECT_EQ("C:\\tree\\|Not specified||Yes|"
              "(Operate on all specified files in lower subfolders.)",
              Labels());
    EXPECT_EQ("", m.lblSetupFilename.Caption);
    fake::drives['C'].MediaPresent = false;
    ClickWarned(m.cmdSubdirectories, "Error", "Error when attempting to access C:\\tree\\.");
    fake::drives['C'].MediaPresent = true;
    EXPECT_TRUE(blnSubdirectories);

    fake::Click(m.cmdConfirmFiles);
    EXPECT_EQ("Yes|(Confirm purge operation for each file.)",
              m.lblConfirmFiles.Caption + "|" + m.lblConfirmFiles2.Caption);
    fake::Click(m.cmdConfirmFiles);
    EXPECT_EQ("No|(Do not confirm purge operation for each file.)",
              m.lblConfirmFiles.Caption + "|" + m.lblConfirmFiles2.Caption);

    user.Box("Clear", "Clear folder and file specifications?", ui::AnswerNo, fake::AsksYesNo);
    fake::Click(m.cmdClear);
    EXPECT_EQ("C:\\tree\\", strDirPath);
    user.Box("Clear", "Clear folder and file specifications?", ui::AnswerYes, fake::AsksYesNo);
    fake::Click(m.cmdClear);
    EXPECT_EQ("", strDirPath + strFilespec);
    EXPECT_FALSE(blnSubdirectories || blnMultipleFiles);
    EXPECT_EQ("Not specified|Not specified||No", Labels().substr(0, 31));
}

TEST_F(PurgeCommandsTest, ListingAsksAndNamesTheReport) {
    const auto list = [&](int answer) {
        user.Box("List files", "Display folder names?", answer, fake::AsksYesNoCancel);
        fake::Click(m.cmdProcessFiles[0]);
        return frmReport.Caption;
    };
    for (ui::Button& command : m.cmdProcessFiles)
        ClickWarned(command, "Error", "No files specified.");
    PutFiles("C:\\docs", 2);
    fake::PutFile("C:\\docs\\sub\\b.doc");
    ChooseFolder("C:\\docs", ui::AnswerYes);
    frmReport.Caption = "Report";
    EXPECT_EQ("Report", list(ui::AnswerCancel));
    EXPECT_EQ("List all files", list(ui::AnswerYes));
    EXPECT_NE(std::string::npos, frmReport.txbText.Text.find("C:\\docs\\f1.txt (1 bytes)"));
    EXPECT_EQ("Estimate purge time", list(ui::AnswerNo));
    EXPECT_EQ(std::string::npos, frmReport.txbText.Text.find("f1.txt"));
    Specify("*.txt");
    EXPECT_EQ("List files", list(ui::AnswerYes));
    blnFolderNamesOnly = true;
    EXPECT_EQ("List folders", list(ui::AnswerYes));
    EXPECT_EQ(std::string::npos, frmReport.txbText.Text.find("f1.txt"));

    fake::Click(m.cmdSubdirectories);
    Specify("*.doc");
    EXPECT_EQ("List folders", list(ui::AnswerYes)); // one is in the subfolder
    fake::TakeAway("C:\\docs\\sub\\b.doc");
    user.Box("List files", "Display folder names?", ui::AnswerYes);
    ClickWarned(m.cmdProcessFiles[0], strListCaption,
                "There are no files in C:\\docs\\ matching *.doc.");
    ChooseSingleFile("C:\\docs\\f0.txt");
    fake::TakeAway("C:\\docs\\f0.txt");
    user.Box("List files", "Display folder names?", ui::AnswerYes);
    ClickWarned(m.cmdProcessFiles[0], strListCaption, "File C:\\docs\\f0.txt not found.");
    fake::TakeAway("C:\\docs");
    for (ui::Button& command : m.cmdProcessFiles)
        ClickWarned(command, "Error", "Folder does not exist.");
}

TEST_F(PurgeCommandsTest, PurgeQuestionsByCount) {
    const struct {
        int Count;
        const char* AllFiles;
        const char* Texts;
        const char* Destroyed;
    } cases[] = {
        {1, "the single file in ", "the file ", "this file.)"},
        {2, "both files in ", "the 2 files ", "these two files."},
        {3, "all 3 files in ", "the 3 files ", "these three files."},
        {20, "all 20 files in ", "the 20 files ", "these twenty files."},
        {21, "all 21 files in ", "the 21 files ", "these 21 files."},
        {1000, "all 1,000 files in ", "the 1,000 files ", "these 1,000 files."},
        {1001, "all files in ", "the files ", "these (more than 1000) files."},
    };
    for (const auto& c : cases) {
        PutFiles("C:\\docs", c.Count);
        ChooseFolder("C:\\docs", ui::AnswerYes);
        const std::string start = "Are you sure that you want to purge ",
                          end = std::string(" ?\r\nThis will permanently destroy all data in ") +
                                c.Destroyed;
        Accept(start + c.AllFiles + "C:\\docs\\" + end, ui::AnswerNo);
        Specify("*.txt");
        Accept(start + c.Texts + "C:\\docs\\*.txt" + end, ui::AnswerNo);
        fake::TakeAway("C:\\docs");
    }
    EXPECT_TRUE(fake::journal.empty());
}

TEST_F(PurgeCommandsTest, PurgeQuestionsByKind) {
    const auto slack = [this] { fake::Click(options.chkPurgeSlackOnly); };
    PutFiles("C:\\docs", 3);
    fake::PutFile("C:\\docs\\one.doc");
    fake::PutFile("C:\\docs\\sub\\two.doc");
    ChooseSingleFile("C:\\docs\\one.doc");
    Accept("Are you sure that you want to purge the file C:\\docs\\one.doc ?\r\n"
           "This will permanently destroy all data in this file.",
           ui::AnswerNo);
    EXPECT_EQ("Yes, purge this file", options.cmdDoPurge.Caption);
    ChooseFolder("C:\\docs", ui::AnswerNo);
    Specify("*.txt");
    Accept("Are you sure that you want to purge the slack area of the 3 files C:\\docs\\*.txt ?\r\n"
           "This will permanently destroy all data in these three files.",
           ui::AnswerNo, slack);
    EXPECT_EQ("Yes, purge these files", options.cmdDoPurge.Caption);
    Specify("*.doc");
    Accept("Are you sure that you want to purge the file C:\\docs\\*.doc ?\r\n"
           "This will permanently destroy all data in this file.)",
           ui::AnswerNo);
    EXPECT_EQ("Yes, purge this file", options.cmdDoPurge.Caption);
    fake::Click(m.cmdSubdirectories);
    Accept("Are you sure that you want to purge the 2 files C:\\docs\\*.doc\r\n"
           "and all files of the form \"*.doc\" in all subfolders?\r\n"
           "This will permanently destroy all data in these two files.",
           ui::AnswerNo);
    ChooseFolder("C:\\docs", ui::AnswerYes);
    fake::Click(m.cmdSubdirectories);
    Accept("Are you sure that you want to purge the slack area of all 5 files in C:\\docs\\\r\n"
           "and all files in all subfolders?\r\n"
           "This will permanently destroy all data in these five files.",
           ui::AnswerNo, slack);
    EXPECT_TRUE(fake::journal.empty());
}

TEST_F(PurgeCommandsTest, PurgeRunsAfterItsQuestions) {
    PutFiles("C:\\docs", 2);
    fake::PutFile("C:\\docs\\sub\\keep.txt", "keep");
    ChooseFolder("C:\\docs", ui::AnswerYes);
    bool blnRunSeen = false;
    user.During([] { return frmReport.Visible; },
                [&] {
                    blnRunSeen = true;
                    EXPECT_EQ("Purge files", frmReport.Caption);
                    EXPECT_FALSE(fake::CanReach(m.cmdProcessFiles[1]));
                    EXPECT_FALSE(m.fraSetup.Enabled);
                    FilesDroppedOnMain({"C:\\docs\\sub\\keep.txt"}); // not now
                });
    // A file that appears between the question and the run belongs to "all files".
    Accept(BothFilesIn("C:\\docs"), ui::AnswerYes, [] { fake::PutFile("C:\\docs\\late.txt"); });
    EXPECT_TRUE(blnRunSeen);
    EXPECT_EQ("*.*", strFilespec);
    EXPECT_EQ(std::vector<std::string>{"C:\\docs\\sub\\keep.txt"}, fake::FilesBelow("C:\\docs"));
    EXPECT_EQ("keep", fake::ContentOf("C:\\docs\\sub\\keep.txt"));
    EXPECT_NE(std::string::npos, frmReport.txbText.Text.find("Number of files purged: 3"));
}

// Between the question and the run the folder is deleted, or its drive is pulled out.
TEST_F(PurgeCommandsTest, FolderVanishesBeforeTheRun) {
    for (const bool blnPulled : {false, true}) {
        PutFiles("C:\\docs", 2);
        fake::AddDrive('E', 1 << 20);
        PutFiles("E:\\docs", 2);
        const std::string folder = blnPulled ? "E:\\docs" : "C:\\docs";
        ChooseFolder(folder, ui::AnswerYes);
        Accept(BothFilesIn(folder), ui::AnswerYes, [&] {
            fake::TakeAway("C:\\docs");
            fake::drives['E'].MediaPresent = false;
        });
        EXPECT_EQ(std::string::npos, frmReport.txbText.Text.find(" purged\r\n"));
        EXPECT_TRUE(fake::journal.empty());
        EXPECT_TRUE(m.fraMenu.Enabled);
    }
}

TEST_F(PurgeCommandsTest, NothingIsPurgedWhenCancelled) {
    PutFiles("C:\\docs", 2, ".exe");
    ChooseFolder("C:\\docs", ui::AnswerYes);
    user.Modal(options, [this] { fake::Click(options.cmdCancel); });
    Cancelled();
    fake::Click(m.cmdProcessFiles[1]);
    Accept(BothFilesIn("C:\\docs"), ui::AnswerYes, {}, [] {
        user.Modal(frmAntiVirusQuery, [] { fake::Click(frmAntiVirusQuery.cmdCancel); });
        Cancelled();
    });
    EXPECT_TRUE(fake::journal.empty());
}

// Answers to the question about monitoring software; it is asked only where such a file is meant.
TEST_F(PurgeCommandsTest, MonitoringQueryBeforeThePurge) {
    ui::Button* const answers[] = {&frmAntiVirusQuery.cmdNo, &frmAntiVirusQuery.cmdDontKnow};
    for (ui::Button* answer : answers) {
        PutFiles("C:\\docs", 1, ".doc");
        ChooseSingleFile("C:\\docs\\f0.doc");
        Accept("Are you sure that you want to purge the file C:\\docs\\f0.doc ?\r\n"
               "This will permanently destroy all data in this file.",
               ui::AnswerYes, {}, [answer] {
                   user.Modal(frmAntiVirusQuery, [answer] { fake::Click(*answer); });
                   if (answer == &frmAntiVirusQuery.cmdNo)
                       return;
                   user.BoxLike("Nullwright", "If Drive C has files");
                   // The file itself is announced, but the query is not put again in this run.
                   user.Modal(frmPurgeWarning, [] { fake::Click(frmPurgeWarning.cmdOK); });
               });
        EXPECT_EQ("(missing)", fake::ContentOf("C:\\docs\\f0.doc"));
    }
}

TEST_F(PurgeCommandsTest, CountingIsShownAndCanBeInterrupted) {
    PutFiles("C:\\tree\\sub", 3);
    ChooseFolder("C:\\tree", {});
    fake::Click(m.cmdSubdirectories);
    Specify("*.txt");
    std::string message;
    fake::OnCall("EnumerateFolder", [&](const std::string&) {
        if (message.empty()) {
            message = m.lblLargePurgeMessage.Caption;
            fake::PressF10();
        }
        return platform::Fault::None;
    });
    user.Box("Purge cancelled", "No files purged.");
    fake::Click(m.cmdProcessFiles[1]);
    EXPECT_EQ("Now counting files ...", message);
    EXPECT_FALSE(blnStop);
    // A listing looks for files first, too.
    frmReport.txbText.Text.clear();
    message.clear();
    user.Box("List files", "Display folder names?", ui::AnswerYes);
    fake::Click(m.cmdProcessFiles[0]);
    EXPECT_FALSE(frmReport.Visible);
    EXPECT_EQ("", frmReport.txbText.Text);
    EXPECT_EQ(3u, fake::FilesBelow("C:\\tree").size());
}

// Dropping a folder, listing and purging it, with each platform call failing in turn: the window
// is back, nothing is left open, and nothing outside the folder was touched.
TEST_F(PurgeCommandsTest, AnyCallMayFail) {
    for (std::int64_t n = 1;; ++n) {
        ASSERT_LT(n, 2000);
        SCOPED_TRACE(n);
        ProgramTest::SetUp();
        fake::PutFile("C:\\docs\\a.txt", "aaaa");
        fake::PutFile("C:\\docs\\sub\\b.txt", "bbbb");
        fake::PutFile("C:\\other\\c.txt", "cccc");
        fake::PutFolder("C:\\docs\\link").LinkTarget = "C:\\other";
        StartProgram();
        user.AnswerOthers = [](const fake::BoxSeen& box) {
            return box.Buttons == ui::Buttons::OK ? ui::AnswerOK : ui::AnswerYes;
        };
        fake::FailNth(n, platform::Fault::NotReady);
        fake::DropFiles(m, {"C:\\docs"});
        fake::Click(m.cmdSubdirectories);
        fake::Click(m.cmdProcessFiles[0]);
        user.Modal(options, [this] { fake::Click(options.cmdDoPurge); });
        user.Modal(frmAntiVirusQuery, [] { fake::Click(frmAntiVirusQuery.cmdNo); });
        fake::Click(m.cmdProcessFiles[1]);
        const bool blnFailed = fake::HasFailed();
        fake::FailNth(0, platform::Fault::NotReady);
        user.Reset(); // the options may not have come up
        EXPECT_TRUE(m.fraMenu.Enabled && m.fraSetup.Enabled && m.cmdProcessFiles[1].Enabled);
        EXPECT_EQ(0, fake::OpenHandles());
        EXPECT_EQ("cccc", fake::ContentOf("C:\\other\\c.txt"));
        for (const fake::Event& event : fake::journal)
            EXPECT_EQ(0u, event.Path.rfind("C:\\docs\\", 0)) << event.Path;
        if (!blnFailed) {
            EXPECT_TRUE(fake::FilesBelow("C:\\docs").empty());
            break;
        }
    }
}

TEST_F(PurgeCommandsTest, PurgeChecks) {
    PutFiles("C:\\docs", 1);
    fake::PutFolder("C:\\docs\\sub");
    ChooseFolder("C:\\docs", ui::AnswerNo);
    Specify("?.doc", "Specify files", "There are no files in C:\\docs\\.");
    ClickWarned(m.cmdProcessFiles[1], "Purge files",
                "There are no files in C:\\docs\\ matching ?.doc.");
    fake::Click(m.cmdSubdirectories);
    ClickWarned(m.cmdProcessFiles[1], "Purge files",
                "There are no files in C:\\docs\\\r\nor in any of its subfolders matching ?.doc.");
    ChooseFolder("C:\\docs", ui::AnswerYes);
    fake::TakeAway("C:\\docs\\f0.txt");
    ClickWarned(m.cmdProcessFiles[1], "Purge files", "There are no files in C:\\docs\\.");
    fake::PutFile("C:\\docs\\a.txt");
    ChooseSingleFile("C:\\docs\\a.txt");
    fake::TakeAway("C:\\docs\\a.txt");
    ClickWarned(m.cmdProcessFiles[1], "Purge files", "File C:\\docs\\a.txt not found.");
}

TEST_F(PurgeCommandsTest, DroppedAndGivenPaths) {
    PutFiles("C:\\docs", 2);
    fake::DropFiles(m, {"C:\\docs\\f1.txt"});
    EXPECT_EQ("C:\\docs\\|f1.txt||No|(The folder has no subfolders.)", Labels());
    EXPECT_FALSE(m.blnQuitGuard);
    user.Box("Specify folder", "Do you wish to purge ALL files in C:\\docs\\?", ui::AnswerYes,
             fake::AsksYesNo);
    fake::DropFiles(m, {"C:\\docs"});
    EXPECT_EQ("*.*", strFilespec);
    user.Box("Error", "Only one file or one folder can be taken at a time.\r\n"
                      "To purge several files, specify their folder and then the files.");
    fake::DropFiles(m, {"C:\\docs\\f0.txt", "C:\\docs\\f1.txt"});
    user.Box("Error", "Error when attempting to load setup from file C:\\docs\\bad.nws!");
    fake::PutFile("C:\\docs\\bad.nws", "1.0\r\n");
    fake::DropFiles(m, {"C:\\docs\\bad.nws"});
    fake::commandLine = {"missing.nws"};
    fake::currentFolder = "C:\\docs";
    user.Box("Error when attempting to load setup.", "File C:\\docs\\missing.nws not found!");
    OpenCommandLineFiles(CommandLineFiles());
    fake::commandLine = {"C:\\docs\\missing.txt"};
    user.Box("Single file", "File C:\\docs\\missing.txt not found.");
    OpenCommandLineFiles(CommandLineFiles());
    fake::commandLine.clear();
    OpenCommandLineFiles(CommandLineFiles());
    EXPECT_EQ("*.*", strFilespec);
}

} // namespace
