// The commands on whole drives through the real windows, on a small drive that really fills up.
// NW_SMALL_DRIVE names it ("T:\"); everything on it is destroyed.
#include "platform/Drives.h"
#include "windows/Environment.h"
#include "windows/WindowTest.h"

#include <fstream>
#include <iterator>

using namespace driver;

struct DrivesTest : WindowTest {
    const std::string root = Environment(L"NW_SMALL_DRIVE");
    std::uint64_t freeBefore = 0;

    void SetUp() override {
        if (root.empty())
            GTEST_SKIP() << "no small drive could be mounted (NW_SMALL_DRIVE is not set)";
        WindowTest::SetUp();
        freeBefore = FreeBytes();
        ASSERT_GT(freeBefore, 1U << 20);
        ASSERT_LT(freeBefore, 1U << 30) << root << " is too large to be a scratch drive";
    }
    std::uint64_t FreeBytes() const {
        std::uint64_t free = 0, total = 0;
        EXPECT_FALSE(Failed(platform::ReadDriveSpace(root, free, total)));
        return free;
    }
    void ChooseDrive(const std::string& title) const {
        HWND chooser = Window(title);
        Choose(chooser, "lstDrives", root.substr(0, 2));
        Click(chooser, "cmdOK");
    }
    /// Up to the question whether to go on when the drive is full.
    void FillFreeSpace() const {
        Click(main, "cmdLargePurge(2)");
        ChooseDrive("Purge free space on which drive?");
        AnswerBox("Purge free space", "", IDOK);
        EXPECT_TRUE(WaitUntil([&] { return FreeBytes() == 0; })) << FreeBytes();
    }
    void ExpectEnd(const std::string& message) {
        Expect(main, "lblLargePurgeMessage", message);
        ExpectUsable(main, "cmdQuit");
    }
};

TEST_F(DrivesTest, FreeSpaceIsPurged) {
    FillFreeSpace();
    AnswerBox("Purge free space", "", IDOK);
    AnswerBox("Purge free space", "The free space has been purged.", IDOK);
    ExpectEnd("The free space has been purged.");
    EXPECT_GE(freeBefore, FreeBytes());
    EXPECT_LT(freeBefore - FreeBytes(), 1U << 20) << "more than NTFS's table of files has grown";
}

TEST_F(DrivesTest, TheEndOfTheSessionLeavesNoDummies) {
    FillFreeSpace();
    Window("Purge free space"); // whether to go on
    EndSession();
    EXPECT_EQ(freeBefore, FreeBytes());
}

TEST_F(DrivesTest, ADiskIsPurged) {
    std::filesystem::create_directory(root + "folder");
    for (const char* name : {"top.txt", "second.txt", "folder\\below.txt", "pagefile.sys"})
        std::ofstream(root + name) << std::string(5000, 's');

    Click(main, "cmdLargePurge(1)");
    ChooseDrive("Purge (wipe) which drive?");
    // Speed, estimate, plan, files, folders, no boxes.
    for (const int answer : {IDOK, IDOK, IDOK, IDNO, IDNO, IDYES})
        AnswerBox("Purge disk", "", answer);
    ExpectEnd("The disk has been purged (except for excluded files).");
    EXPECT_TRUE(std::filesystem::remove(root + "pagefile.sys"));
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(root), {})) << "but the folder";
    EXPECT_TRUE(std::filesystem::remove(root + "folder")) << "it is not empty";
    EXPECT_EQ(freeBefore, FreeBytes());
}
