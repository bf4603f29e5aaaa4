// "Test purge speed" from the click to the result.
#include "DriveTest.h"

#include "disk/SpeedTest.h"

namespace {

const char* const strTitle = "Test purge speed";
const char* const strQuestion =
    "This writes a test file to a selected drive and then purges it to test the purge speed for "
    "that drive so as to get an approximate estimate of purge time required for other files."
    "\r\n\r\nDo you wish to proceed with this test?";

struct SpeedTestTest : DriveTest {
    static void Accept() {
        user.Box(strTitle, strQuestion, ui::AnswerYes, fake::AsksYesNo);
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
    EXPECT_EQ(5.0 * MiB, dblBytesMeasured[3]);
    EXPECT_EQ("0.500 MB/sec. (1 overwrite) for Drive D.", frmMain.lblPurgeSpeed.Caption);
    EXPECT_TRUE(frmMain.lblPurgeSpeed.Bold);
}

TEST_F(SpeedTestTest, AFloppyDriveHasItsOwnQuantityAndText) {
    fake::drives.erase('C');
    fake::drives.erase('D');
    fake::AddDrive('A', 1474560, 512, platform::DriveType::Removable).BytesPerSecond = MiB;
    SetPasses(3);
    user.Box(strTitle,
             "This writes a test file to Drive A and then purges it to test the purge speed "
             "so as to get an approximate estimate of purge time required for other files."
             "\r\n\r\nDo you wish to proceed with this test?",
             ui::AnswerYes);
    user.Box(strTitle,
             "The purge speed is approximately 0.750 MB/sec. for a single overwrite.\r\n\r\n"
             "It thus requires, using the type of purge currently specified "
             "(3 passes = 3 overwrites), approximately\r\n"
             "6 seconds to purge a full floppy disk.\r\n\r\n"
             "To decrease the time required change the type of purge so as to decrease the "
             "number of overwrites.");
    Click();
    EXPECT_EQ(1.0 * MiB, dblBytesMeasured[0]);
    fake::drives.clear();
    user.Box(strTitle, "Cannot find any disk drive.");
    Click();
}

TEST_F(SpeedTestTest, RefusesAndFailsWithoutTouchingTheOldSpeed) {
    const std::string ascertain = "An error occurred when attempting to ascertain\r\n"
                                  "information about the disk in Drive D.  ";
    const std::string failed = "An error occurred when purging the dummy files.\r\n"
                               "The test cannot be completed.";
    struct Case {
        std::uint64_t free;
        const char* call;
        int n;
        Fault fault;
        std::string text;
    };
    const Case cases[] = {
        {0, "", 0, Fault::None,
         "There is no free space on the disk in Drive D.\r\n"
         "At least 1 MB of free space is required for this test."},
        {1048576 - 4096, "", 0, Fault::None,
         "Drive D has only 1,044,480 bytes free.\r\n"
         "At least 1 MB of free space is required for this test."},
        {10 * MiB, "ReadDriveSpace", 3, Fault::NotReady, ascertain},
        {10 * MiB, "MakeFolder", 1, Fault::AccessDenied, failed},
        {10 * MiB, "WriteBytes", 2, Fault::WriteFault, failed},
        {10 * MiB, "AuxiliaryChangeFileSize", 1, Fault::AccessDenied, failed},
    };
    for (const Case& c : cases) {
        Begin(120 * MiB);
        LeaveFree(c.free);
        sngPurgeSpeeds[3] = 7;
        Accept();
        user.Box(strTitle, c.text, fake::Warns);
        fake::FailNth(c.n, c.fault, c.call);
        Click();
        EXPECT_EQ(7, sngPurgeSpeeds[3]) << c.text;
    }
    // A floppy disk nearly full; F10 ends the test without a further box.
    fake::Drive& floppy = fake::AddDrive('B', 1474560, 512, platform::DriveType::Removable);
    floppy.Occupied = floppy.Free() - 100352;
    float sngSpeed = 0;
    user.Box(strTitle, "Drive B has only 100,352 bytes free.\r\n"
                       "At least 128 KB of free space is required for this test.");
    EXPECT_FALSE(TestPurgeSpeed('B', true, sngSpeed));
    Begin(120 * MiB);
    Accept();
    PressF10When([] { return FillDisk.lngBytesInCurrentFile > 0; });
    user.Box("Cancel?", "Do you wish to cancel this operation?", ui::AnswerYes);
    Click();
}

TEST_F(SpeedTestTest, WritesMoreOnALargeDriveAndWhatFitsOnASmallOne) {
    for (const auto& [free, written] :
         {std::pair<std::uint64_t, double>{6ULL << 30, 10.0 * MiB}, {3 * MiB, 3.0 * MiB}}) {
        Begin(8ULL << 30);
        LeaveFree(free);
        float sngSpeed = 0;
        EXPECT_TRUE(TestPurgeSpeed('D', false, sngSpeed));
        EXPECT_EQ(written, dblBytesMeasured[3]);
        EXPECT_GT(sngSpeed, 0);
        EXPECT_TRUE(Dummies().empty());
    }
}

} // namespace
