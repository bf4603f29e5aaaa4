// A run of some length in the real report window: paused, continued, stopped, interrupted.
#include "windows/Driver.h"

using namespace driver;

struct ReportTest : WindowTest {
    static constexpr int files = 40;

    void SetUp() override {
        WindowTest::SetUp();
        const std::string content(2 << 20, 's');
        for (int i = 0; i < files; ++i) {
            const char* folder = i < 14   ? "data\\"
                                 : i < 27 ? "data\\below\\"
                                          : "data\\below\\deep\\";
            Put(folder + std::to_string(100 + i) + ".txt", content);
        }
        Click(main, "cmdSpecifyDirectory(0)");
        AnswerDialog("Specify folder containing files to be purged", scratch + "\\data");
        AnswerBox("Specify folder", "", IDYES);
        EXPECT_TRUE(Shows(main, "lblFiles", "*.*"));
        Click(main, "cmdSubdirectories");
        EXPECT_TRUE(Shows(main, "lblSubdirectories", "Yes"));
    }
    static bool Shows(HWND form, const std::string& control, const std::string& text) {
        return WaitUntil([&] { return TextOf(Named(form, control)) == text; });
    }
    int filesBefore = 0; ///< a run
    HWND StartPurge() {
        filesBefore = FilesLeft();
        Click(main, "cmdProcessFiles(1)");
        Click(Window("Purge options"), "cmdDoPurge");
        AnswerBox("Purge files", "", IDYES);
        Click(Window("File-monitoring software query"), "cmdNo");
        return Window("Purge files");
    }
    static int FilesLeft() {
        int left = 0;
        for (int i = 0; i < files; ++i)
            for (const char* folder : {"data\\", "data\\below\\", "data\\below\\deep\\"})
                left += Exists(folder + std::to_string(100 + i) + ".txt") ? 1 : 0;
        return left;
    }
    void ExpectStopped(HWND report) {
        EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); })) << Describe();
        EXPECT_EQ("Stopped", TextOf(Named(report, "lblPausedDone")));
        const std::string text = TextOf(Named(report, "txbText"));
        const int purged = filesBefore - FilesLeft();
        if (purged != 1) { // the count of one file alone is not written
            EXPECT_NE(std::string::npos,
                      text.find("Number of files purged: " + std::to_string(purged) + "\r\n"))
                << text;
        }
        EXPECT_NE(std::string::npos, text.find("Purge operation was stopped.")) << text;
        // The lines in the window changed at their ends, again and again, and are right.
        int lines = 0;
        for (std::size_t at = 0; (at = text.find(" bytes) purged\r\n", at)) != std::string::npos;
             ++at)
            ++lines;
        EXPECT_EQ(purged, lines) << text;
    }
};

TEST_F(ReportTest, PauseContinueStop) {
    HWND report = StartPurge();
    ASSERT_NE(nullptr, report);
    EXPECT_FALSE(IsUsable(Named(report, "cmdStop")));
    Click(report, "cmdPauseContinue");
    EXPECT_TRUE(Shows(report, "lblPausedDone", "Paused"));
    EXPECT_EQ("Continue", CaptionOf(Named(report, "cmdPauseContinue")));
    ASSERT_TRUE(WaitUntil([&] { return IsUsable(Named(report, "cmdStop")); }));
    const int left = FilesLeft();
    EXPECT_GT(left, 0);
    EXPECT_FALSE(SendMessageW(main, WM_QUERYENDSESSION, 0, 0)) << "Windows must not shut down now";
    SendMessageW(main, WM_ENDSESSION, FALSE, 0);

    Click(report, "cmdPauseContinue");
    ASSERT_TRUE(WaitUntil([&] { return FilesLeft() < left; })) << Describe();
    Click(report, "cmdPauseContinue");
    ASSERT_TRUE(WaitUntil([&] { return IsUsable(Named(report, "cmdStop")); })) << Describe();
    Click(report, "cmdStop");
    ExpectStopped(report);
    EXPECT_GT(FilesLeft(), 0);
    EXPECT_TRUE(SendMessageW(main, WM_QUERYENDSESSION, 0, 0));
}

TEST_F(ReportTest, F10AndClosingInterrupt) {
    HWND report = StartPurge();
    ASSERT_NE(nullptr, report);
    PressKey(report, VK_F10);
    ExpectStopped(report);
    Click(report, "cmdClose");
    ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(report); }));

    report = StartPurge();
    ASSERT_NE(nullptr, report);
    CloseByCross(report);
    EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); })) << Describe();
    EXPECT_FALSE(IsWindowVisible(report));
    Click(main, "cmdReportScreen");
    EXPECT_EQ(report, Window("Purge files"));
    ExpectStopped(report);
}
