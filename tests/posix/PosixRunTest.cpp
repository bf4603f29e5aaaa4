// The program on a real disk, with its I/O thread.
#include "posix/ScratchRoot.h"

#include "engine/FileProc.h"
#include "engine/GroupPace.h"
#include "fakes/FakePlatform.h"
#include "fakes/ScriptedUser.h"
#include "platform/Folders.h"
#include "report/run/Run.h"
#include "settings/frmPurgeConfirmation.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

using namespace platform;

struct PosixRun : testing::Test {
    void SetUp() override {
        posix::MakeScratchRoot();
        posix::BeginProgram(2);
        std::filesystem::create_directory(Host("C/d"));
    }
    void TearDown() override {
        fake::user.Finish();
        EXPECT_EQ(posix::openHandles, 0);
        posix::RemoveScratchRoot();
    }
    static std::string Host(const std::string& name) { return posix::strScratchRoot + "/" + name; }
    static void Put(const std::string& name, std::size_t length) {
        std::ofstream(Host(name)) << std::string(length, 'x');
    }
    /// Two files that are purged at once, and one for the thread.
    static void PutThree() {
        Put("C/d/a", 4096);
        Put("C/d/b", 10);
        Put("C/d/long", 600'000);
    }
    static int FilesLeft() {
        const std::filesystem::directory_iterator files(Host("C/d"));
        return static_cast<int>(std::distance(begin(files), end(files)));
    }
};

TEST_F(PosixRun, WhatIsPurgedIsOverwrittenOnTheDisk) {
    PutThree();
    std::ifstream brief(Host("C/d/a")), large(Host("C/d/long")); // outlast the names
    purgeOptions.Verify = purgeOptions.OverwriteNames = true;
    const std::string report = posix::PurgeFolder("C:\\d");
    EXPECT_NE(report.find("long (600,000 bytes) purged and verified\r"), report.npos) << report;
    EXPECT_EQ(FilesLeft(), 0) << report;
    EXPECT_EQ(currentRun.Counts.lngNumFilesPurged, 3) << report;
    for (std::ifstream* file : {&brief, &large}) {
        const std::string bytes(std::istreambuf_iterator<char>(*file), {});
        EXPECT_TRUE(bytes.size() == 4096 || bytes.size() >= 600'000) << bytes.size();
        EXPECT_EQ(bytes.find("xxxxxxxx"), bytes.npos) << "not all was overwritten";
    }
}

TEST_F(PosixRun, WhicheverCallFailsTheCountTellsWhatIsGone) {
    // A fault may come from the I/O thread too.
    fake::user.AnswerOthers = [](const fake::BoxSeen&) { return ui::AnswerYes; };
    bool blnFailed = true;
    for (const bool options : {false, true})
        for (int n = blnFailed = 1; blnFailed && n < 2000; ++n) {
            SCOPED_TRACE(n);
            intGroupThreads = n % 2 ? 3 : 0;
            PutThree();
            const int before = FilesLeft();
            purgeOptions.Verify = purgeOptions.OverwriteNames = options;
            fake::FailNth(n, Fault::WriteFault);
            const std::string report = posix::PurgeFolder("C:\\d");
            blnFailed = fake::HasFailed();
            ASSERT_EQ(before - FilesLeft(), currentRun.Counts.lngNumFilesPurged) << report;
            ASSERT_EQ(posix::openHandles, 0) << fake::FailedCall();
        }
    EXPECT_FALSE(blnFailed);
    EXPECT_EQ(FilesLeft(), 0);
}

TEST_F(PosixRun, SideBySideTheReportIsTheSame) {
    // What is not plain stands amid what is: held, read-only, long, a second name; and what failed.
    std::string reports[2];
    std::set<std::string> left[2];
    for (const int threads : {1, 8}) {
        posix::BeginProgram(2);
        intGroupThreads = threads;
        fake::user.AnswerOthers = [](const fake::BoxSeen&) { return ui::AnswerNo; };
        fake::FailAlways("RemoveFile", "f17", Fault::AccessDenied);
        for (int i = 10; i < 90; ++i)
            Put("C/d/f" + std::to_string(i), i == 40 ? 700'000 : static_cast<std::size_t>(i) * 99);
        std::filesystem::permissions(Host("C/d/f30"), std::filesystem::perms::owner_read);
        std::filesystem::create_hard_link(Host("C/d/f50"), Host("C/other"));
        posix::Hold("C:\\d\\f60");
        reports[threads > 1] = posix::PurgeFolder("C:\\d");
        EXPECT_EQ(fake::user.Boxes.size(), 1u) << "the second name alone is asked about";
        posix::LetGo();
        for (const auto& file : std::filesystem::recursive_directory_iterator(Host("C")))
            left[threads > 1].insert(file.path());
        std::filesystem::remove_all(Host("C/d"));
        std::filesystem::remove(Host("C/other"));
        std::filesystem::create_directory(Host("C/d"));
    }
    EXPECT_EQ(reports[0], reports[1]);
    EXPECT_EQ(left[0], left[1]);
    EXPECT_EQ(currentRun.Counts.lngNumFilesPurged, 76);
}

TEST_F(PosixRun, NothingOutsideTheRootIsReached) {
    const std::string outside = posix::strScratchRoot + "-outside";
    std::filesystem::create_directory(outside);
    std::ofstream(outside + "/f") << "safe";
    std::filesystem::create_directory_symlink(outside, Host("C/absolute"));
    std::filesystem::create_directory_symlink("../../" + outside.substr(outside.rfind('/') + 1),
                                              Host("C/relative"));
    std::filesystem::create_symlink(outside + "/f", Host("C/file"));
    for (const std::string path :
         {"C:\\absolute\\f", "C:\\relative\\f", "C:\\file", "C:\\a/../../f"}) {
        SCOPED_TRACE(path);
        File file;
        for (const Access access : {Access::Read, Access::Change, Access::Replace})
            EXPECT_NE(OpenFile(path, access, file), Fault::None);
        EXPECT_NE(WriteAttributes(path, 0), Fault::None);
        EXPECT_LT(AuxiliaryChangeFileSize(path, 0), 0);
        if (path != "C:\\file") {
            EXPECT_NE(RemoveFile(path), Fault::None);
        }
    }
    EXPECT_EQ(RemoveFile("C:\\file"), Fault::None) << "the link alone";
    EXPECT_NE(EnumerateFolder("C:\\absolute", [](const FolderEntry&) { return true; }),
              Fault::None);
    std::string content;
    std::ifstream(outside + "/f") >> content;
    EXPECT_EQ(content, "safe");
    std::filesystem::remove_all(outside);
}
