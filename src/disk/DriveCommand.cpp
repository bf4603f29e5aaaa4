// Runs a command on drives, and resets everything after it.
#include "disk/DriveCommand.h"

#include "disk/DriveReport.h"
#include "disk/FillDisk.h"
#include "disk/FillDiskPurge.h"
#include "disk/RunProgress.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "ui/Interface.h"

void RunDriveCommand(const std::function<RunState()>& command) {
    EnableMenu(false);
    driveRequest = {};
    driveRequest.blnPurgeFiles = true;
    driveRequest.blnInReport = false;
    PurgeHow& how = driveRequest.How = PurgeHowInForce();
    how.blnPurgeSlackOnly = how.blnDoNotDeletePurgedFiles = false;
    how.blnOKToPurgeReadOnlyFiles = how.blnOKToPurgeSystemFiles = true;
    blnStop = false;
    const RunState state = command();
    ForgetRunProgress();
    EndDriveReport(state);
    ui::HoldEscape(false);
    (void)DeleteDummyFiles(FillDisk.strDummyFolder);
    FillDisk.intTestQuantity = 0;
    blnStop = false;
    blnPurgingFreeSpace = false;
    blnPurgingDrive = false;
    blnDisplayDialogBoxesDuringRemainderOfPurgeDrive = true;
    dblMaxSizeDummyFile = dblStandardDummySize;
    SetMainLine(MainLine::Status, "");
    ShowMainProgress(-1);
    EnableMenu(true);
}
