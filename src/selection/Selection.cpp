#include "selection/Selection.h"

#include "engine/FileProc.h"
#include "shell/Session.h"
#include "support/Paths.h"
#include "ui/Interface.h"

// Each in the file of its form.
void LoadFileSpecificationForm();
void LoadSubfoldersForm();
void LoadDrivesForm();

void LoadSelectionForms() {
    LoadFileSpecificationForm();
    LoadSubfoldersForm();
    LoadDrivesForm();
}

bool RefusePath(const std::string& strPath, const std::string& strTitle) {
    if (DriveIndexOf(strPath) < 0)
        ui::Complain(strPath + " is not on a drive with a letter.\r\n"
                               "Nullwright works only on drives that have a letter, not on network "
                               "shares\r\nor other places.",
                     strTitle);
    else if (IsLink(strPath))
        ui::Complain(strPath + " is a link.\r\nLinks are not followed: choose what it leads to.",
                     strTitle);
    else
        return false;
    return true;
}

std::string BrowseFolder(const std::string& strTitle) {
    const std::string folder =
        ui::BrowseFolderDialog(strTitle, strBrowsePath.empty() ? strDirPath : strBrowsePath);
    if (folder.empty() || RefusePath(folder, "Error"))
        return {};
    return FolderWithBackslash(folder);
}
