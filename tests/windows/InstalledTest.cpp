// The program as the set-up program left it, or as it was unpacked: started as a user would.
#include "windows/Driver.h"
#include "windows/Environment.h"

#include <filesystem>
#include <fstream>

using namespace driver;
using platform::Widen;

namespace {

/// NW_TEST_FOLDER: a folder for the test's own files. NW_SETUP: the set-up program.
struct Installed : testing::Test {
    void TearDown() override { KillProgram(); }
    std::string folder = Environment(L"NW_TEST_FOLDER");
};
using Portable = Installed;
using SendTo = Installed;

int ExitCodeOf(const std::string& command) {
    std::wstring line = Widen(command);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process))
        return -1;
    WaitForSingleObject(process.hProcess, patience);
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

} // namespace

TEST_F(Installed, StartsByItsLinkAndIsNotReplacedMeanwhile) {
    HWND main = StartByShell(Environment(L"NW_LINK"));
    ExpectUsable(main, "cmdQuit");
    const int running = 3;
    EXPECT_EQ(running, ExitCodeOf(Environment(L"NW_SETUP") + " /S"));
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
    std::ofstream(std::filesystem::path(Widen(file)), std::ios::binary) << "secret";
    std::filesystem::create_directory(Widen(empty));
    HWND main = StartByShell(file, "Nullwright", "*");
    Expect(main, "lblFiles", "a file \xE6\x97\xA5.txt");
    KillProgram();
    main = StartByShell(empty, "Nullwright", "Directory");
    Expect(main, "lblDirectory", empty + "\\");
    EXPECT_TRUE(std::filesystem::exists(Widen(file))) << "it was only chosen";
}

TEST_F(SendTo, SeveralFilesAreChosenItems) {
    std::string sent;
    for (const char* name : {"one.txt", "two \xC3\xBC.txt", "three.txt"}) {
        std::ofstream(std::filesystem::path(Widen(folder + "\\" + name)), std::ios::binary) << "s";
        sent += (sent.empty() ? "\"" : " \"") + folder + "\\" + name + "\"";
    }
    HWND main = StartByShell(Environment(L"NW_LINK"), "", "", sent);
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
