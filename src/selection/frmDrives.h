// The dialog in which a drive is chosen.
#pragma once

#include "ui/Controls.h"

struct FrmDrives : ui::Form {
    ui::Label lblMessage;
    ui::ListBox lstDrives; ///< item data: the letter
    ui::CheckBox chkVerifyPurge, chkOverwriteNames;
    ui::Button cmdOK, cmdCancel;

    char chrDrive = 0; ///< the chosen letter, 0 after Cancel
};
extern FrmDrives frmDrives;

/// Lays out the dialog and binds its handlers; called once, at start-up.
void LoadDrivesForm();
/// Which purge options the drive chooser offers.
enum class DriveOptions {
    None,
    ForDummies, ///< "Verify by reading back"
    ForFiles    ///< also "Overwrite file names and dates"
};

/// Shows the drive chooser; returns one of the letters, or 0 when cancelled. The options that it
/// offers are accepted with "OK", as in the dialog of the purge options.
char ChooseDrive(const std::string& strTitle, const std::string& strLetters,
                 DriveOptions options = DriveOptions::None);
