// The fixture of the tests that run the batch driver over the fakes.
#pragma once

#include "fakes/ProgramTest.h"
#include "report/BatchDriver.h"
#include "report/frmReport.h"
#include "report/ReportText.h"
#include "report/run/Run.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "support/Numbers.h"

#include <gmock/gmock.h>

using namespace testing;

struct RunTest : StartedTest {
    void SetUp() override { Begin(1); }
    /// A fresh disk and a fresh program, in which files get so many random passes.
    void Begin(int passes) {
        StartedTest::SetUp();
        blnShowPurgeWarning = false;
        SetPasses(passes);
    }
    /// Random bytes, as many times.
    static void SetPasses(int passes) {
        frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = passes - 1;
    }
    static std::string Run(bool blnPurge, const std::string& spec = "*.*",
                           const std::string& folder = "C:\\d\\") {
        currentRun.Request.strDirPath = folder;
        currentRun.Request.strFilespec = spec;
        currentRun.Request.blnPurgeFiles = blnPurge;
        ui::Show(frmReport);
        ProcessFiles();
        EXPECT_FALSE(currentRun.IsUnderWay() || frmReport.cmdPauseContinue.Enabled);
        EXPECT_TRUE(frmReport.cmdClose.Enabled);
        EXPECT_EQ(frmReport.strTextBuff, "");
        EXPECT_EQ(fake::user.TaskbarFraction, -1);
        return Plain(frmReport.txbText.Text);
    }
    static void PutFiles(std::initializer_list<const char*> names) {
        for (const std::string name : names)
            fake::PutFile("C:\\d\\" + name);
    }
    static std::string Purge(const std::string& spec = "*.*") { return Run(true, spec); }
    static std::string List(bool blnFolders, bool blnFiles, const std::string& spec = "*.*") {
        currentRun.Request.blnDisplayFolderNames = blnFolders;
        currentRun.Request.blnDisplayFileNames = blnFiles;
        return Run(false, spec);
    }
    /// Line ends as \n, so that expected texts can be read; a lone \n is lost, and shows so.
    static std::string Plain(std::string text) {
        std::erase(text, '\n');
        std::replace(text.begin(), text.end(), '\r', '\n');
        return text;
    }
    /// What stands between the header and the closing time of a purge of all files in C:\d\.
    static std::string Middle(const std::string& report, const std::string& how = "once",
                              const std::string& end = "12:00:00") {
        const std::string head = "11/21/2026, 12:00:00\nPurging all files in C:\\d\\\n" +
                                 std::string("using random bytes ") + how + ".\n\n";
        const std::string foot = "11/21/2026, " + end + "\n";
        EXPECT_THAT(report, StartsWith(head));
        EXPECT_THAT(report, EndsWith(foot));
        return report.substr(head.size(), report.size() - head.size() - foot.size());
    }
};
