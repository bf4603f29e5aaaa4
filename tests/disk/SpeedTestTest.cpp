// "Test purge speed" from the click to the result.
#include "disk/SpeedTest.h"
#include "disk/DriveCommand.h"
#include "DriveTest.h"
#include "settings/frmPurgeConfirmation.h"

const char* const strTitle = "Test purge speed";

struct SpeedTestTest : DriveTest {
    static void Accept() {
        user.BoxLike(strTitle, "This writes a test file to a selected drive and then purges it",
                     ui::AnswerYes, fake::AsksYesNo);
        ChooseDrive("Test purge speed on which drive?");
    }
    static void Click() { Run(frmMain.cmdLargePurge[0]); }
};

TEST_F(SpeedTestTest, MeasuresOneOverwriteAlsoPastMidnight) {
    // 5 MiB written once and purged once at 1 MiB/s take 10 s.
    fake::drives['D'].BytesPerSecond = MiB;
    fake::secondsSinceMidnight = 86395;
    Accept();
    user.Box(strTitle,
             "The purge speed is approximately 0.500 MB/sec. for a single overwrite.\r\n\r\n"
             "It thus requires, using the type of purge currently specified "
             "(1 pass = 1 overwrite), approximately\r\n"
             "20 seconds to purge 10 MB, 3 minutes and 20 seconds to purge 100 MB,\r\n"
             "34 minutes and 8 seconds to purge 1 GB, 5 hours and 41 minutes to purge 10 GB,"
             "\r\nand 2 days and 8 hours to purge 100 GB.",
             fake::Informs);
    Click();
    EXPECT_NEAR(0.5, sngPurgeSpeeds[3], 0.0001);
    EXPECT_EQ(sngPurgeSpeed, sngPurgeSpeeds[3]);
    EXPECT_LT(64, std::ranges::count(fake::journal, "flush", &fake::Event::What)) << "small files";
    EXPECT_EQ("0.500 MB/sec. (1 overwrite) for Drive D.", frmMain.lblPurgeSpeed.Caption);
    EXPECT_NE(std::string::npos, fake::JournalText().find(".test: create")) << "the marker's name";
}

TEST_F(SpeedTestTest, AFloppyDriveHasItsOwnQuantityAndText) {
    fake::drives.clear();
    fake::AddDrive('A', 1474560, 512, platform::DriveType::Removable).BytesPerSecond = MiB;
    SetPasses(3);
    user.BoxLike(strTitle, "This writes a test file to Drive A and then", ui::AnswerYes);
    user.BoxLike(strTitle, "(3 passes = 3 overwrites), approximately\r\n6 seconds to purge a full "
                           "floppy disk.\r\n\r\nTo decrease the time required");
    Click();
    EXPECT_EQ(1.0 * MiB, dblBytesMeasured[0]);
    fake::drives.clear();
    user.Box(strTitle, "Cannot find any disk drive.");
    Click();
}

TEST_F(SpeedTestTest, RefusesAndFailsWithoutTouchingTheOldSpeed) {
    const std::string atLeast = "\r\nAt least 1 MB of free space is required for this test.";
    const std::tuple<std::uint64_t, const char*, int, std::string> cases[] = {
        {0, "", 0, "There is no free space on the disk in Drive D." + atLeast},
        {10 * MiB, "ReadDriveSpace", 3,
         "An error occurred when attempting to ascertain\r\n"
         "information about the disk in Drive D.  "},
        {10 * MiB, "WriteBytes", 2,
         "An error occurred when purging the dummy files.\r\nThe test cannot be completed."},
    };
    for (const auto& [free, call, n, text] : cases) {
        Begin(120 * MiB);
        LeaveFree(free);
        sngPurgeSpeeds[3] = 7;
        Accept();
        user.Box(strTitle, text, fake::Warns);
        fake::FailNth(n, Fault::AccessDenied, call);
        Click();
        EXPECT_EQ(7, sngPurgeSpeeds[3]) << text;
    }
    // A floppy disk needs less.
    fake::Drive& floppy = fake::AddDrive('B', 1474560, 512, platform::DriveType::Removable);
    floppy.Occupied = floppy.Free() - 100352;
    float sngSpeed = 0;
    user.Box(strTitle, "Drive B has only 100,352 bytes free.\r\n"
                       "At least 128 KB of free space is required for this test.");
    EXPECT_FALSE(TestPurgeSpeed('B', true, sngSpeed));
    // It writes more on a large drive, and what fits on a small one.
    for (const auto& [free, written] : {std::pair{6ULL << 30, 10 * MiB}, {3ULL << 20, 3 * MiB}}) {
        Begin(8ULL << 30);
        LeaveFree(free);
        purgeOptions.Verify = true; // would take its time, too
        fake::FailAlways("ReadBytes", "", Fault::Other);
        RunDriveCommand([&] {
            EXPECT_TRUE(TestPurgeSpeed('D', false, sngSpeed));
            return RunState::Done;
        });
        EXPECT_EQ(static_cast<double>(written), dblBytesMeasured[3]);
    }
}

TEST_F(SpeedTestTest, F10EndsItWhilePurging) {
    Accept();
    PressF10When([] { return frmMain.lblStatus.Caption.ends_with("% of purge done."); });
    Click();
}
