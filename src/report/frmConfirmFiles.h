// The confirmation of a single file in a purge run.
#pragma once

#include "ui/Controls.h"

struct FrmConfirmFiles : ui::Form {
    ui::Label lblFile;
    ui::Button cmdYes, cmdNo, cmdYesAndDontShowAgain, cmdStopPurge;

    bool blnFileConfirmed = false;
};
extern FrmConfirmFiles frmConfirmFiles;

void LoadConfirmFilesForm();
