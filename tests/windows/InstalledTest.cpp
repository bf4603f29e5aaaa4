// The program as the set-up program left it, or as it was unpacked: started as a user would.
#include "windows/Driver.h"
#include "windows/Environment.h"

#include <filesystem>
#include <fstream>

using namespace driver;
using platform::Widen;

/// NW_TEST_FOLDER: a folder for the test's own files. NW_SETUP: the set-up program.
struct Installed : testing::Test {
    void TearDown() override { KillProgram(); }
    std::string folder = Environment(L"NW_TEST_FOLDER");
};
using Portable = Installed;
using SendTo = Installed;

static void Put(const std::string& path) {
    std::ofstream(std::filesystem::path(Widen(path))) << "secret";
}

TEST_F(Installed, StartsByItsLinkAndIsNotReplacedMeanwhile) {
    HWND main = StartByShell(Environment(L"NW_LINK"));
    ExpectUsable(main, "cmdQuit");
    const PROCESS_INFORMATION setup = Execute(Widen(Environment(L"NW_SETUP")) + L" /S");
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(setup.hProcess, patience);
    GetExitCodeProcess(setup.hProcess, &code);
    EXPECT_EQ(DWORD{3}, code) << "it runs";
    Click(main, "cmdQuit");
    EXPECT_EQ(0, WaitForEnd());
}

TEST_F(Installed, OpensAnOperationFile) {
    const std::string file = folder + "\\weekly \xC3\xBC.nws";
    std::ofstream(std::filesystem::path(Widen(file)), std::ios::binary)
        << "1.0\r\n0\r\n1\r\n\r\n\r\n1\r\n2\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n";
    HWND main = StartByShell(file);
    Expect(main, "lblSetupFilename", file);
    Expect(main, "lblTypeOfPurge", "Alternate bit patterns, twice (= 8 overwrites)");
}

TEST_F(Installed, TakesWhatExplorerHandsOver) {
    const std::string file = folder + "\\a file \xE6\x97\xA5.txt", empty = folder + "\\a folder";
    Put(file);
    std::filesystem::create_directory(Widen(empty));
    HWND main = StartByShell(file, L"*");
    Expect(main, "lblFiles", "a file \xE6\x97\xA5.txt");
    KillProgram();
    main = StartByShell(empty, L"Directory");
    Expect(main, "lblDirectory", empty + "\\");
    EXPECT_TRUE(std::filesystem::exists(Widen(file))) << "it was only chosen";
}

TEST_F(SendTo, SeveralFilesAreChosenItems) {
    std::string sent;
    for (const char* name : {"one.txt", "two \xC3\xBC.txt", "three.txt"}) {
        Put(folder + "\\" + name);
        sent += (sent.empty() ? "\"" : " \"") + folder + "\\" + name + "\"";
    }
    HWND main = StartByShell(Environment(L"NW_LINK"), nullptr, sent);
    Expect(main, "lblDirectory", "3 chosen items (3 files)");
    EXPECT_TRUE(std::filesystem::exists(Widen(folder + "\\one.txt"))) << "they were only chosen";
}

TEST_F(Portable, SavesItsSettings) {
    HWND main = StartProgram();
    for (const char* button : {"cmdSetup", "cmdSaveSetup", "cmdSaveSetupForNextRun"})
        Click(main, button);
    Expect(main, "lblStatus", "The setup was saved for the next run.");
    Click(main, "cmdQuit");
    EXPECT_EQ(0, WaitForEnd());
}
