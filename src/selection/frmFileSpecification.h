// The dialog for a file specification.
#pragma once

#include "ui/Controls.h"

#include <string>
#include <vector>

struct FrmFileSpecification : ui::Form {
    ui::Label lblFolder, lblHint, lblMatches;
    /// 0 a single file, 1 all files, 2 all files with an extension, 3 a wildcard form.
    ui::OptionButton optSpecification[4];
    ui::TextBox txbSingleFile, txbExtension, txbForm;
    ui::Button cmdChooseFile, cmdOK, cmdCancel;

    std::string strFolder; ///< with a trailing backslash
    /// The names of the folder's files that could be read in the allowed time.
    std::vector<std::string> strNames;
    bool blnAllNamesRead = false;
    bool blnOtherCaseIsMeant = false; ///< a name may be written in another case
    bool blnFolderRead = false;
    /// The accepted specification; "" after Cancel.
    std::string strResult;
};
extern FrmFileSpecification frmFileSpecification;

/// Lays out the dialog and binds its handlers; called once, at start-up.
void LoadFileSpecificationForm();
/// Shows the file-specification dialog for a folder. Returns "*.*", "*.ext", a wildcard form or one
/// file name; "" when cancelled.
std::string AskFileSpecification(const std::string& strFolder);
