// Writing dummy files. Purging and deleting them is in FillDiskPurge.cpp.
#include "disk/FillDisk.h"

#include "disk/DummyPlan.h"
#include "disk/FillWork.h"
#include "disk/Folder.h"
#include "disk/RunProgress.h"
#include "disk/SmallRecords.h"
#include "drives/ClusterSizes.h"
#include "drives/DiskProc.h"
#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "platform/Drives.h"
#include "platform/System.h"
#include "report/run/RunClock.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/SizeText.h"
#include "ui/Interface.h"

#include <algorithm>

FillDiskState FillDisk;

namespace {

using platform::Fault;

/// A full disk may have space again a moment later: another program deletes something, or the file
/// system frees space late. This limits how often it is filled again.
constexpr int intMostRounds = 6;

/// Opens the next dummy file and returns its path.
std::string OpenDummy(FillWork& work, Fault& fault) {
    std::string strPath;
    WorkOnDrive(FillDisk.strDriveRoot, [&] {
        strPath = UniqueNumberedFileName(FillDisk.strDummyFolder + "\\" + strDummyFileFolderStub);
        fault = platform::OpenFile(strPath, platform::Access::CreateNew, work.File);
    });
    return strPath;
}

/// Deletes a dummy file that took nothing. False: it is still there.
bool DeleteDummy(const std::string& strPath) {
    bool blnGone = false;
    WorkOnDrive(strPath,
                [&] { blnGone = DeleteFileClearingAttributes(strPath, true, true, true); });
    return blnGone;
}

void WriteRemnantFile(FillWork& work) {
    auto fault = Fault::None;
    const std::string strPath = OpenDummy(work, fault);
    if (Failed(fault))
        return;
    std::int64_t lngLength = 0;
    ui::RunSteps(
        ui::Effort::Long,
        [&] {
            lngLength = WriteRemnant(work);
            return false;
        },
        [] { return true; });
    if (lngLength > 0 || !DeleteDummy(strPath)) {
        FillDisk.dblBytesInFinishedFiles += static_cast<double>(lngLength);
        ++FillDisk.lngFilesWritten;
    }
}

/// The records of the folder and its files also lie in clusters. The file system may delay writing
/// them until those clusters are freed again; then the old contents of the clusters would outlast
/// the purge. Afterwards, reads how much space the full disk still has.
void FlushRecordsAndLookAgain() {
    ui::RunSteps(
        ui::Effort::Long,
        [] {
            (void)platform::FlushRecords(FillDisk.strDummyFolder);
            ReadUnfilledSpace(FillDisk.strDriveRoot);
            return false;
        },
        [] { return true; });
}

/// Flushes and closes the file being written. A disk-full fault here comes from a file system that
/// allocates late. A device that does not support flushing has no cache to flush.
Fault FinishFile(FillWork& work) {
    auto fault = Fault::None;
    ui::RunSteps(
        ui::Effort::Long,
        [&] {
            fault = platform::FlushBytes(work.File);
            if (fault == Fault::NotSupported)
                fault = Fault::None;
            const auto closed = platform::CloseFile(work.File);
            if (!Failed(fault))
                fault = closed;
            return false;
        },
        [] { return true; });
    FillDisk.lngBytesInCurrentFile = work.lngInFile;
    ShowDummyFileProgress();
    FillDisk.dblBytesInFinishedFiles += static_cast<double>(FillDisk.lngBytesInCurrentFile);
    FillDisk.lngBytesInCurrentFile = 0;
    return fault;
}

/// Writes units into the open file until it has its full size. False when the disk is full,
/// something fails or the user ends the filling.
bool FillOneFile(FillWork& work) {
    const bool blnFloppy = IsFloppyLetter(FillDisk.strDriveRoot[0]);
    std::int64_t lngShown = 0;
    const auto Poll = [&] {
        FillDisk.lngBytesInCurrentFile = work.lngInFile;
        FillDisk.dblFreeSpaceNow = work.dblFreeShown;
        FillDisk.dblFreeSpaceAtStart = std::max(FillDisk.dblFreeSpaceAtStart, work.dblGoal.load());
        const std::int64_t lngMebibytes = FillDisk.lngBytesInCurrentFile / lngBytesPerMB;
        if (!blnFloppy && lngMebibytes != lngShown) {
            lngShown = lngMebibytes;
            ShowDummyFileProgress();
        }
        return !blnStop;
    };
    while (true) {
        ui::RunSteps(
            ui::Effort::Long, [&] { return WriteStep(work); }, Poll);
        FillDisk.lngBytesInCurrentFile = work.lngInFile;
        ui::DoEvents();
        if (!blnStop)
            return true;
        ShowDummyFileProgress();
        if (CancelFilling())
            return false;
        work.blnAskFree = true;
        if (Failed(work.Error) || work.lngInFile >= work.lngLimit)
            return true;
    }
}

void EndWithFault(FillWork& work) {
    FillDisk.Outcome = FillOutcome::Faulted;
    if (FillDisk.intTestQuantity > 0)
        return;
    ui::Complain("Error: " + (work.strError ? work.strError : platform::FaultText(work.Error)));
}

/// Whole clusters, even if a cluster is larger than the intended dummy file.
std::int64_t MostBytesInFile(const FillWork& work) {
    const auto lngMost = static_cast<std::int64_t>(dblMaxSizeDummyFile);
    if (FillDisk.intTestQuantity > 0)
        return std::min(lngMost, FillDisk.intTestQuantity * lngBytesPerMB -
                                     static_cast<std::int64_t>(work.dblTotal));
    return (lngMost + work.lngCluster - 1) / work.lngCluster * work.lngCluster;
}

/// Writes file after file until the disk is full and returns true. Else sets the outcome and
/// returns false.
bool FillUntilFull(FillWork& work) {
    while (true) {
        const std::string strPath = OpenDummy(work, work.Error);
        FillDisk.strCurrentDummyFile = platform::LowerCase(strPath);
        FillDisk.lngBytesInCurrentFile = 0;
        work.lngInFile = 0;
        work.lngLimit = MostBytesInFile(work);
        const bool blnOpened = !Failed(work.Error);
        bool blnStopped = false;
        if (blnOpened) {
            blnStopped = !FillOneFile(work);
            ++FillDisk.lngFilesWritten;
            const auto fault = FinishFile(work);
            // Every filling ends with a full disk; that fault must not hide a failed flush.
            if (!Failed(work.Error) || (Failed(fault) && work.Error == Fault::DiskFull))
                work.Error = fault;
        }
        if (blnStopped) {
            FillDisk.Outcome = FillOutcome::Stopped;
            return false;
        }
        if (work.Error == Fault::DiskFull) {
            FillDisk.Outcome = FillOutcome::Done;
            if (FillDisk.intTestQuantity > 0)
                return false;
            const bool blnTaken = blnOpened && (work.lngInFile > 0 || !DeleteDummy(strPath));
            if (blnOpened && !blnTaken)
                --FillDisk.lngFilesWritten;
            WriteRemnantFile(work);
            if (work.Error == Fault::DiskFull)
                return true;
            EndWithFault(work);
            return false;
        }
        if (Failed(work.Error)) {
            EndWithFault(work);
            return false;
        }
        if (FillDisk.intTestQuantity > 0 &&
            work.dblTotal >= static_cast<double>(FillDisk.intTestQuantity * lngBytesPerMB)) {
            FillDisk.Outcome = FillOutcome::Done;
            return false;
        }
    }
}

void WriteFiles(FillWork& work) {
    for (int intRound = 1;; ++intRound) {
        const double dblBefore = FillDisk.dblBytesInFinishedFiles;
        if (!FillUntilFull(work))
            return;
        FlushRecordsAndLookAgain();
        // Space that this round could not fill cannot be filled by the next one either.
        if (intRound >= intMostRounds || FillDisk.dblUnfilled <= 0 ||
            FillDisk.dblBytesInFinishedFiles <= dblBefore)
            return;
        BeginFilling(work, work.lngCluster);
    }
}

/// Whether the filling continues after small files have taken old records; if not, the user is told
/// why.
bool GoesOn(FillWork& work, const RecordWork& records, FillOutcome outcome) {
    if (outcome == FillOutcome::Faulted) {
        work.Error = records.Error;
        EndWithFault(work);
    } else if (outcome == FillOutcome::Stopped)
        FillDisk.Outcome = outcome;
    return outcome == FillOutcome::Done;
}

double BytesWritten() {
    return FillDisk.dblBytesInFinishedFiles + static_cast<double>(FillDisk.lngBytesInCurrentFile);
}

double BytesToWrite() {
    return std::max(FillDisk.dblFreeSpaceAtStart, 1.0);
}

std::string StatusText(char chrDrive) {
    std::string strText = intNumDummyFiles == 1
                              ? std::string("One dummy file is being written ")
                              : GroupedDigits(intNumDummyFiles) + " dummy files are being written ";
    strText += std::string("to fill the disk in Drive ") + chrDrive + ".";
    if (!IsFloppyLetter(chrDrive))
        strText += "\r\nTo interrupt this operation press the F10 key twice\r\n"
                   "and wait for the 'Cancel' query.\r\n";
    return strText;
}

} // namespace

bool CancelFilling() {
    if (AskInRun("Do you wish to cancel this operation?", ui::Buttons::YesNo, ui::Icon::Question,
                 "Cancel?", "cancel filling") == ui::AnswerYes ||
        ui::Ending())
        return true;
    blnStop = false;
    return false;
}

bool IsFloppyLetter(char chrDrive) {
    return chrDrive == 'A' || chrDrive == 'B' || chrDrive == 'a' || chrDrive == 'b';
}

void WriteDummyFiles() {
    const char chrDrive = platform::UpperCase(FillDisk.strDriveRoot.substr(0, 1))[0];
    const bool blnTest = FillDisk.intTestQuantity > 0;
    FillDisk.Outcome = FillOutcome::NothingWritten;
    FillDisk.strDummyFolder.clear();
    FillDisk.strCurrentDummyFile.clear();
    FillDisk.lngFilesWritten = FillDisk.lngFilesPurged = FillDisk.lngFilesVerified = 0;
    FillDisk.lngBytesInCurrentFile = 0;
    FillDisk.dblBytesInFinishedFiles = 0;
    FillDisk.dblUnfilled = FillDisk.dblKeptBack = 0;
    // Hours may have passed since the questions.
    if (ReadFreeSpace(chrDrive) && !blnTest)
        PlanDummyFiles(chrDrive);
    if (dblSpaceInFreeClusters <= 0) {
        if (!blnTest)
            ui::Complain(std::string("No free space on the disk in Drive ") + chrDrive + ".",
                         "Disk full");
        return;
    }
    if (!blnTest) {
        FillDisk.strStatusText = StatusText(chrDrive);
        SetMainLine(MainLine::LargePurgeMessage, FillDisk.strStatusText);
        RepaintMain();
    }
    FillWork work;
    BeginFilling(work, DummyClusterSize());
    std::uint32_t lngAttributes = 0;
    // The disk may have fallen asleep during the questions and have to spin up.
    WorkOnDrive(FillDisk.strDriveRoot, [&] {
        FillDisk.strDummyFolder = MakeDummyFolder(
            FillDisk.strDriveRoot, strDummyFileFolderStub,
            blnTest ? DummyPurpose::SpeedTest : DummyPurpose::Filling, FillDisk.Marker);
        if (!FillDisk.strDummyFolder.empty())
            (void)platform::ReadAttributes(FillDisk.strDummyFolder, lngAttributes);
    });
    if (FillDisk.strDummyFolder.empty()) {
        if (!blnTest)
            ui::Complain(std::string("Unable to create a temporary folder on the disk in Drive ") +
                             chrDrive + ".",
                         "Disk full");
        return;
    }
    blnStop = false;
    FillDisk.dblFreeSpaceAtStart = dblSpaceInFreeClusters;
    if ((lngAttributes & platform::AttributeCompressed) != 0) {
        // A compressed file of null bytes takes hardly any space, so the disk would never become
        // full.
        work.Error = Fault::NotSupported;
        work.strError = "This drive compresses all new files, so that its free space cannot be "
                        "filled.  Turn off the compression of its top folder first";
        EndWithFault(work);
        return;
    }
    if (!blnTest)
        BeginRunProgress(
            FillDisk.dblFreeSpaceAtStart, [] { return std::string("Filling the free space."); },
            [] { return BytesWritten() / BytesToWrite(); });
    RecordWork records;
    records.lngCluster = work.lngCluster;
    if (!blnTest)
        records.Old = OldRecordsOn(FillDisk.strDriveRoot);
    if (GoesOn(work, records, TakeFreeRecords(records))) {
        // The small files have taken some of the free space.
        if (records.lngMade > 0 && ReadFreeSpace(chrDrive))
            FillDisk.dblFreeSpaceAtStart = dblSpaceInFreeClusters;
        WriteFiles(work);
        if (FillDisk.Outcome == FillOutcome::Done)
            (void)GoesOn(work, records, TakeLastRecords(records));
    }
    EndRunProgress();
}

std::int64_t DummyClusterSize() {
    double dblFree = 0;
    return std::max({GetClusterSizeAndFreeSpace(FillDisk.strDriveRoot, dblFree),
                     GetClusterSize(FillDisk.strDriveRoot.substr(0, 1)), 512});
}

void ReadUnfilledSpace(const std::string& strRoot) {
    FillDisk.dblUnfilled = FillDisk.dblKeptBack = 0;
    std::uint64_t lngFree = 0, lngTotal = 0, lngOnVolume = 0;
    if (Failed(platform::ReadDriveSpace(strRoot, lngFree, lngTotal, &lngOnVolume)))
        return;
    FillDisk.dblUnfilled = static_cast<double>(lngFree);
    FillDisk.dblKeptBack = static_cast<double>(std::max(lngOnVolume, lngFree) - lngFree);
}

void ShowDummyFileProgress() {
    if (FillDisk.intTestQuantity > 0)
        return;
    const double dblWritten = BytesWritten();
    // Other programs may free space that is then filled too, so limit the rest at zero.
    const double dblToWrite = std::max(FillDisk.dblFreeSpaceAtStart - dblWritten, 0.0);
    const double dblPercent = std::min(dblWritten * 100 / BytesToWrite(), 100.0);
    SetMainLine(MainLine::Status, "Written: " + ByteSizeTextUpToMB(dblWritten, 0) + " (" +
                                      FormatNumber(dblPercent, 0) +
                                      "%)   To be written: " + ByteSizeTextUpToMB(dblToWrite, 0));
    RefreshClock();
    RepaintMain();
}
