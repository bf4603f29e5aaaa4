// Chooses a writable drive, and asks before its free space is filled.
#include "disk/DriveChoice.h"

#include "disk/DriveReport.h"
#include "disk/LeftoverDummies.h"
#include "drives/DiskProc.h"
#include "drives/DriveWork.h"
#include "platform/Drives.h"
#include "platform/Places.h"
#include "platform/System.h"
#include "selection/Selection.h"
#include "settings/frmPurgeConfirmation.h"
#include "support/Paths.h"
#include "ui/Interface.h"

std::string FindDrives(const std::string& strTitle) {
    std::string strLetters = platform::DriveLetters();
    if (strLetters.empty())
        ui::Complain("Cannot find any disk drive.", strTitle);
    return strLetters;
}

bool CheckDriveWritable(char chrDrive, const std::string& strTitle) {
    const std::string strDrive(1, chrDrive);
    const std::string strRoot = strDrive + ":\\";
    const auto type = platform::TypeOfDrive(strRoot);
    if (type == platform::DriveType::Remote) {
        ui::Complain("Drive " + strDrive +
                         " is a network drive.\r\n"
                         "Only the drives of this computer itself can be purged.",
                     strTitle);
        return false;
    }
    if (!IsDriveReady(strRoot)) {
        ui::Complain(std::string("There is no ") +
                         (type == platform::DriveType::CdRom ? "CD-ROM" : "disk") + " in Drive " +
                         strDrive + ".",
                     strTitle);
        return false;
    }
    platform::VolumeFacts facts;
    const auto fault = GetVolumeFacts(strRoot, facts);
    // Most discs are read-only, so assume that when the file system tells nothing.
    if (Failed(fault) ? type == platform::DriveType::CdRom : facts.ReadOnly) {
        ui::Complain("The disk in Drive " + strDrive +
                         " is read-only.\r\nNothing on it can be purged.",
                     strTitle);
        return false;
    }
    return true;
}

char ChooseWritableDrive(const std::string& strQuestion, const std::string& strTitle,
                         DriveOptions options) {
    const std::string strLetters = FindDrives(strTitle);
    if (strLetters.empty())
        return 0;
    const char chrDrive = ChooseDrive(strQuestion, strLetters, options);
    driveRequest.How.Options = purgeOptions;
    if (options != DriveOptions::ForFiles) // the names of dummy files tell nothing
        driveRequest.How.Options.OverwriteNames = false;
    if (chrDrive == 0 || !CheckDriveWritable(chrDrive, strTitle))
        return 0;
    OfferToRemoveLeftoversOn(chrDrive);
    return chrDrive;
}

void ComplainOfUnknownSpace(char chrDrive, const std::string& strTitle) {
    ui::Complain(std::string("An error occurred when attempting to ascertain\r\n"
                             "information about the disk in Drive ") +
                     chrDrive + ".  ",
                 strTitle);
}

namespace {

/// A letter may stand for a folder on the drive of Windows, or be a second one of it.
bool WindowsRunsFrom(char chrDrive) {
    const std::string strSystem = platform::SystemFolder().substr(0, 3);
    platform::FolderIdentity ofDrive, ofSystem;
    WorkOnDrive(strSystem, [&] { (void)platform::ReadFolderIdentity(strSystem, ofSystem); });
    const std::string strRoot = std::string(1, chrDrive) + ":\\";
    WorkOnDrive(strRoot, [&] { (void)platform::ReadFolderIdentity(strRoot, ofDrive); });
    return DriveLetterOf(strSystem) == chrDrive ||
           (ofDrive.Volume != 0 && ofDrive.Volume == ofSystem.Volume);
}

} // namespace

bool AcceptFillingOf(char chrDrive, const std::string& strTitle) {
    if (!WindowsRunsFrom(chrDrive))
        return true;
    const std::string strDrive(1, chrDrive);
    return ui::MsgBox("Windows runs from Drive " + strDrive +
                          ".  While its free space is being purged, "
                          "Windows and all other programs have no free space on this drive.  "
                          "Windows may delete restore points and earlier versions of files to "
                          "make room.  "
                          "Save your work and close other programs first.\r\n\r\n"
                          "Click 'OK' to continue or 'Cancel' to terminate this operation.",
                      ui::Buttons::OKCancel, ui::Icon::Exclamation, strTitle,
                      "drive of Windows") == ui::AnswerOK;
}

bool AskToContinue(const std::string& strText, const std::string& strTitle,
                   const std::string& strQuestion) {
    return ui::MsgBox(strText, ui::Buttons::OKCancel, ui::Icon::Information, strTitle,
                      strQuestion) == ui::AnswerOK;
}
