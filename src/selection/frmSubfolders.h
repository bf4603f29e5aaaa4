// The dialog for choosing subfolders of a folder.
#pragma once

#include "selection/Selection.h"
#include "ui/Controls.h"

#include <string>
#include <vector>

/// What happens to the chosen subfolders; the dialog shows it.
enum class SubfolderUse { Purge, Keep };
enum class SubfolderChoice {
    Chosen,
    NoneChosen, ///< the user confirmed that none is chosen
    Cancelled,
    NotOffered ///< the list was incomplete or F10 ended the reading; the user was told
};

struct FrmSubfolders : ui::Form {
    ui::Label lblMessage, lblUse, lblChosen;
    ui::ListBox lstSubfolders;
    ui::Button cmdChooseAll, cmdChooseNone, cmdOK, cmdCancel;
    ui::Timer Clock1; ///< continues the counting in small slices

    SubfolderUse Use = SubfolderUse::Purge;
    std::string strFolder;             ///< with a trailing backslash
    std::vector<std::string> strNames; ///< in the order of the items
    std::size_t lngNextToCount = 0;
    bool blnAccepted = false;
};
extern FrmSubfolders frmSubfolders;

/// Lays out the dialog and binds its handlers; called once, at start-up.
void LoadSubfoldersForm();
/// Shows the subfolder chooser. `strChosen` receives the chosen names, one per line ending in CR
/// LF; "" unless the result is Chosen. Links to folders are not offered.
SubfolderChoice SelectSubfolders(const std::string& strFolder, const std::string& strTitle,
                                 SubfolderUse use, std::string& strChosen);
