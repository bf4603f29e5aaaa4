// "Purge disk": every box, every answer, and what is left on the disk.
#include "DriveTest.h"

namespace {

const char* const strTitle = "Purge disk";
const char* const strWindowsFolder =
    "You have not excluded the D:\\WINDOWS folder.\r\n"
    "Are you sure that you wish to purge all files in that folder?";
const char* const strNoBoxes = "\r\nDo you want this operation to continue to completion\r\n"
                               "without further interruption from dialog boxes?";
const char* const strDone = "The disk has been purged (except for excluded files).";
constexpr int Yes = ui::AnswerYes, No = ui::AnswerNo, Cancel = ui::AnswerCancel, OK = ui::AnswerOK;

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
        fake::PutFolder("D:\\docs\\link").LinkTarget = "C:\\Program Files";
        sngPurgeSpeeds[3] = 1;
    }
    static void Click() { Run(frmMain.cmdLargePurge[1]); }
    static void OkCancel(const std::string& text, int answer = OK) {
        user.Box(strTitle, text + strTrailer, answer, {{}, ui::Buttons::OKCancel, 1});
    }
    static void YesNoCancel(const std::string& text, int answer, int defaultButton = 1) {
        user.Box(strTitle, text, answer,
                 {ui::Icon::Question, ui::Buttons::YesNoCancel, defaultButton});
    }
    /// From the choice of the drive to the last question before the free space; so many boxes, the
    /// last of them with another answer. Excludes what is named, or answers "No" to that question.
    static void Prepare(int top = No, const Paths& excluded = {}, int boxes = 99, int last = 0) {
        const auto answer = [&boxes, last](int usual) { return --boxes == 0 ? last : usual; };
        ChooseDrive("Purge (wipe) which drive?");
        user.BoxLike(strTitle, "The capacity of the disk in Drive D is ", answer(OK));
        if (boxes > 0)
            OkCancel("Purging Drive D is a 3-step process:\r\n"
                     "1.  Folders to be EXCLUDED from the purge operation (if any)\r\n\r\n"
                     "are selected.\r\n2.  The free space is purged.\r\n"
                     "3.  All files in the top folder (unless excluded)\r\n"
                     "and in all NON-EXCLUDED subfolders are purged.",
                     answer(OK));
        if (boxes > 0)
            YesNoCancel(
                "Do you wish to EXCLUDE the 2 top-level files in D:\\ from this purge operation?",
                answer(top));
        if (boxes > 0)
            YesNoCancel("Do you wish to EXCLUDE files in selected top-level folders\r\n"
                        "from this purge operation?",
                        answer(excluded.empty() ? No : Yes));
        if (!excluded.empty())
            ChooseSubfolders("Select top-level folders on Drive D to be EXCLUDED from this purge.",
                             excluded);
        else if (boxes > 0)
            YesNoCancel(strWindowsFolder, answer(Yes));
    }
    static void NoMoreBoxes(int answer) { YesNoCancel(strNoBoxes, answer, 2); }
    /// The boxes of the free-space purge inside, and the one after it.
    static void FreeSpace(int answer = OK) {
        user.BoxLike(strTitle, "will now be written to fill this space.");
        user.BoxLike(strTitle, "have been written.", answer);
    }
    static void FilesNext(const std::string& where, int answer = OK) {
        OkCancel("The free space has been purged.  Now all files\r\n" + where + "will be purged.",
                 answer);
    }
    static Paths Left() { return fake::FilesBelow("D:\\"); }
};

/// Goes on at every box, excludes nothing, wants to see all boxes.
int GoOn(const fake::BoxSeen& box) {
    if (box.Buttons == ui::Buttons::OK || box.Buttons == ui::Buttons::OKCancel)
        return OK;
    return box.Text.find("EXCLUDE the") != std::string::npos ||
                   box.Text.find("EXCLUDE files") != std::string::npos || box.Text == strNoBoxes
               ? No
               : Yes;
}

TEST_F(DiskPurgeTest, PurgesAllButWhatMustStay) {
    SetPasses(2);
    Prepare();
    NoMoreBoxes(No);
    FreeSpace();
    FilesNext("in the top folder and in all 3 subfolders ");
    Paths lines;
    fake::OnCall("RemoveFile", [&](const std::string& path) {
        if (path.find("_nw_") == std::string::npos) {
            lines.push_back(frmMain.lblPurgeFoldersMessage.Caption);
            EXPECT_EQ("5 files are being purged.", frmMain.lblSubdirectories2.Caption);
        }
        return Fault::None;
    });
    Click();
    const std::string estimate = user.Boxes[0].Text;
    EXPECT_TRUE(estimate.starts_with("The capacity of the disk in Drive D is 60.00 MB.\r\n\r\n"
                                     "Estimated time to purge the free space (59.97 MB): "))
        << estimate;
    EXPECT_NE(estimate.npos, estimate.find("\r\nEstimated time to purge 7 files (42 bytes): "));
    EXPECT_NE(estimate.npos, estimate.find("Estimated purge times for the entire disk\r\n"));
    EXPECT_TRUE(estimate.ends_with("The type of purge currently specified involves 2 overwrites."
                                   "\r\n\r\nTo decrease the time required, specify a type of purge"
                                   "\r\nwhich involves fewer overwrites." +
                                   std::string(strTrailer)));
    EXPECT_EQ((Paths{"D:\\pagefile.sys", "D:\\WINDOWS\\WIN386.SWP"}), Left());
    EXPECT_EQ((Paths{"Now purging (pass 2):D:\\a.txt", "Now purging (pass 2):D:\\docs\\letter.txt",
                     "2 files purged (40% of 5).  Now purging (pass 2):D:\\docs\\old\\deep.txt",
                     "3 files purged (60% of 5).  Now purging (pass 2):D:\\WINDOWS\\system.ini",
                     "4 files purged (80% of 5).  Now purging (pass 2):D:\\games\\score"}),
              lines);
    EXPECT_EQ("", fake::JournalText("D:\\pagefile.sys"));
    EXPECT_NE(nullptr, fake::At("C:\\Program Files\\Nullwright\\nullwright.exe"));
    EXPECT_EQ(strDone, frmMain.lblLargePurgeMessage.Caption);
    EXPECT_EQ("", frmMain.lblPurgeFoldersMessage.Caption);
}

TEST_F(DiskPurgeTest, ExclusionsHoldAndAreNamed) {
    const struct {
        int TopFiles;
        Paths Excluded;
        std::string Label, Where;
        Paths Left;
    } cases[] = {
        {No,
         {"WINDOWS"},
         "One top-level folder of Drive D is EXCLUDED from this purge operation.",
         "in the top folder and in both non-excluded subfolders ",
         {"D:\\pagefile.sys", "D:\\WINDOWS\\WIN386.SWP", "D:\\WINDOWS\\system.ini"}},
        {Yes,
         {"WINDOWS", "docs"},
         "2 top-level folders of Drive D are EXCLUDED from this purge.",
         "in the single non-excluded subfolder ",
         {"D:\\a.txt", "D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\docs\\old\\deep.txt",
          "D:\\WINDOWS\\WIN386.SWP", "D:\\WINDOWS\\system.ini"}},
        {No,
         {"WINDOWS", "docs", "games"},
         "3 top-level folders of Drive D are EXCLUDED from this purge.",
         "in the top folder ",
         {"D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\docs\\old\\deep.txt",
          "D:\\WINDOWS\\WIN386.SWP", "D:\\WINDOWS\\system.ini", "D:\\games\\score"}},
        {Yes,
         {},
         "ALL top-level folders of Drive D and all their subfolders will be purged.",
         "in all 3 subfolders ",
         {"D:\\a.txt", "D:\\pagefile.sys", "D:\\WINDOWS\\WIN386.SWP"}},
    };
    for (const auto& c : cases) {
        Fresh();
        Prepare(c.TopFiles, c.Excluded);
        NoMoreBoxes(No);
        user.BoxLike(strTitle, [&](const std::string&) {
            EXPECT_EQ(c.Label, frmMain.lblSubdirectories2.Caption);
            return true;
        });
        user.BoxLike(strTitle, "have been written.");
        FilesNext(c.Where);
        Click();
        EXPECT_EQ(c.Left, Left()) << c.Where;
    }
    Fresh();
    Prepare(Yes, {"WINDOWS", "docs", "games"});
    user.Box(strTitle, "You have excluded all top-level files and all top-level folders\r\n"
                       "from the purge operation.");
    Click();
    EXPECT_TRUE(fake::journal.empty());
}

TEST_F(DiskPurgeTest, EveryBoxCanEndItBeforeAnythingIsTouched) {
    const std::pair<int, int> ends[] = {{1, Cancel}, {2, Cancel}, {3, Cancel}, {4, Cancel},
                                        {5, Cancel}, {5, No},     {99, 0}};
    for (const auto& [boxes, last] : ends) {
        Fresh();
        Prepare(No, {}, boxes, last);
        if (boxes == 99)
            NoMoreBoxes(Cancel);
        Click();
        EXPECT_TRUE(fake::journal.empty()) << boxes;
        EXPECT_EQ("(Do not operate on files in lower subfolders.)",
                  frmMain.lblSubdirectories2.Caption);
    }
}

TEST_F(DiskPurgeTest, StoppingAtTheFreeSpaceKeepsTheFiles) {
    for (int at = 0; at < 3; ++at) {
        Fresh();
        const Paths before = Left();
        Prepare();
        NoMoreBoxes(No);
        if (at == 0)
            user.BoxLike(strTitle, "will now be written", Cancel);
        else
            FreeSpace(at == 1 ? Cancel : OK);
        if (at == 2)
            FilesNext("in the top folder and in all 3 subfolders ", Cancel);
        Click();
        EXPECT_EQ("Purge disk cancelled.", frmMain.lblLargePurgeMessage.Caption);
        EXPECT_EQ(before, Left());
    }
}

TEST_F(DiskPurgeTest, WithoutBoxesOnlyF10AsksAndFailuresAreToldAtTheEnd) {
    for (const bool f10 : {false, true}) {
        Fresh();
        fake::At("D:\\docs\\letter.txt")->Locked = true;
        Prepare();
        NoMoreBoxes(Yes);
        fake::OnCall("RemoveFile", [](const std::string& path) {
            return path.ends_with("score") ? Fault::AccessDenied : Fault::None;
        });
        bool failed = f10; // else the first write of the purge of the free space fails
        fake::OnCall("WriteBytes", [&failed](const std::string&) {
            const std::string& message = frmMain.lblLargePurgeMessage.Caption;
            const bool first = !failed && message.starts_with("2 dummy files are being purged");
            failed = failed || first;
            return first ? Fault::WriteFault : Fault::None;
        });
        const std::string deep = "D:\\docs\\old\\deep.txt";
        if (f10) {
            PressF10When([&] { return frmMain.lblPurgeFoldersMessage.Caption.ends_with(deep); });
            user.Box(strTitle,
                     deep + "\r\nClick 'OK' to continue, or 'Cancel' to terminate this operation.",
                     Cancel, fake::AsksOKCancel);
        }
        user.Box(
            strTitle,
            f10 ? "One file could not be purged."
                : "One dummy file was not purged to the end:\r\n"
                  "that space was overwritten with null bytes.\r\n2 files could not be purged.",
            fake::Informs);
        Click();
        EXPECT_EQ(f10 ? "\r\nPurge disk was stopped." : strDone,
                  frmMain.lblLargePurgeMessage.Caption);
        EXPECT_EQ(
            f10 ? (Paths{"D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\WINDOWS\\WIN386.SWP",
                         "D:\\WINDOWS\\system.ini", "D:\\games\\score"})
                : (Paths{"D:\\pagefile.sys", "D:\\docs\\letter.txt", "D:\\WINDOWS\\WIN386.SWP",
                         "D:\\games\\score"}),
            Left());
    }
}

TEST_F(DiskPurgeTest, ADriveWithoutFoldersAndWithoutAMeasuredSpeed) {
    Begin(30 * MiB);
    fake::TakeAway("D:\\docs");
    fake::PutFile("D:\\only.txt", "secret",
                  platform::AttributeReadOnly | platform::AttributeSystem);
    ChooseDrive("Purge (wipe) which drive?");
    OkCancel("The purge speed for Drive D will now be tested so as to get\r\n"
             "an estimate of the time required for this operation.");
    // The test fails four times; then without an estimate.
    fake::OnCall("MakeFolder", [](const std::string&) {
        return FillDisk.intTestQuantity > 0 ? Fault::AccessDenied : Fault::None;
    });
    for (int i = 0; i < 4; ++i)
        user.BoxLike("Test purge speed", "The test cannot be completed.");
    OkCancel("It is not possible to obtain sufficient information about the disk in Drive D\r\n"
             "so as to estimate the time required for the disk purge.");
    OkCancel("Purging Drive D is a 2-step process:\r\n1.  The free space is purged.\r\n"
             "2.  All files are purged.");
    YesNoCancel("Do you wish to EXCLUDE the single top-level file in D:\\ from this purge "
                "operation?",
                No);
    NoMoreBoxes(No);
    user.BoxLike(strTitle, "A dummy file will now be written");
    user.BoxLike(strTitle, "One dummy file has been written.");
    FilesNext("in the top folder ");
    Click();
    EXPECT_TRUE(Left().empty());

    // Nothing but the paging file: nothing to purge after the free space.
    fake::PutFile("D:\\PageFile.sys");
    sngPurgeSpeeds[3] = 1;
    ChooseDrive("Purge (wipe) which drive?");
    user.BoxLike(strTitle, "The capacity of the disk");
    user.BoxLike(strTitle, "2-step");
    user.BoxLike(strTitle, "the single top-level file", No);
    NoMoreBoxes(Yes);
    user.Box(strTitle, "There are no non-excluded files,\r\nthus there are no files to purge.");
    Click();

    // F10 ends the tests, not only one of them.
    Begin(30 * MiB);
    ChooseDrive("Purge (wipe) which drive?");
    user.BoxLike(strTitle, "The purge speed for Drive D will now be tested");
    PressF10When([] { return FillDisk.lngBytesInCurrentFile > 0; });
    user.Box("Cancel?", "Do you wish to cancel this operation?", Yes);
    user.BoxLike(strTitle, "It is not possible to obtain", Cancel);
    Click();
}

TEST_F(DiskPurgeTest, TheProgramsOwnDriveKeepsTheProgram) {
    LeaveFree(0);
    fake::drives['C'].Occupied += fake::drives['C'].Free() - 8 * MiB;
    sngPurgeSpeeds[2] = 1;
    const Paths program = fake::FilesBelow("C:\\");
    fake::PutFile("C:\\Program Files\\Nullwright\\sub\\note.txt");
    user.AnswerOthers = GoOn;
    ChooseDrive("Purge (wipe) which drive?", 'C');
    Click();
    EXPECT_EQ(program, fake::FilesBelow("C:\\"));
    EXPECT_TRUE(std::any_of(user.Boxes.begin(), user.Boxes.end(), [](const auto& box) {
        return box.Text.starts_with("You have not excluded the C:\\Program Files folder.\r\n");
    }));
}

TEST_F(DiskPurgeTest, NoCallThatFailsLeavesADummyOrTheMenuDisabled) {
    bool failed = true;
    for (int n = 1; failed && !HasFailure(); ++n) {
        SCOPED_TRACE(n);
        Fresh();
        LeaveFree(2 * MiB);
        sngPurgeSpeeds[3] = 0; // with the speed test
        user.AnswerOthers = GoOn;
        ChooseDrive("Purge (wipe) which drive?");
        fake::FailNth(n, Fault::AccessDenied);
        fake::Click(frmMain.cmdLargePurge[1]);
        failed = fake::HasFailed();
        fake::FailNth(0, Fault::None);
        ExpectRest();
        EXPECT_EQ("secret", fake::ContentOf("D:\\pagefile.sys"));
        ASSERT_LT(n, 5000);
    }
    user.Reset();
}

} // namespace
