// The dialog "What type of purge should be used?", opened from the main window as a person does.
#include "fakes/ProgramTest.h"
#include "report/frmReport.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/frmMain.h"

namespace {

struct PurgeType : StartedTest {
    FrmTypeOfPurge& f = frmTypeOfPurge;
    void Open(fake::Action action) {
        user.Modal(f, std::move(action));
        fake::Click(frmMain.cmdTypeOfPurge);
    }
    /// Accepts; the question about so many overwrites gets this answer.
    void Accept(const std::string& times, bool many = false, int answer = ui::AnswerYes) {
        user.BoxLike("Nullwright",
                     "will be overwritten " + times + ".\r\n" +
                         (many ? "This is a rather large number of overwrites." : "Is this OK?"),
                     answer, {.Icon = ui::Icon::None, .Buttons = ui::Buttons::YesNo});
        fake::PressEnter(f);
    }
};

TEST_F(PurgeType, AcceptsWithTheQuestionThatTheNumberAsksFor) {
    const std::string patterns = "Alternate bit patterns";
    const std::tuple<std::size_t, const char*, const char*, bool, std::string> cases[] = {
        {0, "1", "once", false, "Random bytes, once (= 1 overwrite)"},
        {1, "6", "24 times", false, patterns + ", 6 times (= 24 overwrites)"},
        {1, "7", "28 times", true, patterns + ", 7 times (= 28 overwrites)"},
        {2, "5", "30 times", true, patterns + " plus random bytes, 5 times (= 30 overwrites)"},
    };
    for (const auto& [type, passes, times, many, summary] : cases) {
        frmReport.lblPausedDone.Caption = "Done";
        Open([&] {
            fake::Click(f.optPurgeType[type]);
            fake::Choose(f.cboNumberOfPasses[type], passes);
            Accept(times, many);
        });
        EXPECT_EQ(summary, frmMain.lblTypeOfPurge.Caption);
        EXPECT_EQ("", frmReport.lblPausedDone.Caption);
    }
}

TEST_F(PurgeType, ShowsTheListOfTheTypeAndKeepsEachListsChoice) {
    Open([&] {
        EXPECT_EQ(&f.cmdAccept, user.Focus);
        fake::Choose(f.cboNumberOfPasses[0], "3");
        EXPECT_EQ(&f.cmdAccept, user.Focus);
        fake::Click(f.optPurgeType[2]);
        EXPECT_FALSE(f.cboNumberOfPasses[0].Visible || f.cboNumberOfPasses[1].Visible);
        fake::Choose(f.cboNumberOfPasses[2], "5");
        Accept("30 times", true, ui::AnswerNo);
        f.cboNumberOfPasses[2].Items.push_back({"6"}); // no list of the program offers so many
        fake::Choose(f.cboNumberOfPasses[2], "6");
        user.BoxLike("Too many overwrites", "would be overwritten 36 times.\r\nThis is more than");
        fake::Click(f.cmdAccept);
        EXPECT_TRUE(f.Visible);
        fake::Click(f.optPurgeType[0]);
        Accept("3 times");
    });
    EXPECT_EQ("Random bytes, 3 times (= 3 overwrites)", frmMain.lblTypeOfPurge.Caption);
    Open([&] { // Cancel restores the type only.
        fake::Choose(f.cboNumberOfPasses[0], "9");
        fake::Click(f.optPurgeType[1]);
        fake::PressEscape(f);
    });
    EXPECT_EQ("Random bytes, 9 times (= 9 overwrites)", frmMain.lblTypeOfPurge.Caption);
}

} // namespace
