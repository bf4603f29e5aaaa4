// What all other tests lean on and the platform's contract does not say.
#include "fakes/ProgramTest.h"

#include <gtest/gtest-spi.h>

using platform::Fault;

struct FakesTest : ProgramTest {};

TEST_F(FakesTest, OrderedFaultsComeOnceAtTheirCall) {
    platform::File file;
    fake::FailNth(2, Fault::WriteFault, "WriteBytes");
    ASSERT_EQ(Fault::None, platform::OpenFile("C:\\a", platform::Access::CreateNew, file));
    EXPECT_EQ(Fault::None, platform::WriteBytes(file, "ab", 2));
    EXPECT_EQ(Fault::WriteFault, platform::WriteBytes(file, "cd", 2));
    EXPECT_TRUE(fake::HasFailed());
    EXPECT_EQ(Fault::None, platform::CloseFile(file));
    EXPECT_EQ("create\nwrite 0+3 *\n", fake::JournalText("C:\\a"));
}

TEST_F(FakesTest, UserAnswersOnlyWhatIsExpected) {
    const auto show = [] { ui::MsgBox("x", ui::Buttons::OK, ui::Icon::None, "T"); };
    EXPECT_NONFATAL_FAILURE(show(), "Unexpected");
    fake::user.Box("T", "x", ui::AnswerOK, {ui::Icon::Question});
    EXPECT_NONFATAL_FAILURE(show(), "x");
    fake::user.Box("T", "never");
    EXPECT_NONFATAL_FAILURE(fake::user.Finish(), "never");
    fake::user.Reset();
    static ui::Form form; // forms live as long as the program
    static ui::Button button;
    ui::Bind(form, {{&button, "cmdOK", 0, 0, 1, 1}});
    EXPECT_NONFATAL_FAILURE(fake::Click(button), "could not click");
}
