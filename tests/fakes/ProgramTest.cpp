#include "fakes/ProgramTest.h"

#include "shell/Session.h"
#include "shell/Startup.h"

void ProgramTest::SetUp() {
    fake::Reset();
    fake::user.Reset();
    for (const char* file : {"nullwright.exe", "nwaux6.dll"})
        fake::PutFile(fake::programFolder + "\\" + file, "MZ");
    fake::PutFile(fake::programFolder + "\\nullwright.dat",
                  "2\tNullwright\n23\tNullwright\n310\tNullwright\n320\tSlack.\n321\tWhole.\n"
                  "330\thttps://maker/\n331\thttps://manual/\n");

    strDirPath.clear();
    strBrowsePath.clear();
    strFilespec.clear();
    blnMultipleFiles = blnSubdirectories = blnConfirmFiles = false;
    sngPurgeSpeed = 0;
    sngPurgeSpeeds.fill(0);
    dblBytesMeasured.fill(0);
    dblSecondsMeasured.fill(0);
    dblAF_A = 0.917;
    dblAF_B = 0.2;
    strDummyFileFolderStub = "_nw_dummy";
    dblMaxSizeDummyFile = 52428800;
    intNumDummyFiles = 0;
    dblSpaceInFreeClusters = 0;
    blnStop = blnStopPurge = false;
    intStopAt = 0;
    blnPurgingFreeSpace = blnPurgingDrive = false;
    blnDisplayDialogBoxesDuringRemainderOfPurgeDrive = true;
    blnShowPurgeWarning = true;
    blnPurgeRemainingFiles = false;
    blnStartupCompleted = false;
}

void ProgramTest::TearDown() {
    fake::user.Finish();
    EXPECT_EQ(0, fake::OpenHandles()) << "files were left open";
    fake::user.Reset();
}

void ProgramTest::StartProgram() {
    StartUp();
}
