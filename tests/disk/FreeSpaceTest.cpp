// "Purge free space" from the click to the last box.
#include "FreeSpaceTest.h"
#include "disk/LeftoverDummies.h"
#include "report/run/Run.h"
#include "settings/frmPurgeConfirmation.h"

TEST_F(FreeSpaceTest, FillsToTheLastClusterPurgesAndLeavesNothing) {
    const std::uint64_t freeBefore = fake::drives['D'].Free();
    std::uint64_t freeThen = 1;
    Paths filesThen, lines;
    fake::drives['D'].Nature.Protected = true;
    user.Modal(frmDrives, [] {
        EXPECT_FALSE(frmDrives.chkOverwriteNames.Visible || frmDrives.chkVerifyPurge.Value == 1);
        fake::Choose(frmDrives.lstDrives, frmDrives.lstDrives.Items.back().Text);
        fake::Click(frmDrives.chkVerifyPurge);
        fake::Click(frmDrives.cmdOK);
    });
    user.BoxLike(strTitle, "the dummy files will be read back and compared.");
    Written(strThree, [&] {
        fake::PressF10(); // the answer to the box counts
        freeThen = fake::drives['D'].Free();
        filesThen = fake::FilesBelow("D:\\" + Dummies()[0]);
    });
    user.Box(strTitle, strPurged, fake::Informs);
    for (const char* call :
         {"ReadDriveSpace", "ReadClusterFacts", "ReadVolumeFacts", "OpenFile", "CloseFile"})
        fake::Watch(call, [=](const std::string& path) { // the drive may have to spin up
            EXPECT_TRUE(user.InLongStep || path.starts_with("C:\\")) << call << " " << path;
            fake::Advance(10'000); // and is never known to be quick
        });
    fake::Watch("WriteBytes", [&](const std::string&) {
        lines.push_back(frmMain.lblLargePurgeMessage.Caption);
        lines.push_back(frmMain.lblStatus.Caption);
    });
    Click();
    EXPECT_EQ(0u, freeThen);
    ASSERT_EQ(4u, filesThen.size()); // with the marker
    EXPECT_EQ(freeBefore, fake::drives['D'].Free());
    EXPECT_EQ("somebody's", fake::ContentOf("D:\\docs\\letter.txt"));
    EXPECT_EQ(strPurged, frmMain.lblLargePurgeMessage.Caption);
    EXPECT_TRUE(frmPurgeConfirmation.chkVerifyPurge.Value == 1 && purgeOptions.Verify);
    for (const char* part : {"once.\r\nWith \"Verify by reading back\".\r\nRestore points that",
                             "\r\nDummy files verified by reading back from the disk: 3\r\n"})
        EXPECT_NE(frmReport.txbText.Text.find(part), std::string::npos) << part;
    for (const char* line :
         {"3 dummy files are being written to fill the disk in Drive D.\r\nTo interrupt this "
          "operation press the F10 key twice\r\nand wait for the 'Cancel' query.\r\n",
          "Written: 1 MB (1%)   To be written: 119 MB",
          "3 dummy files are being purged.\r\nTo stop the current dummy file purge, press the F10 "
          "key twice."})
        EXPECT_NE(lines.end(), std::find(lines.begin(), lines.end(), line)) << line;
    // Null bytes, flushed, then the purge's bytes over all of each, flushed; then it goes. The
    // folder's own records reach the disk before it goes.
    const std::string folder = filesThen[0].substr(0, filesThen[0].rfind('\\'));
    EXPECT_EQ("create\nwrite 0+52428800 00\nflush\nwrite 0+52428800 *\nflush\nremove\n",
              fake::JournalText(folder + "\\_nw_dummy1"));
    EXPECT_EQ("make folder\nflush\nremove folder\n", fake::JournalText(folder));
}

TEST_F(FreeSpaceTest, TheEndOfTheSessionStopsItWithoutABox) {
    for (const bool blnPurging : {false, true}) {
        AnnounceThree();
        if (blnPurging)
            Written(strThree);
        user.During([=] { return blnPurging ? IsPurging() : FillDisk.lngFilesWritten == 1; },
                    [] { user.Ending = blnStop = true; });
        Click();
        EXPECT_EQ(blnPurging ? 3 : 2, FillDisk.lngFilesWritten);
        EXPECT_EQ(strStopped, frmMain.lblLargePurgeMessage.Caption);
    }
}

TEST_F(FreeSpaceTest, RefusesWhatCannotBeFilled) {
    using platform::DriveType;
    const std::tuple<DriveType, bool, bool, std::uint64_t, const char*> cases[] = {
        {DriveType::Removable, false, false, MiB, "There is no disk in Drive D."},
        {DriveType::CdRom, false, false, MiB, "There is no CD-ROM in Drive D."},
        {DriveType::Remote, true, false, MiB,
         "Drive D is a network drive.\r\nOnly the drives of this computer itself can be purged."},
        {DriveType::Fixed, true, true, MiB,
         "The disk in Drive D is read-only.\r\nNothing on it can be purged."},
        {DriveType::Fixed, true, false, 0, "There is no free space on the disk in Drive D."},
    };
    for (const auto& [type, medium, readOnly, free, text] : cases) {
        Begin(120 * MiB);
        LeaveFree(free);
        fake::Drive& drive = fake::drives['D'];
        drive.Type = type;
        drive.MediaPresent = medium;
        drive.ReadOnly = readOnly;
        ChooseDrive(strQuestion);
        user.Box(strTitle, text, fake::Warns);
        Click();
    }
    // Of so many files FAT32 could not hold the names in one folder: larger ones there.
    for (const auto& [system, files] : {std::pair{"exFAT", "1,342,178"}, {"FAT32", "65,536"}}) {
        Begin(std::uint64_t{64} << 40);
        fake::drives['D'].FileSystem = system;
        ChooseDrive(strQuestion);
        user.BoxLike(strTitle, std::string(" free.\r\n\r\n") + files + " dummy", ui::AnswerCancel);
        Click();
    }
    // The chooser's Cancel, the warning about the system's drive, and no library. What was purged
    // last can still be saved.
    currentRun.strStarted = currentRun.strHead = "last";
    currentRun.State = RunState::Stopped;
    user.Modal(frmDrives, [] { fake::Click(frmDrives.cmdCancel); });
    Click();
    fake::AddDrive('X', 1).StandsFor = "C:\\Users";
    for (const char letter : {'C', 'X'}) {
        ChooseDrive(strQuestion, letter);
        user.BoxLike(strTitle, std::string("Windows runs from Drive ") + letter, ui::AnswerCancel);
        Click();
    }
    fake::auxiliaryLibrary = Fault::NotFound;
    user.BoxLike("Error", "nwaux6.dll");
    Click();
    EXPECT_TRUE(fake::journal.empty());
    EXPECT_TRUE(currentRun.strHead == "last" && currentRun.State == RunState::Stopped);
}

TEST_F(FreeSpaceTest, F10AsksWhileWritingAndBetweenTwoPurgedFiles) {
    const std::string cancel = "Do you wish to cancel this operation?";
    AnnounceThree();
    PressF10When([] { return FillDisk.lngBytesInCurrentFile > 0; });
    user.Box("Cancel?", cancel, ui::AnswerNo, fake::AsksYesNo);
    PressF10When([] { return FillDisk.lngFilesWritten == 1; });
    user.Box("Cancel?", cancel, ui::AnswerYes, fake::AsksYesNo);
    user.Box(strTitle, strStopped);
    Click();
    const std::string next = "Click 'OK' to continue with the next file\r\n"
                             "or click 'Cancel' to terminate this operation.";
    for (const bool goOn : {false, true}) {
        AnnounceThree();
        fake::FailAlways("FlushBytes", "", Fault::NotSupported); // a device may not know a flush
        Written(strThree);
        PressF10When(IsPurging);
        user.Box(strTitle, PurgedText(0, 3, next), goOn ? ui::AnswerOK : ui::AnswerCancel,
                 fake::AsksOKCancel);
        if (goOn) { // during the last file: the first, stopped one, and this one are unpurged
            PressF10When([] { return FillDisk.lngFilesPurged == 1 && IsPurging(); });
            user.Box(strTitle, PurgedText(1, 3, next));
        }
        user.Box(strTitle, goOn ? std::string(strPurged) +
                                      "\r\n2 dummy files were not purged to the end:\r\n"
                                      "that space was overwritten with null bytes."
                                : strStopped);
        Click();
    }
    // After the last one all have had their turn, also one that failed.
    AnnounceThree();
    Written(strThree, [] { fake::FailNth(1, Fault::WriteFault, "WriteBytes"); });
    user.BoxLike(strTitle, "Error -3 when purging _nw_dummy1.", ui::AnswerYes);
    PressF10When([] { return FillDisk.lngFilesPurged == 2; });
    user.BoxLike(strTitle, "One dummy file was not purged to the end:");
    Click();
    // While it is deleted it is too late. A folder that is not empty at once is tried again.
    AnnounceOne();
    Written(strOne, [] { // what somebody links there is his
        fake::PutName("D:\\" + Dummies()[0] + "\\_nw_dummy9", "D:\\docs\\letter.txt");
    });
    fake::Watch("RemoveFolder", [](const std::string&) { fake::PressF10(); });
    fake::FailNth(1, Fault::NotEmpty, "RemoveFolder");
    user.Box(strTitle, strPurged);
    Click();
    EXPECT_EQ("somebody's", fake::ContentOf("D:\\docs\\letter.txt"));
}

TEST_F(FreeSpaceTest, FaultsOtherThanAFullDiskEndTheFilling) {
    // That the disk is full does not hide a fault, of the last dummy file and of what remains.
    for (const auto& [call, n] :
         {std::pair{"MakeFolder", 1}, {"WriteBytes", 1}, {"FlushBytes", 1}, {"FlushBytes", 2}}) {
        const bool full = *call == 'M';
        AnnounceOne();
        user.Box(full ? "Disk full" : "Error",
                 full ? "Unable to create a temporary folder on the disk in Drive D."
                      : "Error: The drive is not ready",
                 fake::Warns);
        fake::FailNth(n, full ? Fault::DiskFull : Fault::NotReady, call);
        Click();
        EXPECT_EQ("The free space was not purged.", frmMain.lblLargePurgeMessage.Caption);
    }
    // New files are compressed there: null bytes would never fill it.
    AnnounceThree();
    fake::Watch("ReadAttributes", [](const std::string& path) {
        fake::At(path)->Attributes |= platform::AttributeCompressed;
    });
    user.BoxLike("Error", "compresses");
    Click();
    // A last write that ends inside a cluster is taken back to whole ones: to purge such a file
    // would need space that a full disk does not have.
    AnnounceOne();
    fake::FailAlways("WriteBytes", "", Fault::DiskFull,
                     [] { return fake::drives['D'].Free() == 4096; });
    Written("2 dummy files have been written.", [] {
        const std::string file = "D:\\" + Dummies()[0] + "\\_nw_dummy1";
        EXPECT_EQ(20 * MiB - 2 * 4096, fake::At(file)->Data.Length()); // letter.txt has one, too
    });
    user.Box(strTitle, strPurged, fake::Informs);
    Click();
}

TEST_F(FreeSpaceTest, DummiesThatCannotBeDeletedAreOfferedAtTheNextStart) {
    AnnounceOne();
    Fault removal = Fault::None;
    fake::OnCall("RemoveFile", [&](const std::string&) { return removal; });
    Written(strOne, [&] { removal = Fault::AccessDenied; });
    user.BoxLike(strTitle, "Error -4 when purging _nw_dummy1.\r\nDo you wish to continue",
                 ui::AnswerYes);
    user.BoxLike(strTitle, "The unpurged dummy file will now be deleted.");
    user.BoxLike("Error", "Not all dummy files could be deleted.");
    user.BoxLike(strTitle, "One dummy file was not purged to the end:");
    fake::Click(frmMain.cmdLargePurge[2]);
    ASSERT_EQ(1u, Dummies().size());
    EXPECT_TRUE(frmMain.fraMenu.Enabled);
    removal = Fault::None;
    fake::Watch("RemoveFile", [](const std::string&) { EXPECT_FALSE(frmMain.fraMenu.Enabled); });

    user.BoxLike("Dummy files found",
                 "A purge of free space was interrupted before its dummy files ", ui::AnswerYes);
    OfferToRemoveLeftoverDummies();
    ExpectRest();
}
