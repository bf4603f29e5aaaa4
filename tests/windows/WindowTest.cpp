// Starts the real program for a test, and ends it.
#include "windows/WindowTest.h"

#include "windows/Environment.h"

#include <fstream>
#include <iterator>

namespace driver {

using platform::Widen;

namespace {

/// The folder with the setup that the user has saved: put aside while a test runs.
std::filesystem::path SavedSetup(const char* suffix = "") {
    return Widen(Environment(L"APPDATA") + "\\Nullwright" + suffix);
}

/// False: the user's folder is still where the test would write, and no test may run.
bool PutSavedSetupAside() {
    std::error_code ignored;
    if (std::filesystem::exists(SavedSetup(".put-aside")))
        std::filesystem::remove_all(SavedSetup(), ignored); // what a test that broke off has left
    else
        std::filesystem::rename(SavedSetup(), SavedSetup(".put-aside"), ignored);
    return !std::filesystem::exists(SavedSetup());
}

void BringSavedSetupBack() {
    std::error_code ignored;
    std::filesystem::remove_all(SavedSetup(), ignored);
    std::filesystem::rename(SavedSetup(".put-aside"), SavedSetup(), ignored);
}

} // namespace

std::filesystem::path InScratch(const std::string& name) {
    return Widen(scratch + "\\" + name);
}

void Put(const std::string& name, const std::string& content) {
    std::filesystem::create_directories(InScratch(name).parent_path());
    std::ofstream(InScratch(name), std::ios::binary) << content;
}

bool Exists(const std::string& name) {
    return std::filesystem::exists(InScratch(name));
}

std::string ContentOf(const std::string& name) {
    std::ifstream file(InScratch(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WindowTest::SetUp() {
    const std::string folder = Environment(L"NW_TEST_FOLDER");
    if (folder.empty())
        GTEST_SKIP() << "NW_TEST_FOLDER names no folder in which to work.";
    const std::string own =
        folder + "\\nullwright-windows-" + std::to_string(GetCurrentProcessId());
    std::filesystem::remove_all(Widen(own)); // of an earlier process with this number
    isFolderOurs = std::filesystem::create_directory(Widen(own));
    ASSERT_TRUE(isFolderOurs) << own;
    StartIn(own);
}

void WindowTest::StartIn(const std::string& folder) {
    scratch = folder;
    isSetupAside = PutSavedSetupAside();
    ASSERT_TRUE(isSetupAside);
    main = StartProgram();
    ASSERT_NE(nullptr, main);
    ExpectUsable(main, "cmdQuit"); // start-up may ask drives while the menu is disabled
}

void WindowTest::TearDown() {
    KillProgram();
    if (isSetupAside)
        BringSavedSetupBack();
    std::error_code ignored;
    if (isFolderOurs)
        std::filesystem::remove_all(Widen(scratch), ignored);
    scratch.clear();
}

void WindowTest::SpecifyFolder(const std::string& name, int all) {
    const std::string folder = scratch + "\\" + name;
    Click(main, "cmdSpecifyDirectory(0)");
    AnswerDialog("Specify folder containing files to be purged", folder);
    AnswerBox("Specify folder", "Do you wish to purge ALL files in " + folder + "\\?", all);
    Expect(main, "lblDirectory", folder + "\\");
    Expect(main, "lblFiles", all == IDYES ? "*.*" : "Not specified");
}

HWND WindowTest::OpenTypeOfPurge() {
    Click(main, "cmdTypeOfPurge");
    return Window("What type of purge should be used?");
}

void WindowTest::StartPurge(std::initializer_list<const char*> options) {
    Click(main, "cmdProcessFiles(1)");
    HWND dialog = Window("Purge options");
    for (const char* option : options)
        Click(dialog, option);
    Click(dialog, "cmdDoPurge");
    AnswerBox("Purge files", "", IDYES);
}

HWND WindowTest::OpenSubfolders(const std::string& name) {
    Click(main, "cmdSpecifyDirectory(1)");
    AnswerBox("Purge folders", "", IDYES);
    AnswerDialog("Specify folder containing subfolders to be purged", scratch + "\\" + name);
    return Window("Select subfolders of " + scratch + "\\" + name + "\\ to be purged.");
}

} // namespace driver
