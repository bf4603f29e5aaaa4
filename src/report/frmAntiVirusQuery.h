// The question whether file-monitoring software is active on this computer.
#pragma once

#include "ui/Controls.h"

#include <string>

struct FrmAntiVirusQuery : ui::Form {
    ui::Label lblQuery;
    ui::Button cmdYes, cmdNo, cmdDontKnow, cmdCancel;

    bool blnNo = false;
    bool blnCancel = false;
    /// Set when AntiVirusAdvice was given for the coming run, which then does not ask again.
    bool blnAsked = false;
};
extern FrmAntiVirusQuery frmAntiVirusQuery;

void LoadAntiVirusQueryForm();
/// The main window's anti-virus advice: shows the query over `frmOwner`, and a recommendation
/// unless the answer is No or Cancel. `strDrive` is the drive letter. Returns 2 to cancel the
/// operation, 1 to go on after the recommendation, 7 to go on without it.
int AntiVirusAdvice(const std::string& strDrive, const ui::Form& frmOwner);
