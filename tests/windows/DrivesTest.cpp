// The commands on whole drives through the real windows, on a small drive that really fills up.
// NW_SMALL_DRIVE names it ("T:\"); everything on it is destroyed.
#include "windows/Driver.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Folders.h"

#include <cstdlib>

using namespace driver;

struct DrivesTest : WindowTest {
    std::string root;
    std::uint64_t freeBefore = 0;

    void SetUp() override {
        const char* drive = std::getenv("NW_SMALL_DRIVE");
        if (drive == nullptr)
            GTEST_SKIP() << "no small drive could be mounted (NW_SMALL_DRIVE is not set)";
        root = drive;
        WindowTest::SetUp();
        freeBefore = FreeBytes();
        ASSERT_GT(freeBefore, 1U << 20);
        ASSERT_LT(freeBefore, 1U << 30) << root << " is too large to be a scratch drive";
    }
    void TearDown() override {
        if (!root.empty())
            WindowTest::TearDown();
    }
    std::uint64_t FreeBytes() const {
        std::uint64_t free = 0, total = 0;
        EXPECT_FALSE(Failed(platform::ReadDriveSpace(root, free, total)));
        return free;
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        (void)platform::EnumerateFolder(root, [&](const platform::FolderEntry& entry) {
            if (entry.Name != "lost+found")
                names.push_back(entry.Name);
            return true;
        });
        return names;
    }
    static void PutFileAt(const std::string& path, const std::string& content) {
        platform::File file;
        ASSERT_FALSE(Failed(platform::OpenFile(path, platform::Access::Replace, file)));
        EXPECT_FALSE(Failed(platform::WriteBytes(file, content.data(), content.size())));
        EXPECT_FALSE(Failed(platform::CloseFile(file)));
    }
    void ChooseDrive(const std::string& title) const {
        HWND chooser = Window(title);
        ASSERT_NE(nullptr, chooser);
        for (const std::string& item : ItemsOf(Named(chooser, "lstDrives")))
            if (item.starts_with(root.substr(0, 2)))
                Choose(Named(chooser, "lstDrives"), item);
        EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(chooser, "cmdOK")); }));
        Click(chooser, "cmdOK");
    }
    bool MessageIs(const std::string& text) const {
        return WaitUntil([&] { return TextOf(Named(main, "lblLargePurgeMessage")) == text; });
    }
    void ExpectRest() const {
        EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); })) << Describe();
        for (const std::string& name : Names())
            EXPECT_FALSE(name.starts_with("_nw_dummy")) << name;
    }
};

TEST_F(DrivesTest, SpeedIsMeasuredAndFreeSpacePurged) {
    Click(main, "cmdLargePurge(0)");
    AnswerBox("Test purge speed", "", IDYES);
    ChooseDrive("Test purge speed on which drive?");
    AnswerBox("Test purge speed", "", IDOK);
    EXPECT_TRUE(TextOf(Named(main, "lblPurgeSpeed"))
                    .ends_with(" MB/sec. (1 overwrite) for Drive " + root.substr(0, 1) + "."));
    ExpectRest();
    EXPECT_EQ(freeBefore, FreeBytes());

    Click(main, "cmdLargePurge(2)");
    ChooseDrive("Purge free space on which drive?");
    AnswerBox("Purge free space", "", IDOK);
    EXPECT_TRUE(WaitUntil([&] { return FreeBytes() == 0; })) << FreeBytes();
    AnswerBox("Purge free space", "", IDOK);
    AnswerBox("Purge free space", "The free space has been purged.", IDOK);
    EXPECT_TRUE(MessageIs("The free space has been purged."));
    ExpectRest();
    EXPECT_EQ(freeBefore, FreeBytes());
}

TEST_F(DrivesTest, ADiskIsPurged) {
    const auto made = platform::MakeFolder(root + "folder");
    ASSERT_TRUE(!Failed(made) || made == platform::Fault::AlreadyExists);
    for (const char* name : {"top.txt", "second.txt", "folder\\below.txt", "pagefile.sys"})
        PutFileAt(root + name, std::string(5000, 's'));
    Click(main, "cmdLargePurge(1)");
    ChooseDrive("Purge (wipe) which drive?");
    for (const int answer : {IDOK, IDOK, IDOK, IDNO, IDNO, IDYES}) // speed, estimate, plan,
        AnswerBox("Purge disk", "", answer);                       // files, folders, no boxes
    EXPECT_TRUE(MessageIs("The disk has been purged (except for excluded files).")) << Describe();
    ExpectRest();
    EXPECT_FALSE(platform::FileExists(root + "folder\\below.txt"));
    for (const std::string& name : Names())
        EXPECT_TRUE(name == "folder" || name == "pagefile.sys") << name;
    EXPECT_FALSE(Failed(platform::RemoveFile(root + "pagefile.sys")));
    EXPECT_FALSE(Failed(platform::RemoveFolder(root + "folder")));
    EXPECT_EQ(freeBefore, FreeBytes());
}
