#include "disk/DiskProc.h"
#include "fakes/ProgramTest.h"

using platform::DriveType;

struct DiskProcTest : ProgramTest {};

TEST_F(DiskProcTest, SpaceOfDrivesOfEverySize) {
    double dblFree = 0, dblTotal = 0;
    fake::AddDrive('E', 1 << 20, 256);
    EXPECT_EQ(-2, GetClusterSizeAndFreeSpace("E:\\", dblFree));
    fake::Drive& drive = fake::AddDrive('D', 64ULL << 40, 512);
    drive.Occupied = drive.Capacity - ((5ULL << 32) + 0xC0000000ULL); // the low word's top bit set
    EXPECT_EQ(512, GetClusterSizeAndFreeSpace("D:\\", dblFree));
    EXPECT_EQ(5.0 * 4294967296 + 3221225472.0, dblFree);
    EXPECT_EQ(0, GetDiskSpaceEx("D:\\folder\\x", dblFree, dblTotal));
    EXPECT_EQ(5.0 * 4294967296 + 3221225472.0, dblFree);
    EXPECT_EQ(64.0 * 1099511627776, dblTotal);
    EXPECT_EQ(dblFree, GetFreeSpaceFSO("d:\\folder\\x"));
    drive.Quota = 1000;
    EXPECT_EQ(1000, GetFreeSpaceFSO("D:"));
    drive.MediaPresent = false;
    EXPECT_EQ(-1, GetDiskSpaceEx("D:\\", dblFree, dblTotal));
    EXPECT_EQ(0, GetFreeSpaceFSO("D:\\"));
    EXPECT_EQ(-1, GetClusterSizeAndFreeSpace("D:\\", dblFree));
    EXPECT_EQ(-1, dblFree);
}

TEST_F(DiskProcTest, WhichDrivesThereAre) {
    std::string strDrive;
    std::int16_t intType = 0;
    EXPECT_EQ("", FirstFixedDrive()); // A: cannot be asked about
    fake::AddDrive('A', 1440 * 1024, 512, DriveType::Removable);
    fake::AddDrive('B', 1 << 20, 512, DriveType::CdRom).MediaPresent = false;
    EXPECT_EQ("C:", FirstFixedDrive());
    EXPECT_EQ(3, GetFirstDrive(strDrive, intType));
    EXPECT_EQ("A:", strDrive);
    EXPECT_EQ(1, intType);
    fake::drives['C'].MediaPresent = false; // only other than fixed drives must show their space
    EXPECT_TRUE(IsDriveReady("C:\\"));
    EXPECT_FALSE(IsDriveReady("B:\\"));
    fake::drives.clear();
    EXPECT_EQ(0, GetFirstDrive(strDrive, intType));
    EXPECT_EQ(-1, intType);
}

TEST_F(DiskProcTest, FreeSpaceSentences) {
    EXPECT_EQ("Drive C has 1,048,575 bytes free.", FreeSpaceText("C:\\", 1048575));
    EXPECT_EQ("Drive C has 1,048,576 bytes (1.00 MB) free.", FreeSpaceText("C:", 1048576));
}
