// "Purge free space" where the free space changes meanwhile, or does not belong to the user.
#include "FreeSpaceTest.h"
#include "report/run/RunReport.h"
#include "settings/frmPurgeConfirmation.h"

TEST_F(FreeSpaceTest, DummiesAreWholeRealClustersAndAQuotaIsTold) {
    using Lengths64 = std::vector<std::uint64_t>;
    const std::string unfilled =
        "5.00 MB of free space could not be filled and may still hold old data.\r\n"
        "A disk quota or the system itself keeps it back.";
    // The quota ends in the middle of a cluster; the user has chosen smaller ones.
    Begin(20 * MiB);
    fake::PutFile("D:\\docs\\letter.txt", "");
    fake::drives['D'].KeptBack = 5 * MiB + 1000;
    user.Modal(frmPurgeConfirmation, [] {
        fake::Choose(frmPurgeConfirmation.cboClusterSize, "512 bytes");
        fake::Click(frmPurgeConfirmation.cmdDoPurge);
    });
    (void)AskPurgeOptions("D:\\", false, true);
    Announce(0, "15.00 MB", "A dummy file");
    Lengths64 lengths;
    Written(
        "2 dummy files have been written.", [&] { lengths = Lengths(); }, unfilled + "\r\n");
    user.Box(strTitle, strPurged + ("\r\n" + unfilled), fake::Informs);
    Click();
    ASSERT_EQ(2u, lengths.size());
    EXPECT_EQ(15 * MiB - 4096, lengths[0]);
    EXPECT_LE(lengths[1], 4096u);
    EXPECT_THAT(JsonOfRun(), testing::HasSubstr(R"("warnings":["5.00 MB of free space could not be)"
                                                " filled and may still hold old data. A disk"));
    // What is free belongs to others only.
    fake::drives['D'].KeptBack = 20 * MiB;
    ChooseDrive(strQuestion);
    user.BoxLike(strTitle, "There is no free space on the disk in Drive D.\r\n20.00 MB of free");
    Click();
    EXPECT_TRUE(frmReport.txbText.Text.find("no free space on") != std::string::npos);
    // Our folder takes what was free.
    Begin(8192);
    fake::Watch("WriteBytes", [](const std::string&) { fake::drives['D'].KeptBack = 8192; });
    Announce(0, "4.00 KB", "A dummy file");
    user.Box(strTitle,
             "No dummy file could be written.\r\n4.00 KB of free space could not be filled and may "
             "still hold old data.\r\nA disk quota or the system itself keeps it back.",
             fake::Warns);
    Click();
    EXPECT_EQ(frmReport.txbText.Text.find("free space has been"), std::string::npos);
    // exFAT's clusters: a dummy is as many as its size needs.
    DriveTest::SetUp();
    fake::AddDrive('D', 128 * MiB, 32 * MiB).FileSystem = "exFAT";
    Announce(0, "128.00 MB", "3 dummy files");
    Written("2 dummy files have been written.", [&] { lengths = Lengths(); });
    user.Box(strTitle, strPurged);
    Click();
    EXPECT_EQ((Lengths64{64 * MiB, 64 * MiB}), lengths);
}

TEST_F(FreeSpaceTest, SpaceThatIsFreedMeanwhileIsFilledToo) {
    Begin(500 * MiB);
    fake::Drive& drive = fake::drives['D'];
    LeaveFree(10 * MiB);
    ChooseDrive(strQuestion);
    user.BoxLike(strTitle, [&](const std::string& text) { // while this is shown
        LeaveFree(140 * MiB);
        return text.find("has 10.00 MB free") != text.npos;
    });
    std::uint64_t most = 0;
    Paths lines;
    fake::Watch("WriteBytes", [&](const std::string&) {
        const std::string& line = frmMain.lblStatus.Caption;
        if (most == 0 && drive.Free() < 20 * MiB && line[0] == 'W') {
            most = drive.Free() + 250 * MiB;
            LeaveFree(most); // a disk clean-up, or restore points that Windows gives up
        }
        if (line.find("%)") != line.npos) {
            EXPECT_LE(std::stoi(line.substr(line.find('(') + 1)), 100) << line;
        }
        lines.push_back(line);
    });
    int late = 0;
    fake::Watch("FlushRecords", [&](const std::string&) {
        if (++late <= 2)
            LeaveFree(3 * MiB);
    });
    Written("10 dummy files have been written.", [&] { EXPECT_EQ(0u, drive.Free()); });
    user.Box(strTitle, strPurged);
    Click();
    EXPECT_EQ(3, late);
    for (const char* line : {"Written: 70 MB (50%)   To be written: 70 MB",
                             "Written: 300 MB (77%)   To be written: 90 MB"})
        EXPECT_NE(lines.end(), std::find(lines.begin(), lines.end(), line)) << line;
    // Freed when cluster by cluster is written: in runs again, after a MiB of them.
    LeaveFree(10 * MiB);
    int calls = 0;
    bool freed = false;
    fake::Watch("WriteBytes", [&](const std::string&) {
        if (!freed && drive.Free() <= 65536) {
            freed = true;
            LeaveFree(30 * MiB);
        }
        ++calls;
    });
    Announce(0, "10.00 MB", "A dummy file");
    Written(strOne, [&] { EXPECT_LT(calls, 1000); });
    user.Box(strTitle, strPurged);
    Click();
    // A drive that shrinks nothing and is never full.
    LeaveFree(100 * MiB);
    int flat = 0;
    fake::FailAlways("WriteBytes", "", Fault::WriteFault, [&] {
        drive.Capacity += MiB;
        return ++flat >= 1000;
    });
    Announce(0, "100.00 MB", "2 dummy files");
    user.Box("Error", "Error: The free space does not shrink as files are written", fake::Warns);
    Click();
    EXPECT_LT(flat, 400);
}
