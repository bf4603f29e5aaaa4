// The fakes' own rules, on which all other tests lean.
#include "fakes/ProgramTest.h"

#include <gtest/gtest-spi.h>

using platform::Access;
using platform::Fault;

struct FakesTest : ProgramTest {};

TEST_F(FakesTest, JournalKeepsBytesNotCalls) {
    fake::PutFile("C:\\data\\A.txt", "hello");
    platform::File file;
    ASSERT_EQ(Fault::None, platform::OpenFile("c:\\DATA\\a.txt", Access::Change, file));
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(Fault::None, platform::WriteBytes(file, std::string(2048, '\xAA').data(), 2048));
    std::string block(4096, '\0');
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = static_cast<char>(i * i % 251);
    for (const std::string& run : {block + block, block})
        EXPECT_EQ(Fault::None, platform::WriteBytes(file, run.data(), run.size()));
    EXPECT_EQ(Fault::None, platform::FlushBytes(file));
    EXPECT_EQ(Fault::None, platform::ChangeLength(file, 8194));
    EXPECT_EQ(1, fake::OpenHandles());
    EXPECT_EQ(Fault::None, platform::CloseFile(file));
    EXPECT_EQ("write 0+8192 AA\nwrite 8192+12288 *\nflush\nlength 8194\n",
              fake::JournalText("C:\\data\\A.txt"));
    EXPECT_EQ(std::string(8192, '\xAA') + block.substr(0, 2), fake::ContentOf("C:\\data\\a.TXT"));
}

TEST_F(FakesTest, OverwritesCutRunsInPlace) {
    fake::Content content;
    content.Write(0, {10, "a"});
    content.Write(3, {2, "bc"});
    content.Write(9, {3, "d"});
    EXPECT_EQ("aaabcaaaaddd", content.Read(0, 100));
    content.Resize(4);
    content.Resize(6);
    EXPECT_EQ(std::string("aaab\0\0", 6), content.Read(0, 100));
    content.Write(1ULL << 40, {1ULL << 44, "z"});
    EXPECT_EQ((1ULL << 40) + (1ULL << 44), content.Length());
    EXPECT_EQ(std::string("\0zz", 3), content.Read((1ULL << 40) - 1, 3));
}

TEST_F(FakesTest, HugeDriveFillsUpWithPartOfTheLastWrite) {
    fake::Drive& drive = fake::AddDrive('T', 64ULL << 40, 65536);
    fake::PutBigFile("T:\\most", (64ULL << 40) - 3 * 65536, '\0');
    EXPECT_EQ(3u * 65536, drive.Free());
    platform::File file;
    ASSERT_EQ(Fault::None, platform::OpenFile("T:\\rest", Access::CreateNew, file));
    const std::string unit(131072, '\0');
    EXPECT_EQ(Fault::None, platform::WriteBytes(file, unit.data(), unit.size()));
    EXPECT_EQ(Fault::DiskFull, platform::WriteBytes(file, unit.data(), unit.size()));
    EXPECT_EQ(0u, drive.Free());
    drive.MediaPresent = false;
    EXPECT_EQ(Fault::NotReady, platform::WriteBytes(file, unit.data(), 1));
    EXPECT_EQ(Fault::None, platform::CloseFile(file));
    drive.MediaPresent = true;
    EXPECT_EQ("create\nwrite 0+196608 00\n", fake::JournalText("T:\\rest"));
    EXPECT_EQ(Fault::None, platform::RemoveFile("T:\\rest"));
    EXPECT_EQ(3u * 65536, drive.Free());
}

TEST_F(FakesTest, OrderedFaultsComeOnceAtTheirCall) {
    fake::PutFile("C:\\a", "12345678");
    platform::File file;
    ASSERT_EQ(Fault::None, platform::OpenFile("C:\\a", Access::Change, file));
    fake::FailNth(2, Fault::WriteFault, fake::Call::Write);
    EXPECT_EQ(Fault::None, platform::WriteBytes(file, "ab", 2));
    EXPECT_EQ(Fault::None, platform::SeekTo(file, 4));
    EXPECT_FALSE(fake::HasFailed());
    EXPECT_EQ(Fault::WriteFault, platform::WriteBytes(file, "cd", 2));
    EXPECT_TRUE(fake::HasFailed());
    EXPECT_EQ(Fault::None, platform::CloseFile(file));
    EXPECT_EQ("ab34c678", fake::ContentOf("C:\\a"));
}

TEST_F(FakesTest, UserAnswersInOrderAndCannotClickUnderAModalForm) {
    static ui::Form main, dialog; // forms live as long as the program
    static ui::Button ok, under;
    main.Name = "frmMain";
    dialog.Name = "frmDialog";
    ui::Bind(main, {{&under, "cmdUnder", 0, 0, 1, 1}});
    ui::Bind(dialog, {{&ok, "cmdOK", 0, 0, 1, 1}});
    ok.Click = [] {
        EXPECT_EQ(ui::AnswerNo, ui::MsgBox("Really?", ui::Buttons::YesNo, ui::Icon::Question, "Q"));
        ui::Hide(dialog);
    };
    ui::Show(main);
    fake::user.Modal(dialog, [] {
        EXPECT_FALSE(fake::CanReach(under));
        fake::user.Box("Q", "Really?", ui::AnswerNo, {ui::Icon::Question});
        fake::Click(ok);
    });
    fake::user.Box("T", "After");
    ui::ShowModal(dialog);
    EXPECT_TRUE(fake::CanReach(under));
    ui::MsgBox("After", ui::Buttons::OK, ui::Icon::None, "T");
    EXPECT_EQ(2u, fake::user.Boxes.size());
    EXPECT_NONFATAL_FAILURE(ui::MsgBox("x", ui::Buttons::OK, ui::Icon::None, "T"), "Unexpected");
}
