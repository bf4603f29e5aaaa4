// The program for the benches of whole runs, on Windows or Wine.
#include "bench/Heartbeat.h"
#include "bench/runs/Tools.h"
#include "engine/FilePurge.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/frmMain.h"
#include "shell/frmMainLayout.h"
#include "ui/Interface.h"

void bench::BeginProgram() {
    LoadMainForm();
    Initialization();
    InitializePurgeOptions();
    frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = 0;
    if (!PurgeLibraryReady())
        Give("nwaux6.dll is not beside this program");
    ui::Show(frmMain);
}

double bench::StretchOf(const std::function<void()>& work) {
    return LongestStretch(work);
}
