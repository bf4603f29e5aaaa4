// "Purge folders": purges all files in chosen subfolders of a folder.
#include "disk/PurgeFolders.h"

#include "disk/DriveChoice.h"
#include "disk/DriveCommand.h"
#include "disk/DriveReport.h"
#include "disk/FileLoop.h"
#include "disk/RunProgress.h"
#include "disk/SystemFolders.h"
#include "engine/FilePurge.h"
#include "platform/Places.h"
#include "report/run/Run.h"
#include "selection/frmSubfolders.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "support/FolderSearch.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "support/StrProc.h"
#include "support/Utf8.h"
#include "ui/Interface.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

const char* const strStopped = "Purge of folders was stopped.";
constexpr std::size_t intMostNamesShown = 10;
constexpr std::size_t intLongName = 40; ///< characters; a longer name gets its own line

std::string SummaryText(const std::vector<std::string>& names) {
    std::string strText =
        names.size() == 1
            ? std::string("One folder will be purged:")
            : NumberInWords(static_cast<std::int64_t>(names.size())) + " folders will be purged:";
    // Deliberate oddity: no blank between the colon and the first name.
    for (std::size_t i = 0; i < names.size() && i < intMostNamesShown; ++i)
        strText += names[i] + (CharactersIn(names[i]) >= intLongName ? "\r\n" : " ");
    if (names.size() > intMostNamesShown)
        strText += "and\r\n" +
                   GroupedDigits(static_cast<std::int64_t>(names.size() - intMostNamesShown)) +
                   " more.";
    return strText + "\r\n\r\nClick 'OK' to begin purging these files\r\n"
                     "or 'Cancel' to terminate this operation.";
}

bool WalkChosen(FileLoop& loop, const std::string& strFolder,
                const std::vector<std::string>& names) {
    for (const std::string& strName : names)
        if (!WalkFiles(loop, FolderWithBackslash(strFolder) + strName, true))
            return false;
    return true;
}

/// "One file in 3 folders is being purged."
std::string BeingPurgedText(std::int64_t lngFiles, std::size_t intFolders) {
    return (lngFiles == 1 ? std::string("One file in ") : GroupedDigits(lngFiles) + " files in ") +
           (intFolders == 1 ? std::string("one folder ")
                            : GroupedDigits(static_cast<std::int64_t>(intFolders)) + " folders ") +
           (lngFiles == 1 ? "is " : "are ") + "being purged.";
}

std::string PurgedText(std::string strText) {
    for (const auto& [strOld, strNew] :
         {std::pair<std::string, const char*>{"is being", "has been"}, {"are being", "have been"}})
        if (const auto at = strText.find(strOld); at != std::string::npos)
            strText.replace(at, strOld.size(), strNew);
    return strText;
}

bool ConfirmSystemFolders(const std::string& strFolder, const std::vector<std::string>& names,
                          const std::string& strTitle) {
    for (const SystemFolder& folder : systemFolders)
        for (const std::string& strName : names)
            if (IsSystemFolder(FolderWithBackslash(strFolder) + strName, folder)) {
                const std::string strPath =
                    std::string(1, DriveLetterOf(strFolder)) + ":\\" + folder.strName;
                if (ui::MsgBox("You have included the " + strPath +
                                   " folder.\r\nAre you sure that you wish to purge all files in "
                                   "that folder?",
                               ui::Buttons::YesNoCancel, ui::Icon::Question, strTitle,
                               "system folder") != ui::AnswerYes)
                    return false;
                break;
            }
    return true;
}

RunState PurgeChosen(const std::string& strFolder, const std::vector<std::string>& names,
                     const std::string& strTitle) {
    FileLoop loop;
    loop.strTitle = strTitle;
    SettleVolume(strFolder);
    std::string strNames;
    for (const std::string& strName : names)
        strNames += "\r\n" + FolderWithBackslash(strFolder) + strName + "\\";
    BeginDriveReport(strTitle, "Purging all files in these folders and below:" + strNames,
                     strFolder);
    loop.isChosen = [&](const std::string& strPath) {
        return std::any_of(names.begin(), names.end(), [&](const std::string& strName) {
            return IsBelow(strPath, FolderWithBackslash(strFolder) + strName + "\\");
        });
    };
    SetMainLine(MainLine::LargePurgeMessage, "Now counting files to be purged ...");
    RepaintMain();
    bool blnFinished = WalkChosen(loop, strFolder, names);
    if (blnFinished && currentRun.Request.lngNumFilesExpected == 0) {
        SetMainLine(MainLine::LargePurgeMessage, "");
        SetMainLine(MainLine::Subdirectories2, "");
        ui::MsgBox("There are no files in any of the selected folders.", ui::Buttons::OK,
                   ui::Icon::Information, strTitle);
        ShowUndone(loop);
        return RunState::Done;
    }
    loop.blnCounting = false;
    const std::string strText =
        BeingPurgedText(currentRun.Request.lngNumFilesExpected, names.size());
    if (blnFinished) {
        SetMainLine(MainLine::Subdirectories2, strText);
        SetMainLine(MainLine::LargePurgeMessage,
                    "To interrupt this operation upon completion of the current file purge,\r\n"
                    "press the F10 key twice and wait for the 'Cancel?' query.");
        RepaintMain();
        ui::HoldEscape(true);
        BeginLoopProgress();
        blnFinished = WalkChosen(loop, strFolder, names);
        EndRunProgress();
    }
    EndFileLoop(blnFinished);
    SetMainLine(MainLine::LargePurgeMessage, blnFinished ? "" : strStopped);
    TellInReport(blnFinished ? "" : strStopped);
    if (blnFinished)
        SetMainLine(MainLine::Subdirectories2, PurgedText(strText));
    RepaintMain();
    ShowUndone(loop);
    return blnFinished ? RunState::Done : RunState::Stopped;
}

/// The steps after the choice of the folder, which is held open meanwhile.
RunState ChooseAndPurge(const std::string& strFolder, const std::string& strTitle) {
    bool blnSubfolders = false;
    auto fault = platform::Fault::None;
    if (!RunSearch("Reading " + strFolder,
                   [&] { fault = LookForSubfolders(strFolder, blnSubfolders); })) {
        SetMainLine(MainLine::LargePurgeMessage, strStopped);
        return RunState::Idle;
    }
    if (Failed(fault)) {
        ui::Complain("Cannot access the folder.");
        return RunState::Failed;
    }
    if (!blnSubfolders) {
        ui::MsgBox(strFolder + " has no subfolders.\r\n\r\n"
                               "If you wish to purge just the files in this folder\r\n"
                               "then click on 'Specify folder' to select this folder\r\n"
                               "and click on 'Specify files' to select all files.",
                   ui::Buttons::OK, ui::Icon::Information, strTitle);
        return RunState::Idle;
    }
    std::string strChosen;
    const auto choice =
        SelectSubfolders(strFolder, "Select subfolders of " + strFolder + " to be purged.",
                         SubfolderUse::Purge, strChosen);
    if (choice == SubfolderChoice::NotOffered)
        return RunState::Idle;
    const auto names = LinesOf(strChosen);
    if (names.empty()) { // or cancelled
        // Deliberate oddity: "subolders" lacks a letter.
        ui::MsgBox("No subolders were selected.", ui::Buttons::OK, ui::Icon::Information, strTitle);
        return RunState::Idle;
    }
    if (!ConfirmSystemFolders(strFolder, names, strTitle))
        return RunState::Idle;
    if (ui::MsgBox(SummaryText(names), ui::Buttons::OKCancel, ui::Icon::Question, strTitle,
                   "purge folders", 2) != ui::AnswerOK)
        return RunState::Idle;
    return PurgeChosen(strFolder, names, strTitle);
}

} // namespace

void PurgeFoldersCommand(const std::string& strTitle) {
    RunDriveCommand([&] {
        blnStop = false;
        if (!PurgeLibraryReady())
            return RunState::Failed;
        if (ui::MsgBox(
                "Do you wish to purge all files in\r\nselected subfolders of some folder?\r\n"
                "(Note that all files in all subfolders of the\r\n"
                "selected subfolders will also be purged.)",
                ui::Buttons::YesNo, ui::Icon::Question, strTitle,
                "select folders") != ui::AnswerYes)
            return RunState::Idle;
        const std::string strFolder =
            BrowseFolder("Specify folder containing subfolders to be purged");
        if (strFolder.empty())
            return RunState::Idle;
        platform::FolderHold hold;
        auto fault = platform::Fault::None;
        AskOnDrive(strFolder, [&] { fault = platform::HoldFolder(strFolder, hold); });
        if (Failed(fault) || hold.IsLink) {
            ui::Complain("Cannot access the folder.");
            return RunState::Failed;
        }
        const RunState state = ChooseAndPurge(strFolder, strTitle);
        platform::LetGo(hold);
        return state;
    });
}
