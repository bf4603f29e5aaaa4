// Purge runs over a fake tree: the whole report, and what is left on the disk.
#include "report/frmConfirmFiles.h"
#include "report/RunTest.h"
#include "support/StrProc.h"

TEST_F(RunTest, PurgesATreeAndRemovesItsFolders) {
    fake::PutFile("C:\\d\\a.txt", "123");
    fake::PutBigFile("C:\\d\\B.TXT", 5000);
    fake::PutFile("C:\\d\\keep.doc", "1");
    fake::PutFolder("C:\\d\\empty").Attributes |= platform::AttributeReadOnly;
    fake::PutFolder("C:\\d\\denied").Denied = true;
    fake::PutFile("C:\\d\\sub\\deep\\c.txt", "x");
    fake::PutFile("C:\\out\\c.txt", "x");
    int attempts = 0; // to have c.txt of another folder purged
    fake::Watch("ReadAttributes", [&](const std::string& path) {
        for (const char* folder : {"C:\\d", "C:\\d\\sub", "C:\\d\\sub\\deep"})
            if (path.ends_with("\\c.txt"))
                attempts += fake::ReplaceByLink(folder, "C:\\out") ? 1000 : 1;
    });
    fake::PutFile("C:\\d\\shut\\keep.txt"); // what cannot be asked about is not entered
    fake::FailAlways("HoldFolder", "\\shut\\", Fault::SharingViolation);
    fake::PutFile("C:\\d\\sub2\\keep.too", "x");
    fake::At("C:\\d\\sub2")->Attributes |= platform::AttributeReadOnly;
    fake::PutFile("C:\\out\\o.txt", "x");
    fake::PutFolder("C:\\d\\junction").LinkTarget = "C:\\out";
    fake::PutFolder("C:\\d\\turned"); // into a link, after it was listed
    user.During([] { return !fake::At("C:\\d\\a.txt"); },
                [] { fake::At("C:\\d\\turned")->LinkTarget = "C:\\out"; });
    fake::PutFile("C:\\d\\link.txt").LinkTarget = "C:\\out\\o.txt";
    blnSubdirectories = blnDeleteEmptyFolders = true;
    EXPECT_EQ(Purge("*.txt"), R"(11/21/2026, 12:00:00
Purging files C:\d\*.txt 
(including *.txt files in subfolders) 
using random bytes once.


C:\d\

C:\d\a.txt (3 bytes) purged
C:\d\B.TXT (5,000 bytes) purged
C:\d\link.txt: a link, not purged.
Folder C:\d\empty\ removed.
C:\d\denied\: could not be read completely: Access was denied.

C:\d\sub\deep\

C:\d\sub\deep\c.txt (1 bytes) purged
Folder C:\d\sub\deep\ removed.
Folder C:\d\sub\ removed.
C:\d\shut\: could not be read completely: Another program is using the file.
C:\d\junction\: a link, not purged.
C:\d\turned\: a link, not purged.
Number of files purged: 3

Sum of sizes of files purged: 4.89 KB
Number of folders removed:3
Folders that could not be read: 2
11/21/2026, 12:00:00
)");
    EXPECT_EQ(fake::FilesBelow("C:\\d"),
              (std::vector<std::string>{"C:\\d\\keep.doc", "C:\\d\\shut\\keep.txt",
                                        "C:\\d\\sub2\\keep.too", "C:\\d\\link.txt"}));
    EXPECT_EQ(fake::ContentOf("C:\\out\\o.txt") + fake::ContentOf("C:\\out\\c.txt"), "xx");
    EXPECT_GT(attempts, 0);
    ASSERT_LT(attempts, 1000);
    EXPECT_TRUE(fake::At("C:\\d\\sub2")->Attributes & platform::AttributeReadOnly);
}

TEST_F(RunTest, OneFileHasNoCountAndKeptFilesAreSaid) {
    fake::PutFile("C:\\d\\a.txt", "123");
    blnDoNotDeletePurgedFiles = true;
    SetPasses(2);
    EXPECT_EQ(Middle(Purge(), "twice"),
              "\nC:\\d\\\n\nC:\\d\\a.txt (3 bytes) purged\nPurged files not deleted.\n");
    EXPECT_NE(fake::ContentOf("C:\\d\\a.txt"), "123");
}

TEST_F(RunTest, EveryRefusalAndFailureHasItsLine) {
    PutFiles({"ro.txt", "sys.txt", "locked.txt", "w.swp", "stuck.txt", "torn.txt", "gone.txt",
              "enc.txt", "cloud.txt", "full.txt"});
    using namespace platform;
    const std::pair<const char*, std::uint32_t> attributes[] = {
        {"ro", AttributeReadOnly},
        {"sys", AttributeSystem},
        {"enc", AttributeEncrypted | AttributeSparse | AttributeIntegrity},
        {"cloud", AttributeRecallOnDataAccess}};
    for (const auto& [name, bits] : attributes)
        fake::At("C:\\d\\" + std::string(name) + ".txt")->Attributes = bits;
    fake::At("C:\\d\\locked.txt")->Locked = true;
    fake::holders = {"Editor"};
    user.During([] { return fake::CallsMade("FlushBytes") > 0; },
                [] { fake::TakeAway("C:\\d\\gone.txt"); });
    fake::FailAlways("WriteBytes", "full.txt", Fault::DiskFull);
    fake::FailAlways("RemoveFile", "stuck.txt", Fault::AccessDenied);
    fake::FailAlways("WriteBytes", "torn.txt", Fault::WriteFault);
    EXPECT_EQ(Middle(Purge(), "once", "12:00:02"), R"(
C:\d\

C:\d\ro.txt (1 bytes) purging: file is a read-only file, not purged.
(Perhaps file is in use by another program.)
C:\d\sys.txt (1 bytes) purging: file is a system file, not purged.
C:\d\locked.txt (1 bytes) purging: unable to open file for writing.
C:\d\w.swp: the page file (swap file), not purged.
C:\d\stuck.txt (1 bytes) purging: file overwritten but not deleted.
C:\d\torn.txt (1 bytes) purging: error when writing to file.
C:\d\gone.txt (1 bytes) purging: no longer there.
C:\d\enc.txt (1 bytes) purged (encrypted: older copies of its data may remain on the disk; sparse: parts of it were not on the disk; its file system may keep older copies of its data)
C:\d\cloud.txt (1 bytes) purging: not on this drive (cloud or archive), not purged.
C:\d\full.txt (1 bytes) purging: the disk is full.
Number of files purged: 1

Files that could not be purged: 7
C:\d\ro.txt: file is a read-only file, not purged
C:\d\sys.txt: file is a system file, not purged
C:\d\locked.txt: unable to open file for writing (in use by Editor)
C:\d\stuck.txt: file overwritten but not deleted (access was denied)
C:\d\torn.txt: error when writing to file (the drive could not be written to)
C:\d\cloud.txt: not on this drive (cloud or archive), not purged
C:\d\full.txt: the disk is full
)");
    EXPECT_EQ(frmReport.lblProgress.Caption, "1 of 9 files purged, 7 failed, in 2s.");
    EXPECT_EQ(frmReport.lblPausedDone.Caption, "Done, 7 failed");
}

TEST_F(RunTest, TheProgramsOwnFolderStaysByWhateverPath) {
    fake::PutShortName("C:\\Program Files", "PROGRA~1");
    fake::AddDrive('E', 1).StandsFor = "C:";
    fake::AddDrive('S', 1).StandsFor = fake::programFolder;
    for (const char* folder :
         {"C:\\Program Files\\Nullwright\\", "C:\\progra~1\\NULLWRIGHT\\",
          "C:\\d\\..\\Program Files\\Nullwright\\", "E:\\Program Files\\Nullwright\\", "S:\\"}) {
        const std::string report = Run(true, "*.dat", folder);
        EXPECT_NE(report.find("\\*.dat \nusing random bytes once.\n\n\n"), report.npos);
        EXPECT_NE(report.find("nullwright.dat: a file in the current application folder, not "
                              "purged.\nNumber of files purged: 0\n"),
                  report.npos);
        fake::PutFile("C:\\d\\a.exe"); // another folder has no such protection
        blnOKToPurgeSensitiveFiles = true;
        EXPECT_NE(Purge().find("a.exe (1 bytes) purged"), report.npos);
    }
    // Once per folder, however many files it has.
    PutFiles({"a.txt", "b.txt", "c.txt"});
    const auto asked = fake::CallsMade("ReadFolderIdentity"), held = fake::CallsMade("HoldFolder");
    Purge();
    EXPECT_EQ(fake::CallsMade("ReadFolderIdentity"), asked + 1); // the program's own
    EXPECT_EQ(fake::CallsMade("HoldFolder"), held + 1);
}

TEST_F(RunTest, ANameMeansTheOneFileThatHasItLetterByLetter) {
    fake::PutFolder("C:\\d").TellsCase = true;
    PutFiles({"a.txt", "A.TXT", " a.txt", "b.txt", "sub\\A.txt", "sub\\b.txt"});
    blnSubdirectories = true;
    Purge("a.txt"); // in the subfolder, which does not tell case, it is A.txt
    Purge("B.TXT");
    EXPECT_EQ(fake::FilesBelow("C:\\d"),
              (std::vector<std::string>{"C:\\d\\A.TXT", "C:\\d\\ a.txt", "C:\\d\\b.txt"}));
    Purge("?.txt"); // a pattern means them all
    EXPECT_EQ(fake::FilesBelow("C:\\d"), std::vector<std::string>{"C:\\d\\ a.txt"});
    PutFiles({"sub\\A.txt", "sub\\b.txt"}); // in what cannot be read there may be an "a.txt"
    fake::FailAlways("EnumerateFolder", "", Fault::ReadFault);
    Run(true, "a.txt", "C:\\d\\sub\\");
    EXPECT_NE(fake::At("C:\\d\\sub\\A.txt"), nullptr);
}

TEST_F(RunTest, SlackOnlyLeavesWholeClustersAlone) {
    fake::PutBigFile("C:\\d\\whole.txt", 8192);
    fake::PutFile("C:\\d\\none.txt", "");
    for (const char* name : {"part", "gone", "record", "grown", "log"})
        fake::PutFile(std::string("C:\\d\\") + name + ".txt", "data");
    fake::Watch("ReadFileLength", [](const std::string& path) {
        if (path.ends_with("part.txt"))
            fake::TakeAway("C:\\d\\gone.txt");
    });
    fake::At("C:\\d\\record.txt")->InRecord = true;
    fake::Watch("ReadAttributes", [](const std::string& path) {
        if (path.ends_with("grown.txt"))
            fake::At(path)->Data.Resize(4096);
    });
    fake::Watch("FlushBytes", [](const std::string& file) { // a neighbour adds to it after a pass
        const auto add = [] { fake::At("C:\\d\\log.txt")->Data.Write(4, {6, "L"}); };
        if (file.ends_with("log.txt"))
            user.During([] { return true; }, add);
    });
    SetPasses(2);
    fake::PutFile("C:\\d\\ro.txt", "1", platform::AttributeReadOnly);
    fake::PutFile("C:\\d\\asleep.txt", "data");
    for (const char* call : {"ReadFileLength", "ReadAttributes"})
        fake::FailAlways(call, "asleep.txt", Fault::NotReady);
    fake::PutFolder("C:\\d\\empty");
    blnSubdirectories = blnPurgeSlackOnly = blnDeleteEmptyFolders = true;
    blnDoNotDeletePurgedFiles = true; // as the options dialog has it then
    EXPECT_EQ(Purge(), R"(11/21/2026, 12:00:00
Purging the slack area of all files in C:\d\
(including all files in subfolders) 
using random bytes twice.


C:\d\

C:\d\whole.txt: NO slack area.
C:\d\none.txt: NO slack area.
C:\d\part.txt (4 bytes) purging
C:\d\gone.txt: no longer there.
C:\d\record.txt: NO slack area.
C:\d\grown.txt: NO slack area.
C:\d\log.txt (4 bytes) purging: file has changed meanwhile, slack area not purged.
C:\d\ro.txt (1 bytes) purging: file is a read-only file, slack area not purged.
(Perhaps file is in use by another program.)
C:\d\asleep.txt (4 bytes) purging: unable to open file for writing.
Number of files with slack area purged: 1

Files that could not be purged: 3
C:\d\log.txt: file has changed meanwhile, slack area not purged
C:\d\ro.txt: file is a read-only file, slack area not purged
C:\d\asleep.txt: unable to open file for writing (the drive is not ready)
11/21/2026, 12:00:00
)");
    EXPECT_EQ(fake::ContentOf("C:\\d\\part.txt"), "data");
    EXPECT_EQ(fake::ContentOf("C:\\d\\log.txt"), "dataLLLLLL");
    EXPECT_NE(fake::At("C:\\d\\empty"), nullptr);
    // A volume that is mounted in a folder has clusters of its own.
    fake::PutBigFile("C:\\mnt\\d\\whole.txt", 8192);
    fake::At("C:\\mnt")->MountedCluster = 16384;
    Run(true, "*.*", "C:\\mnt\\d\\");
    EXPECT_TRUE(fake::JournalText("C:\\mnt\\d\\whole.txt").starts_with("write 8192+"));
}

TEST_F(RunTest, DataOfNamesOutsideTheChoiceAreKeptUnlessAskedFor) {
    const std::string question = "another name, which was not chosen to be purged:\r\nC:\\out\\c\r";
    const fake::Look look{ui::Icon::Question, ui::Buttons::YesNo, 2};
    blnSubdirectories = true;
    SetPasses(2);
    const auto put = [] {
        PutFiles({"a.txt", "c.txt", "e.txt", "s\\deep.txt"});
        fake::PutName("C:\\d\\s\\b.txt", "C:\\d\\a.txt"); // both are chosen
        fake::PutName("C:\\out\\c", "C:\\d\\c.txt");
        fake::PutName("C:\\d\\s\\e.tmp", "C:\\d\\e.txt"); // by its folder, but not by its name
    };
    put();
    user.BoxLike("Purge query", question, ui::AnswerNo, look);
    std::string report = Purge("*.txt");
    EXPECT_NE(report.find(R"(
C:\d\a.txt (1 bytes) purged
C:\d\c.txt (1 bytes) purging: its data also belong to another name, not purged.
C:\d\e.txt (1 bytes) purging: its data also belong to another name, not purged.

C:\d\s\

C:\d\s\deep.txt (1 bytes) purged
C:\d\s\b.txt (1 bytes) purged
Number of files purged: 3
)"),
              report.npos)
        << report;
    EXPECT_EQ(fake::ContentOf("C:\\out\\c") + fake::ContentOf("C:\\d\\s\\e.tmp"), "xx");

    put();
    user.BoxLike("Purge query", question, ui::AnswerYes, look);
    report = Purge("*.txt");
    EXPECT_NE(report.find("c.txt (1 bytes) purged (has other names, under which the file remains)\n"
                          "C:\\d\\e.txt (1 bytes) purged (has other"),
              report.npos);
    EXPECT_NE(fake::ContentOf("C:\\out\\c"), "x");
    EXPECT_EQ(fake::ContentOf("C:\\out\\c").size(), 1U);

    // Where each file is confirmed, the second name has not been confirmed yet; and where the
    // system does not tell the names, one of them may lie anywhere.
    PutFiles({"a.txt"});
    fake::PutName("C:\\d\\b.txt", "C:\\d\\a.txt");
    blnConfirmFiles = true;
    user.Modal(frmConfirmFiles, [] { fake::Click(frmConfirmFiles.cmdYes); });
    user.BoxLike("Purge query", "purged:\r\nC:\\d\\b.txt\r\n", ui::AnswerNo);
    user.Modal(frmConfirmFiles, [] { fake::Click(frmConfirmFiles.cmdStopPurge); });
    Purge("?.txt");
    blnConfirmFiles = false;
    fake::At("C:\\d\\a.txt")->HardLinks = 3;
    user.BoxLike("Purge query", "belong to at least one other name, and the system does not tell",
                 ui::AnswerNo);
    Purge("a.txt");
    EXPECT_EQ(fake::ContentOf("C:\\d\\a.txt"), "x");
    // Somebody puts a name of other data in the file's place, between two passes; the old ones are
    // destroyed.
    PutFiles({"b.txt"});
    fake::PutFile("C:\\out\\b", "other");
    int calls = 0;
    fake::Watch("OpenFile", [&](const std::string& path) {
        if (++calls == 2) {
            fake::TakeAway(path);
            fake::PutName(path, "C:\\out\\b");
        }
    });
    user.BoxLike("Purge query", "purged:\r\nC:\\out\\b\r\n", ui::AnswerNo);
    EXPECT_THAT(Purge("b.txt"), HasSubstr("b.txt (1 bytes) purging: file has changed meanwhile (it "
                                          "has another name now), not purged.\n"));
    EXPECT_EQ(currentRun.Failures.size(), 1u);
    EXPECT_EQ(fake::ContentOf("C:\\out\\b"), "other");
}

enum class Mode { Purge, Keep, Slack, List };

/// The number behind these words.
static std::int64_t CountOf(const std::string& report, const std::string& words) {
    const std::size_t found = report.find(words);
    return found == std::string::npos ? -1 : std::stoll(report.substr(found + words.size()));
}

static void CheckCounts(Mode mode, const std::string& report) {
    const std::vector<std::string> left = fake::FilesBelow("C:\\d");
    const auto changed = std::count_if(left.begin(), left.end(), [](const std::string& file) {
        return fake::ContentOf(file).find_first_not_of("0123456789") != std::string::npos;
    });
    int folders = 0;
    for (const char* folder : {"C:\\d\\s", "C:\\d\\s\\t", "C:\\d\\u", "C:\\d\\v"})
        folders += fake::At(folder) != nullptr;
    EXPECT_EQ(currentRun.Counts.lngNumFoldersRemoved + folders, 4);
    const std::int64_t purged = CountOf(report, "Number of files purged: ");
    EXPECT_EQ(std::ssize(left), mode == Mode::Purge ? 6 - purged : 6);
    // What a fault met half-way is changed too, and not counted.
    EXPECT_LE(mode == Mode::Keep ? purged : 0, changed);
    EXPECT_TRUE(changed == 0 || mode == Mode::Purge || mode == Mode::Keep);
    EXPECT_EQ(frmReport.lblPausedDone.Caption == "Done", currentRun.Failures.empty());
    EXPECT_EQ(CountOf(report, "Number of files: "),
              mode == Mode::List ? CountOccurrences(report, " bytes)   \n") : -1);
}

TEST_F(RunTest, EveryFaultLeavesTheCountsTrue) {
    for (const Mode mode : {Mode::Purge, Mode::Keep, Mode::Slack, Mode::List}) {
        std::int64_t n = 0;
        do {
            SCOPED_TRACE(std::to_string(static_cast<int>(mode)) + ", " + std::to_string(++n));
            Begin(2);
            for (const char* path :
                 {"a.txt", "b.txt", "ro.txt", "s\\big.txt", "s\\t\\b.txt", "u\\c.txt"})
                fake::PutFile(std::string("C:\\d\\") + path, std::string(9000, '0'));
            fake::At("C:\\d\\ro.txt")->Attributes |= platform::AttributeReadOnly;
            fake::PutFolder("C:\\d\\v");
            fake::PutFile("C:\\out\\o.txt", "untouched");
            fake::PutFolder("C:\\d\\junction").LinkTarget = "C:\\out";
            blnOKToPurgeReadOnlyFiles = blnSubdirectories = true;
            blnDeleteEmptyFolders = mode == Mode::Purge;
            blnDoNotDeletePurgedFiles = mode == Mode::Keep || mode == Mode::Slack;
            blnPurgeSlackOnly = mode == Mode::Slack;
            currentRun.Request.blnDisplayFolderNames = currentRun.Request.blnDisplayFileNames =
                true;
            user.AnswerOthers = [](const fake::BoxSeen& box) { return box.Answer; };
            fake::FailNth(n, n % 2 ? Fault::AccessDenied : Fault::WriteFault);
            const std::string report = Run(mode != Mode::List);
            const bool library = user.Boxes.size() == 1; // that was the call which failed
            EXPECT_EQ(library, n == 1 && mode != Mode::List);
            if (!library)
                CheckCounts(mode, report);
            EXPECT_EQ(fake::OpenHandles(), 0);
            EXPECT_EQ(fake::ContentOf("C:\\out\\o.txt"), "untouched");
        } while (fake::HasFailed() && !HasFailure());
    }
}

TEST_F(RunTest, WhatAPulledStickTookAlongIsNotGone) {
    const std::vector<std::string> names{"a", "b", "c", "d"};
    for (const Mode mode : {Mode::Purge, Mode::Slack, Mode::List}) // the last: by name
        for (std::int64_t n = 0, all = 0, calls = 0; n <= all; ++n, calls = 0) {
            Begin(1);
            fake::AddDrive('E', 1 << 20);
            for (const std::string& name : names)
                fake::PutFile("E:\\w\\" + name, "0");
            blnPurgeSlackOnly = blnDoNotDeletePurgedFiles = mode == Mode::Slack;
            if (mode == Mode::List)
                currentRun.Request.Items = {{"E:\\w\\", "*.*", names}};
            fake::Watch("", [&](const std::string& path) {
                if (path.starts_with("E:\\w\\") && ++calls == n) // or the folder was moved
                    n % 2 ? fake::TakeAway("E:\\w") : void(fake::drives.erase('E'));
            });
            const auto folder = fake::drives['E'].Root->Children[0];
            const std::string report = Run(true, "*.*", "E:\\w\\");
            all = std::max(all, calls);
            EXPECT_THAT(report, Not(ContainsRegex("no longer there|NO slack"))) << n;
            EXPECT_TRUE(blnPurgeSlackOnly ||
                        currentRun.Counts.lngNumFilesPurged == 4 - std::ssize(folder->Children))
                << report;
        }
}
