// The dialog in which subfolders of a folder are chosen.
#pragma once

#include "selection/Selection.h"
#include "ui/Controls.h"

#include <string>
#include <vector>

struct FrmSubfolders : ui::Form {
    ui::Label lblMessage, lblUse, lblChosen;
    ui::ListBox lstSubfolders;
    ui::Button cmdChooseAll, cmdChooseNone, cmdOK, cmdCancel;
    ui::Timer Clock1; ///< counts on, a little at a time

    SubfolderUse Use = SubfolderUse::Purge;
    std::string strFolder;             ///< with a trailing backslash
    std::vector<std::string> strNames; ///< of the items, in their order
    std::size_t lngNextToCount = 0;
    bool blnAccepted = false;
};
extern FrmSubfolders frmSubfolders;
