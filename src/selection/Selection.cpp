#include "selection/Selection.h"

#include "engine/FileProc.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
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

namespace {

/// The folder chosen last, and what it is.
std::string strRemembered;
platform::FolderIdentity identityRemembered;

/// True, with a message, for a path that is not on a drive with a letter, and for a link.
bool RefusePath(const std::string& strPath, const std::string& strTitle) {
    platform::FileFacts facts;
    if (DriveIndexOf(strPath) < 0)
        ui::Complain(strPath + " is not on a drive with a letter.\r\n"
                               "Nullwright works only on drives that have a letter, not on network "
                               "shares\r\nor other places.",
                     strTitle);
    else if (IsLink(strPath))
        ui::Complain(strPath + " is a link.\r\nLinks are not followed: choose what it leads to.",
                     strTitle);
    else if (const platform::Fault fault = platform::ReadFileFacts(strPath, facts);
             Failed(fault) && fault != platform::Fault::NotFound)
        ui::Complain(strPath + " cannot be accessed: " + platform::FaultText(fault) + ".",
                     strTitle);
    else
        return false;
    return true;
}

/// What the system says of a path; what it cannot say leaves the path as it is meant.
std::string RealPath(const std::string& strPath) {
    std::string strReal;
    return Failed(platform::ReadRealPath(strPath, strReal)) ? platform::FullPath(strPath) : strReal;
}

} // namespace

bool TakePath(std::string& strPath, const std::string& strTitle) {
    if (RefusePath(strPath, strTitle))
        return false;
    strPath = RealPath(strPath);
    return true;
}

void RememberFolder() {
    strRemembered.clear();
    identityRemembered = {};
    if (strDirPath.empty() || !platform::FolderExists(strDirPath))
        return;
    strDirPath = FolderWithBackslash(RealPath(strDirPath));
    if (!Failed(platform::ReadFolderIdentity(strDirPath, identityRemembered)))
        strRemembered = strDirPath;
}

bool HoldChosenFolder(platform::FolderHold& hold) {
    if (strDirPath != strRemembered)
        RememberFolder(); // it was not there when it was set
    const platform::Fault fault = platform::HoldFolder(strDirPath, hold);
    if (fault == platform::Fault::NotFound)
        ui::Complain("Folder does not exist.");
    else if (Failed(fault))
        ui::Complain("Cannot access the folder.");
    else if (hold.IsLink)
        ui::Complain(strDirPath +
                     " is a link.\r\nLinks are not followed: choose what it leads to.");
    else if (identityRemembered.IsKnown() && hold.Identity != identityRemembered)
        ui::Complain(strDirPath + " is not the folder any more that was chosen.\r\n"
                                  "Please choose the folder again.");
    else
        return true;
    platform::LetGo(hold);
    return false;
}

bool IsSameFolder(const std::string& strFolder, const std::string& strOther) {
    platform::FolderIdentity identity, other;
    if (Failed(platform::ReadFolderIdentity(strFolder, identity)) ||
        Failed(platform::ReadFolderIdentity(strOther, other)) || !identity.IsKnown())
        return strFolder == strOther;
    return identity == other;
}

std::string BrowseFolder(const std::string& strTitle) {
    std::string folder =
        ui::BrowseFolderDialog(strTitle, strBrowsePath.empty() ? strDirPath : strBrowsePath);
    if (folder.empty() || !TakePath(folder, "Error"))
        return {};
    return FolderWithBackslash(folder);
}
