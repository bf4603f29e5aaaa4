// The dialog "What type of purge should be used?", opened from the main window as a person does.
#include "fakes/ProgramTest.h"
#include "report/frmReport.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/frmMain.h"

using fake::user;

namespace {

struct PurgeType : ProgramTest {
    FrmTypeOfPurge& f = frmTypeOfPurge;
    void SetUp() override {
        ProgramTest::SetUp();
        StartProgram();
    }
    void Open(fake::Action action) {
        user.Modal(f, std::move(action));
        fake::Click(frmMain.cmdTypeOfPurge);
    }
    /// Chooses and accepts; the question gets "Yes".
    void Set(std::size_t type, const std::string& passes, const std::string& question) {
        Open([&] {
            fake::Click(f.optPurgeType[type]);
            fake::Choose(f.cboNumberOfPasses[type], passes);
            user.Box("Nullwright", question, ui::AnswerYes,
                     {.Icon = ui::Icon::None, .Buttons = ui::Buttons::YesNo});
            fake::Click(f.cmdAccept);
        });
    }
    static std::string Question(const std::string& times, bool many = false) {
        return "In the type of purge specified each file will be overwritten " + times + ".\r\n" +
               (many ? "This is a rather large number of overwrites.  Are you sure you want to do "
                       "this?"
                     : "Is this OK?");
    }
};

TEST_F(PurgeType, StartsWithItsTextsAndDefaults) {
    EXPECT_EQ("What type of purge should be used?", f.Caption);
    EXPECT_EQ("3. Alternate bit patterns plus random bytes", f.optPurgeType[2].Caption);
    EXPECT_EQ("Overwrite the data once with random bytes.", f.lblPurgeType[0].Caption);
    EXPECT_EQ("Overwrite the data four times with bit patterns 10101010, 01010101, 00001010 and "
              "11110101.",
              f.lblPurgeType[1].Caption);
    EXPECT_EQ("Overwrite the data twice with bit patterns 10101010 and 01010101, then with random "
              "bytes, then twice with bit patterns 00001010 and 11110101, then again with random "
              "bytes.",
              f.lblPurgeType[2].Caption);
    EXPECT_EQ("Both the type 2 purge (if done 6 times) and the type 3 purge (if done 3 times) meet "
              "the U.S. DoD 5220.22-M standard for disk sanitization.",
              f.lblDOD.Caption);
    EXPECT_EQ("Number of times ('passes'):", f.lblNumberOfTimes.Caption);
    EXPECT_EQ(5, f.cboNumberOfPasses[0].ListIndex);
    EXPECT_EQ(2, f.cboNumberOfPasses[1].ListIndex);
    EXPECT_EQ(1, f.cboNumberOfPasses[2].ListIndex);
    for (std::size_t t = 0; t < 3; ++t) {
        EXPECT_EQ(9 - 2 * t, f.cboNumberOfPasses[t].Items.size());
        EXPECT_EQ(std::to_string(9 - 2 * t), f.cboNumberOfPasses[t].Items.back().Text);
    }
    EXPECT_EQ(6, GetNumOverwrites());
    EXPECT_EQ("Random bytes, 6 times (= 6 overwrites)", frmMain.lblTypeOfPurge.Caption);
}

TEST_F(PurgeType, AcceptsWithTheQuestionThatTheNumberAsksFor) {
    const struct {
        std::size_t Type;
        const char *Passes, *Times;
        bool Many;
        const char* Summary;
    } cases[] = {
        {0, "1", "once", false, "Random bytes, once (= 1 overwrite)"},
        {0, "2", "twice", false, "Random bytes, twice (= 2 overwrites)"},
        {1, "6", "24 times", false, "Alternate bit patterns, 6 times (= 24 overwrites)"},
        {1, "7", "28 times", true, "Alternate bit patterns, 7 times (= 28 overwrites)"},
        {2, "4", "24 times", false,
         "Alternate bit patterns plus random bytes, 4 times (= 24 overwrites)"},
        {2, "5", "30 times", true,
         "Alternate bit patterns plus random bytes, 5 times (= 30 overwrites)"},
    };
    for (const auto& c : cases) {
        frmReport.lblPausedDone.Caption = "Done";
        Set(c.Type, c.Passes, Question(c.Times, c.Many));
        EXPECT_EQ(c.Summary, frmMain.lblTypeOfPurge.Caption);
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
        EXPECT_TRUE(f.cboNumberOfPasses[2].Visible);
        EXPECT_EQ(2, GetNumberOfPasses());
        fake::Choose(f.cboNumberOfPasses[2], "5");
        // Refused once, then chosen again.
        user.Box("Nullwright", Question("30 times", true), ui::AnswerNo);
        fake::Click(f.cmdAccept);
        EXPECT_TRUE(f.Visible);
        fake::Click(f.optPurgeType[0]);
        user.Box("Nullwright", Question("3 times"), ui::AnswerYes);
        fake::PressEnter(f);
    });
    EXPECT_EQ("Random bytes, 3 times (= 3 overwrites)", frmMain.lblTypeOfPurge.Caption);
}

TEST_F(PurgeType, CancelRestoresTheTypeOnly) {
    for (const bool blnByKey : {true, false}) {
        Open([&] {
            fake::Choose(f.cboNumberOfPasses[0], "9");
            fake::Click(f.optPurgeType[1]);
            fake::Choose(f.cboNumberOfPasses[1], "7");
            blnByKey ? fake::PressEscape(f) : fake::CloseForm(f);
        });
        EXPECT_EQ("Random bytes, 9 times (= 9 overwrites)", frmMain.lblTypeOfPurge.Caption);
        EXPECT_EQ(6, f.cboNumberOfPasses[1].ListIndex);
    }
}

TEST_F(PurgeType, RefusesMoreThan32Overwrites) {
    for (int k = 6; k <= 9; ++k) // no list offers so many: a longer one is put in its place
        f.cboNumberOfPasses[2].Items.push_back({std::to_string(k)});
    Open([&] {
        fake::Click(f.optPurgeType[2]);
        fake::Choose(f.cboNumberOfPasses[2], "6");
        user.Box("Too many overwrites",
                 "In the type of purge specified each file would be overwritten 36 times.\r\nThis "
                 "is more than is allowed by this software.",
                 ui::AnswerOK, {.Icon = ui::Icon::Exclamation, .Buttons = ui::Buttons::OK});
        fake::Click(f.cmdAccept);
        EXPECT_TRUE(f.Visible);
        fake::Click(f.cmdCancel);
    });
    f.cboNumberOfPasses[2].ListIndex = -1;
    ui::SelectOption(f.optPurgeType, 2);
    EXPECT_EQ(0, GetNumberOfPasses());
    EXPECT_EQ(0, GetNumOverwrites());
    f.optPurgeType[2].Value = false;
    EXPECT_EQ(2, GetPurgeType()) << "no button set counts as the last type";
    EXPECT_EQ("alternate bit patterns 0 times", PurgeTypeNumPasses(1, 0));
    EXPECT_EQ(" 4 times", PurgeTypeNumPasses(3, 4));
}

} // namespace
