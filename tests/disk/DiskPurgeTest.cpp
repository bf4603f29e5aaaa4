// "Purge disk": every box, every answer, and what is left on the disk.
#include "DriveTest.h"
#include "report/run/Run.h"

const char* const strWhich = "Purge (wipe) which drive?";
const char* const strExclude =
    "Select top-level folders on Drive D to be EXCLUDED from this purge.";
const char* const strDone = "The disk has been purged (except for excluded files).";
constexpr int Yes = ui::AnswerYes, No = ui::AnswerNo, Cancel = ui::AnswerCancel, OK = ui::AnswerOK;

struct DiskPurgeTest : DriveTest {
    /// Answers by a part of the question; everything else is answered with "OK".
    std::map<std::string, int> answers;

    /// Two files at the top, three folders, one of them the system's; excludes nothing, wants to
    /// see all boxes.
    void SetUp() override { Fresh(); }
    void Fresh(std::uint64_t capacity = 60 * MiB) {
        Begin(capacity);
        fake::TakeAway("D:\\docs");
        fake::PutFiles({"D:\\a.txt", "D:\\pagefile.sys", "D:\\docs\\letter.txt",
                        "D:\\docs\\old\\deep.txt", "D:\\WINDOWS\\WIN386.SWP",
                        "D:\\WINDOWS\\system.ini", "D:\\games\\score"});
        fake::PutFolder("D:\\docs\\link").LinkTarget = "C:\\Program Files";
        sngPurgeSpeeds[3] = 1;
        answers = {{"EXCLUDE the", No},
                   {"EXCLUDE files", No},
                   {"You have not excluded", Yes},
                   {"without further interruption", No}};
        user.AnswerOthers = [this](const fake::BoxSeen& box) {
            for (const auto& [part, answer] : answers)
                if (box.Text.find(part) != std::string::npos)
                    return answer;
            return OK;
        };
    }
    static void Click(char letter = 'D') {
        ChooseDrive(strWhich, letter);
        Run(frmMain.cmdLargePurge[1]);
    }
    /// The first line of each box that was shown, with its buttons and the default one.
    static std::string Shown() {
        const char* const buttons[] = {"OK", "OK, Cancel", "Yes, No", "Yes, No, Cancel"};
        std::string text;
        for (const fake::BoxSeen& box : user.Boxes) {
            const std::size_t line = box.Text.find_first_not_of("\r\n");
            text += box.Text.substr(line, box.Text.find('\r', line) - line) + " [" +
                    buttons[static_cast<std::size_t>(box.Buttons)] + ": " +
                    std::to_string(box.DefaultButton) + "]\n";
        }
        return text;
    }
    /// A box with this in its text was shown.
    static void Box(const std::string& part) {
        for (const fake::BoxSeen& box : user.Boxes)
            if (box.Text.find(part) != part.npos)
                return;
        ADD_FAILURE() << part << "\n" << Shown();
    }
    /// The files on D:, each without the drive and with a blank behind it.
    static std::string Left() {
        std::string text;
        for (const std::string& file : fake::FilesBelow("D:\\"))
            text += file.substr(3) + " ";
        return text;
    }
};

TEST_F(DiskPurgeTest, PurgesAllButWhatMustStay) {
    SetPasses(2);
    Paths lines;
    fake::Watch("RemoveFile", [&](const std::string& path) {
        if (path.find("_nw_") == std::string::npos) {
            lines.push_back(frmMain.lblPurgeFoldersMessage.Caption);
            EXPECT_EQ("5 files are being purged.", frmMain.lblSubdirectories2.Caption);
        }
    });
    Click();
    EXPECT_EQ(R"(The capacity of the disk in Drive D is 60.00 MB. [OK, Cancel: 1]
Purging Drive D is a 3-step process: [OK, Cancel: 1]
Do you wish to EXCLUDE the single top-level file in D:\ from this purge operation? [Yes, No, Cancel: 1]
Do you wish to EXCLUDE files in selected top-level folders [Yes, No, Cancel: 1]
You have not excluded the D:\WINDOWS folder. [Yes, No, Cancel: 1]
Do you want this operation to continue to completion [Yes, No, Cancel: 2]
Drive D has 59.97 MB free. [OK, Cancel: 1]
2 dummy files have been written. [OK, Cancel: 1]
The free space has been purged.  Now all files [OK, Cancel: 1]
)",
              Shown());
    for (const char* part :
         {"\r\n\r\nEstimated time to purge the free space (59.97 MB): 1m 24s\r\nEstimated time to "
          "purge 5 files (5 bytes): less than a minute\r\n\r\n",
          "The type of purge currently specified involves 2 overwrites.",
          "this will take about 28s.\r\n\r\nPurging the dummy files will then take about 2 times",
          "\r\nin the top folder and in all 3 subfolders will be purged.\r\n"})
        Box(part);
    EXPECT_EQ("pagefile.sys WINDOWS\\WIN386.SWP ", Left());
    ASSERT_EQ(5u, lines.size());
    EXPECT_EQ("Now purging (pass 2):D:\\docs\\letter.txt", lines[1]);
    EXPECT_EQ("2 files purged (40% of 5).  Now purging (pass 2):D:\\docs\\old\\deep.txt", lines[2]);
    EXPECT_NE(nullptr, fake::At("C:\\Program Files\\Nullwright\\nullwright.exe"));
    EXPECT_EQ(strDone, frmMain.lblLargePurgeMessage.Caption);
    EXPECT_EQ("", frmMain.lblPurgeFoldersMessage.Caption);
}

TEST_F(DiskPurgeTest, ExclusionsHoldAndAreNamed) {
    const std::string systems = "WINDOWS\\WIN386.SWP WINDOWS\\system.ini ";
    const std::string two = "a.txt pagefile.sys docs\\letter.txt docs\\old\\deep.txt " + systems;
    const std::tuple<int, Paths, std::string, std::string, std::string> cases[] = {
        {No, Paths{"WINDOWS"}, "One top-level folder of Drive D is EXCLUDED",
         "in the top folder and in both non-excluded subfolders ", "pagefile.sys " + systems},
        {Yes, Paths{"WINDOWS", "docs"}, "2 top-level folders of Drive D are EXCLUDED",
         "in the single non-excluded subfolder ", two},
        {Yes, Paths{}, "ALL top-level", "in all 3 ", "a.txt pagefile.sys WINDOWS\\WIN386.SWP "},
        {Yes, Paths{"WINDOWS", "docs", "games"}, "", "You have excluded all",
         two + "games\\score "},
    };
    for (const auto& [topFiles, excluded, announced, where, left] : cases) {
        Fresh();
        answers["EXCLUDE the"] = topFiles;
        answers["EXCLUDE files"] = excluded.empty() ? No : Yes;
        std::string label;
        fake::Watch("WriteBytes", [&](const std::string&) {
            if (label.empty())
                label = frmMain.lblSubdirectories2.Caption;
        });
        ChooseDrive(strWhich);
        if (!excluded.empty())
            ChooseSubfolders(strExclude, excluded);
        Run(frmMain.cmdLargePurge[1]);
        EXPECT_TRUE(label.starts_with(announced)) << label;
        EXPECT_EQ(left, Left());
        EXPECT_NE(std::string::npos, user.Boxes.back().Text.find(where)) << where;
    }
}

TEST_F(DiskPurgeTest, EveryBoxCanEndItAndKeepsTheFiles) {
    for (const char* part :
         {"The capacity", "3-step", "EXCLUDE the", "EXCLUDE files", "You have not excluded",
          "without further", "will now be written", "have been written.", "Now all files"}) {
        Fresh();
        const std::string before = Left();
        answers[part] = part[0] == 'Y' ? No : Cancel;
        Click();
        EXPECT_NE(std::string::npos, user.Boxes.back().Text.find(part)) << part;
        EXPECT_EQ(before, Left()) << part;
        const bool begun = user.Boxes.size() >= 7;
        EXPECT_EQ(begun ? "Purge disk cancelled." : "", frmMain.lblLargePurgeMessage.Caption);
        EXPECT_EQ(begun, frmReport.txbText.Text.find("disk cancelled.") != std::string::npos &&
                             frmReport.lblPausedDone.Caption == "Stopped");
        EXPECT_EQ("(Do not operate on files in lower subfolders.)",
                  frmMain.lblSubdirectories2.Caption);
    }
    // Cancelled in the chooser is not "none is to be kept".
    Fresh();
    answers["EXCLUDE files"] = Yes;
    ChooseDrive(strWhich);
    user.Modal(frmSubfolders, [] { fake::Click(frmSubfolders.cmdCancel); });
    Run(frmMain.cmdLargePurge[1]);
    EXPECT_EQ(4u, user.Boxes.size()) << Shown();
    EXPECT_TRUE(fake::journal.empty());
    // F10 ends both looks at the root: the one for the estimate, and the one for the plan.
    for (const bool estimating : {true, false}) {
        Fresh();
        answers["It is not possible to obtain"] = Cancel;
        fake::Watch("EnumerateFolder",
                    [](const std::string& path) { fake::Advance(path == "D:\\" ? 600 : 0); });
        PressF10When([estimating] {
            return user.Boxes.size() == (estimating ? 0u : 1u) &&
                   frmMain.lblStatus.Caption == "Reading D:\\ ...  (F10 stops this.)";
        });
        Click();
        EXPECT_EQ(1u, user.Boxes.size());
        EXPECT_EQ(estimating ? "Checking file sizes was stopped." : "Purge disk cancelled.",
                  frmMain.lblLargePurgeMessage.Caption);
        EXPECT_TRUE(fake::journal.empty());
    }
}

TEST_F(DiskPurgeTest, AnotherDiskInTheDriveIsNotTouched) {
    for (const char* part : {"without further", "Now all files", "deep.txt"}) {
        Fresh();
        fake::FailAlways("RemoveFile", "deep.txt", Fault::AccessDenied);
        user.AnswerOthers = [this, part, before = user.AnswerOthers](const fake::BoxSeen& box) {
            if (box.Text.find(part) != std::string::npos && fake::At("D:\\WINDOWS")) {
                fake::AddDrive('D', 60 * MiB).FileSystem = "exFAT"; // no root has a number there
                fake::PutFiles(
                    {"D:\\a.txt", "D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\games\\score"});
                fake::journal.clear();
            }
            return before(box);
        };
        Click();
        EXPECT_EQ("a.txt pagefile.sys docs\\letter.txt games\\score ", Left()) << part;
        EXPECT_TRUE(fake::journal.empty()) << part << fake::JournalText();
        Box("The disk that was chosen is no longer in Drive D.");
        EXPECT_EQ(RunState::Failed, currentRun.State);
        EXPECT_TRUE(*part == 'w' || frmReport.lblPausedDone.Caption == "Failed");
    }
    // A file that came to the top after the question: nobody was asked about it.
    Fresh();
    fake::TakeAway("D:\\a.txt");
    user.During([] { return blnPurgingFreeSpace; }, [] { fake::PutFile("D:\\new.txt"); });
    Click();
    EXPECT_EQ("pagefile.sys WINDOWS\\WIN386.SWP new.txt ", Left());
}

TEST_F(DiskPurgeTest, WithoutBoxesOnlyF10AsksAndFailuresAreToldAtTheEnd) {
    const std::string deep = "D:\\docs\\old\\deep.txt";
    answers["without further interruption"] = Yes;
    answers["to see the report?"] = Yes;
    fake::At("D:\\docs\\letter.txt")->Locked = true;
    bool failed = false; // the first write of the purge of the free space fails
    fake::FailAlways("RemoveFile", "score", Fault::AccessDenied);
    fake::FailAlways("WriteBytes", "", Fault::WriteFault, [&] {
        const std::string& message = frmMain.lblLargePurgeMessage.Caption;
        return message.starts_with("2 dummy files are being purged") &&
               !std::exchange(failed, true);
    });
    PressF10When([&] { return frmMain.lblPurgeFoldersMessage.Caption.ends_with(deep); });
    Click();
    EXPECT_EQ(8u, user.Boxes.size());
    Box(deep + "\r\nClick 'OK' to continue, or");
    EXPECT_EQ("One dummy file was not purged to the end:\r\nthat space was overwritten with null "
              "bytes.\r\n2 files could not be purged.\r\nD:\\docs\\letter.txt: unable to open "
              "file for writing (another program is using the file)\r\nD:\\games\\score: file "
              "overwritten but not deleted (access was denied)\r\n\r\nDo you wish to see the "
              "report?",
              user.Boxes.back().Text);
    EXPECT_TRUE(frmReport.Visible);
    const std::string report = frmReport.txbText.Text;
    for (const char* part : {"Purging Drive D\r\nusing random bytes once.\r\n",
                             "Purging the free space of Drive D (59.97 MB)\r\n",
                             "Dummy files written: 2\r\nDummy files purged: 1\r\n",
                             "\r\nNumber of files purged: 3\r\nSum of sizes of files purged: 3 "
                             "bytes\r\n\r\nFiles that could not be purged: 2\r\nD:\\docs\\letter"})
        EXPECT_NE(report.find(part), report.npos) << part << "\n" << report;
    EXPECT_EQ(report.find("files could not be purged."), report.npos) << "listed below";
    EXPECT_EQ(strDone, frmMain.lblLargePurgeMessage.Caption);
    EXPECT_EQ("pagefile.sys docs\\letter.txt WINDOWS\\WIN386.SWP games\\score ", Left());
}

TEST_F(DiskPurgeTest, F10AtTheLastDummyFileAsksAboutTheDisk) {
    Fresh(30 * MiB); // one dummy file
    fake::PutName("D:\\games\\kept", "D:\\docs\\letter.txt");
    ChooseDrive(strWhich);
    ChooseSubfolders(strExclude, {"games"});
    answers["EXCLUDE files"] = Yes;
    PressF10When([] {
        return frmMain.lblLargePurgeMessage.Caption.starts_with("One dummy file is being purged");
    });
    Run(frmMain.cmdLargePurge[1]);
    const fake::BoxSeen& asked = user.Boxes[user.Boxes.size() - 3];
    EXPECT_EQ("Dummy files purged: 0\r\nDummy files not purged: 1\r\n\r\nThe unpurged dummy file "
              "will now be deleted.\r\n\r\nClick 'OK' to continue with the files of the disk\r\n"
              "or click 'Cancel' to terminate this operation.",
              asked.Text);
    EXPECT_TRUE(asked.EscapeHeld);
    // What an excluded folder also holds is kept, and told.
    EXPECT_EQ("pagefile.sys docs\\letter.txt WINDOWS\\WIN386.SWP games\\score games\\kept ",
              Left());
    EXPECT_EQ("x", fake::ContentOf("D:\\games\\kept"));
    EXPECT_TRUE(user.Boxes.back().Text.ends_with("\r\nD:\\docs\\letter.txt"));

    // F10 when all of them are purged, and while they are deleted: before the files it asks.
    for (const bool deleting : {false, true}) {
        Fresh(30 * MiB);
        answers["without further interruption"] = Yes;
        answers["continue with the files of the disk"] = Cancel;
        const std::string before = Left();
        FillDisk.lngFilesPurged = 0; // of the purge before
        PressF10When([deleting] {
            return FillDisk.lngFilesPurged == 1 && FillDisk.Marker.IsOpen() != deleting;
        });
        Click();
        EXPECT_NE(strDone, frmMain.lblLargePurgeMessage.Caption);
        EXPECT_EQ(before, Left());
    }
}

TEST_F(DiskPurgeTest, ADriveWithoutFoldersAndWithoutAMeasuredSpeed) {
    Fresh(30 * MiB);
    for (const std::string name : {"a.txt", "pagefile.sys", "docs", "WINDOWS", "games"})
        fake::TakeAway("D:\\" + name);
    for (const char* path : {"D:\\one.txt", "D:\\two.txt"})
        fake::PutFile(path, "x", platform::AttributeReadOnly | platform::AttributeSystem);
    sngPurgeSpeeds[3] = 0;
    // F10 ends the tests of the speed, not only one of them.
    PressF10When([] { return FillDisk.lngBytesInCurrentFile > 0; });
    answers["cancel this operation?"] = Yes;
    answers["It is not possible to obtain"] = Cancel;
    Click();
    EXPECT_EQ(3u, user.Boxes.size());
    // They fail four times; then without an estimate.
    answers["It is not possible to obtain"] = OK;
    fake::FailAlways("MakeFolder", "", Fault::AccessDenied,
                     [] { return FillDisk.intTestQuantity > 0; });
    Click();
    EXPECT_EQ(15u, user.Boxes.size());
    for (const char* part :
         {"The purge speed for Drive D will now be tested", "It is not possible to obtain",
          "a 2-step process:\r\n1.  The free space is purged.\r\n2.  All files are purged.\r\n",
          "Do you wish to EXCLUDE the 2 top-level files in D:\\ from this purge operation?",
          "Now all files\r\nin the top folder will be purged."})
        Box(part);
    EXPECT_EQ("", Left());

    // Nothing but the paging file: nothing to purge after the free space, of which there is none.
    fake::PutFile("D:\\PageFile.sys");
    sngPurgeSpeeds[3] = 1;
    LeaveFree(0);
    Click();
    EXPECT_TRUE(user.Boxes[user.Boxes.size() - 2].Text.starts_with("No free space has been "));
    answers["without further interruption"] = Yes;
    Click();
    EXPECT_EQ("There are no non-excluded files,\r\nthus there are no files to purge.",
              user.Boxes.back().Text);
}

TEST_F(DiskPurgeTest, TheProgramsOwnDriveKeepsTheProgram) {
    fake::drives['C'].Occupied += fake::drives['C'].Free() - 8 * MiB;
    fake::AddDrive('E', 1).StandsFor = "C:"; // by which letter ever
    sngPurgeSpeeds[4] = 1;
    const Paths program = fake::FilesBelow("C:\\");
    fake::PutFile("C:\\Program Files\\Nullwright\\sub\\note.txt");
    Click('E');
    EXPECT_EQ(program, fake::FilesBelow("C:\\"));
    Box("You have not excluded the E:\\Program Files folder.\r\n");
}

TEST_F(DiskPurgeTest, NoCallThatFailsLeavesADummyOrTheMenuDisabled) {
    for (const Fault fault : {Fault::AccessDenied, Fault::DiskFull}) {
        int n = 0;
        do {
            SCOPED_TRACE(++n);
            Fresh(2 * MiB);
            sngPurgeSpeeds[3] = 0; // with the speed test
            answers["Do you wish to continue"] = Yes;
            ChooseDrive(strWhich);
            fake::FailNth(n, fault);
            fake::Click(frmMain.cmdLargePurge[1]);
            ExpectRest();
            EXPECT_EQ("x", fake::ContentOf("D:\\pagefile.sys"));
        } while (fake::HasFailed() && !HasFailure());
    }
    user.Reset();
}
