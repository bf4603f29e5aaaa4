// Purges in the real report window: to the end, paused, continued, stopped, interrupted, saved.
#include "support/StrProc.h"
#include "windows/Environment.h"
#include "windows/WindowTest.h"

#include <algorithm>
#include <array>
#include <fstream>

using namespace driver;
using platform::Widen;

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
    Click(report, "cmdClose");
    report = StartRun(); // a stray Enter must not press "Close" again
    EXPECT_EQ(Named(report, "txbText"), Focused(report));
}

TEST_F(ReportTest, TheEndOfTheSessionStopsIt) {
    StartRun();
    EndSession();
    EXPECT_GT(FilesLeft(), 0);
}

TEST_F(ReportTest, EscapeDoesNotEndIt) {
    Put("data\\two names.exe", "kept");
    std::filesystem::create_hard_link(InScratch("data\\two names.exe"), InScratch("other"));
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

// The saved reports stay beside the scratch folder, for tools/check-reports.py.
TEST_F(ReportTest, ItemsOfTwoDrivesAndOneInUse) {
    const auto wide = [](const std::string& path) { return std::filesystem::path(Widen(path)); };
    const std::string drive = Environment(L"NW_SMALL_DRIVE"), in = scratch + "\\";
    const std::string away = (drive.empty() ? in : drive) + "far",
                      locked = in + "locked \xE6\x96\x87.txt";
    std::filesystem::remove_all(wide(away)); // of a test that broke off
    std::filesystem::create_directories(wide(away + "\\deep"));
    Put("alone.txt", "s");
    Put("locked \xE6\x96\x87.txt", "kept");
    for (const char* name : {"\\one.txt", "\\two.txt", "\\deep\\three.txt"})
        std::ofstream(wide(away + name)) << std::string(5000, 's');
    HANDLE other =
        CreateFileW(wide(locked).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, {});
    ASSERT_NE(INVALID_HANDLE_VALUE, other);

    main = Drop(main, {in + "data\\below", in + "data", in + files.front(), in + files.back(),
                       in + "alone.txt", in + "ALONE.TXT", locked, away + "\\deep", away,
                       away + "\\one.txt", away + "\\deep\\three.txt", away + "\\two.txt"});
    Expect(main, "lblDirectory", "11 chosen items (7 files, 4 folders)");
    Click(main, "cmdSubdirectories");
    Expect(main, "lblSubdirectories", "Yes");
    StartPurge();
    HWND report = Window("Purge files");
    Expect(report, "lblPausedDone", "Done, 1 failed");
    CloseHandle(other);
    EXPECT_EQ(0, FilesLeft() + Exists("alone.txt"));
    EXPECT_EQ("kept", ContentOf("locked \xE6\x96\x87.txt"));
    std::error_code ignored; // what lay in the folders is gone, and no more
    EXPECT_TRUE(std::filesystem::remove(wide(away + "\\deep"), ignored));
    EXPECT_TRUE(std::filesystem::remove(wide(away), ignored));
    const std::string text = TextOf(Named(report, "txbText"));
    for (const std::string& line : {std::string("Number of files purged: 46\r\n"),
                                    "Files that could not be purged: 1\r\n" + locked + ": "})
        EXPECT_EQ(1, CountOccurrences(text, line)) << text;

    // The type comes with the name, or the extension with the type that is chosen.
    const std::string json = "JSON lines (*.json)";
    for (const auto& [name, typed, type] : {std::array<std::string, 3>{"report.txt", "report", ""},
                                            {"report.json", "report.JSON", ""},
                                            {"report.json", "report", json}}) {
        PressKey(report, 'S', VK_CONTROL);
        AnswerDialog("Save report", in + typed, type);
        EXPECT_TRUE(WaitUntil([&] { return ContentOf(name).ends_with('\n'); })) << Describe();
        ExpectUsable(report, "cmdSaveReport");
        std::filesystem::rename(InScratch(name), InScratch("..\\" + name));
    }
    Expect(report, "lblPausedDone", "Saved");
}
