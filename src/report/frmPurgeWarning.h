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
/// The file that its next showing is about.
void SetFileOfAdvice(const std::string& strPath);
