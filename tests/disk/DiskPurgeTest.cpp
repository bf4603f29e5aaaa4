// "Purge disk": every box, every answer, and what is left on the disk.
#include "DriveTest.h"

namespace {

const char* const strTitle = "Purge disk";
const char* const strWindowsFolder =
    "You have not excluded the D:\\WINDOWS folder.\r\n"
    "Are you sure that you wish to purge all files in that folder?";
const char* const strNoBoxes = "\r\nDo you want this operation to continue to completion\r\n"
                               "without further interruption from dialog boxes?";

struct DiskPurgeTest : DriveTest {
    /// Two files at the top, three folders, one of them the system's.
    void SetUp() override { Fresh(); }
    void Fresh() {
        Begin(60 * MiB);
        fake::TakeAway("D:\\docs");
        for (const char* path :
             {"D:\\a.txt", "D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\docs\\old\\deep.txt",
              "D:\\WINDOWS\\WIN386.SWP", "D:\\WINDOWS\\system.ini", "D:\\games\\score"})
            fake::PutFile(path, "secret");
        fake::PutFolderLink("D:\\docs\\link", "C:\\Program Files");
        sngPurgeSpeeds[3] = 1;
    }
    static void Click() { fake::Click(frmMain.cmdLargePurge[1]); }
    static void OkCancel(const std::string& text, int answer = ui::AnswerOK) {
        fake::user.Box(strTitle, text + strTrailer, answer, {{}, ui::Buttons::OKCancel, 1});
    }
    static void YesNoCancel(const std::string& text, int answer, int defaultButton = 1) {
        fake::user.Box(strTitle, text, answer,
                       {ui::Icon::Question, ui::Buttons::YesNoCancel, defaultButton});
    }
    static void ChooseAndSeeEstimate() {
        ChooseDriveD("Purge (wipe) which drive?");
        fake::user.BoxLike(strTitle, fake::Contains("The capacity of the disk in Drive D is "));
    }
    static void Plan() {
        OkCancel("Purging Drive D is a 3-step process:\r\n"
                 "1.  Folders to be EXCLUDED from the purge operation (if any)\r\n\r\n"
                 "are selected.\r\n2.  The free space is purged.\r\n"
                 "3.  All files in the top folder (unless excluded)\r\n"
                 "and in all NON-EXCLUDED subfolders are purged.");
    }
    static void TopFiles(int answer) {
        YesNoCancel(
            "Do you wish to EXCLUDE the 2 top-level files in D:\\ from this purge operation?",
            answer);
    }
    static void TopFolders(int answer) {
        YesNoCancel("Do you wish to EXCLUDE files in selected top-level folders\r\n"
                    "from this purge operation?",
                    answer);
    }
    static void Exclude(const std::vector<std::string>& names) {
        TopFolders(ui::AnswerYes);
        ChooseSubfolders("Select top-level folders on Drive D to be EXCLUDED from this purge.",
                         names);
    }
    /// The boxes of the free-space purge inside.
    static void FreeSpace(int answer = ui::AnswerOK) {
        fake::user.BoxLike(strTitle, fake::Contains("will now be written to fill this space."));
        fake::user.BoxLike(strTitle, fake::Contains("have been written."), answer);
    }
    static void FilesNext(const std::string& where, int answer = ui::AnswerOK) {
        OkCancel("The free space has been purged.  Now all files\r\n" + where + "will be purged.",
                 answer);
    }
    static std::vector<std::string> Left() { return fake::FilesBelow("D:\\"); }
};

using Paths = std::vector<std::string>;

/// Goes on at every box, excludes nothing, wants to see all boxes.
int GoOn(const fake::BoxSeen& box) {
    const bool no = box.Text.find("EXCLUDE the") != std::string::npos ||
                    box.Text.find("EXCLUDE files") != std::string::npos || box.Text == strNoBoxes;
    return box.Buttons == ui::Buttons::OK || box.Buttons == ui::Buttons::OKCancel ? ui::AnswerOK
           : no                                                                   ? ui::AnswerNo
                                                                                  : ui::AnswerYes;
}

TEST_F(DiskPurgeTest, PurgesAllButWhatMustStay) {
    SetPasses(2);
    ChooseDriveD("Purge (wipe) which drive?");
    fake::user.BoxLike(strTitle, [](const std::string& text) {
        EXPECT_TRUE(text.starts_with("The capacity of the disk in Drive D is 60.00 MB.\r\n\r\n"
                                     "Estimated time to purge the free space (59.97 MB): "))
            << text;
        EXPECT_NE(std::string::npos, text.find("\r\nEstimated time to purge 7 files (42 bytes): "));
        EXPECT_NE(std::string::npos, text.find("Estimated purge times for the entire disk\r\n"));
        return text.ends_with("The type of purge currently specified involves 2 overwrites."
                              "\r\n\r\nTo decrease the time required, specify a type of purge\r\n"
                              "which involves fewer overwrites." +
                              std::string(strTrailer));
    });
    Plan();
    TopFiles(ui::AnswerNo);
    TopFolders(ui::AnswerNo);
    YesNoCancel(strWindowsFolder, ui::AnswerYes);
    YesNoCancel(strNoBoxes, ui::AnswerNo, 2);
    FreeSpace();
    FilesNext("in the top folder and in all 3 subfolders ");
    std::vector<std::string> lines;
    fake::OnCall(fake::Call::RemoveFile, [&](const std::string& path) {
        if (path.find("_nw_") == std::string::npos)
            lines.push_back(Label(frmMain.lblPurgeFoldersMessage));
        EXPECT_TRUE(path.find("_nw_") != std::string::npos ||
                    Label(frmMain.lblSubdirectories2) == "5 files are being purged.");
        return platform::Fault::None;
    });
    Click();
    EXPECT_EQ((Paths{"D:\\pagefile.sys", "D:\\WINDOWS\\WIN386.SWP"}), Left());
    EXPECT_EQ((Paths{"Now purging (pass 2):D:\\a.txt", "Now purging (pass 2):D:\\docs\\letter.txt",
                     "2 files purged (40% of 5).  Now purging (pass 2):D:\\docs\\old\\deep.txt",
                     "3 files purged (60% of 5).  Now purging (pass 2):D:\\WINDOWS\\system.ini",
                     "4 files purged (80% of 5).  Now purging (pass 2):D:\\games\\score"}),
              lines);
    EXPECT_EQ("", fake::JournalText("D:\\pagefile.sys"));
    EXPECT_NE(nullptr, fake::At("C:\\Program Files\\Nullwright\\nullwright.exe"));
    EXPECT_EQ("The disk has been purged (except for excluded files).",
              Label(frmMain.lblLargePurgeMessage));
    EXPECT_EQ("", Label(frmMain.lblPurgeFoldersMessage));
    ExpectRest();
}

TEST_F(DiskPurgeTest, ExclusionsHoldAndAreNamed) {
    struct Case {
        bool topFiles;
        Paths excluded;
        std::string label, where;
        Paths left;
    };
    const std::string one =
        "One top-level folder of Drive D is EXCLUDED from this purge operation.";
    const std::string two = "2 top-level folders of Drive D are EXCLUDED from this purge.";
    const std::string all =
        "ALL top-level folders of Drive D and all their subfolders will be purged.";
    const Case cases[] = {
        {false,
         {"WINDOWS"},
         one,
         "in the top folder and in both non-excluded subfolders ",
         {"D:\\pagefile.sys", "D:\\WINDOWS\\WIN386.SWP", "D:\\WINDOWS\\system.ini"}},
        {true,
         {"WINDOWS", "docs"},
         two,
         "in the single non-excluded subfolder ",
         {"D:\\a.txt", "D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\docs\\old\\deep.txt",
          "D:\\WINDOWS\\WIN386.SWP", "D:\\WINDOWS\\system.ini"}},
        {false,
         {"WINDOWS", "docs", "games"},
         "3 top-level folders of Drive D are EXCLUDED from this purge.",
         "in the top folder ",
         {"D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\docs\\old\\deep.txt",
          "D:\\WINDOWS\\WIN386.SWP", "D:\\WINDOWS\\system.ini", "D:\\games\\score"}},
        {true,
         {},
         all,
         "in all 3 subfolders ",
         {"D:\\a.txt", "D:\\pagefile.sys", "D:\\WINDOWS\\WIN386.SWP"}},
    };
    for (const Case& c : cases) {
        Fresh();
        ChooseAndSeeEstimate();
        Plan();
        TopFiles(c.topFiles ? ui::AnswerYes : ui::AnswerNo);
        Exclude(c.excluded);
        if (c.excluded.empty())
            YesNoCancel(strWindowsFolder, ui::AnswerYes);
        YesNoCancel(strNoBoxes, ui::AnswerNo, 2);
        fake::user.BoxLike(strTitle, [&](const std::string&) {
            EXPECT_EQ(c.label, Label(frmMain.lblSubdirectories2));
            return true;
        });
        fake::user.BoxLike(strTitle, fake::Contains("have been written."));
        FilesNext(c.where);
        Click();
        EXPECT_EQ(c.left, Left()) << c.where;
        ExpectRest();
        fake::user.Finish();
    }
    Fresh();
    ChooseAndSeeEstimate();
    Plan();
    TopFiles(ui::AnswerYes);
    Exclude({"WINDOWS", "docs", "games"});
    fake::user.Box(strTitle, "You have excluded all top-level files and all top-level folders\r\n"
                             "from the purge operation.");
    Click();
    EXPECT_TRUE(fake::journal.empty());
    ExpectRest();
}

TEST_F(DiskPurgeTest, EveryBoxCanEndItBeforeAnythingIsTouched) {
    for (int last = 0; last < 7; ++last) {
        Fresh();
        const auto Answer = [last](int step, int goOn, int end) {
            return step == last ? end : goOn;
        };
        ChooseDriveD("Purge (wipe) which drive?");
        fake::user.BoxLike(strTitle, fake::Contains("capacity"),
                           Answer(0, ui::AnswerOK, ui::AnswerCancel));
        if (last >= 1)
            fake::user.BoxLike(strTitle, fake::Contains("3-step"),
                               Answer(1, ui::AnswerOK, ui::AnswerCancel));
        if (last >= 2)
            TopFiles(Answer(2, ui::AnswerNo, ui::AnswerCancel));
        if (last >= 3)
            TopFolders(Answer(3, ui::AnswerNo, ui::AnswerCancel));
        if (last >= 4)
            YesNoCancel(strWindowsFolder, last == 4   ? ui::AnswerNo
                                          : last == 5 ? ui::AnswerCancel
                                                      : ui::AnswerYes);
        if (last == 6)
            YesNoCancel(strNoBoxes, ui::AnswerCancel, 2);
        Click();
        EXPECT_TRUE(fake::journal.empty()) << last;
        EXPECT_EQ("(Do not operate on files in lower subfolders.)",
                  Label(frmMain.lblSubdirectories2));
        ExpectRest();
        fake::user.Finish();
    }
}

TEST_F(DiskPurgeTest, StoppingAtTheFreeSpaceKeepsTheFiles) {
    for (int at = 0; at < 3; ++at) {
        Fresh();
        const Paths before = Left();
        ChooseAndSeeEstimate();
        Plan();
        TopFiles(ui::AnswerNo);
        TopFolders(ui::AnswerNo);
        YesNoCancel(strWindowsFolder, ui::AnswerYes);
        YesNoCancel(strNoBoxes, ui::AnswerNo, 2);
        if (at == 0)
            fake::user.BoxLike(strTitle, fake::Contains("will now be written"), ui::AnswerCancel);
        else
            FreeSpace(at == 1 ? ui::AnswerCancel : ui::AnswerOK);
        if (at == 2)
            FilesNext("in the top folder and in all 3 subfolders ", ui::AnswerCancel);
        Click();
        EXPECT_EQ("Purge disk cancelled.", Label(frmMain.lblLargePurgeMessage));
        EXPECT_EQ(before, Left());
        ExpectRest();
        fake::user.Finish();
    }
}

TEST_F(DiskPurgeTest, WithoutBoxesOnlyF10AsksAndFailuresAreToldAtTheEnd) {
    const auto Start = [&] {
        Fresh();
        fake::At("D:\\docs\\letter.txt")->Locked = true;
        ChooseAndSeeEstimate();
        Plan();
        TopFiles(ui::AnswerNo);
        TopFolders(ui::AnswerNo);
        YesNoCancel(strWindowsFolder, ui::AnswerYes);
        YesNoCancel(strNoBoxes, ui::AnswerYes, 2);
        fake::OnCall(fake::Call::RemoveFile, [](const std::string& path) {
            return path.ends_with("score") ? platform::Fault::AccessDenied : platform::Fault::None;
        });
    };
    Start();
    bool failed = false;
    fake::OnCall(fake::Call::Write, [&failed](const std::string&) {
        const bool first =
            !failed &&
            Label(frmMain.lblLargePurgeMessage).starts_with("2 dummy files are being purged");
        failed = failed || first;
        return first ? platform::Fault::WriteFault : platform::Fault::None;
    });
    fake::user.Box(strTitle,
                   "One dummy file was not purged to the end:\r\n"
                   "that space was overwritten with null bytes.\r\n2 files could not be purged.",
                   ui::AnswerOK, {ui::Icon::Information, ui::Buttons::OK, 1});
    Click();
    EXPECT_EQ((Paths{"D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\WINDOWS\\WIN386.SWP",
                     "D:\\games\\score"}),
              Left());
    EXPECT_EQ("The disk has been purged (except for excluded files).",
              Label(frmMain.lblLargePurgeMessage));
    ExpectRest();

    Start();
    PressF10When(
        [] { return Label(frmMain.lblPurgeFoldersMessage).ends_with("D:\\docs\\old\\deep.txt"); });
    fake::user.Box(strTitle,
                   "D:\\docs\\old\\deep.txt\r\n"
                   "Click 'OK' to continue, or 'Cancel' to terminate this operation.",
                   ui::AnswerCancel, {ui::Icon::Question, ui::Buttons::OKCancel, 1});
    fake::user.Box(strTitle, "One file could not be purged.");
    Click();
    EXPECT_EQ("\r\nPurge disk was stopped.", Label(frmMain.lblLargePurgeMessage));
    EXPECT_EQ(nullptr, fake::At("D:\\docs\\old\\deep.txt"));
    EXPECT_NE(nullptr, fake::At("D:\\WINDOWS\\system.ini"));
    ExpectRest();
}

TEST_F(DiskPurgeTest, ADriveWithoutFoldersAndWithoutAMeasuredSpeed) {
    Begin(30 * MiB);
    fake::TakeAway("D:\\docs");
    fake::PutFile("D:\\only.txt", "secret",
                  platform::AttributeReadOnly | platform::AttributeSystem);
    ChooseDriveD("Purge (wipe) which drive?");
    OkCancel("The purge speed for Drive D will now be tested so as to get\r\n"
             "an estimate of the time required for this operation.");
    // The test fails four times; then without an estimate.
    fake::OnCall(fake::Call::MakeFolder, [](const std::string&) {
        return FillDisk.intTestQuantity > 0 ? platform::Fault::AccessDenied : platform::Fault::None;
    });
    for (int i = 0; i < 4; ++i)
        fake::user.BoxLike("Test purge speed", fake::Contains("The test cannot be completed."));
    OkCancel("It is not possible to obtain sufficient information about the disk in Drive D\r\n"
             "so as to estimate the time required for the disk purge.");
    OkCancel("Purging Drive D is a 2-step process:\r\n1.  The free space is purged.\r\n"
             "2.  All files are purged.");
    YesNoCancel("Do you wish to EXCLUDE the single top-level file in D:\\ from this purge "
                "operation?",
                ui::AnswerNo);
    YesNoCancel(strNoBoxes, ui::AnswerNo, 2);
    fake::user.BoxLike(strTitle, fake::Contains("A dummy file will now be written"));
    fake::user.BoxLike(strTitle, fake::Contains("One dummy file has been written."));
    FilesNext("in the top folder ");
    Click();
    EXPECT_TRUE(Left().empty());

    // Nothing but the paging file: nothing to purge after the free space.
    fake::PutFile("D:\\PageFile.sys");
    fake::OnCall(fake::Call::MakeFolder, [](const std::string&) { return platform::Fault::None; });
    sngPurgeSpeeds[3] = 1;
    ChooseAndSeeEstimate();
    fake::user.BoxLike(strTitle, fake::Contains("2-step"));
    fake::user.BoxLike(strTitle, fake::Contains("the single top-level file"), ui::AnswerNo);
    YesNoCancel(strNoBoxes, ui::AnswerYes, 2);
    fake::user.Box(strTitle,
                   "There are no non-excluded files,\r\nthus there are no files to purge.");
    Click();
    ExpectRest();

    // F10 ends the tests, not only one of them.
    Begin(30 * MiB);
    ChooseDriveD("Purge (wipe) which drive?");
    OkCancel("The purge speed for Drive D will now be tested so as to get\r\n"
             "an estimate of the time required for this operation.");
    PressF10When([] { return FillDisk.lngBytesInCurrentFile > 0; });
    fake::user.Box("Cancel?", "Do you wish to cancel this operation?", ui::AnswerYes);
    fake::user.BoxLike(strTitle, fake::Contains("It is not possible to obtain"), ui::AnswerCancel);
    Click();
    ExpectRest();
}

TEST_F(DiskPurgeTest, TheProgramsOwnDriveKeepsTheProgram) {
    fake::drives.erase('D');
    fake::drives['C'].Occupied += fake::drives['C'].Free() - 8 * MiB;
    sngPurgeSpeeds[2] = 1;
    fake::PutFile("C:\\Program Files\\Nullwright\\sub\\note.txt");
    fake::user.AnswerOthers = GoOn;
    fake::user.Modal(frmDrives, [] { fake::Click(frmDrives.cmdOK); });
    Click();
    Paths left;
    for (const std::string& path : fake::FilesBelow("C:\\"))
        left.push_back(path.substr(path.rfind('\\') + 1));
    std::sort(left.begin(), left.end());
    EXPECT_EQ((Paths{"nullwright.dat", "nullwright.exe", "nwaux6.dll"}), left);
    EXPECT_TRUE(std::any_of(fake::user.Boxes.begin(), fake::user.Boxes.end(), [](const auto& box) {
        return box.Text.starts_with("You have not excluded the C:\\Program Files folder.\r\n");
    }));
    ExpectRest();
}

TEST_F(DiskPurgeTest, NoCallThatFailsLeavesADummyOrTheMenuDisabled) {
    bool failed = true;
    for (int n = 1; failed && !HasFailure(); ++n) {
        Fresh();
        LeaveFree(2 * MiB);
        sngPurgeSpeeds[3] = 0; // with the speed test
        fake::user.AnswerOthers = GoOn;
        ChooseDriveD("Purge (wipe) which drive?");
        SCOPED_TRACE("call " + std::to_string(n));
        fake::FailNth(n, platform::Fault::AccessDenied);
        Click();
        failed = fake::HasFailed();
        fake::FailNth(0, platform::Fault::None);
        ExpectRest();
        EXPECT_EQ("secret", fake::ContentOf("D:\\pagefile.sys"));
        ASSERT_LT(n, 5000);
    }
    fake::user.Reset();
}

} // namespace
