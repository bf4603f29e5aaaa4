// Start-up, in its fixed order: each step rests on those before it.
#include "shell/Startup.h"

#include "disk/LeftoverDummies.h"
#include "drives/DiskProc.h"
#include "drives/DriveWork.h"
#include "drives/FileSystems.h"
#include "engine/HeldFiles.h"
#include "platform/System.h"
#include "report/frmReport.h"
#include "report/run/Run.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/SetupFiles.h"
#include "shell/frmMain.h"
#include "shell/frmMainLayout.h"
#include "shell/SetupCommands.h"
#include "shell/SpecifyCommands.h"
#include "support/MainWindow.h"
#include "support/Paths.h"
#include "support/ProgramTexts.h"
#include "ui/Interface.h"

namespace {

void LoadTexts() {
    const std::string strProgramTextFile =
        FolderWithBackslash(platform::ProgramFolder()) + platform::LowerCase("Nullwright") + ".dat";
    const std::string strComplaint = LoadProgramTexts(strProgramTextFile);
    if (!strComplaint.empty())
        ui::Complain(strComplaint);
    frmMain.lblCV_URL.Caption = ProgramText(TextNumber::MakerLink);
}

void ReadDriveInformation() {
    std::string strDrive;
    std::int16_t intType = 0;
    GetFirstDrive(strDrive, intType);
    // Where the setup for the next run is kept is settled here once and for the whole run.
    FindNextRunSetupPath();
}

void SetDefaults() {
    ResetSession();
    frmMain.blnQuitGuard = false;
    frmMain.lblFiles2.Caption.clear();
    frmMain.lblConfirmFiles2.Caption.clear();
    frmMain.lblTypeOfPurge.Caption.clear();
    for (MainLine line :
         {MainLine::Subdirectories2, MainLine::PurgeSpeed, MainLine::EstimatedTime,
          MainLine::LargePurgeMessage, MainLine::PurgeFoldersMessage, MainLine::Status})
        SetMainLine(line, "");
    SetSetupFilename("");

    Initialization();
    InitializePurgeOptions();
    // No folder is held open, and no bare file name means a file in the folder of the program.
    static_cast<void>(platform::ChangeCurrentFolder("\\"));
}

} // namespace

void ResetSession() {
    strDirPath.clear();
    strBrowsePath.clear();
    strFilespec.clear();
    blnMultipleFiles = blnSubdirectories = blnConfirmFiles = false;
    sngPurgeSpeed = 0;
    sngPurgeSpeeds.fill(0);
    dblBytesMeasured.fill(0);
    dblSecondsMeasured.fill(0);
    dblAF_A = dblDefaultAF_A;
    dblAF_B = dblDefaultAF_B;
    strDummyFileFolderStub = strDefaultDummyFileFolderStub;
    dblMaxSizeDummyFile = dblStandardDummySize;
    intNumDummyFiles = 0;
    dblSpaceInFreeClusters = 0;
    blnStop = blnStopPurge = false;
    intStopAt = 0;
    blnPurgingFreeSpace = blnPurgingDrive = false;
    blnDisplayDialogBoxesDuringRemainderOfPurgeDrive = true;
    blnShowPurgeWarning = true;
    blnPurgeRemainingFiles = false;
    currentRun = {};
    ResetHeldFileWaits();
    ForgetDriveSpeeds();
    ForgetFileSystems();
}

void PrepareProgram() {
    ui::OnKeyReleased(KeyReleased);
    LoadMainForm();
    LoadReportForm();
    LoadSelectionForms();
    LoadTexts();
    ReadDriveInformation();
    SetDefaults();
}

void StartUp() {
    blnStartupCompleted = false;
    const std::vector<std::string> commandLineFiles = CommandLineFiles();
    PrepareProgram();
    ColourMessageLabels();
    RestoreWindowPosition();
    LoadNextRunSetup();
    // Drives that are asked below may take their time: no command may begin meanwhile.
    EnableMain(false);
    ui::Show(frmMain);
    UpdateFilesLabels();
    UpdateTypeOfPurgeLabel();
    blnStartupCompleted = true;
    RememberFolder(); // its drive may keep one waiting: not before there is a window
    UpdateFilesLabels();
    UpdateSubdirectoriesLabels();
    UpdateConfirmFilesLabels();
    ui::Repaint(frmMain);

    OfferToRemoveLeftoverDummies();
    EnableMain(true);
    ui::SetFocus(frmMain.cmdSpecifyDirectory[0]);
    OpenCommandLineFiles(commandLineFiles);
}
