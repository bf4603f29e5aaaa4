// Drives, clock, letters, and the auxiliary library.
#include "contract/ContractWorld.h"
#include "platform/Drives.h"
#include "platform/System.h"

using namespace platform;
using namespace contract;

TEST_F(Contract, AFullDriveIsDiskFullAndShortCountsAreFaults) {
    const std::string root = SmallDrive();
    if (root.empty())
        GTEST_SKIP() << "no small drive was prepared (NW_SMALL_DRIVE)";
    std::uint64_t free = 0, total = 0;
    ASSERT_EQ(ReadDriveSpace(root, free, total), Fault::None);
    ASSERT_LE(total, 64u << 20) << "that is no small drive";
    const std::string path = root + "nullwright-contract";
    File file = Opened(path, Access::CreateNew);
    const std::string block(100000, 'x'); // no multiple of a cluster: the last one fits in part
    Fault fault = Fault::None;
    int blocks = 0;
    while (blocks < 1000 && !Failed(fault = WriteBytes(file, block.data(), block.size())))
        ++blocks;
    EXPECT_EQ(fault, Fault::DiskFull);
    std::uint64_t length = 0, left = 0;
    EXPECT_EQ(ReadLength(file, length), Fault::None);
    EXPECT_EQ(CloseFile(file), Fault::None);
    EXPECT_GE(length, blocks * block.size());
    EXPECT_LE(length, free);
    EXPECT_GT(length + (1u << 20), free) << "full long before the end";
    EXPECT_EQ(RemoveFile(path), Fault::None);
    EXPECT_EQ(ReadDriveSpace(root, left, total), Fault::None);
    EXPECT_EQ(left, free);
}

TEST_F(Contract, DrivesTellTheirSpace) {
    const std::string root = folder.substr(0, 3);
    EXPECT_NE(DriveLetters().find(root[0]), std::string::npos);
    EXPECT_EQ(TypeOfDrive(root), DriveType::Fixed);
    EXPECT_EQ(TypeOfDrive(folder), DriveType::Fixed) << "any text that begins with a letter";
    std::uint64_t free = 0, total = 0;
    EXPECT_EQ(ReadDriveSpace(root, free, total), Fault::None);
    EXPECT_LE(free, total);
    ClusterFacts facts;
    EXPECT_EQ(ReadClusterFacts(root, facts), Fault::None);
    const std::uint64_t cluster = std::uint64_t{facts.BytesPerSector} * facts.SectorsPerCluster;
    ASSERT_GE(cluster, 512u);
    EXPECT_EQ(facts.TotalClusters, total / cluster);
    EXPECT_LE(facts.FreeClusters, facts.TotalClusters);
    std::string missing = "Z:\\";
    while (missing[0] > 'A' && DriveLetters().find(missing[0]) != std::string::npos)
        --missing[0];
    EXPECT_EQ(TypeOfDrive(missing), DriveType::NoRoot);
    VolumeFacts volume;
    DriveNature nature;
    const Fault told = ReadDriveNature(root, nature);
    EXPECT_TRUE(told == Fault::None || told == Fault::NotSupported);
    EXPECT_NE(ReadDriveNature(missing, nature), Fault::None);
    std::uint64_t records = 0;
    EXPECT_EQ(ReadRecordCount(root, records), records == 0 ? Fault::NotSupported : Fault::None);
    EXPECT_NE(ReadDriveSpace(missing, free, total), Fault::None);
    EXPECT_NE(ReadClusterFacts(missing, facts), Fault::None);
    EXPECT_NE(ReadVolumeFacts(missing, volume), Fault::None);
    EXPECT_FALSE(FolderExists(missing));
}

TEST_F(Contract, CaseOfTheWholeOfUnicode) {
    // Latin, Greek with its final sigma, Cyrillic, sharp s (no single capital), full-width A,
    // Deseret (beyond 16 bits).
    const std::string small = "az\xC3\xA9\xCF\x83\xD1\x8F\xEF\xBD\x81\xF0\x90\x90\xA8 1_";
    const std::string large = "AZ\xC3\x89\xCE\xA3\xD0\xAF\xEF\xBC\xA1\xF0\x90\x90\x80 1_";
    EXPECT_EQ(UpperCase(small), large);
    EXPECT_EQ(LowerCase(large), small);
    EXPECT_EQ(UpperCase("\xC3\x9F"), "\xC3\x9F");
    EXPECT_EQ(LowerCase("I"), "i") << "whatever the locale";
}

TEST_F(Contract, TheAuxiliaryLibrary) {
    ASSERT_EQ(LoadAuxiliaryLibrary(), Fault::None);
    const std::string longName(200, 'n');
    ASSERT_EQ(MakeFolder(In(longName)), Fault::None);
    const std::string path = In(longName + "\\\xE6\x97\xA5" + longName.substr(0, 100));
    ASSERT_EQ(Put(path, "0123456789"), Fault::None);
    EXPECT_EQ(AuxiliaryChangeFileSize(path, -1), 0);
    EXPECT_EQ(Content(path), "0123456789");
    EXPECT_EQ(AuxiliaryChangeFileSize(path, 4), 0);
    EXPECT_EQ(Content(path), "0123");
    EXPECT_EQ(AuxiliaryChangeFileSize(path, 6), 0);
    EXPECT_EQ(Content(path), std::string("0123\0\0", 6));
    EXPECT_LT(AuxiliaryChangeFileSize(path, -2), 0);
    HoldFile(path);
    for (const std::int64_t length : {-1, 3})
        EXPECT_EQ(AuxiliaryChangeFileSize(path, length), -4);
    LetGoOfFile();
    EXPECT_EQ(AuxiliaryFlushFile(path), 0);
    EXPECT_LT(AuxiliaryChangeFileSize(In("no"), -1), 0);
    EXPECT_NE(AuxiliaryFlushFile(In("no")), 0);
    EXPECT_FALSE(FileExists(In("no")));
}
