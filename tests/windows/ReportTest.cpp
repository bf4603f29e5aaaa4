// Purges in the real report window: to the end, paused, continued, stopped, interrupted.
#include "support/StrProc.h"
#include "win32/Wide.h"
#include "windows/WindowTest.h"

#include <algorithm>

using namespace driver;

struct ReportTest : WindowTest {
    std::vector<std::string> files;
    int filesBefore = 0; ///< a run

    void SetUp() override {
        WindowTest::SetUp();
        for (const char* folder : {"data\\\xE6\x96\x87", "data\\below\\", "data\\below\\deep\\"})
            for (int i = 10; i < 24; ++i) {
                files.push_back(folder + std::to_string(i) + ".txt");
                Put(files.back(), std::string(2 << 20, 's'));
            }
        SpecifyFolder("data", IDYES);
        Click(main, "cmdSubdirectories");
        Expect(main, "lblSubdirectories", "Yes");
    }
    HWND StartRun() {
        filesBefore = FilesLeft();
        StartPurge();
        return Window("Purge files");
    }
    int FilesLeft() { return static_cast<int>(std::count_if(files.begin(), files.end(), Exists)); }
    void ExpectStopped(HWND report) {
        ExpectUsable(main, "cmdQuit");
        EXPECT_EQ("Stopped", TextOf(Named(report, "lblPausedDone")));
        const std::string text = TextOf(Named(report, "txbText"));
        const int purged = filesBefore - FilesLeft();
        if (purged != 1) { // the count of one file alone is not written
            EXPECT_NE(std::string::npos,
                      text.find("Number of files purged: " + std::to_string(purged) + "\r\n"))
                << text;
        }
        EXPECT_NE(std::string::npos, text.find("Purge operation was stopped."));
        // The lines in the window changed at their ends, again and again, and are right.
        EXPECT_EQ(purged, CountOccurrences(text, " (2,097,152 bytes) purged\r\n")) << text;
        EXPECT_GT(FilesLeft(), 0);
    }
};

TEST_F(ReportTest, PauseContinueStop) {
    HWND report = StartRun();
    EXPECT_FALSE(IsUsable(Named(report, "cmdStop")));
    Click(report, "cmdPauseContinue");
    Expect(report, "lblPausedDone", "Paused");
    Expect(report, "cmdPauseContinue", "Co&ntinue");
    const int left = FilesLeft();
    EXPECT_GT(left, 0);
    EXPECT_FALSE(SendMessageW(main, WM_QUERYENDSESSION, 0, 0)) << "Windows must not shut down now";
    SendMessageW(main, WM_ENDSESSION, FALSE, 0);
    Click(report, "cmdPauseContinue");
    ASSERT_TRUE(WaitUntil([&] { return FilesLeft() < left; })) << Describe();
    Click(report, "cmdPauseContinue");
    Click(report, "cmdStop");
    ExpectStopped(report);
    EXPECT_TRUE(SendMessageW(main, WM_QUERYENDSESSION, 0, 0));
}

TEST_F(ReportTest, EscapeDoesNotEndIt) {
    Put("data\\two names.exe", "kept");
    const auto path = [](const char* name) { return platform::Widen(scratch + "\\" + name); };
    ASSERT_TRUE(
        CreateHardLinkW(path("other").c_str(), path("data\\two names.exe").c_str(), nullptr));
    StartPurge();
    Click(Window("File-monitoring software query"), "cmdNo");
    HWND box = Window("Purge query");
    HWND focus = Focused(box);
    PressKey(box, VK_ESCAPE);
    PressKey(box, VK_TAB); // once this has been seen, Escape has
    ASSERT_TRUE(WaitUntil([&] { return Focused(box) != focus; })) << Describe();
    AnswerBox("Purge query", "", IDYES); // to the extension; what follows is about the other name
    AnswerBox("Purge query", "", IDNO);
    HWND report = Window("Purge files");
    PressKey(report, VK_ESCAPE);
    Expect(report, "lblPausedDone", "Done");
    EXPECT_EQ(0, FilesLeft());
    EXPECT_EQ("kept", ContentOf("other"));
}
