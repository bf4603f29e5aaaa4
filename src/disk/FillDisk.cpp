// Writing dummy files. Purging and deleting them is in FillDiskPurge.cpp.
#include "disk/FillDisk.h"

#include "disk/DiskProc.h"
#include "disk/Folder.h"
#include "disk/RunProgress.h"
#include "engine/EngineNeeds.h"
#include "engine/FileProc.h"
#include "platform/Drives.h"
#include "platform/System.h"
#include "shell/Session.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "ui/Interface.h"

#include <algorithm>
#include <atomic>
#include <vector>

FillDiskState FillDisk;

namespace {

using platform::Fault;

constexpr std::int64_t lngWriteUnit = 131072; ///< bytes; near the end it becomes one cluster
constexpr std::int64_t lngLongestRun = 8 * lngWriteUnit;
constexpr std::int64_t lngMebibyte = 1048576;
/// Asking for the free space costs some 45 microseconds, a third of what writing a unit does. So it
/// is asked before every unit only when by the last answer less than this is left, and else by
/// time: an outcome other than that of asking always would need another program that writes more
/// than this within that time, and even then the write that fails brings us to the same end.
constexpr double dblNearEnd = 64.0 * lngMebibyte;
constexpr std::uint64_t lngMillisecondsBetweenQueries = 250;

/// What the writing shares with the I/O thread. While that works, this side reads atomics only.
struct FillWork {
    std::vector<char> Zeros;
    platform::File File;
    std::int64_t lngUnit = lngWriteUnit;
    std::int64_t lngCluster = 4096;
    std::int64_t lngLimit = 0; ///< bytes at which the file in hand ends
    std::atomic<std::int64_t> lngInFile{0};
    double dblFree = 0; ///< by the last query, less what was written since
    std::atomic<double> dblFreeShown{0};
    std::uint64_t lngLastQuery = 0; ///< tick count
    double dblTotal = 0;            ///< written in all files
    bool blnAskFree = true;         ///< not asked yet
    Fault Error = Fault::None;
    const char* strError = nullptr; ///< instead of the fault's own description
};

/// After a failed write: keeps whole clusters of what it left, so that purging this file later
/// needs no space beyond its own.
void KeepWholeClusters(FillWork& work) {
    std::uint64_t lngLength = 0;
    if (Failed(platform::ReadLength(work.File, lngLength)))
        return;
    const auto lngWhole = static_cast<std::int64_t>(lngLength) / work.lngCluster * work.lngCluster;
    if (Failed(platform::ChangeLength(work.File, static_cast<std::uint64_t>(lngWhole))) ||
        Failed(platform::SeekTo(work.File, static_cast<std::uint64_t>(lngWhole))))
        return;
    work.lngInFile = lngWhole;
}

/// Writes one unit, or a run of them far from the end. False when the file in hand is done.
bool WriteStep(FillWork& work) {
    bool blnNearEnd = true;
    if (work.lngUnit > work.lngCluster) {
        const auto lngNow = platform::TickCount();
        if (work.blnAskFree || work.dblFree <= dblNearEnd ||
            lngNow - work.lngLastQuery >= lngMillisecondsBetweenQueries) {
            double dblFree = 0;
            work.Error = GetFreeSpaceFSO(FillDisk.strDriveRoot, dblFree);
            if (Failed(work.Error))
                return false;
            work.dblFree = work.dblFreeShown = dblFree;
            work.lngLastQuery = lngNow;
            work.blnAskFree = false;
        }
        if (work.dblFree <= static_cast<double>(work.lngUnit))
            work.lngUnit = work.lngCluster;
        blnNearEnd = work.dblFree <= dblNearEnd;
        // A file system that compresses null bytes or shares equal blocks would never be full.
        if (work.dblTotal > 1.25 * FillDisk.dblFreeSpaceAtStart + dblNearEnd &&
            work.dblFree > FillDisk.dblFreeSpaceAtStart / 2) {
            work.Error = Fault::NotSupported;
            work.strError = "The free space does not shrink as files are written";
            return false;
        }
    }
    std::int64_t lngSize = work.lngUnit;
    if (!blnNearEnd) {
        const std::int64_t lngLeft = work.lngLimit - work.lngInFile;
        const std::int64_t lngUnits = (lngLeft + work.lngUnit - 1) / work.lngUnit;
        lngSize = std::clamp(lngUnits * work.lngUnit, work.lngUnit, lngLongestRun);
    }
    const auto fault =
        platform::WriteBytes(work.File, work.Zeros.data(), static_cast<std::size_t>(lngSize));
    if (!Failed(fault)) {
        work.lngInFile += lngSize;
        work.dblFree -= static_cast<double>(lngSize);
        work.dblFreeShown = work.dblFree;
        work.dblTotal += static_cast<double>(lngSize);
        return work.lngInFile < work.lngLimit;
    }
    KeepWholeClusters(work);
    // A long unit may not fit where a cluster still does.
    if (fault == Fault::DiskFull && work.lngUnit > work.lngCluster) {
        work.lngUnit = work.lngCluster;
        return true;
    }
    work.Error = fault;
    return false;
}

/// Where the file system gives space out in pieces smaller than the cluster, or holds small files
/// in its own records, a last small file takes what is left.
void WriteRemnant(FillWork& work, const std::string& strPath) {
    if (Failed(platform::OpenFile(strPath, platform::Access::CreateNew, work.File)))
        return;
    std::uint64_t lngLength = 0;
    ui::RunSteps(
        ui::Effort::Long,
        [&] {
            for (std::int64_t lngSize = work.lngCluster / 2; lngSize > 0; lngSize /= 2) {
                auto fault = Fault::None;
                // Bounded: another program that frees space meanwhile must not keep us here.
                for (int i = 0; i < 128 && !Failed(fault); ++i)
                    fault = platform::WriteBytes(work.File, work.Zeros.data(),
                                                 static_cast<std::size_t>(lngSize));
                if (Failed(fault) && fault != Fault::DiskFull)
                    break;
            }
            (void)platform::ReadLength(work.File, lngLength);
            (void)platform::FlushBytes(work.File);
            (void)platform::CloseFile(work.File);
            return false;
        },
        [] { return true; });
    if (lngLength > 0 || !DeleteFileClearingAttributes(strPath, true, true, true)) {
        FillDisk.dblBytesInFinishedFiles += static_cast<double>(lngLength);
        ++FillDisk.lngFilesWritten;
    }
}

/// The folder's and the files' own records lie in clusters, too. The file system may keep what it
/// wrote there back until they are given up again: what those clusters held before would outlast
/// the purge.
void FlushFolderRecords() {
    ui::RunSteps(
        ui::Effort::Long,
        [] {
            (void)platform::FlushRecords(FillDisk.strDummyFolder);
            return false;
        },
        [] { return true; });
}

/// Flushes and closes the file in hand. A disk-full fault here comes from a file system that
/// allocates late. A device that knows no flush holds nothing back.
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

/// Writes units into the open file until it is as large as it may be, the disk is full, something
/// fails or the user ends it: false then.
bool FillOneFile(FillWork& work) {
    const bool blnFloppy = IsFloppyLetter(FillDisk.strDriveRoot[0]);
    std::int64_t lngShown = 0;
    const auto Poll = [&] {
        FillDisk.lngBytesInCurrentFile = work.lngInFile;
        FillDisk.dblFreeSpaceNow = work.dblFreeShown;
        const std::int64_t lngMebibytes = FillDisk.lngBytesInCurrentFile / lngMebibyte;
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
        if (AskInRun("Do you wish to cancel this operation?", ui::Buttons::YesNo,
                     ui::Icon::Question, "Cancel?") == ui::AnswerYes)
            return false;
        blnStop = false;
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

void WriteFiles(FillWork& work) {
    const std::string strBase = FillDisk.strDummyFolder + "\\" + strDummyFileFolderStub;
    while (true) {
        const std::string strPath = UniqueNumberedFileName(strBase);
        FillDisk.strCurrentDummyFile = platform::LowerCase(strPath);
        FillDisk.lngBytesInCurrentFile = 0;
        work.lngInFile = 0;
        work.lngLimit = static_cast<std::int64_t>(dblMaxSizeDummyFile);
        if (FillDisk.intTestQuantity > 0)
            work.lngLimit = std::min(work.lngLimit, FillDisk.intTestQuantity * lngMebibyte -
                                                        static_cast<std::int64_t>(work.dblTotal));
        work.Error = platform::OpenFile(strPath, platform::Access::CreateNew, work.File);
        const bool blnOpened = !Failed(work.Error);
        bool blnStopped = false;
        if (blnOpened) {
            blnStopped = !FillOneFile(work);
            ++FillDisk.lngFilesWritten;
            const auto fault = FinishFile(work);
            if (!Failed(work.Error))
                work.Error = fault;
        }
        if (blnStopped) {
            FillDisk.Outcome = FillOutcome::Stopped;
            return;
        }
        if (work.Error == Fault::DiskFull) {
            FillDisk.Outcome = FillOutcome::Done;
            if (FillDisk.intTestQuantity > 0)
                return;
            const bool blnTaken =
                blnOpened &&
                (work.lngInFile > 0 || !DeleteFileClearingAttributes(strPath, true, true, true));
            if (blnOpened && !blnTaken)
                --FillDisk.lngFilesWritten;
            WriteRemnant(work, blnTaken ? UniqueNumberedFileName(strBase) : strPath);
            FlushFolderRecords();
            return;
        }
        if (Failed(work.Error)) {
            EndWithFault(work);
            return;
        }
        if (FillDisk.intTestQuantity > 0 &&
            work.dblTotal >= static_cast<double>(FillDisk.intTestQuantity * lngMebibyte)) {
            FillDisk.Outcome = FillOutcome::Done;
            return;
        }
    }
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

bool IsFloppyLetter(char chrDrive) {
    return chrDrive == 'A' || chrDrive == 'B' || chrDrive == 'a' || chrDrive == 'b';
}

void WriteDummyFiles() {
    const char chrDrive = platform::UpperCase(FillDisk.strDriveRoot.substr(0, 1))[0];
    const bool blnTest = FillDisk.intTestQuantity > 0;
    FillDisk.Outcome = FillOutcome::NothingWritten;
    FillDisk.strDummyFolder.clear();
    FillDisk.strCurrentDummyFile.clear();
    FillDisk.lngFilesWritten = FillDisk.lngFilesPurged = 0;
    FillDisk.lngBytesInCurrentFile = 0;
    FillDisk.dblBytesInFinishedFiles = 0;
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
    work.lngCluster = std::clamp(GetClusterSize(std::string(1, chrDrive)), 512, 65536);
    work.Zeros.assign(static_cast<std::size_t>(lngLongestRun), '\0');
    FillDisk.strDummyFolder =
        MakeDummyFolder(FillDisk.strDriveRoot, strDummyFileFolderStub, FillDisk.Marker);
    if (FillDisk.strDummyFolder.empty()) {
        if (!blnTest)
            ui::Complain(std::string("Unable to create a temporary folder on the disk in Drive ") +
                             chrDrive + ".",
                         "Disk full");
        return;
    }
    blnStop = false;
    FillDisk.dblFreeSpaceAtStart = dblSpaceInFreeClusters;
    std::uint32_t lngAttributes = 0;
    if (!Failed(platform::ReadAttributes(FillDisk.strDummyFolder, lngAttributes)) &&
        (lngAttributes & platform::AttributeCompressed) != 0) {
        // A compressed file of null bytes takes hardly any space: the disk would never be full.
        work.Error = Fault::NotSupported;
        work.strError = "This drive compresses all new files, so that its free space cannot be "
                        "filled.  Turn off the compression of its top folder first";
        EndWithFault(work);
        return;
    }
    if (!blnTest)
        BeginRunProgress([] { return BytesWritten() / BytesToWrite(); });
    WriteFiles(work);
    EndRunProgress();
}

void ShowDummyFileProgress() {
    if (FillDisk.intTestQuantity > 0)
        return;
    const double dblWritten = BytesWritten();
    // Space that others gave back meanwhile is filled too: never less than nothing to be written.
    const double dblToWrite = std::max(FillDisk.dblFreeSpaceAtStart - dblWritten, 0.0);
    SetMainLine(MainLine::Status, "Written: " + ByteSizeTextUpToMB(dblWritten, 0) + " (" +
                                      FormatNumber(dblWritten * 100 / BytesToWrite(), 0) +
                                      "%)   To be written: " + ByteSizeTextUpToMB(dblToWrite, 0));
    ShowRunProgress();
    RepaintMain();
}
