// Names and places through the real windows: what was chosen goes, and nothing else.
#include "win32/Wide.h"
#include "windows/WindowTest.h"

using namespace driver;

using PlacesTest = WindowTest;

TEST_F(PlacesTest, AShortNameIsShownAsItIsOnTheDisk) {
    Put("A long name\\a.txt", "secret");
    wchar_t name[MAX_PATH] = L"";
    GetShortPathNameW(InScratch("A long name").c_str(), name, MAX_PATH);
    const std::string shortName =
        platform::Narrow(std::filesystem::path(name).filename().wstring());
    if (shortName.empty() || shortName == "A long name")
        GTEST_SKIP() << "there are no short names here";
    Click(main, "cmdSpecifyDirectory(0)");
    AnswerDialog("Specify folder containing files to be purged", scratch + "\\" + shortName);
    AnswerBox("Specify folder", "Do you wish to purge ALL files in " + scratch + "\\A long name\\?",
              IDYES);
    Expect(main, "lblDirectory", scratch + "\\A long name\\");
    StartPurge();
    Expect(Window("Purge files"), "lblPausedDone", "Done");
    EXPECT_FALSE(Exists("A long name\\a.txt"));
}

// While the questions before a run stand, nobody can put another folder in the place of the chosen
// one; before them, it is noticed.
TEST_F(PlacesTest, TheChosenFolderIsHeldAndKnown) {
    Put("data\\a.txt", "secret");
    SpecifyFolder("data", IDYES);
    Click(main, "cmdProcessFiles(1)");
    HWND options = Window("Purge options");
    const std::filesystem::path data = InScratch("data"), moved = InScratch("moved");
    EXPECT_FALSE(MoveFileW(data.c_str(), moved.c_str()));
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, GetLastError());
    Click(options, "cmdCancel");
    AnswerBox("Purge cancelled", "No files purged.", IDOK);
    ExpectUsable(main, "cmdQuit");
    EXPECT_TRUE(WaitUntil([&] { return MoveFileW(data.c_str(), moved.c_str()); }));
    Put("data\\a.txt", "another");
    Click(main, "cmdProcessFiles(1)");
    AnswerBox("Error",
              scratch + "\\data\\ is not the folder any more that was chosen.\r\n"
                        "Please choose the folder again.",
              IDOK);
    EXPECT_EQ("another", ContentOf("data\\a.txt"));
    EXPECT_EQ("secret", ContentOf("moved\\a.txt"));
}
