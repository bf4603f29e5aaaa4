// The fixture of the tests that drive the program, and the folder in which they do it.
#pragma once

#include "windows/Driver.h"

#include <filesystem>

namespace driver {

/// Names in the scratch folder.
std::filesystem::path InScratch(const std::string& name);
void Put(const std::string& name, const std::string& content);
bool Exists(const std::string& name);
std::string ContentOf(const std::string& name);

/// Starts the program in a fresh scratch folder, made in NW_TEST_FOLDER; ends it, by force if need
/// be, and takes the folder away.
struct WindowTest : testing::Test {
    void SetUp() override;
    void TearDown() override;
    /// Makes a folder the scratch folder, and starts the program as if nothing had been saved.
    void StartIn(const std::string& folder);
    /// Chooses a folder of the scratch folder; IDYES: all files in it.
    void SpecifyFolder(const std::string& name, int all);
    /// "Type of purge", and "Purge folders" up to the choice of subfolders of a folder.
    HWND OpenTypeOfPurge();
    HWND OpenSubfolders(const std::string& name);
    /// "Purge files" with the options as they are and these, up to "Yes" to its question.
    void StartPurge(std::initializer_list<const char*> options = {});
    HWND main = nullptr;

private:
    bool isSetupAside = false, isFolderOurs = false;
};

} // namespace driver
