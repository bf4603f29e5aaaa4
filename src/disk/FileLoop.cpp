// The loop over all files of folder trees: counts them, then purges them one by one, and tells what
// was left.
#include "disk/FileLoop.h"

#include "disk/RunProgress.h"
#include "drives/DriveWork.h"
#include "engine/FileOps.h"
#include "engine/FileProc.h"
#include "engine/FilePurge.h"
#include "platform/Files.h"
#include "platform/Places.h"
#include "platform/System.h"
#include "report/PurgeOneFile.h"
#include "session/Session.h"
#include "settings/frmTypeOfPurge.h"
#include "support/FolderSearch.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr std::int64_t intMostNamesTold = 5;

const char* const strGoOn = "Click 'OK' to continue, or 'Cancel' to terminate this operation.";

/// Asks whether to go on; on Cancel the loop ends with blnStop set.
bool GoOn(const FileLoop& loop, const std::string& strText) {
    if (AskInRun(strText + strGoOn, ui::Buttons::OKCancel, ui::Icon::Question, loop.strTitle) ==
        ui::AnswerOK) {
        blnStop = false;
        return true;
    }
    SetMainLine(MainLine::PurgeFoldersMessage, "");
    blnStop = true;
    return false;
}

bool IsPagingFile(const std::string& strName) {
    return platform::LowerCase(strName) == "pagefile.sys" || IsSwapFile(strName);
}

/// "Now purging (pass 1):C:\folder\name", with what is done in front from the second file on. No
/// blank follows the colon: kept so.
void ShowFile(const FileLoop& loop, std::int16_t intPass, const std::string& strPath) {
    std::string strText;
    if (loop.lngPurged >= 2 && loop.lngTotal > 0)
        strText =
            GroupedDigits(loop.lngPurged) + " files purged (" +
            FormatNumber(
                static_cast<double>(loop.lngPurged) * 100 / static_cast<double>(loop.lngTotal), 0) +
            "% of " + GroupedDigits(loop.lngTotal) + ").  ";
    SetMainLine(MainLine::PurgeFoldersMessage,
                strText + "Now purging (pass" + SignedDigits(intPass) + "):" + strPath);
}

/// Each name of a file is one that this loop purges.
bool AllNamesChosen(const FileLoop& loop, const std::string& strPath) {
    std::vector<std::string> names;
    return !Failed(platform::ListNames(strPath, names)) &&
           std::all_of(names.begin(), names.end(), [&](const std::string& strName) {
               return loop.isChosen(strName) && !IsNeverPurged(strName);
           });
}

void PassOver(FileLoop& loop, const std::string& strPath) {
    if (++loop.lngOtherNames <= intMostNamesTold)
        loop.otherNames.push_back(strPath);
}

/// All passes of one file, one by one so that the pass can be shown; deleted after the last. A file
/// that is passed over, or is gone, is no failure.
std::int16_t PurgeOneFile(FileLoop& loop, const std::string& strPath) {
    const std::int16_t intPasses = GetNumberOfPasses();
    std::int16_t intResult = intPasses < 1 ? PurgeNoPasses : PurgeDone;
    std::uint32_t lngReach = 0;
    bool blnNamesChosen = false;
    for (std::int16_t intPass = 1; intPass <= intPasses && intResult == 0; ++intPass) {
        loop.intPassesOver = intPass - 1;
        ShowFile(loop, intPass, strPath);
        const auto purge = [&](bool blnRefuseSeveralNames) {
            (void)PurgeFileWithChecks(strPath, GetPurgeType(), 1, intPass == intPasses, true, true,
                                      false, 0, intResult, &lngReach, blnRefuseSeveralNames);
        };
        purge(!blnNamesChosen);
        if (intResult == PurgeSeveralNames && AllNamesChosen(loop, strPath)) {
            blnNamesChosen = true;
            purge(false);
        }
    }
    lngReach &= ~std::uint32_t{ReachHardLinks}; // all its names are purged in their turn
    if (intResult == PurgeSeveralNames)
        PassOver(loop, strPath);
    if (intResult == PurgeSeveralNames || (intResult == PurgeCannotOpen && IsGone(strPath)))
        return PurgeDone;
    if (intResult == PurgeDone) {
        ++loop.lngPurged;
        if (lngReach != 0)
            ++loop.lngPartly;
    } else
        ++loop.lngFailed;
    return intResult;
}

std::string FailureText(std::int16_t intResult) {
    return intResult == PurgeNotDeleted
               ? std::string("File deletion error.  File (shown below) may be hidden.")
               : "An error (" + std::to_string(intResult) + ") has been reported.";
}

bool VisitFile(FileLoop& loop, const std::string& strPath) {
    std::int16_t intResult = 0;
    if (loop.blnCounting)
        ++loop.lngTotal;
    else {
        intResult = PurgeOneFile(loop, strPath);
        ++loop.lngDone;
        loop.intPassesOver = 0;
        ShowRunProgress();
    }
    ui::DoEvents();
    if (blnStop && !GoOn(loop, strPath + "\r\n"))
        return false;
    // A file that another program holds is passed over without a box.
    if (intResult >= 0 || intResult == PurgeCannotOpen || !loop.blnErrorBoxes)
        return true;
    return GoOn(loop, FailureText(intResult) + "\r\n" + strPath + "\r\n\r\n");
}

} // namespace

bool IsNeverPurged(const std::string& strPath) {
    return IsPagingFile(FileNameOf(strPath)) || ClassifyFileForPurge(strPath) == ClassProgramFolder;
}

namespace {

/// The walk of a folder that is held, and of what lies below it.
bool WalkHeldFolder(FileLoop& loop, const std::string& strPath, bool blnSubfolders,
                    bool blnFilesStay) {
    // The whole list first: purging a file while its folder is being listed could hide others.
    std::vector<std::string> files, subfolders;
    const auto fault = SearchFolder(strPath, [&](const platform::FolderEntry& entry) {
        if (blnStop && !GoOn(loop, strPath + "\r\n"))
            return false;
        if (entry.IsLink)
            return true;
        if (!entry.IsFolder && !blnFilesStay && !IsPagingFile(entry.Name))
            files.push_back(entry.Name);
        if (entry.IsFolder && blnSubfolders)
            subfolders.push_back(entry.Name);
        return true;
    });
    if (Failed(fault))
        ++loop.lngUnreadFolders;
    if (blnStop)
        return false;
    for (const std::string& strName : files)
        if (!VisitFile(loop, strPath + strName))
            return false;
    files = {};
    for (const std::string& strName : subfolders)
        if (!WalkFiles(loop, strPath + strName, true))
            return false;
    return true;
}

} // namespace

bool WalkFiles(FileLoop& loop, const std::string& strFolder, bool blnSubfolders) {
    const std::string strPath = FolderWithBackslash(strFolder);
    // Set before the first folder: ends at once. Later: F10 while a folder was being listed.
    if (blnStop && (!loop.blnBegun || !GoOn(loop, strPath + "\r\n")))
        return false;
    if (!loop.blnBegun)
        ForgetFolders();
    loop.blnBegun = true;
    // The list that it comes from may be hours old: a link that was put in its place meanwhile must
    // not be followed. While the walk is in the folder or below it, none can be put there.
    platform::FolderHold hold;
    auto fault = platform::Fault::None;
    WorkOnDrive(strPath, [&] { fault = platform::HoldFolder(strPath, hold); });
    if (Failed(fault) || hold.IsLink) {
        ++loop.lngUnreadFolders;
        return true;
    }
    const bool blnGoOn =
        WalkHeldFolder(loop, strPath, blnSubfolders, EnterFolder(strPath, hold.Identity));
    platform::LetGo(hold);
    return blnGoOn;
}

double ShareDone(const FileLoop& loop) {
    const double dblFileInHand = (loop.intPassesOver + PurgeShareDone()) / GetNumberOfPasses();
    return loop.lngTotal > 0 ? (static_cast<double>(loop.lngDone) + dblFileInHand) /
                                   static_cast<double>(loop.lngTotal)
                             : 0;
}

void EndCounting(FileLoop& loop) {
    loop.blnCounting = false;
    loop.lngUnreadFolders = 0; // they are met again
}

void EndFileLoop(bool blnFinished) {
    if (blnFinished)
        blnStop = false;
    SetMainLine(MainLine::PurgeFoldersMessage, "");
}

void ShowUndone(const FileLoop& loop, const std::string& strUndoneBefore) {
    const auto Sentence = [](std::int64_t lngCount, const char* strOne, const char* strMany) {
        return lngCount == 0 ? std::string()
                             : (lngCount == 1 ? std::string("One ") + strOne
                                              : GroupedDigits(lngCount) + " " + strMany) +
                                   "\r\n";
    };
    std::string strText =
        (strUndoneBefore.empty() ? "" : strUndoneBefore + "\r\n") +
        Sentence(loop.lngFailed, "file could not be purged.", "files could not be purged.") +
        Sentence(loop.lngUnreadFolders, "folder could not be read completely.",
                 "folders could not be read completely.") +
        Sentence(loop.lngPartly,
                 "purged file was encrypted, compressed, sparse or in the cloud: older copies of "
                 "its data may remain.",
                 "purged files were encrypted, compressed, sparse or in the cloud: older copies of "
                 "their data may remain.") +
        Sentence(loop.lngOtherNames,
                 "file was not purged, as its data also belong to a name outside what was chosen:",
                 "files were not purged, as their data also belong to names outside what was "
                 "chosen:");
    for (const std::string& strPath : loop.otherNames)
        strText += strPath + "\r\n";
    if (loop.lngOtherNames > std::ssize(loop.otherNames))
        strText +=
            "and " + GroupedDigits(loop.lngOtherNames - std::ssize(loop.otherNames)) + " more\r\n";
    if (strText.empty())
        return;
    strText.resize(strText.size() - 2);
    ui::MsgBox(strText, ui::Buttons::OK, ui::Icon::Information, loop.strTitle);
}
