// What the contract tests need from the world around the platform seam. The cases in this folder
// run natively over the fake (FakeWorld.cpp) and over POSIX files (../posix/PosixWorld.cpp), and as
// nullwright_contract.exe over Windows or Wine (../windows/WineWorld.cpp). The two on a real disk
// work in NW_TEST_FOLDER, by default the user's folder for temporary files; the last fills
// NW_SMALL_DRIVE ("T:\"), of at most 64 MiB, where that is set.
#pragma once

#include "platform/Files.h"
#include "platform/Folders.h"

#include <gtest/gtest.h>

#include <map>

namespace contract {

/// An empty folder for one test, without a trailing backslash, and its removal.
std::string MakeScratchFolder();
void RemoveScratchFolder();
/// Root ("T:\") of a small drive that can be filled to the brim, or "".
std::string SmallDrive();

// The rest is done in the scratch folder, behind the seam's back. False: it cannot be done here.

/// Another program opens the file and lets nobody else at it; lets go of it.
void HoldFile(const std::string& path);
void LetGoOfFile();
/// A link at `path` to the folder `target`.
bool MakeFolderLink(const std::string& path, const std::string& target);
/// A second name for a file.
bool MakeHardLink(const std::string& path, const std::string& other);
/// When a file or folder was last written to: seconds since the beginning of 1970.
std::int64_t LastWritten(const std::string& path);
/// Whether the drive of the scratch folder keeps alternate data streams.
bool KeepsStreams();

/// A fresh scratch folder for each case.
struct Contract : testing::Test {
    void SetUp() override {
        folder = MakeScratchFolder();
        ASSERT_NE(folder, "");
    }
    void TearDown() override { RemoveScratchFolder(); }
    std::string In(const std::string& name) const { return folder + "\\" + name; }
    std::string folder;
};

inline platform::File Opened(const std::string& path, platform::Access access) {
    platform::File file;
    EXPECT_EQ(OpenFile(path, access, file), platform::Fault::None) << path;
    return file;
}

inline platform::FileFacts FactsOf(const std::string& path) {
    platform::FileFacts facts;
    EXPECT_EQ(ReadFileFacts(path, facts), platform::Fault::None) << path;
    return facts;
}

inline platform::Fault Put(const std::string& path, const std::string& bytes) {
    platform::File file;
    const platform::Fault fault = OpenFile(path, platform::Access::CreateNew, file);
    if (!Failed(fault)) {
        EXPECT_EQ(WriteBytes(file, bytes.data(), bytes.size()), platform::Fault::None);
        EXPECT_EQ(CloseFile(file), platform::Fault::None);
    }
    return fault;
}

inline std::string Content(const std::string& path) {
    platform::File file;
    if (Failed(OpenFile(path, platform::Access::Read, file)))
        return "(cannot be opened)";
    std::uint64_t length = 0;
    std::size_t read = 0;
    (void)ReadLength(file, length);
    std::string bytes(static_cast<std::size_t>(length) + 1, '\0');
    if (Failed(ReadBytes(file, bytes.data(), bytes.size(), read)) || Failed(CloseFile(file)))
        return "(cannot be read)";
    return bytes.substr(0, read);
}

/// What a folder holds, by name.
inline std::map<std::string, platform::FolderEntry> Entries(const std::string& folder) {
    std::map<std::string, platform::FolderEntry> entries;
    const auto visit = [&](const platform::FolderEntry& entry) {
        entries[entry.Name] = entry;
        return true;
    };
    EXPECT_EQ(platform::EnumerateFolder(folder, visit), platform::Fault::None);
    return entries;
}

} // namespace contract

namespace platform { // names of faults in failure messages
inline void PrintTo(Fault fault, std::ostream* out) {
    *out << FaultText(fault);
}
} // namespace platform
