// A whole purge through the real windows.
#include "windows/Driver.h"

using namespace driver;

struct PurgeTest : WindowTest {
    void SpecifyAllFiles() {
        Click(main, "cmdSpecifyDirectory(0)");
        AnswerDialog("Specify folder containing files to be purged", scratch + "\\data");
        AnswerBox("Specify folder", "Do you wish to purge ALL files in " + scratch + "\\data\\?",
                  IDYES);
        EXPECT_TRUE(WaitUntil([&] { return TextOf(Named(main, "lblFiles")) == "*.*"; }));
    }
    /// From "Purge files" to the end of the questions before the run.
    void StartPurge(const std::string& question) {
        Click(main, "cmdProcessFiles(1)");
        HWND options = Window("Purge options");
        ASSERT_NE(nullptr, options);
        Click(options, "cmdDoPurge");
        AnswerBox("Purge files", question, IDYES);
    }
    HWND WaitForReport(const std::string& state) {
        HWND report = Window("Purge files");
        EXPECT_TRUE(report != nullptr &&
                    WaitUntil([&] { return TextOf(Named(report, "lblPausedDone")) == state; }))
            << Describe();
        return report;
    }
};

TEST_F(PurgeTest, FilesOfAFolderArePurged) {
    Put("data\\one.txt", "secret");
    Put("data\\\xE6\x96\x87\xE5\xAD\x97.txt", std::string(10000, 's'));
    Put("data\\below\\kept.txt", "kept");
    SpecifyAllFiles();
    StartPurge("Are you sure that you want to purge both files in " + scratch +
               "\\data\\ ?\r\nThis will permanently destroy all data in these two files.");
    HWND report = WaitForReport("Done");
    const std::string text = TextOf(Named(report, "txbText"));
    EXPECT_NE(std::string::npos, text.find("one.txt")) << text;
    EXPECT_NE(std::string::npos, text.find("\xE6\x96\x87\xE5\xAD\x97.txt")) << text;
    EXPECT_NE(std::string::npos, text.find("Number of files purged: 2")) << text;
    EXPECT_FALSE(Exists("data\\one.txt"));
    EXPECT_EQ("kept", ContentOf("data\\below\\kept.txt"));
    Click(report, "cmdClose");
    EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); }));
}

TEST_F(PurgeTest, F10InTheConfirmationEndsTheRun) {
    Put("data\\one.txt", "secret");
    Put("data\\two.txt", "secret");
    Click(main, "cmdConfirmFiles");
    SpecifyAllFiles();
    StartPurge("");
    HWND confirmation = Window("Confirm purging of this file");
    ASSERT_NE(nullptr, confirmation);
    PressKey(confirmation, VK_F10);
    Click(confirmation, "cmdNo");
    HWND report = WaitForReport("Stopped");
    EXPECT_NE(std::string::npos,
              TextOf(Named(report, "txbText")).find("Purge operation was stopped."));
    EXPECT_EQ("secret", ContentOf("data\\one.txt"));
    EXPECT_EQ("secret", ContentOf("data\\two.txt"));
}
