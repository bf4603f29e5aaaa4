// "Purge free space" from the click to the last box.
#include "DriveTest.h"

#include "disk/DriveCommands.h"
#include "disk/FreeSpacePurge.h"

namespace {

const char* const strTitle = "Purge free space";
const char* const strQuestion = "Purge free space on which drive?";
const char* const strAdvice = "It is advisable to test the purge speed of Drive D first, so as to "
                              "get an estimate of the time required.";

std::string WrittenText(const std::string& strFiles) {
    return strFiles + "\r\nThis has overwritten all the free space with null bytes.\r\n"
                      "This provides some security but is not very secure.\r\n\r\n"
                      "Do you wish to continue with the purge?";
}

struct FreeSpaceTest : DriveTest {
    void Announce(const std::string& text) {
        ChooseDriveD(strQuestion);
        fake::user.Box(strTitle, text + strTrailer, ui::AnswerOK,
                       {ui::Icon::Information, ui::Buttons::OKCancel, 1});
    }
    void AnnounceThree() {
        Announce("Drive D has 120.00 MB free.\r\n\r\n"
                 "3 dummy files will now be written to fill this space.\r\n\r\n" +
                 std::string(strAdvice));
    }
    /// 120 MiB less a cluster for the letter.
    static void Click() { fake::Click(frmMain.cmdLargePurge[2]); }
};

TEST_F(FreeSpaceTest, FillsToTheLastClusterPurgesAndLeavesNothing) {
    std::uint64_t freeBefore = fake::drives['D'].Free(), freeThen = 1;
    std::vector<std::string> filesThen;
    AnnounceThree();
    fake::user.BoxLike(strTitle, [&](const std::string& text) {
        freeThen = fake::drives['D'].Free();
        filesThen = fake::FilesBelow("D:\\" + Dummies()[0]);
        return text == WrittenText("3 dummy files have been written.");
    });
    fake::user.Box(strTitle, "The free space has been purged.", ui::AnswerOK,
                   {ui::Icon::Information, ui::Buttons::OK, 1});
    // What the labels say in between.
    std::vector<std::string> lines;
    fake::OnCall(fake::Call::Write, [&](const std::string&) {
        for (const ui::Label* label : {&frmMain.lblLargePurgeMessage, &frmMain.lblStatus})
            if (lines.empty() ||
                std::find(lines.begin(), lines.end(), label->Caption) == lines.end())
                lines.push_back(label->Caption);
        return platform::Fault::None;
    });
    Click();
    EXPECT_EQ(0u, freeThen);
    EXPECT_EQ(4u, filesThen.size()); // with the marker
    EXPECT_EQ(freeBefore, fake::drives['D'].Free());
    EXPECT_EQ("somebody's", fake::ContentOf("D:\\docs\\letter.txt"));
    EXPECT_EQ("The free space has been purged.", Label(frmMain.lblLargePurgeMessage));
    ExpectRest();
    for (const char* line :
         {"3 dummy files are being written to fill the disk in Drive D.\r\nTo interrupt this "
          "operation press the F10 key twice\r\nand wait for the 'Cancel' query.\r\n",
          "Written: 1 MB (1%)   To be written: 119 MB",
          "Written: 60 MB (50%)   To be written: 60 MB",
          "3 dummy files are being purged.\r\nTo stop the current dummy file purge, press the F10 "
          "key twice."})
        EXPECT_NE(lines.end(), std::find(lines.begin(), lines.end(), line)) << line;
    // Null bytes, flushed, then the purge's bytes over all of each, flushed; then it goes.
    std::string first;
    for (const fake::Event& event : fake::journal)
        if (event.What == fake::Did::Create && event.Path.ends_with("_nw_dummy1"))
            first = event.Path;
    EXPECT_EQ("create\nwrite 0+52428800 00\nflush\nwrite 0+52428800 *\nflush\nremove\n",
              fake::JournalText(first));
    // The folder's own records reach the disk before it goes.
    EXPECT_EQ("make folder\nflush\nremove folder\n",
              fake::JournalText(first.substr(0, first.rfind('\\'))));
}

TEST_F(FreeSpaceTest, EstimatesByTheMeasuredSpeed) {
    sngPurgeSpeeds['D' - 'A'] = 0.5F;
    SetPasses(3);
    ChooseDriveD(strQuestion);
    fake::user.BoxLike(
        strTitle,
        [](const std::string& text) {
            EXPECT_NE(std::string::npos,
                      text.find("Assuming a disk write speed (as measured) of 0.50 MB/sec\r\n"
                                "and using an adjustment factor of "));
            EXPECT_NE(std::string::npos, text.find("\r\nthis will take about "));
            EXPECT_NE(std::string::npos,
                      text.find("Purging the dummy files will then take about 3 times as long."));
            return true;
        },
        ui::AnswerCancel);
    Click();
    ExpectRest();
    EXPECT_TRUE(fake::journal.empty());
}

// Free bytes, where the last clusters go, and how many files they make.
TEST_F(FreeSpaceTest, FillsWhatIsLeftInClusters) {
    LeaveFree(100 * 1024);
    Announce("Drive D has 100.00 KB free.\r\n\r\n"
             "A dummy file will now be written to fill this space.\r\n\r\n" +
             std::string(strAdvice));
    std::int64_t writes = 0;
    fake::user.BoxLike(strTitle, [&](const std::string& text) {
        writes = fake::CallsMade(fake::Call::Write);
        EXPECT_EQ(0u, fake::drives['D'].Free());
        return text == WrittenText("One dummy file has been written.");
    });
    fake::user.Box(strTitle, "The free space has been purged.");
    Click();
    EXPECT_GE(writes, 25);
    ExpectRest();
}

TEST_F(FreeSpaceTest, AFloppyDriveShowsNoHintAndNoProgressBeforeAFileIsClosed) {
    fake::AddDrive('A', 3 * MiB / 2, 512, platform::DriveType::Removable);
    fake::user.Modal(frmDrives, [] {
        fake::Choose(frmDrives.lstDrives, std::string(frmDrives.lstDrives.Items[0].Text));
        fake::Click(frmDrives.cmdOK);
    });
    fake::user.BoxLike(strTitle, fake::Contains("Drive A has 1.50 MB free."));
    fake::user.BoxLike(strTitle, fake::Contains("One dummy file has been written."));
    fake::user.Box(strTitle, "The free space has been purged.");
    bool closed = false;
    fake::OnCall(fake::Call::Close, [&](const std::string&) {
        closed = true;
        return platform::Fault::None;
    });
    fake::OnCall(fake::Call::Write, [&](const std::string&) {
        if (!closed) {
            EXPECT_EQ("", Label(frmMain.lblStatus));
            EXPECT_EQ("One dummy file is being written to fill the disk in Drive A.",
                      Label(frmMain.lblLargePurgeMessage));
        }
        return platform::Fault::None;
    });
    Click();
    EXPECT_TRUE(Dummies('A').empty());
    ExpectRest();
}

TEST_F(FreeSpaceTest, CountsAreRightOnADriveOf64TiB) {
    Begin(std::uint64_t{64} << 40);
    fake::TakeAway("D:\\docs");
    Announce("Drive D has 65,536.00 GB free.\r\n\r\n"
             "1,342,178 dummy files will now be written to fill this space.\r\n\r\n" +
             std::string(strAdvice));
    int writes = 0;
    PressF10When([&] { return ++writes > 3 && FillDisk.lngFilesWritten > 1; });
    fake::user.Box("Cancel?", "Do you wish to cancel this operation?", ui::AnswerYes);
    fake::user.Box(strTitle, "Purging of free space was stopped.");
    Click();
    ExpectRest();
    // So many that FAT32 could not hold their names in one folder: larger ones there.
    fake::drives['D'].FileSystem = "FAT32";
    ASSERT_TRUE(ReadFreeSpace('D'));
    PlanDummyFiles('D');
    EXPECT_EQ(65536, intNumDummyFiles);
    EXPECT_EQ(1073741824, dblMaxSizeDummyFile);
    ChooseDriveD(strQuestion);
    fake::user.BoxLike(strTitle, fake::Contains("65,536 dummy files"), ui::AnswerCancel);
    Click();
    ExpectRest();
}

TEST_F(FreeSpaceTest, RefusesWhatCannotBeFilled) {
    struct Case {
        const char* title;
        const char* text;
        std::function<void(fake::Drive&)> prepare;
    };
    const Case cases[] = {
        {strTitle, "There is no disk in Drive D.",
         [](fake::Drive& d) {
             d.Type = platform::DriveType::Removable;
             d.MediaPresent = false;
         }},
        {strTitle, "There is no CD-ROM in Drive D.",
         [](fake::Drive& d) {
             d.Type = platform::DriveType::CdRom;
             d.MediaPresent = false;
         }},
        {strTitle,
         "Drive D is a network drive.\r\n"
         "Only the drives of this computer itself can be purged.",
         [](fake::Drive& d) { d.Type = platform::DriveType::Remote; }},
        {strTitle, "The disk in Drive D is read-only.\r\nNothing on it can be purged.",
         [](fake::Drive& d) { d.ReadOnly = true; }},
        {strTitle, "There is no free space on the disk in Drive D.",
         [](fake::Drive& d) { d.Occupied += d.Free(); }},
    };
    for (const Case& c : cases) {
        Begin(120 * MiB);
        c.prepare(fake::drives['D']);
        ChooseDriveD(strQuestion);
        fake::user.Box(c.title, c.text, ui::AnswerOK, {ui::Icon::Exclamation, ui::Buttons::OK, 1});
        Click();
        EXPECT_TRUE(fake::journal.empty());
        ExpectRest();
        fake::user.Finish();
    }
    // The chooser's Cancel, and no library.
    fake::user.Modal(frmDrives, [] { fake::Click(frmDrives.cmdCancel); });
    Click();
    Begin(120 * MiB);
    fake::auxiliaryLibrary = platform::Fault::NotFound;
    fake::user.BoxLike("Error", fake::Contains("nwaux6.dll"));
    Click();
    ExpectRest();
}

TEST_F(FreeSpaceTest, WarnsBeforeFillingTheSystemDrive) {
    fake::user.Modal(frmDrives, [] {
        fake::Choose(frmDrives.lstDrives, std::string(frmDrives.lstDrives.Items[0].Text));
        fake::Click(frmDrives.cmdOK);
    });
    fake::user.BoxLike(strTitle, fake::Contains("Windows runs from Drive C."), ui::AnswerCancel);
    Click();
    EXPECT_TRUE(fake::journal.empty());
    ExpectRest();
}

TEST_F(FreeSpaceTest, F10WhileWritingAsksAndGoesOnOrEnds) {
    for (const bool goOn : {false, true}) {
        Begin(120 * MiB);
        AnnounceThree();
        PressF10When([] { return FillDisk.lngBytesInCurrentFile > static_cast<int>(5 * MiB); });
        fake::user.Box("Cancel?", "Do you wish to cancel this operation?", ui::AnswerNo,
                       {ui::Icon::Question, ui::Buttons::YesNo, 1});
        PressF10When([] { return FillDisk.lngFilesWritten == 1; });
        fake::user.Box("Cancel?", "Do you wish to cancel this operation?",
                       goOn ? ui::AnswerNo : ui::AnswerYes);
        if (goOn)
            fake::user.Box(strTitle, WrittenText("3 dummy files have been written."),
                           ui::AnswerCancel);
        fake::user.Box(strTitle, "Purging of free space was stopped.");
        Click();
        EXPECT_EQ("Purging of free space was stopped.", Label(frmMain.lblLargePurgeMessage));
        ExpectRest();
        fake::user.Finish();
    }
}

TEST_F(FreeSpaceTest, F10WhilePurgingAsksBetweenTwoFiles) {
    const std::string counts = "Dummy files purged: 0\r\nDummy files not purged: 3\r\n\r\n";
    const std::string next = "Click 'OK' to continue with the next file\r\n"
                             "or click 'Cancel' to terminate this operation.";
    const auto Purging = [] { return Label(frmMain.lblStatus).ends_with("% of purge done."); };
    for (const bool goOn : {false, true}) {
        Begin(120 * MiB);
        AnnounceThree();
        fake::user.Box(strTitle, WrittenText("3 dummy files have been written."));
        PressF10When(Purging);
        fake::user.Box(strTitle, counts + next, goOn ? ui::AnswerOK : ui::AnswerCancel,
                       {ui::Icon::Question, ui::Buttons::OKCancel, 1});
        if (goOn) { // during the last file: the first, stopped one, and this one are unpurged
            PressF10When([&] { return FillDisk.lngFilesPurged == 1 && Purging(); });
            fake::user.Box(strTitle,
                           "Dummy files purged: 1\r\nDummy files not purged: 2\r\n\r\n" + next);
        }
        fake::user.Box(strTitle, goOn ? "The free space has been purged.\r\n"
                                        "2 dummy files were not purged to the end:\r\n"
                                        "that space was overwritten with null bytes."
                                      : "Purging of free space was stopped.");
        Click();
        ExpectRest();
        fake::user.Finish();
    }
    // While the last files are deleted it is too late.
    Begin(20 * MiB);
    ChooseDriveD(strQuestion);
    fake::user.BoxLike(strTitle, fake::Contains("A dummy file will now be written"));
    fake::user.BoxLike(strTitle, fake::Contains("One dummy file has been written."));
    fake::OnCall(fake::Call::RemoveFolder, [](const std::string&) {
        fake::PressF10();
        return platform::Fault::None;
    });
    fake::user.Box(strTitle, "The free space has been purged.");
    Click();
    ExpectRest();
    // With one file there is no next one.
    Begin(20 * MiB);
    ChooseDriveD(strQuestion);
    fake::user.BoxLike(strTitle, fake::Contains("A dummy file will now be written"));
    fake::user.Box(strTitle, WrittenText("One dummy file has been written."));
    PressF10When(Purging);
    fake::user.Box(strTitle,
                   "Dummy files purged: 0\r\nDummy files not purged: 1\r\n\r\n"
                   "The unpurged dummy file will now be deleted.",
                   ui::AnswerOK, {ui::Icon::Information, ui::Buttons::OK, 1});
    fake::user.Box(strTitle, "Purging of free space was stopped.");
    Click();
    ExpectRest();
}

TEST_F(FreeSpaceTest, AFileThatCannotBePurgedIsAskedAbout) {
    for (const int answer : {int{ui::AnswerYes}, int{ui::AnswerNo}}) {
        Begin(120 * MiB);
        AnnounceThree();
        fake::user.BoxLike(strTitle, [](const std::string& text) {
            fake::FailNth(3, platform::Fault::WriteFault, fake::Call::Write);
            return text == WrittenText("3 dummy files have been written.");
        });
        fake::user.Box(strTitle,
                       "Dummy files purged: 0\r\nDummy files not purged: 3\r\n\r\n"
                       "Error -3 when purging _nw_dummy1.\r\n"
                       "Do you wish to continue with this operation?",
                       answer, {ui::Icon::Question, ui::Buttons::YesNo, 1});
        fake::user.Box(strTitle, answer == ui::AnswerYes
                                     ? "The free space has been purged.\r\n"
                                       "One dummy file was not purged to the end:\r\n"
                                       "that space was overwritten with null bytes."
                                     : "Purging of free space was stopped.");
        Click();
        ExpectRest();
        fake::user.Finish();
    }
}

TEST_F(FreeSpaceTest, FaultsOtherThanAFullDiskEndTheFilling) {
    struct Case {
        fake::Call call;
        platform::Fault fault;
        const char* title;
        std::string text;
    };
    const Case cases[] = {
        {fake::Call::Write, platform::Fault::WriteFault, "Error",
         "Error: " + platform::FaultText(platform::Fault::WriteFault)},
        {fake::Call::Flush, platform::Fault::NotReady, "Error",
         "Error: " + platform::FaultText(platform::Fault::NotReady)},
        {fake::Call::MakeFolder, platform::Fault::DiskFull, "Disk full",
         "Unable to create a temporary folder on the disk in Drive D."},
    };
    for (const Case& c : cases) {
        Begin(120 * MiB);
        AnnounceThree();
        fake::user.Box(c.title, c.text, ui::AnswerOK, {ui::Icon::Exclamation, ui::Buttons::OK, 1});
        fake::FailNth(1, c.fault, c.call);
        Click();
        EXPECT_EQ("Purging of free space was stopped.", Label(frmMain.lblLargePurgeMessage));
        ExpectRest();
        fake::user.Finish();
    }
    // New files are compressed there: null bytes would never fill it.
    Begin(120 * MiB);
    AnnounceThree();
    fake::OnCall(fake::Call::ReadAttributes, [](const std::string& path) {
        fake::At(path)->Attributes |= platform::AttributeCompressed;
        return platform::Fault::None;
    });
    fake::user.BoxLike("Error", fake::Contains("compresses"));
    Click();
    ExpectRest();
}

TEST_F(FreeSpaceTest, DummiesThatCannotBeDeletedAreOfferedAtTheNextStart) {
    Begin(20 * MiB);
    ChooseDriveD(strQuestion);
    fake::user.BoxLike(strTitle, fake::Contains("A dummy file"));
    fake::user.BoxLike(strTitle, [](const std::string&) {
        fake::FailFrom(1, platform::Fault::AccessDenied, fake::Call::RemoveFile);
        return true;
    });
    fake::user.BoxLike(strTitle, fake::Contains("Error -4 when purging _nw_dummy1."),
                       ui::AnswerYes);
    fake::user.BoxLike(strTitle, fake::Contains("The unpurged dummy file will now be deleted."));
    fake::user.BoxLike("Error", fake::Contains("Not all dummy files could be deleted."));
    fake::user.BoxLike(strTitle, fake::Contains("One dummy file was not purged to the end"));
    Click();
    ASSERT_EQ(1u, Dummies().size());
    EXPECT_TRUE(frmMain.fraMenu.Enabled);
    fake::FailFrom(0, platform::Fault::None, fake::Call::RemoveFile);

    // What only looks like ours stays, whatever the answer; so does what is not ours inside.
    const std::string ours = "D:\\" + Dummies()[0];
    fake::PutFile("D:\\_nw_dummy\\_nw_dummy1");
    fake::PutFile("D:\\_nw_dummy_0123456789abcdef\\_nw_dummy1");
    fake::PutFile("D:\\_nw_dummy_notes\\x");
    fake::PutFile(ours + "\\_nw_dummy_notes.txt");
    for (const int answer : {int{ui::AnswerNo}, int{ui::AnswerYes}}) {
        fake::user.Box("Dummy files found",
                       "A purge of free space was interrupted before its dummy files were deleted."
                       "  They still fill the disk, in the folder\r\n" +
                           ours + "\r\n\r\nDo you wish to delete them now?",
                       answer, {ui::Icon::Question, ui::Buttons::YesNo, 1});
        OfferToRemoveLeftoverDummies();
        EXPECT_EQ(answer == ui::AnswerNo, fake::At(ours + "\\_nw_dummy1") != nullptr);
    }
    OfferToRemoveLeftoverDummies(); // nothing of ours any more
    EXPECT_EQ(4u, Dummies().size());
    EXPECT_EQ((std::vector<std::string>{ours + "\\_nw_dummy_notes.txt"}), fake::FilesBelow(ours));
}

TEST_F(FreeSpaceTest, NoCallThatFailsLeavesADummy) {
    for (const auto fault : {platform::Fault::AccessDenied, platform::Fault::DiskFull}) {
        bool failed = true;
        for (int n = 1; failed; ++n) {
            Begin(2 * MiB);
            fake::user.AnswerOthers = [](const fake::BoxSeen& box) {
                return box.Buttons == ui::Buttons::YesNo ? ui::AnswerYes : ui::AnswerOK;
            };
            ChooseDriveD(strQuestion);
            fake::FailNth(n, fault);
            Click();
            failed = fake::HasFailed();
            fake::FailNth(0, fault);
            SCOPED_TRACE("call " + std::to_string(n));
            ExpectRest();
            EXPECT_EQ("somebody's", fake::ContentOf("D:\\docs\\letter.txt"));
            if (HasFailure())
                break;
            ASSERT_LT(n, 3000);
        }
        fake::user.Reset();
    }
}

} // namespace
