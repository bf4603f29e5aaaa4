// Purging and deleting the dummy files that FillDisk.cpp wrote.
#include "disk/FillDiskPurge.h"

#include "disk/FillDisk.h"
#include "disk/Folder.h"
#include "disk/RunProgress.h"
#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "report/run/RunClock.h"
#include "report/run/RunJob.h"
#include "report/run/TimeEstimates.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr int intDeletionTries = 10; ///< about two seconds
constexpr int intMillisecondsBetweenTries = 200;

constexpr const char* strFilesNext = "Click 'OK' to continue with the files of the disk\r\n"
                                     "or click 'Cancel' to terminate this operation.";

const char* OperationTitle() {
    return blnPurgingDrive ? "Purge disk" : "Purge free space";
}

/// SignedDigits supplies the blank before the counts.
std::string CountsText(std::int64_t lngNotPurged) {
    return "Dummy files purged:" + SignedDigits(FillDisk.lngFilesPurged) +
           "\r\nDummy files not purged:" + SignedDigits(lngNotPurged) + "\r\n\r\n";
}

/// F10 when all dummy files are purged is too late to stop anything but the files of a disk. A disk
/// purge without dialog boxes asks nothing else before them.
bool GoOnAfterDummies() {
    return !blnPurgingDrive || blnDisplayDialogBoxesDuringRemainderOfPurgeDrive ||
           AskInRun(strFilesNext, ui::Buttons::OKCancel, ui::Icon::Question, OperationTitle(),
                    "files after dummies") == ui::AnswerOK;
}

/// The dialog between two files, and after the last one, after a failed file or a stop request.
/// False ends the loop; blnStop stays set if the user wanted to stop.
bool GoOnWithNextFile(std::int16_t intResult, const std::string& strPath, std::int64_t lngNotPurged,
                      bool blnLast) {
    const bool blnFailed = intResult < 0 && intResult != PurgeStopped;
    // "Without further interruption from dialog boxes" includes failures. F10 is the user's own
    // interruption and is answered.
    const bool blnAskOnFailure =
        blnFailed && (!blnPurgingDrive || blnDisplayDialogBoxesDuringRemainderOfPurgeDrive);
    if (lngNotPurged <= 0 || (blnLast && intResult == PurgeDone)) {
        blnStop = blnStop && !GoOnAfterDummies();
        return true;
    }
    if (!blnAskOnFailure && !blnStop)
        return true;
    if (blnAskOnFailure &&
        AskInRun(CountsText(lngNotPurged) + "Error " + std::to_string(intResult) +
                     " when purging " + FileNameOf(strPath) +
                     ".\r\nDo you wish to continue with this operation?",
                 ui::Buttons::YesNo, ui::Icon::Question, OperationTitle(),
                 "failed dummy") != ui::AnswerYes) {
        blnStop = true;
        return false;
    }
    if (lngNotPurged < 2) {
        const std::string strText =
            CountsText(lngNotPurged) + "The unpurged dummy file will now be deleted.";
        if (!blnStop || !blnPurgingDrive) {
            AskInRun(strText, ui::Buttons::OK, ui::Icon::Information, OperationTitle());
            return false;
        }
        // The stop concerned one dummy file only; the files of the disk still have to be purged.
        if (AskInRun(strText + "\r\n\r\n" + strFilesNext, ui::Buttons::OKCancel, ui::Icon::Question,
                     OperationTitle(), "files after dummies") == ui::AnswerOK)
            blnStop = false;
        return false;
    }
    if (!blnStop)
        return true;
    if (AskInRun(CountsText(lngNotPurged) + "Click 'OK' to continue with the next file\r\n"
                                            "or click 'Cancel' to terminate this operation.",
                 ui::Buttons::OKCancel, ui::Icon::Question, OperationTitle(),
                 "next dummy") != ui::AnswerOK)
        return false;
    blnStop = false;
    return true;
}

/// Runs off the interface thread: the folder may hold many files, and the drive may be slow.
platform::Fault ListInSteps(const std::string& strFolder, std::vector<DummyFile>& files) {
    auto fault = platform::Fault::None;
    ui::RunSteps(
        ui::Effort::Long,
        [&] {
            fault = ListDummyFiles(strFolder, strDummyFileFolderStub, files);
            return false;
        },
        [] { return true; });
    return fault;
}

/// Lists the dummy files; those whose length is no multiple of a cluster come last. Purging writes
/// whole clusters, and the disk has room for the missing part only after other dummy files are
/// deleted.
void ListDummyFilesInOrder(std::int64_t lngCluster, std::vector<DummyFile>& files) {
    for (int intTry = 0; intTry < intDeletionTries; ++intTry) {
        if (!Failed(ListInSteps(FillDisk.strDummyFolder, files)))
            break;
        ui::Wait(intMillisecondsBetweenTries);
    }
    std::stable_partition(files.begin(), files.end(),
                          [&](const DummyFile& file) { return file.lngLength % lngCluster == 0; });
}

double BytesOf(const std::vector<DummyFile>& files) {
    double dblBytes = 0;
    for (const DummyFile& file : files)
        dblBytes += static_cast<double>(file.lngLength);
    return dblBytes;
}

} // namespace

bool PurgeDummyFiles(bool blnInteractive, std::int64_t lngNumDummyFiles, const std::string&) {
    std::vector<DummyFile> files;
    ListDummyFilesInOrder(DummyClusterSize(), files);
    RunCounts counts; // separate from the counts of the user's files
    std::int64_t lngDone = 0;
    if (blnInteractive)
        BeginRunProgress(
            BytesOf(files) * OverwritesToEstimate(),
            [&] {
                return "Purging dummy file " + GroupedDigits(lngDone + 1) + " of " +
                       GroupedDigits(std::ssize(files)) + ".";
            },
            [&] {
                return files.empty() ? 1 // what was written may not be listed any more
                                     : (static_cast<double>(lngDone) + PurgeShareDone()) /
                                           static_cast<double>(files.size());
            });
    for (const DummyFile& file : files) {
        PurgeJob job = JobOfRun(
            DummyFilePath(FillDisk.strDummyFolder, strDummyFileFolderStub, file.lngNumber));
        job.Options.OverwriteNames = false; // our names tell nothing
        if (!blnInteractive)
            job.Options.Verify = false; // the speed test measures overwrites
        RunJobOfRun(job, counts);
        if (job.Result == PurgeDone)
            ++FillDisk.lngFilesPurged;
        if (job.Result == PurgeDone && job.HasReadBack == ReadBack::PastCache)
            ++FillDisk.lngFilesVerified;
        ui::DoEvents();
        if (!blnInteractive) {
            if (blnStop)
                break;
            continue;
        }
        ++lngDone;
        RefreshClock();
        if ((blnStop || job.Result < 0) &&
            !GoOnWithNextFile(job.Result, job.Path, lngNumDummyFiles - FillDisk.lngFilesPurged,
                              lngDone == std::ssize(files)))
            break;
    }
    if (blnInteractive)
        EndRunProgress();
    const bool blnStopped = std::exchange(blnStop, false);
    (void)DeleteDummyFiles(FillDisk.strDummyFolder);
    blnStop = blnStopped || (blnStop && blnInteractive && !GoOnAfterDummies());
    return true;
}

bool DeleteDummyFiles(const std::string& strFolder) {
    if (strFolder.empty())
        return true;
    if (strFolder == FillDisk.strDummyFolder && FillDisk.Marker.IsOpen())
        WorkOnDrive(strFolder, [] { (void)platform::CloseFile(FillDisk.Marker); });
    // A virus scanner or an indexer may hold a file for a moment, so try several times.
    bool blnGone = false;
    auto fault = platform::Fault::None;
    for (int intTry = 0; intTry < intDeletionTries && !blnGone; ++intTry) {
        if (intTry > 0)
            ui::Wait(intMillisecondsBetweenTries);
        std::vector<DummyFile> files;
        (void)ListInSteps(strFolder, files);
        std::vector<std::string> paths, small;
        for (const DummyFile& file : files)
            paths.push_back(DummyFilePath(strFolder, strDummyFileFolderStub, file.lngNumber));
        bool blnListed = false;
        std::size_t intNext = 0;
        ui::RunSteps(
            ui::Effort::Long,
            [&] {
                if (!std::exchange(blnListed, true)) {
                    (void)ListRecordFiles(strFolder, strDummyFileFolderStub, small);
                    paths.insert(paths.end(), small.begin(), small.end());
                }
                if (intNext < paths.size()) {
                    (void)DeleteFileClearingAttributes(paths[intNext++], true, true, true);
                    return true;
                }
                fault = RemoveDummyFolder(strFolder, strDummyFileFolderStub);
                return false;
            },
            [] { return true; });
        blnGone = !Failed(fault) || fault == platform::Fault::NotEmpty;
    }
    if (!blnGone)
        ui::Complain("Not all dummy files could be deleted.  They are in the folder\r\n" +
                     strFolder +
                     "\r\nDelete this folder yourself, or let Nullwright remove it at its next "
                     "start.");
    if (fault == platform::Fault::NotEmpty)
        ui::Complain(
            "The dummy files were deleted, but their folder\r\n" + strFolder +
            "\r\nholds something that is not Nullwright's.  It was kept, with that in it.");
    if (strFolder == FillDisk.strDummyFolder)
        FillDisk.strDummyFolder.clear();
    return blnGone;
}

void DeleteDummiesWithMessage(const std::string& strFolder) {
    if (strFolder.empty())
        return;
    SetMainLine(MainLine::LargePurgeMessage, "Deleting dummy files ...");
    RepaintMain();
    (void)DeleteDummyFiles(strFolder);
}
