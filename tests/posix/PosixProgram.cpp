// The program over the POSIX back end, as the tests and the benches run it.
#include "fakes/FakePlatform.h"
#include "fakes/ScriptedUser.h"
#include "posix/ScratchRoot.h"
#include "report/BatchDriver.h"
#include "report/frmReport.h"
#include "report/run/Run.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/frmMainLayout.h"
#include "shell/Startup.h"
#include "support/Workers.h"

namespace posix {

void BeginProgram(int passes) {
    fake::ResetMachine();
    fake::blnRealClock = true;
    intMostWorkers = 16;
    fake::user.Reset();
    fake::user.RealThreads = true;
    ResetSession();
    LoadMainForm();
    LoadReportForm();
    Initialization();
    InitializePurgeOptions();
    blnShowPurgeWarning = false;
    frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = passes - 1;
    ui::Show(frmReport);
}

std::string PurgeFolder(const std::string& folder) {
    currentRun.Request.strDirPath = folder + "\\";
    currentRun.Request.strFilespec = "*.*";
    currentRun.Request.blnPurgeFiles = true;
    currentRun.Counts.lngNumFilesPurged = 0; // stays as it is when the run cannot begin
    ResetReportWindow();
    ProcessFiles();
    return frmReport.txbText.Text;
}

} // namespace posix
