// The advice shown before a file that file-monitoring software is likely to intercept.
#pragma once

#include "ui/Controls.h"

#include <string>

struct FrmPurgeWarning : ui::Form {
    ui::Label lblMessage;
    ui::CheckBox chkDontShowAgain;
    ui::Button cmdOK, cmdStopPurge;

    std::string strFilePath;
};
extern FrmPurgeWarning frmPurgeWarning;

void LoadPurgeWarningForm();
/// Sets the file that the form shows next.
void SetFileOfAdvice(const std::string& strPath);
