// "Purge disk", from the choice of the drive to its end. Its boxes are in DiskPurgeQueries.cpp.
#include "disk/DiskPurge.h"

#include "disk/DiskPurgeQueries.h"
#include "disk/DriveChoice.h"
#include "disk/DriveCommand.h"
#include "disk/DriveReport.h"
#include "disk/DummyPlan.h"
#include "disk/FileLoop.h"
#include "disk/FreeSpacePurge.h"
#include "disk/RunProgress.h"
#include "drives/DriveWork.h"
#include "engine/FilePurge.h"
#include "report/run/Run.h"
#include "report/run/TimeEstimates.h"
#include "selection/frmDrives.h"
#include "session/Session.h"
#include "support/FolderSearch.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>

namespace {

const char* const strTitle = "Purge disk";

void Message(const std::string& strText) {
    SetMainLine(MainLine::LargePurgeMessage, strText);
    RepaintMain();
}

/// How it ended, in the main window and in the report.
void TellEnd(const char* strEnd) {
    Message(strEnd);
    TellInReport(strEnd);
}

/// Whether the disk that was chosen is still in the drive; the user is told when it is not. Hours
/// and questions pass before its files are purged, and another disk may have folders of these
/// names.
bool IsSameDisk(DiskPurgeState& state) {
    platform::FolderIdentity identity;
    auto fault = platform::Fault::None;
    WorkOnDrive(state.strRoot,
                [&] { fault = platform::ReadFolderIdentity(state.strRoot, identity); });
    // A root on FAT may have no number; the serial number of its volume counts all the same.
    if (!Failed(fault) && identity == state.hold.Identity)
        return true;
    state.blnGone = true;
    const std::string strText = "The disk that was chosen is no longer in Drive " +
                                std::string(1, state.chrDrive) +
                                ".\r\nThe files on the one that is there now are not purged.";
    TellInReport(strText);
    ui::Complain(strText, strTitle);
    return false;
}

/// Lists files and folders at the top of the drive. False when the drive cannot be read (the user
/// is told) or when F10 ended the reading.
bool LookAtRoot(DiskPurgeState& state) {
    auto fault = platform::Fault::None;
    if (!RunSearch("Reading " + state.strRoot, [&] {
            fault = SearchFolder(state.strRoot, [&](const platform::FolderEntry& entry) {
                if (entry.IsLink) // neither followed nor purged
                    return true;
                if (entry.IsFolder)
                    state.subfolders.push_back(entry.Name);
                else if (!IsNeverPurged(state.strRoot + entry.Name))
                    ++state.lngTopFiles;
                return true;
            });
        })) {
        Message("Purge disk cancelled.");
        return false;
    }
    if (Failed(fault))
        ui::Complain("Error: " + platform::FaultText(fault));
    return !Failed(fault);
}

/// Whether this purge also reaches the file by this path.
bool IsChosen(const DiskPurgeState& state, const std::string& strPath) {
    if (FolderPartOf(strPath) == state.strRoot)
        return state.PurgesTopFiles();
    return std::any_of(
        state.subfolders.begin(), state.subfolders.end(), [&](const std::string& strName) {
            return !state.IsExcluded(strName) && IsBelow(strPath, state.strRoot + strName + "\\");
        });
}

bool WalkDisk(FileLoop& loop, const DiskPurgeState& state) {
    if (!loop.isSameDisk() || (state.PurgesTopFiles() && !WalkFiles(loop, state.strRoot, false)))
        return false;
    for (const std::string& strName : state.subfolders)
        if (!state.IsExcluded(strName) &&
            (!loop.isSameDisk() || !WalkFiles(loop, state.strRoot + strName, true)))
            return false;
    return true;
}

/// strUndoneBefore: what the purge of the free space could not do.
RunState PurgeFilesOfDisk(DiskPurgeState& state, const std::string& strUndoneBefore) {
    FileLoop loop;
    loop.strTitle = strTitle;
    loop.blnErrorBoxes = blnDisplayDialogBoxesDuringRemainderOfPurgeDrive;
    loop.isChosen = [&](const std::string& strPath) { return IsChosen(state, strPath); };
    loop.isSameDisk = [&] { return IsSameDisk(state); };
    Message("Now counting files to be purged ...");
    bool blnFinished = WalkDisk(loop, state);
    if (blnFinished && currentRun.Request.lngNumFilesExpected == 0) {
        EndFileLoop(true);
        SetMainLine(MainLine::Subdirectories2, "");
        Message("");
        ui::MsgBox("There are no non-excluded files,\r\nthus there are no files to purge.",
                   ui::Buttons::OK, ui::Icon::Information, strTitle);
        ShowUndone(loop, strUndoneBefore);
        return RunState::Done;
    }
    loop.blnCounting = false;
    const std::int64_t lngFiles = currentRun.Request.lngNumFilesExpected;
    PlanRunProgress(0); // only the files remain to be planned
    if (blnFinished) {
        SetMainLine(MainLine::Subdirectories2,
                    lngFiles == 1 ? std::string("One file is being purged.")
                                  : GroupedDigits(lngFiles) + " files are being purged.");
        Message("To interrupt this operation upon completion of the current file purge,\r\n"
                "press the F10 key twice and wait for the 'Cancel?' query.");
        BeginLoopProgress();
        blnFinished = WalkDisk(loop, state);
        EndRunProgress();
    }
    EndFileLoop(blnFinished);
    SetMainLine(MainLine::Subdirectories2, "");
    TellEnd(blnFinished ? "The disk has been purged (except for excluded files)."
                        : "\r\nPurge disk was stopped.");
    ShowUndone(loop, strUndoneBefore);
    return state.blnGone ? RunState::Failed : blnFinished ? RunState::Done : RunState::Stopped;
}

/// Text after the drive in the report head: the folders that the user wants to keep.
std::string ExclusionsText(const DiskPurgeState& state) {
    std::string strText;
    if (state.blnExcludeTopFiles)
        strText += "\r\nexcluded: the files in " + state.strRoot;
    for (const std::string& strName : state.excluded)
        strText += "\r\nexcluded: " + state.strRoot + strName + "\\";
    return strText;
}

/// The steps after the choice of the drive, whose root is held open meanwhile.
RunState PurgeHeldDisk(DiskPurgeState& state) {
    float sngSpeed = 0;
    if (!MeasureSpeed(state, sngSpeed) || !ShowDiskEstimate(state, sngSpeed) ||
        !LookAtRoot(state) || !ShowPlan(state) || !AskAboutTopFiles(state) ||
        !AskAboutTopFolders(state) || !AskAboutSystemFolders(state) ||
        !AcceptFillingOf(state.chrDrive, strTitle) || !AskAboutInterruption()) {
        SetMainLine(MainLine::Subdirectories2, "");
        return RunState::Idle;
    }
    if (!IsSameDisk(state)) {
        SetMainLine(MainLine::Subdirectories2, "");
        return RunState::Failed;
    }
    blnStop = false;
    ui::HoldEscape(true);
    BeginDriveReport(strTitle,
                     "Purging Drive " + std::string(1, state.chrDrive) + ExclusionsText(state),
                     state.strRoot);
    if (ReadFreeSpace(state.chrDrive))
        PlanRunProgress(dblSpaceInFreeClusters * (1 + OverwritesToEstimate()) +
                        state.dblFileBytes * OverwritesToEstimate());
    const auto result = PurgeFreeSpaceOf(state.chrDrive, strTitle);
    const std::string strUndone = UnpurgedText(result);
    if (result == FreeSpaceResult::Stopped || result == FreeSpaceResult::Failed ||
        (blnDisplayDialogBoxesDuringRemainderOfPurgeDrive &&
         !ShowFilesNext(state, result == FreeSpaceResult::Purged, strUndone))) {
        SetMainLine(MainLine::Subdirectories2, "");
        TellEnd(result == FreeSpaceResult::Failed
                    ? "Purge disk ended, as the free space was not purged."
                    : "Purge disk cancelled.");
        return result == FreeSpaceResult::Failed ? RunState::Failed : RunState::Stopped;
    }
    // The answer to a box supersedes F10 pressed before it.
    blnStop = blnStop && !blnDisplayDialogBoxesDuringRemainderOfPurgeDrive;
    return PurgeFilesOfDisk(state, strUndone);
}

RunState PurgeDisk() {
    DiskPurgeState state;
    state.chrDrive =
        ChooseWritableDrive("Purge (wipe) which drive?", strTitle, DriveOptions::ForFiles);
    if (state.chrDrive == 0)
        return RunState::Idle;
    state.strRoot = std::string(1, state.chrDrive) + ":\\";
    auto fault = platform::Fault::None;
    WorkOnDrive(state.strRoot, [&] { fault = platform::HoldFolder(state.strRoot, state.hold); });
    if (Failed(fault)) {
        ui::Complain("Error: " + platform::FaultText(fault));
        return RunState::Failed;
    }
    blnPurgingDrive = true;
    const RunState result = PurgeHeldDisk(state);
    platform::LetGo(state.hold);
    return result;
}

} // namespace

void PurgeDiskCommand() {
    RunDriveCommand([] {
        blnStop = false;
        SetMainLine(MainLine::LargePurgeMessage, "");
        return PurgeLibraryReady() ? PurgeDisk() : RunState::Failed;
    });
}
