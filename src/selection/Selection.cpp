// The folder browser, and the handling of every chosen path: it is resolved, checked and held.
#include "selection/Selection.h"

#include "platform/Files.h"
#include "platform/System.h"
#include "selection/frmDrives.h"
#include "selection/frmFileSpecification.h"
#include "selection/frmSubfolders.h"
#include "session/Session.h"
#include "support/FolderSearch.h"
#include "support/Paths.h"
#include "ui/Interface.h"

void LoadSelectionForms() {
    LoadFileSpecificationForm();
    LoadSubfoldersForm();
    LoadDrivesForm();
}

namespace {

/// The folder chosen last, and its identity.
std::string strRemembered;
platform::FolderIdentity identityRemembered;

std::string LinkText(const std::string& strPath) {
    return strPath + " is a link.\r\nLinks are not followed: choose what it leads to.";
}

} // namespace

std::string RealPath(const std::string& strPath) {
    std::string strReal;
    return Failed(platform::ReadRealPath(strPath, strReal)) ? platform::FullPath(strPath) : strReal;
}

std::string WhyNoLetter(const std::string& strPath) {
    if (DriveIndexOf(strPath) >= 0)
        return strPath.find(':', 2) == std::string::npos
                   ? ""
                   : strPath + " is no file or folder, but a part of one.";
    return strPath + " is not on a drive with a letter.\r\n"
                     "Nullwright works only on drives that have a letter, not on network "
                     "shares\r\nor other places.";
}

std::string WhyNotTaken(const std::string& strPath, PathKind& kind) {
    platform::FileFacts facts;
    const platform::Fault fault = platform::ReadFileFacts(strPath, facts);
    const bool blnRoot = FolderWithoutBackslash(strPath).size() == 2;
    kind = PathKind::NotThere;
    if (fault == platform::Fault::NotFound)
        return {};
    if (Failed(fault))
        return strPath + " cannot be accessed: " + platform::FaultText(fault) + ".";
    if (facts.IsLink && !blnRoot)
        return LinkText(strPath);
    const bool blnFolder = (facts.Attributes & platform::AttributeFolder) != 0;
    kind = blnFolder ? PathKind::Folder : PathKind::File;
    return {};
}

bool TakePath(std::string& strPath, const std::string& strTitle, PathKind* kind) {
    std::string strReal, strWhyNot = WhyNoLetter(strPath);
    PathKind found{};
    if (strWhyNot.empty())
        AskOnDrive(strPath, [&] {
            strWhyNot = WhyNotTaken(strPath, found);
            if (strWhyNot.empty())
                strReal = RealPath(strPath);
        });
    if (!strWhyNot.empty()) {
        ui::Complain(strWhyNot, strTitle);
        return false;
    }
    strPath = strReal;
    if (kind != nullptr)
        *kind = found;
    return true;
}

void RememberFolder() {
    strRemembered.clear();
    identityRemembered = {};
    if (strDirPath.empty())
        return;
    std::string strReal;
    auto fault = platform::Fault::None;
    AskOnDrive(strDirPath, [&] {
        strReal = FolderWithBackslash(RealPath(strDirPath));
        fault = platform::ReadFolderIdentity(strReal, identityRemembered);
    });
    if (Failed(fault)) // the folder may exist later
        return;
    strDirPath = strRemembered = strReal;
}

bool HoldChosenFolder(platform::FolderHold& hold) {
    if (strDirPath != strRemembered)
        RememberFolder(); // it did not exist when it was set
    auto fault = platform::Fault::None;
    AskOnDrive(strDirPath, [&] { fault = platform::HoldFolder(strDirPath, hold); });
    if (fault == platform::Fault::NotFound)
        ui::Complain("Folder does not exist.");
    else if (Failed(fault))
        ui::Complain("Cannot access the folder.");
    else if (hold.IsLink)
        ui::Complain(LinkText(strDirPath));
    else if (identityRemembered.IsKnown() && hold.Identity != identityRemembered)
        ui::Complain(strDirPath + " is not the folder any more that was chosen.\r\n"
                                  "Please choose the folder again.");
    else
        return true;
    platform::LetGo(hold);
    return false;
}

bool IsSameFolder(const std::string& strFolder, const std::string& strOther) {
    if (strFolder == strOther || DriveIndexOf(strFolder) < 0)
        return strFolder == strOther;
    platform::FolderIdentity identity, other;
    AskOnDrive(strFolder, [&] {
        if (Failed(platform::ReadFolderIdentity(strFolder, identity)) ||
            Failed(platform::ReadFolderIdentity(strOther, other)))
            identity = {};
    });
    return identity.IsKnown() && identity == other;
}

std::string BrowseFolder(const std::string& strTitle) {
    auto folders = ui::ChoosePaths(
        {ui::Choose::Folder, strTitle, strBrowsePath.empty() ? strDirPath : strBrowsePath});
    if (folders.empty() || folders.front().empty() || !TakePath(folders.front(), "Error"))
        return {};
    return FolderWithBackslash(folders.front());
}
