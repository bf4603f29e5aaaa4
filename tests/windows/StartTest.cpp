// The program starts, shows its window, and ends.
#include "windows/Driver.h"

using namespace driver;

struct StartTest : WindowTest {};

TEST_F(StartTest, ShowsItsCaptionAndQuits) {
    EXPECT_EQ("Nullwright", TextOf(main));
    EXPECT_EQ("Not specified", TextOf(Named(main, "lblDirectory")));
    EXPECT_EQ("Random bytes, 6 times (= 6 overwrites)", TextOf(Named(main, "lblTypeOfPurge")));
    Click(Captioned(main, "Quit"));
    EXPECT_EQ(0, WaitForEnd());
}

TEST_F(StartTest, CrossInTheTitleBarQuits) {
    CloseByCross(main);
    EXPECT_EQ(0, WaitForEnd());
}

TEST_F(StartTest, PurgeWithNothingSpecifiedIsRefused) {
    Click(Captioned(main, "Purge files"));
    AnswerBox("Error", "No files specified.", IDOK);
    EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); }));
}
