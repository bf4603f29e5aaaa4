// "Purge free space" from the click to the last box.
#include "DriveTest.h"

#include "disk/DriveCommands.h"
#include "disk/FreeSpacePurge.h"

namespace {

const char* const strTitle = "Purge free space";
const char* const strQuestion = "Purge free space on which drive?";
const char* const strAdvice = "It is advisable to test the purge speed of Drive D first, so as to "
                              "get an estimate of the time required.";
const char* const strStopped = "Purging of free space was stopped.";
const char* const strPurged = "The free space has been purged.";
const char* const strOne = "One dummy file has been written.";
const char* const strThree = "3 dummy files have been written.";

std::string WrittenText(const std::string& strFiles) {
    return strFiles + "\r\nThis has overwritten all the free space with null bytes.\r\n"
                      "This provides some security but is not very secure.\r\n\r\n"
                      "Do you wish to continue with the purge?";
}

/// With one or more dummy files unpurged, of `all`.
std::string PurgedText(int purged, int all, const std::string& next) {
    return "Dummy files purged: " + std::to_string(purged) +
           "\r\nDummy files not purged: " + std::to_string(all - purged) + "\r\n\r\n" + next;
}

struct FreeSpaceTest : DriveTest {
    static void Announce(const std::string& free = "120.00 MB",
                         const std::string& files = "3 dummy files",
                         const std::string& hint = strAdvice, int answer = ui::AnswerOK) {
        ChooseDrive(strQuestion);
        user.Box(strTitle,
                 "Drive D has " + free + " free.\r\n\r\n" + files +
                     " will now be written to fill this space.\r\n\r\n" + hint + strTrailer,
                 answer, {ui::Icon::Information, ui::Buttons::OKCancel, 1});
    }
    static void Written(const std::string& files, int answer = ui::AnswerOK) {
        user.Box(strTitle, WrittenText(files), answer);
    }
    static void Click() { Run(frmMain.cmdLargePurge[2]); }
};

TEST_F(FreeSpaceTest, FillsToTheLastClusterPurgesAndLeavesNothing) {
    const std::uint64_t freeBefore = fake::drives['D'].Free();
    std::uint64_t freeThen = 1;
    Paths filesThen, lines;
    Announce();
    user.BoxLike(strTitle, [&](const std::string& text) {
        freeThen = fake::drives['D'].Free();
        filesThen = fake::FilesBelow("D:\\" + Dummies()[0]);
        return text == WrittenText(strThree);
    });
    user.Box(strTitle, strPurged, fake::Informs);
    // What the labels say in between.
    fake::OnCall("WriteBytes", [&](const std::string&) {
        lines.push_back(frmMain.lblLargePurgeMessage.Caption);
        lines.push_back(frmMain.lblStatus.Caption);
        return Fault::None;
    });
    Click();
    EXPECT_EQ(0u, freeThen);
    EXPECT_EQ(4u, filesThen.size()); // with the marker
    EXPECT_EQ(freeBefore, fake::drives['D'].Free());
    EXPECT_EQ("somebody's", fake::ContentOf("D:\\docs\\letter.txt"));
    EXPECT_EQ(strPurged, frmMain.lblLargePurgeMessage.Caption);
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
    for (const std::string& file : filesThen)
        if (file.ends_with("_nw_dummy1"))
            first = file;
    EXPECT_EQ("create\nwrite 0+52428800 00\nflush\nwrite 0+52428800 *\nflush\nremove\n",
              fake::JournalText(first));
    // The folder's own records reach the disk before it goes.
    EXPECT_EQ("make folder\nflush\nremove folder\n",
              fake::JournalText(first.substr(0, first.rfind('\\'))));
}

TEST_F(FreeSpaceTest, EstimatesByTheMeasuredSpeed) {
    sngPurgeSpeeds['D' - 'A'] = 0.5F;
    SetPasses(3);
    Announce("120.00 MB", "3 dummy files",
             "Assuming a disk write speed (as measured) of 0.50 MB/sec\r\n"
             "and using an adjustment factor of 0.44\r\nthis will take about 1m 45s.\r\n\r\n"
             "Purging the dummy files will then take about 3 times as long.",
             ui::AnswerCancel);
    Click();
    EXPECT_TRUE(fake::journal.empty());
}

TEST_F(FreeSpaceTest, AFloppyDriveShowsNoHintAndNoProgressBeforeAFileIsClosed) {
    fake::AddDrive('A', 3 * MiB / 2, 512, platform::DriveType::Removable);
    ChooseDrive(strQuestion, 'A');
    // A flush, which a device may not know, may fail.
    fake::OnCall("FlushBytes", [](const std::string&) { return Fault::NotSupported; });
    user.BoxLike(strTitle, "Drive A has 1.50 MB free.");
    Written(strOne);
    user.Box(strTitle, strPurged);
    fake::OnCall("WriteBytes", [](const std::string&) {
        if (fake::CallsMade("CloseFile") == 0) {
            EXPECT_EQ("", frmMain.lblStatus.Caption);
            EXPECT_EQ("One dummy file is being written to fill the disk in Drive A.",
                      frmMain.lblLargePurgeMessage.Caption);
        }
        return Fault::None;
    });
    Click();
}

TEST_F(FreeSpaceTest, CountsAreRightOnADriveOf64TiB) {
    Begin(std::uint64_t{64} << 40);
    fake::TakeAway("D:\\docs");
    Announce("65,536.00 GB", "1,342,178 dummy files");
    int writes = 0;
    PressF10When([&] { return ++writes > 3 && FillDisk.lngFilesWritten > 1; });
    user.Box("Cancel?", "Do you wish to cancel this operation?", ui::AnswerYes);
    user.Box(strTitle, strStopped);
    Click();
    // So many that FAT32 could not hold their names in one folder: larger ones there.
    fake::drives['D'].FileSystem = "FAT32";
    ASSERT_TRUE(ReadFreeSpace('D'));
    PlanDummyFiles('D');
    EXPECT_EQ(65536, intNumDummyFiles);
    EXPECT_EQ(1073741824, dblMaxSizeDummyFile);
    Announce("65,536.00 GB", "65,536 dummy files", strAdvice, ui::AnswerCancel);
    Click();
}

TEST_F(FreeSpaceTest, RefusesWhatCannotBeFilled) {
    using platform::DriveType;
    const auto refuses = [this](const std::string& text, DriveType type, bool medium = true,
                                bool readOnly = false, std::uint64_t free = MiB) {
        Begin(120 * MiB);
        LeaveFree(free);
        fake::Drive& drive = fake::drives['D'];
        drive.Type = type;
        drive.MediaPresent = medium;
        drive.ReadOnly = readOnly;
        ChooseDrive(strQuestion);
        user.Box(strTitle, text, fake::Warns);
        Click();
        EXPECT_TRUE(fake::journal.empty());
    };
    refuses("There is no disk in Drive D.", DriveType::Removable, false);
    refuses("There is no CD-ROM in Drive D.", DriveType::CdRom, false);
    refuses("Drive D is a network drive.\r\n"
            "Only the drives of this computer itself can be purged.",
            DriveType::Remote);
    refuses("The disk in Drive D is read-only.\r\nNothing on it can be purged.", DriveType::Fixed,
            true, true);
    refuses("There is no free space on the disk in Drive D.", DriveType::Fixed, true, false, 0);
    // The chooser's Cancel, the warning about the system's drive, and no library.
    user.Modal(frmDrives, [] { fake::Click(frmDrives.cmdCancel); });
    Click();
    ChooseDrive(strQuestion, 'C');
    user.BoxLike(strTitle, "Windows runs from Drive C.", ui::AnswerCancel);
    Click();
    Begin(120 * MiB);
    fake::auxiliaryLibrary = Fault::NotFound;
    user.BoxLike("Error", "nwaux6.dll");
    Click();
    EXPECT_TRUE(fake::journal.empty());
}

TEST_F(FreeSpaceTest, F10WhileWritingAsksAndGoesOnOrEnds) {
    const std::string query = "Do you wish to cancel this operation?";
    for (const bool goOn : {false, true}) {
        Begin(120 * MiB);
        Announce();
        PressF10When([] { return FillDisk.lngBytesInCurrentFile > static_cast<int>(5 * MiB); });
        user.Box("Cancel?", query, ui::AnswerNo, fake::AsksYesNo);
        PressF10When([] { return FillDisk.lngFilesWritten == 1; });
        user.Box("Cancel?", query, goOn ? ui::AnswerNo : ui::AnswerYes);
        if (goOn)
            Written(strThree, ui::AnswerCancel);
        user.Box(strTitle, strStopped);
        Click();
        EXPECT_EQ(strStopped, frmMain.lblLargePurgeMessage.Caption);
    }
}

TEST_F(FreeSpaceTest, F10WhilePurgingAsksBetweenTwoFiles) {
    const std::string next = "Click 'OK' to continue with the next file\r\n"
                             "or click 'Cancel' to terminate this operation.";
    const auto purging = [] { return frmMain.lblStatus.Caption.ends_with("% of purge done."); };
    for (const bool goOn : {false, true}) {
        Begin(120 * MiB);
        Announce();
        Written(strThree);
        PressF10When(purging);
        user.Box(strTitle, PurgedText(0, 3, next), goOn ? ui::AnswerOK : ui::AnswerCancel,
                 fake::AsksOKCancel);
        if (goOn) { // during the last file: the first, stopped one, and this one are unpurged
            PressF10When([&] { return FillDisk.lngFilesPurged == 1 && purging(); });
            user.Box(strTitle, PurgedText(1, 3, next));
        }
        user.Box(strTitle, goOn ? std::string(strPurged) +
                                      "\r\n2 dummy files were not purged to the end:\r\n"
                                      "that space was overwritten with null bytes."
                                : strStopped);
        Click();
    }
    // While the last files are deleted it is too late.
    Begin(20 * MiB);
    Announce("20.00 MB", "A dummy file");
    Written(strOne);
    fake::OnCall("RemoveFolder", [](const std::string&) {
        fake::PressF10();
        return Fault::None;
    });
    user.Box(strTitle, strPurged);
    Click();
    // With one file there is no next one.
    Begin(20 * MiB);
    Announce("20.00 MB", "A dummy file");
    Written(strOne);
    PressF10When(purging);
    user.Box(strTitle, PurgedText(0, 1, "The unpurged dummy file will now be deleted."),
             fake::Informs);
    user.Box(strTitle, strStopped);
    Click();
}

TEST_F(FreeSpaceTest, AFileThatCannotBePurgedIsAskedAbout) {
    for (const int answer : {int{ui::AnswerYes}, int{ui::AnswerNo}}) {
        Begin(120 * MiB);
        Announce();
        user.BoxLike(strTitle, [](const std::string& text) {
            fake::FailNth(3, Fault::WriteFault, "WriteBytes");
            return text == WrittenText(strThree);
        });
        user.Box(strTitle,
                 PurgedText(0, 3,
                            "Error -3 when purging _nw_dummy1.\r\n"
                            "Do you wish to continue with this operation?"),
                 answer, fake::AsksYesNo);
        user.Box(strTitle, answer == ui::AnswerNo
                               ? strStopped
                               : std::string(strPurged) +
                                     "\r\nOne dummy file was not purged to the end:\r\n"
                                     "that space was overwritten with null bytes.");
        Click();
    }
}

TEST_F(FreeSpaceTest, FaultsOtherThanAFullDiskEndTheFilling) {
    const struct {
        const char* Kind;
        Fault What;
        const char* Title;
        std::string Text;
    } cases[] = {
        {"WriteBytes", Fault::WriteFault, "Error",
         "Error: " + platform::FaultText(Fault::WriteFault)},
        {"FlushBytes", Fault::NotReady, "Error", "Error: " + platform::FaultText(Fault::NotReady)},
        {"MakeFolder", Fault::DiskFull, "Disk full",
         "Unable to create a temporary folder on the disk in Drive D."},
    };
    for (const auto& c : cases) {
        Begin(120 * MiB);
        Announce();
        user.Box(c.Title, c.Text, fake::Warns);
        fake::FailNth(1, c.What, c.Kind);
        Click();
        EXPECT_EQ(strStopped, frmMain.lblLargePurgeMessage.Caption);
    }
    // New files are compressed there: null bytes would never fill it.
    Begin(120 * MiB);
    Announce();
    fake::OnCall("ReadAttributes", [](const std::string& path) {
        fake::At(path)->Attributes |= platform::AttributeCompressed;
        return Fault::None;
    });
    user.BoxLike("Error", "compresses");
    Click();
}

TEST_F(FreeSpaceTest, DummiesThatCannotBeDeletedAreOfferedAtTheNextStart) {
    Begin(20 * MiB);
    Announce("20.00 MB", "A dummy file");
    bool refuses = false;
    fake::OnCall("RemoveFile",
                 [&](const std::string&) { return refuses ? Fault::AccessDenied : Fault::None; });
    user.BoxLike(strTitle, [&](const std::string& text) {
        refuses = true;
        return text == WrittenText(strOne);
    });
    user.BoxLike(strTitle, "Error -4 when purging _nw_dummy1.", ui::AnswerYes);
    user.BoxLike(strTitle, "The unpurged dummy file will now be deleted.");
    user.BoxLike("Error", "Not all dummy files could be deleted.");
    user.BoxLike(strTitle, "One dummy file was not purged to the end");
    fake::Click(frmMain.cmdLargePurge[2]);
    ASSERT_EQ(1u, Dummies().size());
    EXPECT_TRUE(frmMain.fraMenu.Enabled);
    refuses = false;
    fake::OnCall("RemoveFile", [](const std::string&) {
        EXPECT_FALSE(frmMain.fraMenu.Enabled);
        return Fault::None;
    });

    // What only looks like ours stays, whatever the answer; so does what is not ours inside.
    const std::string ours = "D:\\" + Dummies()[0];
    for (const char* path : {"D:\\_nw_dummy\\_nw_dummy1", "D:\\_nw_dummy_notes\\x",
                             "D:\\_nw_dummy_0123456789abcdef\\_nw_dummy1"})
        fake::PutFile(path);
    fake::PutFile(ours + "\\_nw_dummy_notes.txt");
    for (const int answer : {int{ui::AnswerNo}, int{ui::AnswerYes}}) {
        user.Box("Dummy files found",
                 "A purge of free space was interrupted before its dummy files were deleted."
                 "  They still fill the disk, in the folder\r\n" +
                     ours + "\r\n\r\nDo you wish to delete them now?",
                 answer, fake::AsksYesNo);
        OfferToRemoveLeftoverDummies();
        EXPECT_EQ(answer == ui::AnswerNo, fake::At(ours + "\\_nw_dummy1") != nullptr);
    }
    OfferToRemoveLeftoverDummies(); // nothing of ours any more
    EXPECT_EQ(4u, Dummies().size());
    EXPECT_EQ((Paths{ours + "\\_nw_dummy_notes.txt"}), fake::FilesBelow(ours));
}

TEST_F(FreeSpaceTest, NoCallThatFailsLeavesADummy) {
    for (const auto fault : {Fault::AccessDenied, Fault::DiskFull}) {
        bool failed = true;
        for (int n = 1; failed && !HasFailure(); ++n) {
            SCOPED_TRACE(n);
            Begin(2 * MiB);
            user.AnswerOthers = [](const fake::BoxSeen& box) {
                return box.Buttons == ui::Buttons::YesNo ? ui::AnswerYes : ui::AnswerOK;
            };
            ChooseDrive(strQuestion);
            fake::FailNth(n, fault);
            fake::Click(frmMain.cmdLargePurge[2]);
            failed = fake::HasFailed();
            fake::FailNth(0, fault);
            ExpectRest();
            EXPECT_EQ("somebody's", fake::ContentOf("D:\\docs\\letter.txt"));
            ASSERT_LT(n, 3000);
        }
        user.Reset();
    }
}

} // namespace
