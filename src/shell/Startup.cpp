// Start-up in its fixed order: each step depends on the earlier ones.
#include "shell/Startup.h"

#include "disk/LeftoverDummies.h"
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
#include "shell/ChosenItems.h"
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
    // Otherwise the current folder would stay open, and a bare file name could mean a file there.
    static_cast<void>(platform::ChangeCurrentFolder("\\"));
}

} // namespace

void ResetSession() {
    ForgetChosenItems();
    strDirPath.clear();
    strBrowsePath.clear();
    strFilespec.clear();
    blnMultipleFiles = blnSubdirectories = blnConfirmFiles = false;
    sngPurgeSpeed = 0;
    sngPurgeSpeeds.fill(0);
    dblBytesMeasured.fill(0);
    dblSecondsMeasured.fill(0);
    dblSmallFileSeconds.fill(0);
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
    FindNextRunSetupPath(); // once, for as long as the program runs
    SetDefaults();
}

void StartUp() {
    blnStartupCompleted = false;
    const std::vector<std::string> commandLineFiles = CommandLineFiles();
    PrepareProgram();
    ColourMessageLabels();
    RestoreWindowPosition();
    LoadNextRunSetup();
    // The drives queried below may be slow: allow no command meanwhile.
    EnableMain(false);
    ui::Show(frmMain);
    UpdateFilesLabels();
    UpdateTypeOfPurgeLabel();
    blnStartupCompleted = true;
    RememberFolder(); // may wait for a slow drive, so only after the window is shown
    UpdateFilesLabels();
    UpdateSubdirectoriesLabels();
    UpdateConfirmFilesLabels();
    ui::Repaint(frmMain);

    OfferToRemoveLeftoverDummies();
    EnableMain(true);
    ui::SetFocus(frmMain.cmdSpecifyDirectory[0]);
    OpenCommandLineFiles(commandLineFiles);
}
