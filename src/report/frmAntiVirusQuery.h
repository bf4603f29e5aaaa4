// The question whether file-monitoring software is active on this computer.
#pragma once

#include "ui/Controls.h"

#include <string>

struct FrmAntiVirusQuery : ui::Form {
    ui::Label lblQuery;
    ui::Button cmdYes, cmdNo, cmdDontKnow, cmdCancel;

    bool blnNo = false;
    bool blnCancel = false;
    /// AntiVirusAdvice was given for the run that follows: it does not ask again.
    bool blnAsked = false;
};
extern FrmAntiVirusQuery frmAntiVirusQuery;

void LoadAntiVirusQueryForm();
/// The main window's anti-virus advice: the query, placed by the window `frmOwner`, and unless the
/// answer is No or Cancel a recommendation. `strDrive` is the drive letter. 2 when the operation
/// is to be cancelled; 1 to go on after the recommendation, 7 to go on without.
int AntiVirusAdvice(const std::string& strDrive, const ui::Form& frmOwner);
