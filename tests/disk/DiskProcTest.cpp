// Facts about drives.
#include "drives/DiskProc.h"
#include "fakes/ProgramTest.h"

using DiskProcTest = ProgramTest;

TEST_F(DiskProcTest, WhatDrivesSayOfTheirSpace) {
    double dblFree = 0;
    fake::AddDrive('E', 1 << 20, 256);
    EXPECT_EQ(-2, GetClusterSizeAndFreeSpace("E:\\", dblFree));
    fake::drives['C'].MediaPresent = false; // only other than fixed drives must show their space
    EXPECT_TRUE(IsDriveReady("C:\\"));
    dblFree = 0;
    EXPECT_EQ(-1, GetClusterSizeAndFreeSpace("C:\\", dblFree));
    EXPECT_EQ(-1, dblFree);
}
