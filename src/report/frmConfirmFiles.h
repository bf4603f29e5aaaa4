// The confirmation of a single file in a purge run.
#pragma once

#include "ui/Controls.h"

#include <string>

struct FrmConfirmFiles : ui::Form {
    ui::Label lblFile;
    ui::Button cmdYes, cmdNo, cmdYesAndDontShowAgain, cmdStopPurge;

    bool blnFileConfirmed = false;
};
extern FrmConfirmFiles frmConfirmFiles;

void LoadConfirmFilesForm();
/// Sets the file that the form shows next.
void SetFileToConfirm(const std::string& strPath);
