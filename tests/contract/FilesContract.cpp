// What every platform back end must do with files.
#include "contract/ContractWorld.h"

#include <algorithm>

using namespace platform;
using namespace contract;

TEST_F(Contract, BytesPositionsAndLengths) {
    File file = Opened(In("a.bin"), Access::CreateNew);
    ASSERT_TRUE(file.IsOpen());
    EXPECT_EQ(WriteBytes(file, "hello world", 11), Fault::None);
    EXPECT_EQ(SeekTo(file, 6), Fault::None);
    EXPECT_EQ(WriteBytes(file, "there", 5), Fault::None);
    EXPECT_EQ(SeekTo(file, 13), Fault::None); // beyond the end: zeros fill the gap
    EXPECT_EQ(WriteBytes(file, "x", 1), Fault::None);
    std::uint64_t length = 0;
    EXPECT_EQ(ReadLength(file, length), Fault::None);
    EXPECT_EQ(length, 14u);
    char bytes[32] = {};
    std::size_t read = 99;
    EXPECT_EQ(ReadBytes(file, bytes, sizeof bytes, read), Fault::None);
    EXPECT_EQ(read, 0u) << "at the end of the file";
    EXPECT_EQ(SeekTo(file, 6), Fault::None);
    EXPECT_EQ(ReadBytes(file, bytes, sizeof bytes, read), Fault::None);
    EXPECT_EQ(std::string(bytes, read), std::string("there\0\0x", 8));
    EXPECT_EQ(FlushBytes(file), Fault::None);
    EXPECT_EQ(SeekTo(file, 3), Fault::None);
    EXPECT_EQ(ChangeLength(file, 5), Fault::None); // the position stays
    EXPECT_EQ(WriteBytes(file, "L", 1), Fault::None);
    EXPECT_EQ(CloseFile(file), Fault::None);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(Content(In("a.bin")), "helLo");
}

TEST_F(Contract, LengthsBeyondFourGigabytes) {
    constexpr std::uint64_t fiveGiB = 5ULL << 30;
    File file = Opened(In("big"), Access::CreateNew);
    const Fault fault = ChangeLength(file, fiveGiB + 1);
    char byte = 'x';
    std::size_t read = 0;
    EXPECT_EQ(SeekTo(file, fiveGiB), Fault::None);
    EXPECT_EQ(ReadBytes(file, &byte, 1, read), Fault::None);
    EXPECT_EQ(CloseFile(file), Fault::None);
    if (fault == Fault::DiskFull)
        GTEST_SKIP() << "less than 5 GiB free here";
    ASSERT_EQ(fault, Fault::None);
    EXPECT_TRUE(read == 1 && byte == '\0');
    EXPECT_EQ(FactsOf(In("big")).Length, fiveGiB + 1);
}

TEST_F(Contract, WhatIsMissingIsNotFoundAndOutputsStay) {
    for (const std::string& path : {In("no.txt"), In("no\\no.txt")}) {
        SCOPED_TRACE(path);
        File file;
        EXPECT_EQ(OpenFile(path, Access::Read, file), Fault::NotFound);
        EXPECT_FALSE(file.IsOpen());
        std::uint32_t attributes = 77;
        std::uint64_t length = 77;
        FileFacts facts;
        facts.Length = 77;
        EXPECT_EQ(ReadAttributes(path, attributes), Fault::NotFound);
        EXPECT_EQ(WriteAttributes(path, AttributeHidden), Fault::NotFound);
        EXPECT_EQ(ReadFileLength(path, length), Fault::NotFound);
        EXPECT_EQ(ReadFileFacts(path, facts), Fault::NotFound);
        EXPECT_EQ(attributes + length + facts.Length, 3 * 77u);
        EXPECT_EQ(RemoveFile(path), Fault::NotFound);
        EXPECT_EQ(RenameReplacing(path, In("b.txt")), Fault::NotFound);
        EXPECT_FALSE(FileExists(path));
    }
    File file;
    EXPECT_EQ(OpenFile(In("no\\no.txt"), Access::Replace, file), Fault::NotFound);
}

TEST_F(Contract, CreatingReplacingAndRenaming) {
    ASSERT_EQ(Put(In("a"), "old bytes"), Fault::None);
    EXPECT_EQ(Put(In("a"), "x"), Fault::AlreadyExists);
    EXPECT_EQ(Content(In("a")), "old bytes");
    ASSERT_EQ(WriteAttributes(In("a"), AttributeHidden), Fault::None);
    File file = Opened(In("a"), Access::Replace);
    EXPECT_EQ(WriteBytes(file, "new", 3), Fault::None);
    EXPECT_EQ(CloseFile(file), Fault::None);
    EXPECT_EQ(Content(In("a")), "new");
    ASSERT_EQ(Put(In("b"), "old"), Fault::None);
    EXPECT_EQ(RenameReplacing(In("a"), In("b")), Fault::None);
    EXPECT_FALSE(FileExists(In("a")));
    EXPECT_EQ(RenameReplacing(In("b"), In("no\\c")), Fault::NotFound);
    EXPECT_EQ(Content(In("b")), "new");
}

TEST_F(Contract, NamesAndDatesOfWhatIsAboutToGo) {
    ASSERT_EQ(Put(In("a"), "one"), Fault::None);
    ASSERT_EQ(Put(In("b"), "two"), Fault::None);
    ASSERT_EQ(MakeFolder(In("c")), Fault::None);
    EXPECT_EQ(RenameNew(In("no"), In("x")), Fault::NotFound);
    EXPECT_EQ(WriteDates(In("no"), 0), Fault::NotFound);
    for (const char* taken : {"b", "c"})
        EXPECT_EQ(RenameNew(In("a"), In(taken)), Fault::AlreadyExists);
    EXPECT_EQ(RenameNew(In("c"), In("a")), Fault::AlreadyExists);
    for (const char* name : {"a", "c"}) {
        const std::string other = In(name) + "2";
        EXPECT_EQ(WriteDates(In(name), 946'684'800), Fault::None);
        EXPECT_EQ(RenameNew(In(name), other), Fault::None);
        const Fault flushed = FlushFolder(folder);
        EXPECT_TRUE(!Failed(flushed) || flushed == Fault::AccessDenied);
        EXPECT_EQ(LastWritten(other), 946'684'800);
    }
    EXPECT_EQ(Entries(folder).size(), 3u);
    EXPECT_EQ(Content(In("a2")) + Content(In("b")), "onetwo");
    HoldFile(In("b"));
    EXPECT_EQ(RenameNew(In("b"), In("x")), Fault::SharingViolation);
    LetGoOfFile();
}

TEST_F(Contract, ReadingPastTheCache) {
    ASSERT_EQ(Put(In("a"), std::string(unbufferedUnit + 300, 'x') + "y"), Fault::None);
    File change = Opened(In("a"), Access::Change), file;
    std::vector<char> room(3 * unbufferedUnit);
    void* bytes = room.data();
    std::size_t size = room.size(), read = 0;
    std::align(unbufferedUnit, 2 * unbufferedUnit, bytes, size);
    const Fault fault = OpenFile(In("a"), Access::ReadPastCache, file);
    if (fault == Fault::NotSupported) {
        EXPECT_EQ(CloseFile(change), Fault::None);
        GTEST_SKIP() << "not on this file system";
    }
    ASSERT_EQ(fault, Fault::None);
    EXPECT_EQ(WriteBytes(change, "z", 1), Fault::None); // is seen
    EXPECT_EQ(FlushBytes(change), Fault::None);
    EXPECT_EQ(ReadBytes(file, bytes, 2 * unbufferedUnit, read), Fault::None);
    const std::string all(static_cast<char*>(bytes), read);
    EXPECT_EQ(read, unbufferedUnit + 301);
    EXPECT_TRUE(all.starts_with("zx") && all.ends_with("xy"));
    EXPECT_EQ(SeekTo(file, unbufferedUnit), Fault::None);
    EXPECT_EQ(ReadBytes(file, bytes, unbufferedUnit, read), Fault::None);
    EXPECT_EQ(read, 301u);
    EXPECT_EQ(CloseFile(file), Fault::None);
    EXPECT_EQ(CloseFile(change), Fault::None);
}

TEST_F(Contract, AHeldFileIsASharingViolation) {
    ASSERT_EQ(Put(In("a"), "held"), Fault::None);
    HoldFile(In("a"));
    File file;
    for (const Access access : {Access::Read, Access::Change, Access::Replace})
        EXPECT_EQ(OpenFile(In("a"), access, file), Fault::SharingViolation);
    EXPECT_EQ(RemoveFile(In("a")), Fault::SharingViolation);
    (void)FactsOf(In("a"));
    LetGoOfFile();
    // One's own file, being changed, can be read, and no more.
    File change = Opened(In("a"), Access::Change);
    EXPECT_EQ(OpenFile(In("a"), Access::Change, file), Fault::SharingViolation);
    EXPECT_EQ(RemoveFile(In("a")), Fault::SharingViolation);
    EXPECT_EQ(Content(In("a")), "held");
    EXPECT_EQ(CloseFile(change), Fault::None);
}

TEST_F(Contract, FoldersAndReadOnlyFilesAreRefused) {
    ASSERT_EQ(MakeFolder(In("sub")), Fault::None);
    File file;
    EXPECT_EQ(OpenFile(In("sub"), Access::Change, file), Fault::AccessDenied);
    EXPECT_EQ(RemoveFile(In("sub")), Fault::AccessDenied);
    EXPECT_TRUE(FolderExists(In("sub")) && !FileExists(In("sub")));
    ASSERT_EQ(Put(In("a"), "safe"), Fault::None);
    ASSERT_EQ(WriteAttributes(In("a"), AttributeReadOnly), Fault::None);
    EXPECT_EQ(RemoveFile(In("a")), Fault::AccessDenied);
    EXPECT_EQ(WriteAttributes(In("a"), 0), Fault::None);
    EXPECT_EQ(RemoveFile(In("a")), Fault::None);
}

TEST_F(Contract, AttributesAreToldTheSameEverywhere) {
    constexpr std::uint32_t mask = AttributeReadOnly | AttributeHidden | AttributeSystem;
    ASSERT_EQ(Put(In("a"), "x"), Fault::None);
    for (const std::uint32_t wanted : {mask, 0u, 0u | AttributeHidden, 0u | AttributeSystem}) {
        ASSERT_EQ(WriteAttributes(In("a"), wanted), Fault::None);
        std::uint32_t attributes = 0;
        const FileFacts facts = FactsOf(In("a"));
        EXPECT_EQ(ReadAttributes(In("a"), attributes), Fault::None);
        EXPECT_EQ(attributes & mask, wanted);
        EXPECT_EQ(facts.Attributes & mask, wanted);
        EXPECT_FALSE(facts.IsLink);
        EXPECT_EQ(Entries(folder)["a"].Attributes & mask, wanted);
    }
}

TEST_F(Contract, Streams) {
    ASSERT_EQ(Put(In("a"), "main"), Fault::None);
    std::vector<Stream> streams;
    if (!KeepsStreams())
        GTEST_SKIP() << "no alternate data streams on this drive";
    ASSERT_EQ(Put(In("a:one"), "12345"), Fault::None);
    EXPECT_EQ(ListStreams(In("a"), streams), Fault::None);
    ASSERT_EQ(streams.size(), 1u);
    EXPECT_EQ(streams[0].Path, In("a:one"));
    EXPECT_EQ(streams[0].Length, 5u);
    EXPECT_EQ(Content(streams[0].Path), "12345");
    EXPECT_EQ(Content(In("a")), "main");
}

TEST_F(Contract, HardLinksAreCountedAndNamed) {
    ASSERT_EQ(Put(In("a"), "x"), Fault::None);
    if (!MakeHardLink(In("a"), In("b")))
        GTEST_SKIP() << "no hard links here";
    File file = Opened(In("a"), Access::Change);
    OpenFileFacts known;
    EXPECT_EQ(ReadOpenFileFacts(file, known), Fault::None);
    EXPECT_EQ(CloseFile(file), Fault::None);
    EXPECT_TRUE(FactsOf(In("a")).HardLinks == 2 && known.HardLinks == 2);
    std::vector<std::string> names{"untouched"};
    const Fault fault = ListNames(In("b"), names);
    std::sort(names.begin(), names.end());
    if (fault == Fault::NotSupported) // Wine
        EXPECT_EQ(names, std::vector<std::string>{"untouched"});
    else
        EXPECT_EQ(names, (std::vector{In("a"), In("b")}));
}

TEST_F(Contract, WhereBytesLie) {
    ASSERT_EQ(Put(In("a"), std::string(70000, 'x')), Fault::None);
    File file = Opened(In("a"), Access::Change);
    EXPECT_EQ(FlushBytes(file), Fault::None); // some systems find a place for them then only
    OpenFileFacts known;
    EXPECT_EQ(ReadOpenFileFacts(file, known), Fault::None);
    EXPECT_TRUE(known.Length == 70000 && known.HardLinks == 1);
    std::uint64_t number = 0, another = 0;
    EXPECT_EQ(ReadFileNumber(file, number), Fault::None);
    File other = Opened(In("b"), Access::CreateNew);
    EXPECT_EQ(ReadFileNumber(other, another), Fault::None);
    EXPECT_EQ(CloseFile(other), Fault::None);
    EXPECT_NE(number, another);
    // Whoever tells must not leave out what is there.
    bool clusters = false;
    const Fault told = HasClusters(file, clusters);
    EXPECT_TRUE(told == Fault::NotSupported || (told == Fault::None && clusters));
    std::vector<Range> ranges;
    const Fault listed = ListAllocatedRanges(file, 69000, ranges);
    EXPECT_TRUE(listed == Fault::NotSupported || (listed == Fault::None && ranges.size() == 1 &&
                                                  ranges[0].From == 0 && ranges[0].To == 69000));
    EXPECT_EQ(CloseFile(file), Fault::None);
}

TEST_F(Contract, NamesOfEveryKind) {
    // Outside every code page, beyond 16 bits, decomposed, and what Windows itself would cut off.
    const std::string names[] = {"\xCE\xA9 \xE6\x97\xA5\xE6\x9C\xAC.txt", "\xF0\x9F\x98\x80.bin",
                                 "e\xCC\x81", "ends with blank ", "ends with point."};
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        ASSERT_EQ(Put(In(name), name), Fault::None);
        EXPECT_EQ(Content(In(name)), name);
        EXPECT_EQ(Entries(folder).count(name), 1u);
        EXPECT_EQ(RemoveFile(In(name)), Fault::None);
    }
    EXPECT_FALSE(FileExists(In("*")));
}

TEST_F(Contract, PathsOverTheOldLimit) {
    std::string deep = folder;
    for (int i = 0; i < 10; ++i) {
        deep += "\\" + std::string(40, static_cast<char>('a' + i));
        ASSERT_EQ(MakeFolder(deep), Fault::None);
    }
    ASSERT_EQ(Put(deep + "\\x", "far down"), Fault::None);
    EXPECT_EQ(RenameReplacing(deep + "\\x", deep + "\\y"), Fault::None);
    EXPECT_EQ(Content(deep + "\\y"), "far down");
    EXPECT_EQ(Entries(deep + "\\").size(), 1u);
    EXPECT_EQ(RemoveFile(deep + "\\y"), Fault::None);
    EXPECT_EQ(RemoveFolder(deep), Fault::None);
}
