#include "disk/DiskProc.h"
#include "fakes/ProgramTest.h"

using DiskProcTest = ProgramTest;

TEST_F(DiskProcTest, WhatDrivesSayOfTheirSpace) {
    double dblFree = 0, dblTotal = 0;
    fake::AddDrive('E', 1 << 20, 256);
    EXPECT_EQ(-2, GetClusterSizeAndFreeSpace("E:\\", dblFree));
    fake::Drive& drive = fake::AddDrive('D', 64ULL << 40, 512);
    drive.Quota = 5ULL << 32;
    EXPECT_EQ(0, GetDiskSpaceEx("D:\\folder\\x", dblFree, dblTotal));
    EXPECT_EQ(64.0 * 1099511627776, dblTotal);
    EXPECT_EQ(5.0 * 4294967296, dblFree);
    EXPECT_EQ(dblFree, GetFreeSpaceFSO("d:\\folder\\x"));
    drive.MediaPresent = false; // only other than fixed drives must show their space
    EXPECT_TRUE(IsDriveReady("D:\\"));
    EXPECT_EQ(-1, GetClusterSizeAndFreeSpace("D:\\", dblFree));
    EXPECT_EQ(-1, dblFree);
}
