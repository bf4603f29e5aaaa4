// Starts the whole program over the fakes, and puts everything back after a test.
#include "fakes/ProgramTest.h"
#include "cli/Questions.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"

#include <set>

void ProgramTest::SetUp() {
    fake::Reset();
    user.Reset();
    for (const char* file : {"nullwright.exe", "nwaux6.dll"})
        fake::PutFile(fake::programFolder + "\\" + file, "MZ");
    fake::PutFile(fake::programFolder + "\\nullwright.dat",
                  "2\tNullwright\n23\tNullwright\n310\tNullwright\n320\tSlack.\n321\tWhole.\n"
                  "330\thttps://maker/\n331\thttps://manual/\n");
    ResetSession();
    blnStartupCompleted = false;
    Initialization();
    InitializePurgeOptions();
}

void ProgramTest::TearDown() {
    user.Finish();
    // What no command of the console program asks; every other question is in its table.
    const std::set<std::string> windowsOnly{"all files",      "clear",         "manual",
                                            "overwrite",      "purge folders", "quit",
                                            "select folders", "system folder", "type of purge"};
    for (const fake::BoxSeen& box : user.Boxes)
        EXPECT_TRUE(box.Buttons == ui::Buttons::OK || windowsOnly.contains(box.Question) ||
                    QuestionOf(box.Question))
            << box.Question << ": " << box.Text;
    EXPECT_EQ(0, fake::OpenHandles()) << "files were left open";
}
