// Finds dummy folders of earlier runs, tells what was interrupted, and removes them on request.
#include "disk/LeftoverDummies.h"

#include "disk/DriveCommand.h"
#include "disk/FillDiskPurge.h"
#include "disk/Folder.h"
#include "drives/DiskProc.h"
#include "platform/Drives.h"
#include "platform/System.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "ui/Interface.h"

#include <algorithm>
#include <atomic>
#include <vector>

namespace {

constexpr std::uint64_t lngMillisecondsBeforeMessage = 500;

/// Our folders on these drives. A drive may have to spin up, so this runs off the interface thread.
/// F10 ends the search after the current drive.
std::vector<DummyFolder> FindLeftovers(const std::string& strLetters) {
    std::vector<DummyFolder> folders;
    std::atomic<std::size_t> intNext{0};
    const auto lngStarted = platform::TickCount();
    std::size_t intShown = std::string::npos;
    blnStop = false;
    ui::RunSteps(
        ui::Effort::Long,
        [&] {
            const auto found = FindLeftoverDummyFolders(std::string(1, strLetters[intNext]) + ":\\",
                                                        strDummyFileFolderStub);
            folders.insert(folders.end(), found.begin(), found.end());
            return ++intNext < strLetters.size();
        },
        [&] {
            const std::size_t intNow = intNext;
            if (intNow < strLetters.size() && intNow != intShown &&
                platform::TickCount() - lngStarted >= lngMillisecondsBeforeMessage) {
                intShown = intNow;
                SetMainLine(MainLine::LargePurgeMessage,
                            std::string("Looking for dummy files of an earlier run on Drive ") +
                                strLetters[intNow] +
                                " ...\r\nTo go on without, press the F10 key.");
                RepaintMain();
            }
            return !blnStop;
        });
    blnStop = false;
    if (intShown != std::string::npos)
        SetMainLine(MainLine::LargePurgeMessage, "");
    return folders;
}

std::string FoldersText(const std::vector<DummyFolder>& folders) {
    std::string strText = folders.size() == 1 ? "the folder" : "the folders";
    for (const DummyFolder& folder : folders)
        strText += "\r\n" + folder.strPath;
    return strText;
}

/// Describes the interrupted work and its remains.
std::string LeftoverText(const std::vector<DummyFolder>& folders) {
    const auto Has = [&](DummyPurpose purpose) {
        return std::any_of(folders.begin(), folders.end(),
                           [=](const DummyFolder& folder) { return folder.Purpose == purpose; });
    };
    const bool blnFilling = Has(DummyPurpose::Filling), blnTest = Has(DummyPurpose::SpeedTest);
    if (!blnFilling && !blnTest)
        return "A purge of free space or a test of the purge speed was interrupted as it began.  "
               "What is left of it is " +
               FoldersText(folders);
    std::string strText;
    if (blnFilling && blnTest)
        strText = "A purge of free space and a test of the purge speed were interrupted before "
                  "their";
    else
        strText = std::string(blnFilling ? "A purge of free space" : "A test of the purge speed") +
                  " was interrupted before its";
    return strText + " dummy files were deleted.  They still " +
           (blnFilling ? "fill the disk" : "take up space") + ", in " + FoldersText(folders);
}

void Offer(const std::vector<DummyFolder>& folders, const std::string& strStart) {
    if (folders.empty() ||
        ui::MsgBox(strStart + LeftoverText(folders) + "\r\n\r\nDo you wish to delete them now?",
                   ui::Buttons::YesNo, ui::Icon::Question, "Dummy files found",
                   "left dummies") != ui::AnswerYes)
        return;
    for (const DummyFolder& folder : folders)
        DeleteDummiesWithMessage(folder.strPath);
    SetMainLine(MainLine::LargePurgeMessage, "");
}

std::string NoFreeSpace(char chrDrive) {
    return std::string("There is no free space on the disk in Drive ") + chrDrive + ".";
}

} // namespace

void OfferToRemoveLeftoversOn(char chrDrive) {
    const auto folders = FindLeftovers(std::string(1, chrDrive));
    if (folders.empty())
        return;
    double dblFree = 0, dblTotal = 0;
    const bool blnFull =
        GetDiskSpaceEx(std::string(1, chrDrive) + ":\\", dblFree, dblTotal) == 0 && dblFree <= 0;
    Offer(folders, blnFull ? NoFreeSpace(chrDrive) + "\r\n\r\n" : "");
}

std::string NoFreeSpaceText(char chrDrive) {
    const auto folders = FindLeftovers(std::string(1, chrDrive));
    return NoFreeSpace(chrDrive) +
           (folders.empty()
                ? ""
                : "\r\nDummy files of an earlier run fill it, in " + FoldersText(folders));
}

void OfferToRemoveLeftoverDummies() {
    std::string strLetters = platform::DriveLetters();
    std::erase_if(strLetters, [](char chrDrive) {
        const auto type = platform::TypeOfDrive(std::string(1, chrDrive) + ":\\");
        return type != platform::DriveType::Fixed && type != platform::DriveType::Removable &&
               type != platform::DriveType::RamDisk;
    });
    if (strLetters.empty())
        return;
    const auto folders = FindLeftovers(strLetters);
    if (!folders.empty())
        RunDriveCommand([&] {
            Offer(folders, "");
            return RunState::Done;
        });
}
