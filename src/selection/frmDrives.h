// The dialog in which a drive is chosen.
#pragma once

#include "ui/Controls.h"

struct FrmDrives : ui::Form {
    ui::Label lblMessage;
    ui::ListBox lstDrives; ///< item data: the letter
    ui::Button cmdOK, cmdCancel;

    char chrDrive = 0; ///< the letter that was accepted, 0 after Cancel
};
extern FrmDrives frmDrives;
