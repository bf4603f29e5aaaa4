// Listing and counting runs, the estimates, and the report window by itself.
#include "report/RunTest.h"

constexpr char strHint[] =
    "For an estimate of the purge time test the purge speed for Drive C\nthen relist the files.";

static void PutTree() {
    blnSubdirectories = true;
    fake::PutFile("C:\\d\\sub\\deep\\c.txt", "123");
    fake::PutFile("C:\\d\\a.txt", std::string(1234, 'x'));
    fake::PutFile("C:\\d\\b.doc", "");
    fake::PutFile("C:\\out\\o.txt", "x");
    fake::PutFolder("C:\\d\\junction").LinkTarget = "C:\\out";
    fake::PutFile("C:\\d\\link.txt").LinkTarget = "C:\\out\\o.txt";
}

TEST_F(RunTest, ListsFoldersAndFiles) {
    PutTree();
    EXPECT_EQ(List(true, true), std::string(R"(
C:\d\
C:\d\a.txt (1,234 bytes)   
C:\d\b.doc (0 bytes)   
C:\d\link.txt: a link, not purged.

C:\d\sub\deep\
C:\d\sub\deep\c.txt (3 bytes)   
C:\d\junction\: a link, not purged.
Number of files: 3

Sum of file sizes: 1.21 KB
)") + strHint);
    EXPECT_EQ(List(true, false, "*.txt"), std::string(R"(
C:\d\
C:\d\sub\deep\
C:\d\junction\: a link, not purged.
Number of files *.txt: 2

Sum of file sizes: 1.21 KB
)") + strHint);
    blnSubdirectories = false;
    EXPECT_EQ(List(true, true, "a.txt"),
              std::string("\nC:\\d\\\nC:\\d\\a.txt (1,234 bytes)   \n") + strHint);
    EXPECT_EQ(List(true, false, "a.txt"), std::string("\nC:\\d\\\n") + strHint);
    EXPECT_EQ(List(false, false),
              std::string("Number of files: 2\n\nSum of file sizes: 1.21 KB\n") + strHint);
    EXPECT_FALSE(frmReport.lblDots.Visible);
    fake::At("C:\\d")->Denied = true;
    EXPECT_EQ(List(false, false),
              "Number of files: 0\nFolders that could not be read: 1\n\nWarnings: "
              "1\nC:\\d\\: could not be read completely: Access was denied.\n");
}

TEST_F(RunTest, DotsPauseAndStop) {
    PutTree();
    const auto goOnAndStop = [] {
        EXPECT_EQ(frmReport.txbText.SelStart, frmReport.txbText.Text.size());
        fake::Click(frmReport.cmdPauseContinue);
        EXPECT_TRUE(frmReport.lblDots.Visible);
        EXPECT_EQ(frmReport.cmdPauseContinue.Caption, "Pause");
        fake::Click(frmReport.cmdStop);
    };
    const auto pause = [&] {
        EXPECT_TRUE(frmReport.lblDots.Visible);
        frmReport.txbText.SelStart = 0; // a pause brings the end of the text back
        fake::Click(frmReport.cmdPauseContinue);
        EXPECT_FALSE(frmReport.lblDots.Visible);
        user.During([] { return user.TaskbarPaused; }, goOnAndStop);
    };
    user.During([] { return frmReport.txbText.Text == " ."; }, pause);
    EXPECT_EQ(List(false, false), "\nFile listing was stopped.\n");
    EXPECT_TRUE(blnStop);
}

TEST_F(RunTest, AFullReportEndsAListing) {
    for (int i = 0; i < 3000; ++i)
        fake::PutFile("C:\\d\\" + std::to_string(10000 + i) + "\xF0\x9F\x97\x91.txt");
    user.Box("Report buffer full",
             "The output report buffer has been filled, so this report cannot continue.",
             ui::AnswerOK, {ui::Icon::None, ui::Buttons::OK, {}});
    // Every line has 31 UTF-16 units, what stands above them 9. The last 1,024 are cut off, and
    // the line that this breaks.
    const std::int64_t lines = (lngMaxReportText - 9) / 31 + 1;
    const std::string last = std::to_string(10000 + (31 * lines - 1024) / 31 - 1);
    const std::string report = List(true, true), end = report.substr(report.find(last));
    EXPECT_THAT(end, StartsWith(last +
                                "\xF0\x9F\x97\x91.txt (1 bytes)   \n\n"
                                "The output report buffer was filled.\n"
                                "Note: Some files were not listed.\n\n"
                                "Number of files: " +
                                GroupedDigits(lines)));
    EXPECT_THAT(end, Not(HasSubstr("stopped"))); // nobody did
    EXPECT_EQ(frmReport.lblPausedDone.Caption, "Done");
}

TEST_F(RunTest, DotsDoNotFillTheReport) {
    const int folders = lngMaxReportText / 2 + 10; // two characters each
    for (int i = 0; i < folders; ++i)
        fake::PutFile("C:\\d\\" + std::to_string(i) + "\\f", "");
    blnSubdirectories = true;
    EXPECT_EQ(List(false, false),
              "Number of files: " + GroupedDigits(folders) + "\n\nSum of file sizes: 0 bytes\n");
}

TEST_F(RunTest, EstimatesAfterAListing) {
    fake::PutBigFile("C:\\d\\a.txt", std::uint64_t{20} << 20);
    sngPurgeSpeeds[2] = 0.5F;
    EXPECT_EQ(List(false, false), "Purge type: random bytes once\n"
                                  "Estimated purge time: less than a minute.\n");
    SetPasses(2);
    const std::string report = List(false, false);
    EXPECT_THAT(report, StartsWith(R"(Purge type: random bytes twice
Estimated purge time: 40s

Estimated purge times for various numbers of overwrites
using a purge speed (as measured) of 0.50 MB/sec
and an adjustment factor of 0.50:
1 overwrite:  20s
2 overwrites: 40s
4 overwrites: 1m 21s
)"));
    EXPECT_THAT(report,
                EndsWith("12 overwrites: 4m 2s\n16 overwrites: 5 minutes and 22 seconds\n18 "
                         "overwrites: 6 minutes and 3 seconds\n20 overwrites: 6 minutes and "
                         "43 seconds\n24 overwrites: 8 minutes and 4 seconds\n28 overwrites: "
                         "9 minutes and 24 seconds\n30 overwrites: 10 minutes and 4 "
                         "seconds\n"));
    // With what the speed test has found small files to take, and with reading back as one more
    // overwrite: three times 4 s for 2 MB, and 1,000 times 50 ms.
    fake::TakeAway("C:\\d\\a.txt");
    for (int i = 0; i < 1000; ++i)
        fake::PutBigFile("C:\\d\\" + std::to_string(i), 2097);
    dblSmallFileSeconds[2] = 0.05;
    purgeOptions.Verify = true;
    EXPECT_NE(List(false, false).find("Estimated purge time: 2m 42s\n\n"), std::string::npos);
    dblSmallFileSeconds[2] = 0;
    EXPECT_NE(List(false, false).find("less than a minute"), std::string::npos);
}

TEST_F(RunTest, ReportWindowCopiesAndComesBack) {
    frmReport.txbText.Text.clear();
    user.Box("Report window", "Nothing to report!", {ui::Icon::None, ui::Buttons::OK, {}});
    ShowReportAgain();
    frmReport.txbText.Text = "one\r\ntwo";
    ShowReportAgain();
    ui::SetFocus(frmReport.cmdClose);
    ui::Show(frmReport);
    EXPECT_EQ(&frmReport.txbText, user.Focus) << "a stray Enter would stop a run";
    fake::Click(frmReport.cmdCopyToClipboard);
    EXPECT_EQ(user.Clipboard, "one\r\ntwo");
    frmReport.txbText.SelStart = 5;
    frmReport.txbText.SelLength = 3;
    frmReport.txbText.MouseUp();
    fake::Click(frmReport.cmdCopyToClipboard);
    EXPECT_EQ(user.Clipboard + frmReport.lblPausedDone.Caption, "two");
    user.ClipboardHeld = true;
    fake::Click(frmReport.cmdCopyToClipboard);
    EXPECT_EQ("Not copied", frmReport.lblPausedDone.Caption);
    fake::Click(frmReport.cmdClose);
    EXPECT_FALSE(blnStop || frmReport.Visible); // no run is there to be stopped
}
