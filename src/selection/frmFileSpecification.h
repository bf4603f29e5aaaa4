// The dialog in which the files of a folder are specified.
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
    /// The names of the folder's files, as many as were read in the time allowed.
    std::vector<std::string> strNames;
    bool blnAllNamesRead = false;
    bool blnFolderRead = false;
    /// What was accepted; "" after Cancel.
    std::string strResult;
};
extern FrmFileSpecification frmFileSpecification;

/// Lays the dialog out and binds its handlers; once, at start-up.
void LoadFileSpecificationForm();
/// The file-specification dialog for a folder: "*.*", "*.ext", a wildcard form or one file name;
/// "" when cancelled.
std::string AskFileSpecification(const std::string& strFolder);
