// Purging files of every kind: changed meanwhile, in records, sparse, in clouds, with several
// names, in large clusters, on full disks.
#include "drives/FileSystems.h"
#include "engine/FilePurgeTest.h"

TEST_F(FilePurgeTest, WhatWritingInPlaceDoesNotReachIsSaid) {
    using namespace platform;
    const std::tuple<std::uint32_t, std::uint32_t, std::uint32_t> cases[] = {
        {AttributeCompressed, 0, ReachCompressed},
        {AttributeIntegrity, 0, ReachOlderCopies},
        {0, 0, ReachOlderCopies},                                   // on ReFS
        {AttributeReparsePoint, 0x9000301A, ReachCloudPlaceholder}, // is here, too
        {AttributeReparsePoint, 0x80000013, ReachOlderCopies}};
    for (const auto& [attributes, tag, reach] : cases) {
        SetUp();
        fake::drives['C'].FileSystem = attributes == 0 ? "ReFS" : "NTFS";
        fake::PutFile(path, "M", attributes).ReparseTag = tag;
        EXPECT_EQ(0, Purge(path, 0, 1, true));
        EXPECT_EQ(reach, job.Reach);
    }
    for (const auto elsewhere :
         {AttributeOffline, AttributeRecallOnOpen, AttributeRecallOnDataAccess}) {
        fake::PutFile(path, "M", elsewhere | AttributeReparsePoint);
        const std::int64_t calls = fake::CallsMade();
        EXPECT_EQ(-17, Purge(path, 0, 1, true));
        EXPECT_EQ(calls + 2, fake::CallsMade()); // not opened by any call
    }
    fake::PutFile(path, "M", AttributeEncrypted).HardLinks = 2;
    fake::FailNth(2, Fault::WriteFault, "WriteBytes");
    EXPECT_EQ(-3, Purge(path, 0, 1, true));
    EXPECT_EQ(std::uint32_t{ReachEncrypted} | ReachHardLinks, job.Reach); // also when it fails
}

TEST_F(FilePurgeTest, DataOfSeveralNames) {
    fake::PutFile(path, "data", platform::AttributeReadOnly);
    fake::PutFile(stream, "more");
    fake::PutName("C:\\g\\other", path);
    refuseNames = true;
    EXPECT_EQ(PurgeSeveralNames, Purge(path, 0, 1, true));
    EXPECT_EQ("data", fake::ContentOf(path));
    EXPECT_EQ("more", fake::ContentOf(stream));
    EXPECT_TRUE(fake::At(path)->Attributes & platform::AttributeReadOnly);
    EXPECT_FALSE(job.HasWritten);
    EXPECT_EQ(PurgeDone, Purge(path, 0, 1, true, true)); // slack is nobody's data
    EXPECT_EQ("data", fake::ContentOf("C:\\g\\other"));
    // The name that remains keeps the file's length; where it would not, the file stays.
    refuseNames = false;
    fake::FailNth(1, Fault::WriteFault, "ChangeLength");
    EXPECT_EQ(PurgeLengthNotRestored, Purge(path, 0, 1, true));
    EXPECT_TRUE(job.HasWritten);
    EXPECT_EQ(PurgeDone, Purge(path, 0, 1, true));
    EXPECT_EQ(nullptr, fake::At(path));
    EXPECT_EQ(4u, fake::ContentOf("C:\\g\\other").size());
    EXPECT_NE("data", fake::ContentOf("C:\\g\\other"));
    // Somebody puts a link, or another name of other data, in the file's place before an opening.
    refuseNames = true;
    for (const bool link : {true, false})
        for (int opening = 1; opening <= 5; ++opening) {
            SCOPED_TRACE((link ? "link " : "name ") + std::to_string(opening));
            SetUp();
            fake::PutFile(path, "data");
            fake::PutFile("C:\\g\\other", "other");
            int left = opening;
            fake::Watch("OpenFile", [&](const std::string&) {
                if (--left != 0)
                    return;
                fake::TakeAway(path);
                if (link)
                    fake::PutFile(path, "").LinkTarget = "C:\\g\\other";
                else
                    fake::PutName(path, "C:\\g\\other");
            });
            (void)Purge(path, 1, 1, false);
            EXPECT_EQ("other", fake::ContentOf("C:\\g\\other"));
        }
}

TEST_F(FilePurgeTest, WhatChangesMeanwhileIsCoveredOrLeftAlone) {
    // At the n-th such call somebody makes the file this long, by bytes of his own.
    const auto change = [](const char* call, int n, std::uint64_t length) {
        fake::Watch(call, [=, left = std::make_shared<int>(n)](const std::string& file) {
            if (file == path && --*left == 0) {
                fake::Content& data = fake::At(path)->Data;
                const std::uint64_t before = data.Length();
                data.Resize(length);
                if (length > before)
                    data.Write(before, {length - before, "L"});
            }
        });
    };
    using Moment = std::pair<const char*, int>;
    for (const auto& [call, n] :
         {Moment{"ListStreams", 1}, Moment{"OpenFile", 1}, Moment{"OpenFile", 2},
          Moment{"OpenFile", 4}, Moment{"OpenFile", 5}, Moment{"ReadAttributes", 2}})
        for (const std::uint64_t length : {100000u, 300u})
            for (const bool deleteAfter : {true, false}) {
                SCOPED_TRACE(Message() << call << n << "/" << length << "/" << deleteAfter);
                SetUp();
                fake::PutBigFile(path, 1000, 'M');
                fake::PutFile(stream, "S");
                change(call, n, length);
                bool live = false;
                fake::Watch("RemoveFile", [&](const std::string&) {
                    live = fake::ContentOf(path).find_first_of("ML") != std::string::npos;
                });
                // The length is restored of a kept file only; before a deletion it is looked at.
                const bool happens = deleteAfter ? n != 5 : std::string(call) != "ReadAttributes";
                EXPECT_EQ(0, Purge(path, 1, 1, deleteAfter));
                EXPECT_FALSE(live);
                EXPECT_EQ(happens ? static_cast<std::int64_t>(length) : 1000, job.Length);
                if (!deleteAfter) {
                    EXPECT_TRUE(fake::ContentOf(path) ==
                                std::string(happens ? length : 1000, '\xF5'));
                }
            }
    for (const int opening : {1, 2, 4})
        for (const std::uint64_t length : {4000u, 300u}) {
            SetUp();
            fake::PutBigFile(path, 1000, 'M');
            change("OpenFile", opening, length);
            EXPECT_EQ(-16, Purge(path, 1, 1, true, true));
            const std::string grown(length > 1000 ? length - 1000 : 0, 'L');
            EXPECT_TRUE(fake::ContentOf(path) ==
                        std::string(std::min<std::size_t>(length, 1000), 'M') + grown);
        }
    fake::PutBigFile(path, 1000, 'M'); // someone who never ends
    fake::Watch("OpenFile", [](const std::string& file) {
        fake::At(file)->Data.Write(fake::At(file)->Data.Length(), {500, "L"});
    });
    EXPECT_EQ(-16, Purge(path, 0, 1, false));
    // One length that cannot be restored is not made good by another one that can.
    SetUp();
    fake::PutFile(path, std::string(5000, 'M'));
    fake::PutFile(stream, std::string(5000, 'S'));
    fake::FailNth(1, Fault::Other, "ChangeLength");
    EXPECT_EQ(-11, Purge(path, 0, 1, false, true));
    fake::PutFile(path, "M");
    fake::PutFile(stream, "S");
    change("OpenFile", 3, 5000); // the main stream, after its overwrite
    fake::At(path)->Data.Resize(1);
    EXPECT_EQ(0, Purge(path, 0, 1, false));
    EXPECT_THAT(fake::ContentOf(path), Not(HasSubstr(std::string(100, 'L'))));
}

TEST_F(FilePurgeTest, WhatLiesInARecordIsOverwrittenThereOrLeftThere) {
    for (const std::uint32_t cluster : {512u, 4096u, 65536u})
        for (const std::uint64_t length : {1u, 60u, 511u, 512u, 513u, 700u, 3800u}) {
            SCOPED_TRACE(std::to_string(cluster) + "/" + std::to_string(length));
            SetUp();
            fake::AddDrive('D', 1 << 30, cluster);
            fake::Node& file = fake::PutBigFile("D:\\a", length, 'M');
            file.InRecord = true;
            EXPECT_EQ(length % cluster == 0 ? 0 : -55, Purge("D:\\a", 2, 2, false, true));
            EXPECT_EQ(0, Purge("D:\\a", 2, 2, false));
            EXPECT_EQ(std::string::npos, file.LeftInRecord.find('M'));
            // Where nobody tells, it counts as being in a record, but not where there are none.
            file.InRecord = true;
            fake::FailAlways("HasClusters", "", Fault::NotSupported);
            EXPECT_EQ(length % cluster == 0 ? 0 : -55, Purge("D:\\a", 2, 2, false, true));
            EXPECT_TRUE(file.InRecord);
            fake::drives['D'].FileSystem = "exFAT";
            ForgetFileSystems();
            EXPECT_EQ(0, Purge("D:\\a", 2, 2, false, true));
        }
    fake::PutBigFile("D:\\a", 5000, 'M'); // too long for any record
    fake::drives['D'].FileSystem = "";
    ForgetFileSystems();
    EXPECT_EQ(0, Purge("D:\\a", 0, 1, false, true));
    // Beside a file in its record a stream has slack.
    fake::PutFile("D:\\a", "M").InRecord = true;
    fake::PutFile("D:\\a:s", std::string(5000, 'S'));
    EXPECT_EQ("", Journal("D:\\a", 0, 1, false, true));
    EXPECT_NE("", fake::JournalText("D:\\a:s"));
}

TEST_F(FilePurgeTest, BlocksGoOnToTheEndOfALargeCluster) {
    // No power of two, and the file grows to more than one of them, as it is opened.
    fake::AddDrive('E', 1 << 20, 3072);
    fake::PutFile("E:\\a", "M");
    fake::Watch("OpenFile", [](const std::string& file) {
        fake::At(file)->Data.Resize(std::max<std::uint64_t>(fake::At(file)->Data.Length(), 4000));
    });
    EXPECT_THAT(Journal("E:\\a", 1, 1, true),
                StartsWith("write 0+4000 AA\nflush\nwrite 0+6144 AA\n"));
    fake::ResetOrders();
    fake::AddDrive('D', 1 << 30, 1 << 20);
    fake::PutBigFile("D:\\a", 70000, 'M');
    EXPECT_EQ("write 0+1048576 *\nflush\nlength 70000\n", Journal("D:\\a", 0, 1, false));
    EXPECT_EQ("write 70000+978576 AA\nflush\nlength 70000\n",
              Journal("D:\\a", 1, 1, false, true).substr(0, 41));
    (void)Journal("D:\\a", 0, 1, false, true);
    const std::string fill = Written("D:\\a").back().Bytes(0, 1 << 20);
    EXPECT_EQ(978576u, fill.size());
    EXPECT_EQ(std::string::npos, fill.find_first_not_of("0123456789"));
    fake::PutBigFile("D:\\a", 1 << 20, 'M'); // whole
    EXPECT_EQ("", Journal("D:\\a", 0, 1, false, true));
    fake::PutBigFile("D:\\a", 65536, 'M'); // of the listed size, which is not the drive's
    EXPECT_NE("", Journal("D:\\a", 0, 1, false, true));
}

TEST_F(FilePurgeTest, OnAFullDiskAFileIsPurgedWithinWhatItHas) {
    fake::Drive& drive = fake::AddDrive('D', 1 << 20);
    const auto put = [&](std::uint64_t length, bool inRecord) -> fake::Node& {
        fake::Node& file = fake::PutBigFile("D:\\a", length, 'M');
        file.InRecord = inRecord;
        drive.Occupied = 0;
        drive.Occupied = drive.Free();
        return file;
    };
    put(100, false); // its digits reach past the cluster
    (void)Journal("D:\\a", 0, 1, false, true);
    EXPECT_EQ(3996u, Written("D:\\a").back().Length);
    EXPECT_EQ(std::string(100, 'M'), fake::ContentOf("D:\\a"));
    for (const std::uint64_t length : {0u, 1u, 300u}) {
        fake::Node& file = put(length, true);
        EXPECT_EQ(0, Purge("D:\\a", 1, 1, false));
        EXPECT_EQ("", file.LeftInRecord);
        EXPECT_EQ(std::string::npos, fake::ContentOf("D:\\a").find('M'));
        EXPECT_EQ(length, file.Data.Length());
        EXPECT_EQ(0, Purge("D:\\a", 0, 1, true));
        EXPECT_EQ(nullptr, fake::At("D:\\a"));
    }
    drive.FileSystem = "FAT"; // nothing that its slack could be written to
    ForgetFileSystems();
    put(0, false);
    EXPECT_EQ(-15, Purge("D:\\a", 0, 1, false, true));
}

TEST_F(FilePurgeTest, OfASparseFileOnlyWhatIsThereIsOverwritten) {
    constexpr std::uint64_t tera = std::uint64_t{1} << 40;
    const auto put = [](std::uint64_t length, std::vector<platform::Range> allocated) {
        fake::Node& file = fake::PutBigFile(path, length, 'M');
        file.Attributes |= platform::AttributeSparse;
        file.Allocated = std::move(allocated);
    };
    put(tera + 5, {{65536, 131072}, {tera, tera + 5}});
    EXPECT_EQ("write 65536+65536 AA\nwrite 1099511627776+4096 AA\nflush\n",
              Journal(path, 1, 1, false).substr(0, 55));
    EXPECT_EQ(tera + 5, fake::At(path)->Data.Length());
    EXPECT_EQ(ReachSparse, job.Reach);
    EXPECT_THAT(Journal(path, 1, 1, false, true), StartsWith("write 1099511627781+4091 AA\n"));
    put(tera + 5, {{65536, 131072}}); // nothing at its end
    EXPECT_EQ("write 65536+65536 *\nflush\n", Journal(path, 0, 1, false));
    EXPECT_EQ(-55, Purge(path, 0, 1, false, true));
    put(tera + 5, {});
    EXPECT_EQ("remove\n", Journal(path, 0, 1, true));
    // A stream is known by what it takes.
    fake::PutFile(path, "M");
    fake::PutBigFile(stream, 1 << 20).Attributes = platform::AttributeSparse;
    (void)Journal(path, 0, 1, true);
    EXPECT_EQ("", fake::JournalText(stream));
    // Where nobody tells, it is not made longer.
    put(5000, {});
    fake::FailAlways("ListAllocatedRanges", "", Fault::NotSupported);
    EXPECT_EQ("write 0+5000 *\nflush\nremove\n", Journal(path, 0, 1, true));
}
