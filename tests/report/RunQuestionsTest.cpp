// Purge runs that ask, pause, stop, or fill the report: what the user is asked and shown.
#include "report/frmAntiVirusQuery.h"
#include "report/frmConfirmFiles.h"
#include "report/frmPurgeWarning.h"
#include "report/run/TimeEstimates.h"
#include "report/RunTest.h"
#include "selection/frmFileSpecification.h"
#include "shell/ChosenItems.h"

const std::string strAsked =
    "C:\\d\\a.exe\r\n\r\nYou have requested to purge a file with an \"exe\"";

const std::string strNoneStopped = "\nNumber of files purged: 0\n\nPurge operation was stopped.\n";

TEST_F(RunTest, AsksOncePerSensitiveExtension) {
    PutFiles({"a.exe", "b.EXE", "c.dll", "d.dll", "e.txt"});
    user.BoxLike("Purge query", strAsked, ui::AnswerNo,
                 {ui::Icon::Question, ui::Buttons::YesNoCancel, 2});
    user.BoxLike("Purge query", "a file with a \"dll\" extension.", ui::AnswerYes);
    // The second file of the refused extension has its path and nothing more.
    EXPECT_EQ(Middle(Purge()), R"(
C:\d\

C:\d\a.exe: exe files are not purged.
C:\d\b.EXE
C:\d\c.dll (1 bytes) purged
C:\d\d.dll (1 bytes) purged
C:\d\e.txt (1 bytes) purged
Number of files purged: 3

Sum of sizes of files purged: 3 bytes
)");
    // A new run asks anew; permission for all asks nothing.
    user.BoxLike("Purge query", strAsked, ui::AnswerCancel);
    user.Box("Purge cancelled", "Purge operation cancelled.  No files purged.");
    EXPECT_EQ(Middle(Purge()), "\nC:\\d\\\n\nC:\\d\\a.exe -- not purged.\n" + strNoneStopped);
    EXPECT_TRUE(user.Boxes.front().EscapeHeld);
    blnOKToPurgeSensitiveFiles = true;
    EXPECT_THAT(Purge(), HasSubstr("Number of files purged: 2\n"));
    EXPECT_EQ(fake::FilesBelow("C:\\d").size(), 0U);
    // None is purged, but the data of one are destroyed.
    blnOKToPurgeSensitiveFiles = false;
    PutFiles({"stuck.txt", "a.exe"});
    fake::FailAlways("RemoveFile", "stuck.txt", Fault::AccessDenied);
    user.BoxLike("Purge query", strAsked, ui::AnswerCancel);
    user.Box("Purge cancelled", "Purge operation terminated.");
    Purge();
}

TEST_F(RunTest, MonitoringIsAskedOncePerRun) {
    const auto press = [](ui::Button& button) {
        user.Modal(*button.Parent, [&button] { fake::Click(button); });
    };
    const auto purge = [] {
        blnShowPurgeWarning = true;
        PutFiles({"a.txt", "b.doc", "c.rtf", "d.docx"});
        return Middle(Purge());
    };
    press(frmAntiVirusQuery.cmdNo);
    purge();
    // Yes brings the advice, before every such file; it can cancel, and can be switched off.
    press(frmAntiVirusQuery.cmdYes);
    user.Modal(frmPurgeWarning, [] {
        fake::PressEscape(frmPurgeWarning); // does nothing in a purge
        fake::Click(frmPurgeWarning.cmdOK);
    });
    user.Modal(frmPurgeWarning, [] {
        EXPECT_THAT(frmPurgeWarning.lblMessage.Caption, StartsWith("The file C:\\d\\c.rtf will"));
        fake::Click(frmPurgeWarning.chkDontShowAgain);
        fake::Click(frmPurgeWarning.cmdStopPurge);
    });
    user.Box("Purge cancelled", "Purge operation terminated.");
    EXPECT_THAT(purge(),
                EndsWith("C:\\d\\b.doc (1 bytes) purged\nC:\\d\\c.rtf -- not purged.\n\n"
                         "Number of files purged: 2\n\nSum of sizes of files purged: 2 bytes\n\n"
                         "Purge operation was stopped.\n"));
    EXPECT_FALSE(blnShowPurgeWarning);
    user.Modal(frmAntiVirusQuery, [] { fake::CloseForm(frmAntiVirusQuery); });
    user.Box("Purge cancelled", "Purge operation terminated.");
    purge();
    EXPECT_EQ(fake::FilesBelow("C:\\d").size(), 3U);
}

TEST_F(RunTest, EachFileIsConfirmedUntilAllAre) {
    PutFiles({"a.txt", "b.txt", "c.txt", "d.txt"});
    const std::string kept = "\nC:\\d\\\n\nC:\\d\\a.txt -- not purged.\n";
    blnConfirmFiles = true;
    user.Modal(frmConfirmFiles, [] {
        // The report behind the question shows all that was written before it.
        EXPECT_THAT(frmReport.txbText.Text, EndsWith("\r\nC:\\d\\\r\n\r\n"));
        fake::PressEnter(frmConfirmFiles);
    });
    user.Modal(frmConfirmFiles, [] {
        EXPECT_EQ(frmConfirmFiles.lblFile.Caption, "C:\\d\\b.txt");
        fake::Click(frmConfirmFiles.cmdYes);
    });
    user.Modal(frmConfirmFiles, [] { fake::Click(frmConfirmFiles.cmdYesAndDontShowAgain); });
    EXPECT_TRUE(Middle(Purge()).starts_with(kept));
    EXPECT_EQ(fake::FilesBelow("C:\\d"), std::vector<std::string>{"C:\\d\\a.txt"});
    fake::PutFile("C:\\d\\b.txt");
    user.Modal(frmConfirmFiles, [] {
        fake::Advance(60000); // the user's time, not the run's
        fake::Click(frmConfirmFiles.cmdStopPurge);
    });
    EXPECT_EQ(Middle(Purge(), "once", "12:01:00"), kept + strNoneStopped);
    EXPECT_EQ(frmReport.lblProgress.Caption, "0 of 1 file purged in less than a second.");
    EXPECT_EQ(fake::FilesBelow("C:\\d").size(), 2U);
    // A path for which no window is high enough loses its middle, and a tip has it whole.
    const std::string path = "C:\\" + std::string(2000, 'x') + "\\a.txt";
    SetFileToConfirm(path);
    EXPECT_EQ(frmConfirmFiles.lblFile.ToolTip, path);
    EXPECT_THAT(frmConfirmFiles.lblFile.Caption, EndsWith("xx...\\a.txt"));
    EXPECT_LT(frmConfirmFiles.Height, 6390); // there is room for it at 1366 x 768 and 150 %
}

TEST_F(RunTest, PausesInTheMiddleOfAPassSequence) {
    fake::PutBigFile("C:\\d\\a.txt", 3 << 20);
    fake::PutFile("C:\\d\\b.txt");
    sngPurgeSpeeds[2] = 1; // MB/s: three seconds for one overwrite of the first file
    SetPasses(3);
    const auto shows = [](const std::string& end) {
        return [end] { return Plain(frmReport.txbText.Text).ends_with(end); };
    };
    std::size_t written = 0;
    const auto goOn = [&] {
        EXPECT_LE(fake::journal.size(), written + 1); // the current pass was finished
        EXPECT_EQ(frmReport.lblPausedDone.Caption, "Paused");
        fake::Advance(60000); // the pause does not count
        fake::Click(frmReport.cmdPauseContinue);
    };
    user.During(shows("a.txt (3,145,728 bytes) purging\n1__ "), [&] {
        EXPECT_FALSE(fake::CanReach(frmReport.cmdStop));
        EXPECT_EQ(frmReport.cmdPauseContinue.Caption, "Pause at next purge");
        fake::Click(frmReport.cmdPauseContinue);
        written = fake::journal.size();
        user.During([] { return user.TaskbarPaused; }, goOn);
    });
    user.During(shows("purging\n12_ "), [] { fake::PressEscape(frmReport); });
    EXPECT_TRUE(
        Middle(Purge(), "3 times", "12:01:00")
            .starts_with("\nC:\\d\\\n\nC:\\d\\a.txt (3,145,728 bytes) purged\nC:\\d\\b.txt"));
}

TEST_F(RunTest, StopsBetweenTwoPassesOfAFile) {
    const std::string stopped = "\nC:\\d\\\n\nC:\\d\\a.txt (1 bytes) purging stopped after pass 1 "
                                "of 3, not purged.\n";
    const auto purging = [] { return fake::CallsMade("FlushBytes") > 0; };
    // Stop while paused, close while running and while paused, and F10.
    for (int how = 0; how < 4; ++how) {
        SCOPED_TRACE(how);
        Begin(3);
        PutFiles({"a.txt", how < 3 ? "b.txt" : "a.txt"});
        user.During(purging, [how] {
            if (how < 2)
                fake::Click(frmReport.cmdPauseContinue);
            if (how == 0)
                return user.During([] { return user.TaskbarPaused; },
                                   [] { fake::Click(frmReport.cmdStop); });
            how == 3 ? fake::PressF10() : fake::CloseForm(frmReport);
        });
        // With others of its group it was in the same pass.
        const std::string other =
            intGroupThreads > 1 && how < 3 ? "C:\\d\\b" + stopped.substr(14) : "";
        EXPECT_EQ(Middle(Purge(), "3 times"), stopped + other + strNoneStopped);
        EXPECT_EQ(frmReport.lblPausedDone.Caption, "Stopped");
        EXPECT_LT(frmReport.barProgress.Fraction, 1);
        EXPECT_EQ(frmReport.Visible, how == 0 || how == 3);
        EXPECT_EQ(fake::FilesBelow("C:\\d").size(), how < 3 ? 2U : 1U);
    }
}

TEST_F(RunTest, AStopBeforeTheFirstFileIsNotForgotten) {
    fake::PutFile("C:\\d\\a.txt");
    const std::int64_t yields = user.Yields; // the first pump of the run is that of its header
    user.During([yields] { return user.Yields > yields; }, [] { fake::PressF10(); });
    EXPECT_EQ(Middle(Purge()), strNoneStopped.substr(1));
    EXPECT_EQ(fake::FilesBelow("C:\\d").size(), 1U);
    EXPECT_FALSE(frmReport.barProgress.Visible);
    // One that comes while the first file is looked at leaves that alone, and no pass does, too.
    const auto looking = [] {
        return fake::CallsMade("ReadClusterFacts") > 0 && currentRun.IsUnderWay() &&
               Plain(frmReport.txbText.Text).ends_with("purging");
    };
    user.During(looking, fake::PressF10);
    const std::string kept = "\nC:\\d\\\n\nC:\\d\\a.txt -- not purged.\n";
    EXPECT_EQ(Middle(Purge()), kept + strNoneStopped);
    PutFiles({"b.txt"}); // of a group it leaves all alone, not only the first
    intGroupThreads = 4;
    const auto looked = fake::CallsMade("ListStreams");
    user.During([=] { return fake::CallsMade("ListStreams") > looked; }, [] { fake::PressF10(); });
    EXPECT_EQ(Middle(Purge()), kept + "C:\\d\\b.txt -- not purged.\n" + strNoneStopped);
    fake::TakeAway("C:\\d\\b.txt");
    SetPasses(0);
    EXPECT_EQ(Middle(Purge(), "0 times"), kept + "Number of files purged: 0\n");
    EXPECT_EQ(fake::ContentOf("C:\\d\\a.txt"), "x");
    SetPasses(1);
    // Nor is one that comes where there are folders only.
    fake::PutFolder("C:\\d\\p");
    blnSubdirectories = true;
    currentRun.Request.lngNumFilesExpected = 1; // no yields for a count
    const std::int64_t before = user.Yields;
    user.During([before] { return user.Yields > before + 1; }, [] { fake::PressF10(); });
    EXPECT_TRUE(Purge("*.none").find("was stopped.") != std::string::npos);
}

TEST_F(RunTest, AFullReportDoesNotEndThePurge) {
    const std::string name(200, 'n');
    for (int i = 0; i < 800; ++i)
        fake::PutFile("C:\\d\\" + name + std::to_string(1000 + i) + (i < 400 ? ".swp" : ""));
    const std::string report = Purge();
    EXPECT_EQ(fake::FilesBelow("C:\\d").size(), 400U);
    EXPECT_LE(frmReport.txbText.Text.size(), lngMaxReportText);
    EXPECT_THAT(
        report,
        HasSubstr("swap file), not purged.\n\nThe report buffer has been filled, so this "));
    EXPECT_THAT(report, EndsWith("\n\nNumber of files purged: 400\n\nSum of sizes of files purged: "
                                 "400 bytes\n11/21/2026, 12:00:00\n"));
    // 1,024 characters and the line that they broke were cut off at the limit.
    EXPECT_GT(frmReport.txbText.Text.size(), lngMaxReportText - 1024 - 250);
}

TEST_F(RunTest, OnASlowDriveNothingIsAskedOnTheInterfaceThread) {
    fake::AddDrive('D', 1 << 30);
    std::vector<std::string> here;
    fake::Watch("", [&](const std::string& path) {
        fake::Advance(path[0] == 'D' ? 100 : 0);
        if (path[0] == 'D' && !user.InLongStep)
            here.push_back(path);
    });
    fake::PutFile("D:\\d\\a.txt");
    fake::PutName("D:\\out\\a.txt", "D:\\d\\a.txt");
    fake::PutFile("D:\\d\\gone\\held.txt").Locked = true;
    fake::PutFolder("D:\\d\\empty").Attributes |= platform::AttributeReadOnly;
    blnSubdirectories = blnDeleteEmptyFolders = purgeOptions.OverwriteNames = true;
    user.BoxLike("Purge query", "to another name", ui::AnswerNo);
    Run(true, "*.*", "D:\\d\\");
    blnPurgeSlackOnly = true;
    Run(true, "A.TXT", "D:\\d\\");
    sngPurgeSpeeds[3] = 10;
    SingleFileEstimate("D:\\d\\a.txt");
    fake::PutFolder("C:\\in").LinkTarget = "D:\\d"; // from a drive that has proved quick
    std::vector<std::string> paths(17, "C:\\");
    paths.emplace_back("C:\\in\\a.txt");
    EXPECT_TRUE(ChooseItems(paths) && ChooseItems({"D:\\d", "D:\\d\\A.TXT"}));
    user.Modal(frmFileSpecification, [] { fake::Click(frmFileSpecification.cmdCancel); });
    EXPECT_EQ(AskFileSpecification("D:\\d"), "");
    EXPECT_THAT(here, IsEmpty());
}

TEST_F(RunTest, ShowsOnlyTheProgressThatIsKnown) {
    fake::drives['C'].BytesPerSecond = 1 << 20;
    fake::PutBigFile("C:\\d\\0", 64 << 20).Denied = true; // not purged: no work any more
    fake::PutBigFile("C:\\d\\a", 16 << 20);
    const auto look = [] {
        EXPECT_EQ(frmReport.lblProgress.Caption,
                  "1 of 2 files, 1 failed.  Elapsed: 9s.  Remaining: about 9s.");
    };
    user.During([] { return user.TaskbarFraction >= 0.5; }, look);
    Purge();
    EXPECT_TRUE(frmReport.barProgress.Visible);
    EXPECT_EQ(frmReport.barProgress.Fraction, 0.5); // half of the files, no full bar
}
