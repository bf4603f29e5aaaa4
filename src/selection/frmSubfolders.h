// The dialog in which subfolders of a folder are chosen.
#pragma once

#include "selection/Selection.h"
#include "ui/Controls.h"

#include <string>
#include <vector>

/// What becomes of the chosen subfolders: the chooser says it inside.
enum class SubfolderUse { Purge, Keep };
enum class SubfolderChoice {
    Chosen,
    NoneChosen, ///< the user accepted that none is chosen
    Cancelled,
    NotOffered ///< the list could not be read whole, or F10 ended the reading; the user knows
};

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

/// Lays the dialog out and binds its handlers; once, at start-up.
void LoadSubfoldersForm();
/// The subfolder chooser. `strChosen` takes the chosen names, one per line ending in CR LF; "" in
/// every case but the first. Links to folders are not offered.
SubfolderChoice SelectSubfolders(const std::string& strFolder, const std::string& strTitle,
                                 SubfolderUse use, std::string& strChosen);
