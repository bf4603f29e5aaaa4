// The purge engine over the fake platform: every byte that it writes, and what it makes of faults.
#include "engine/FilePurge.h"
#include "drives/DriveWork.h"
#include "engine/FilePurgeTest.h"
#include "engine/HeldFiles.h"
#include "engine/PurgeTypes.h"
#include "shell/frmMain.h"

TEST_F(FilePurgeTest, EveryOverwriteIsWholeClustersAndFlushedBeforeTheNext) {
    for (const std::uint32_t cluster : {512u, 4096u, 65536u})
        for (const std::uint64_t length :
             {0u, 7u, cluster - 1, cluster, cluster + 1, 300000u, 3u << 20, (3u << 20) + 7})
            for (std::int16_t type = 0; type <= 2; ++type) {
                const std::int16_t passes = type == 1 ? 3 : 1;
                SCOPED_TRACE(Message() << cluster << "/" << length << "/" << type);
                SetUp();
                fake::AddDrive('D', 1 << 30, cluster);
                const std::string file = "D:\\f\\a.bin";
                fake::PutBigFile(file, length, 'M');
                fake::PutFile("D:\\f\\b.bin", "untouched");
                const std::string expected = Overwrites(type, passes, length, cluster);
                const bool grows = length % cluster != 0 || length == 0;
                EXPECT_EQ(expected + (grows ? "length " + std::to_string(length) + "\n" : ""),
                          Journal(file, type, passes, false));
                // Kept: the last overwrite, in the length that the file had.
                const fake::Run last = Written(file).back();
                EXPECT_TRUE(fake::ContentOf(file) == last.Bytes(0, length));
                // In every cluster of a random overwrite the same block.
                const std::string bytes = last.Bytes(0, last.Length);
                for (std::size_t at = cluster; at < bytes.size(); at += cluster)
                    ASSERT_EQ(0, bytes.compare(at, cluster, bytes, 0, cluster));
                EXPECT_EQ(expected + "remove\n", Journal(file, type, passes, true));
                EXPECT_EQ(nullptr, fake::At(file));
                EXPECT_EQ("untouched", fake::ContentOf("D:\\f\\b.bin"));
            }
}

TEST_F(FilePurgeTest, RandomBlocksAreFreshOncePerPassAndCopiedBeyond2048) {
    fake::AddDrive('D', 1 << 30, 65536);
    fake::PutBigFile("D:\\a", 65536);
    EXPECT_EQ(0, Purge("D:\\a", 2, 2, false));
    const std::vector<fake::Run> runs = Written("D:\\a");
    ASSERT_EQ(12u, runs.size());
    EXPECT_EQ(runs[2], runs[5]); // both of a pass
    EXPECT_EQ(runs[8], runs[11]);
    EXPECT_FALSE(runs[2] == runs[8]);
    const std::string block = runs[2].Bytes(0, 65536);
    int copied = 0;
    for (std::size_t at = 2048; at + 4 <= block.size(); at += 97) // in a copy, or across its end
        copied += block.find(block.data() + at, 0, 4) < at ? 1 : 0;
    EXPECT_GT(copied, 600); // of 654
    int counts[256] = {};
    for (std::size_t i = 0; i < 2048; ++i)
        ++counts[static_cast<unsigned char>(block[i])];
    EXPECT_LT(*std::max_element(counts, counts + 256), 40); // 8 each on average
}

TEST_F(FilePurgeTest, SlackOnlyLeavesTheFileAlone) {
    const std::string text(5000, 'M');
    fake::PutFile(path, text);
    std::string once; // never longer between two openings, and never deleted
    for (const char* value : {"AA", "55", "0A", "F5"})
        once += std::string("write 5000+3192 ") + value + "\nflush\nlength 5000\n";
    EXPECT_EQ(once + once, Journal(path, 1, 2, true, true));
    EXPECT_EQ(text, fake::ContentOf(path));

    for (const std::uint64_t length : {0u, 1u, 4095u, 4097u, 5000000u}) {
        SetUp();
        fake::drives['C'].FileSystem = length == 0 ? "FAT32" : "NTFS"; // which has it in a record
        fake::PutBigFile(path, length, 'M');
        (void)Journal(path, 0, 1, false, true);
        ASSERT_EQ(3u, fake::journal.size()); // write, flush, length
        const fake::Event& event = fake::journal[0];
        const std::uint64_t slack = 4096 - length % 4096;
        EXPECT_EQ(length, event.Offset);
        EXPECT_GE(event.Data.Length, slack); // the draws as decimal digits
        EXPECT_LE(event.Data.Length, 3 * slack);
        const std::string digits = event.Data.Bytes(0, event.Data.Length);
        EXPECT_EQ(std::string::npos, digits.find_first_not_of("0123456789"));
        EXPECT_TRUE(fake::ContentOf(path) == std::string(length, 'M'));
    }
    fake::PutBigFile(path, 8192, 'M'); // no slack: not even opened
    EXPECT_EQ("", Journal(path, 0, 1, true, true));
    EXPECT_NE(nullptr, fake::At(path));
}

TEST_F(FilePurgeTest, LengthsBeyond32Bits) {
    const std::uint64_t length = (5ULL << 30) + 123;
    fake::AddDrive('D', 64ULL << 30, 65536);
    fake::PutBigFile("D:\\a", length, 'M');
    EXPECT_THAT(Journal("D:\\a", 1, 1, false, true),
                StartsWith("write 5368709243+65413 AA\nflush\n"));
    ASSERT_EQ("write 0+5368774656 *\nflush\nlength 5368709243\n", Journal("D:\\a", 0, 1, false));
    EXPECT_EQ(65536u, fake::journal[0].Data.Pattern.size());
    EXPECT_EQ(length, fake::At("D:\\a")->Data.Length());
    // The last run finds no room for what lies within the file: a compressed one on a full disk.
    int calls = 0;
    fake::FailAlways("WriteBytes", "", Fault::DiskFull, [&] { return ++calls > 5120; });
    EXPECT_EQ(-15, Purge("D:\\a", 0, 1, true));
    fake::ResetOrders();
    // The longest file of FAT: its last cluster ends a byte behind what can be written.
    fake::PutBigFile("D:\\b", 0xFFFFFFFF, 'M');
    fake::FailNth(4096, Fault::DiskFull, "WriteBytes");
    EXPECT_THAT(Journal("D:\\b", 0, 1, true),
                EndsWith("write 4293918720+1048575 *\nflush\nremove\n"));
}

TEST_F(FilePurgeTest, StreamsGoWithTheFile) {
    fake::PutFile(path, "main");
    fake::PutFile(stream, std::string(5000, 'S'));
    (void)Journal(path, 1, 1, false);
    EXPECT_EQ(Overwrites(1, 1, 5000, 4096) + "length 5000\n", fake::JournalText(stream));
    (void)Journal(path, 1, 1, false, true); // the slack of both
    EXPECT_THAT(fake::JournalText(stream), StartsWith("write 5000+3192 AA\nflush\n"));
    EXPECT_EQ(std::string(5000, '\xF5'), fake::ContentOf(stream));
    (void)Journal(path, 0, 1, true);
    EXPECT_EQ("write 0+8192 *\nflush\n", fake::JournalText(stream));
    EXPECT_EQ(nullptr, fake::At(path));
}

TEST_F(FilePurgeTest, RefusalsAndCodes) {
    constexpr auto R = platform::AttributeReadOnly, H = platform::AttributeHidden,
                   S = platform::AttributeSystem, A = platform::AttributeArchive;
    const std::tuple<std::uint32_t, bool, bool, int, std::string> cases[] = {
        {R | A, false, true, -53, ""},
        {R | S, false, false, -53, ""}, // read-only is looked at first
        {S | A, true, false, -54, ""},
        {R | S, true, false, -54, "attributes 4\n"}, // the bit is gone none the less
        {R | H | S | A, true, true, 0,
         "attributes 38\n" + Overwrites(1, 1, 1, 4096) + "attributes 36\nattributes 32\nremove\n"},
    };
    for (const auto& [attributes, okReadOnly, okSystem, expected, journal] : cases) {
        fake::PutFile(path, "M", attributes);
        fake::journal.clear();
        std::int16_t code = 99;
        (void)PurgeFileWithChecks(path, 1, 1, true, okReadOnly, okSystem, false, 0, code);
        EXPECT_EQ(expected, code);
        EXPECT_EQ(journal, fake::JournalText(path));
    }
    EXPECT_EQ(-1, Purge("", 0, 1, true));
    for (const char* none : {"C:\\f\\none", "C:\\f"})
        EXPECT_EQ(-2, Purge(none, 0, 1, true));
    fake::AddDrive('D', 1 << 20, 512).BytesPerSector = 1000; // 8000 bytes: no multiple of 512
    fake::PutFile("D:\\a", "kept");
    EXPECT_EQ(-9, Purge("D:\\a", 0, 1, true));
    fake::Node& file = fake::PutFile(path, "kept", R);
    EXPECT_TRUE(Purge(path, 0, 0, true) == -18 && PurgeFile(path, 0, 0, true, false) == -18);
    EXPECT_TRUE(file.Attributes & R);
    for (const std::int16_t type : {std::int16_t{intNumPurgeTypes}, std::int16_t{-1}})
        EXPECT_EQ(-8, Purge(path, type, 1, true));
    fake::PutFile("C:\\f\\link").LinkTarget = path;
    EXPECT_EQ(-2, Purge("C:\\f\\link", 0, 1, true));
    EXPECT_EQ("kept", fake::ContentOf(path));
    EXPECT_EQ(0, Purge(path, 1, 1, false));
    EXPECT_EQ(0u, file.Attributes & R); // stays writable
    fake::PutBigFile(path, 3 << 20);    // these do not fail in every case, or not by any fault
    fake::FailNth(5, Fault::DiskFull, "WriteBytes");
    EXPECT_EQ(-15, Purge(path, 1, 1, true));
    fake::FailNth(5, Fault::ReadFault, "WriteBytes");
    EXPECT_EQ(-3, Purge(path, 1, 1, true));
    fake::FailNth(2, Fault::WriteFault, "CloseFile");
    EXPECT_EQ(-3, Purge(path, 1, 1, true));
}

TEST_F(FilePurgeTest, HeldFilesAreWaitedFor) {
    // A neighbour that looks for 5 ms into each file that was opened, made shorter or closed.
    std::uint64_t heldUntil = 0;
    for (const char* call : {"OpenFile", "AuxiliaryChangeFileSize", "RemoveFile"})
        fake::FailAlways(call, path, Fault::SharingViolation, [&] {
            const bool held = platform::TickCount() < heldUntil;
            heldUntil = held ? heldUntil : platform::TickCount() + 5;
            return held;
        });
    for (int i = 0; i < 400; ++i) { // together far more than what a run may wait in vain
        fake::PutFile(path, "M");
        ASSERT_EQ(0, Purge(path, 0, 1, true)) << i;
        ASSERT_EQ(nullptr, fake::At(path));
        fake::PutFile(path, "MM");
        ASSERT_EQ(0, Purge(path, 0, 1, false, true)) << i;
        ASSERT_EQ("MM", fake::ContentOf(path));
    }
    // A program that has mapped it lets it be opened, but not be cut.
    fake::PutFile(path, "M");
    const std::uint64_t mappedUntil = platform::TickCount() + 500;
    fake::FailAlways("ChangeLength", "", Fault::SharingViolation,
                     [=] { return platform::TickCount() < mappedUntil; });
    EXPECT_EQ(0, Purge(path, 0, 1, false));
    EXPECT_EQ(1u, fake::At(path)->Data.Length());
    // What stays held is not waited for again and again.
    const auto took = [&](std::uint64_t stopAfter = 0) {
        const std::uint64_t began = platform::TickCount();
        blnStop = false;
        if (stopAfter > 0)
            fake::user.During([=] { return platform::TickCount() >= began + stopAfter; },
                              [] { blnStop = true; });
        EXPECT_EQ(-2, Purge("C:\\f\\held", 0, 1, true));
        return static_cast<int>(platform::TickCount() - began);
    };
    fake::PutFile("C:\\f\\held").Locked = true;
    int all = took();
    EXPECT_NEAR(2000, all, 100);
    EXPECT_NEAR(300, took(250), 100); // by F10
    for (int i = 0; i < 8; ++i)
        all += took();
    EXPECT_NEAR(9700, all, 200);
    EXPECT_EQ(0, took());
    ResetHeldFileWaits(); // the next run
    EXPECT_NEAR(2000, took(), 100);
    EXPECT_EQ("x", fake::ContentOf("C:\\f\\held"));
}

TEST_F(FilePurgeTest, OnlyAQuickDriveIsWaitedForOnTheInterfaceThread) {
    int slow = 0, here = 0;
    fake::Watch("", [&](const std::string& file) {
        here += fake::user.InLongStep ? 0 : 1;
        fake::Advance(file[0] == 'D' ? slow : 0);
    });
    fake::AddDrive('D', 1 << 30);
    fake::PutFile("D:\\first");
    const auto purge = [&](int files) {
        here = 0;
        for (int i = 0; i < files; ++i)
            for (const bool deleteAfter : {false, true}) {
                fake::PutFile("D:\\a", "M", platform::AttributeReadOnly);
                int entries = 0; // of two
                const auto visit = [&](const platform::FolderEntry&) { return ++entries < 1; };
                EXPECT_EQ(Fault::None, EnumerateOnDrive("D:\\", visit, [] {}));
                EXPECT_EQ(1, entries);
                EXPECT_EQ(0, Purge("D:\\a", 0, 1, deleteAfter));
            }
    };
    purge(5);
    EXPECT_GT(here, 20); // it has proved quick: no hand-over for each step
    fake::Advance(60'000);
    slow = 400; // gone to sleep: nobody waits for it in the first steps
    purge(1);
    EXPECT_EQ(0, here);
    slow = 0; // and never again
    purge(5);
    EXPECT_EQ(0, here);
}

TEST_F(FilePurgeTest, FreeSpaceFiguresAndStop) {
    StartProgram();
    blnPurgingFreeSpace = true;
    fake::PutBigFile(path, 150 * 4096, 'M');
    std::string figures, last;
    fake::Watch("", [&](const std::string&) {
        const std::string& line = frmMain.lblStatus.Caption;
        if (!line.empty() && line != last)
            figures += (last = line).substr(0, line.find('%')) + " ";
    });
    EXPECT_EQ(0, Purge(path, 0, 6, true)); // 900 blocks in all
    EXPECT_EQ("0 6 11 17 22 28 33 39 45 50 56 61 67 72 78 83 89 95 ", figures);
    EXPECT_EQ("", frmMain.lblStatus.Caption);

    const auto stopAt = [&](std::int64_t writes) {
        fake::PutBigFile(path, 400 * 4096 - 5, 'M');
        fake::journal.clear();
        blnStop = false;
        const std::int64_t end = fake::CallsMade("WriteBytes") + writes;
        fake::user.During([=] { return fake::CallsMade("WriteBytes") == end; },
                          [] { blnStop = true; });
    };
    stopAt(3);
    EXPECT_EQ(-12, PurgeFile(path, 1, 1, true, false));
    EXPECT_EQ("write 0+413696 AA\nflush\n", fake::JournalText(path)); // 101 blocks
    EXPECT_EQ(400u * 4096 - 5, fake::At(path)->Data.Length());
    fake::journal.clear();
    EXPECT_EQ(-12, Purge(path, 1, 1, true)); // a stop that was there before
    EXPECT_EQ("", fake::JournalText(path));
    blnStop = false;
    stopAt(9); // behind the last byte of the first overwrite: the second does not begin
    EXPECT_EQ(-12, Purge(path, 1, 1, true));
    EXPECT_EQ("write 0+1638400 AA\nflush\nlength 1638395\n", fake::JournalText(path));
    stopAt(4 * 9); // behind the last byte of all
    EXPECT_EQ(0, Purge(path, 1, 1, true));
    EXPECT_EQ(nullptr, fake::At(path));
    // What is to be read back is not done before that, also where the thread was in the last step.
    verify = true;
    for (const int writes : {4 * 9, 4 * 9 - 1}) {
        user.StepUnderWay = writes < 4 * 9;
        stopAt(writes);
        EXPECT_EQ(-12, Purge(path, 1, 1, true));
    }
    verify = user.StepUnderWay = false;
    stopAt(2);
    blnPurgingFreeSpace = false; // elsewhere a stop waits for the file's end
    EXPECT_EQ(0, Purge(path, 1, 1, true));
    EXPECT_TRUE(blnStop);
    EXPECT_EQ(nullptr, fake::At(path));
}

TEST_F(FilePurgeTest, NoLibraryNoPurge) {
    fake::PutFile(path, "kept");
    for (const auto& [fault, text] :
         {std::pair{Fault::NotFound, " is missing from the program's folder."},
          {Fault::NotSupported, " in the program's folder does not belong to this program."},
          {Fault::AccessDenied, " cannot be loaded: Access was denied."}}) {
        fake::auxiliaryLibrary = fault;
        fake::user.BoxLike("Error", std::string("nwaux6.dll") + text + "\r\nWithout it nothing");
        EXPECT_FALSE(PurgeLibraryReady());
        EXPECT_EQ(-2, Purge(path, 0, 1, true));
    }
    EXPECT_EQ("kept", fake::ContentOf(path));
}
