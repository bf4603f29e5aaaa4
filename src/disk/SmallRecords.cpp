// Small files that take the free records of NTFS and the free entries of FAT's top folder.
#include "disk/SmallRecords.h"

#include "disk/Folder.h"
#include "disk/RunProgress.h"
#include "drives/DiskProc.h"
#include "engine/FileProc.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "report/run/RunClock.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "ui/Interface.h"

#include <array>
#include <functional>

namespace {

using platform::Fault;

constexpr std::int64_t lngSizeStep = 8; ///< records are allocated in multiples of this
constexpr std::int64_t lngLeastSize = 64;
/// When the file system does not tell whether a file has clusters, find out with this many files.
constexpr int intFilesToTell = 16;
/// Number of long names; they reserve room for at least four times as many short names.
constexpr std::int64_t lngSpares = 64;
/// This many successive files after all others prove that the table grows, so it has no free
/// record. When the table's length is known, fewer are enough; they allow for records handed out of
/// order.
constexpr std::int64_t lngGrowing = 256, lngBehindEnd = 32;
/// Limits for loops that might never end by themselves.
constexpr std::int64_t lngMostFiles = 1 << 24, lngMostLast = 1024, lngMostEntries = 65536;

constexpr std::int64_t lngLargestRecord = 4096;
const std::array<char, lngLargestRecord> Zeros{};

std::string PathOf(const std::string& strName) {
    return FillDisk.strDummyFolder + "\\" + strName;
}

/// Where a newly created file lies, as far as known.
struct MadeFile {
    std::uint64_t lngNumber = 0; ///< 0: unknown
    bool blnTold = false, blnClusters = false;
};

Fault MakeFile(RecordWork& work, const std::string& strPath, std::int64_t lngSize, bool blnAsk,
               MadeFile& made) {
    platform::File file;
    auto fault = platform::OpenFile(strPath, platform::Access::CreateNew, file);
    if (Failed(fault))
        return fault;
    ++work.lngMade;
    if (lngSize > 0)
        fault = platform::WriteBytes(file, Zeros.data(), static_cast<std::size_t>(lngSize));
    if (!Failed(fault)) {
        (void)platform::ReadFileNumber(file, made.lngNumber);
        made.blnTold = blnAsk && !Failed(platform::HasClusters(file, made.blnClusters));
    }
    const auto closed = platform::CloseFile(file);
    return Failed(fault) ? fault : closed;
}

Fault MakeNext(RecordWork& work, std::int64_t lngSize, bool blnAsk, MadeFile& made) {
    return MakeFile(work, PathOf(RecordFileName(work.lngMade)), lngSize, blnAsk, made);
}

/// Whether a file of this size fits into its record. The test file is removed, because its record
/// may still hold the old bytes.
Fault TryFit(RecordWork& work, std::int64_t lngSize, bool& blnFits) {
    const std::int64_t lngFirst = work.lngMade;
    double dblBefore = 0, dblAfter = 0;
    MadeFile made;
    auto fault = GetFreeSpaceFSO(FillDisk.strDriveRoot, dblBefore);
    for (int i = 0; i < intFilesToTell && !Failed(fault) && !made.blnTold; ++i)
        fault = MakeNext(work, lngSize, true, made);
    if (!Failed(fault) && !made.blnTold)
        fault = GetFreeSpaceFSO(FillDisk.strDriveRoot, dblAfter);
    blnFits = made.blnTold
                  ? !made.blnClusters
                  : dblBefore - dblAfter < static_cast<double>(intFilesToTell * work.lngCluster);
    for (std::int64_t i = lngFirst; i < work.lngMade; ++i)
        (void)DeleteFileClearingAttributes(PathOf(RecordFileName(i)), true, true, true);
    return fault;
}

/// Makes one step towards the largest size that fits. False when small files do not lie in records
/// here, or after a failure.
bool FindSizeStep(RecordWork& work) {
    const std::int64_t lngSize =
        work.lngSize == 0 ? lngLeastSize
                          : (work.lngSize + work.lngTooLarge) / 2 / lngSizeStep * lngSizeStep;
    bool blnFits = false;
    work.Error = TryFit(work, lngSize, blnFits);
    if (Failed(work.Error))
        return false;
    (blnFits ? work.lngSize : work.lngTooLarge) = lngSize;
    return work.lngSize > 0;
}

/// Whether all free records are taken: the table grows only then. Growth shows in the record
/// numbers and the table's length. If these are unknown, it shows in the free space that the growth
/// takes; other programs may also take some, but hardly the same amount.
bool HasTakenAll(RecordWork& work, std::uint64_t lngNumber) {
    if (lngNumber > 0 && lngNumber <= work.lngHighest) {
        work.lngBehind = 0;
        return false;
    }
    work.lngHighest = lngNumber;
    if (work.lngRecords > 0 && lngNumber > 0) {
        work.lngBehind = lngNumber >= work.lngRecords ? work.lngBehind + 1 : 0;
        return work.lngBehind >= lngBehindEnd;
    }
    if (work.lngBehind > 0 && ++work.lngBehind < lngGrowing)
        return false;
    const bool blnFirst = work.lngBehind == 0;
    const double dblThen = work.dblFreeThen;
    work.Error = GetFreeSpaceFSO(FillDisk.strDriveRoot, work.dblFreeThen);
    work.lngBehind = 1;
    if (blnFirst || Failed(work.Error))
        return false;
    const double dblRecords = lngGrowing * (work.lngSize > 1024 ? 4096.0 : 1024.0);
    const double dblTaken = dblThen - work.dblFreeThen;
    return dblTaken >= dblRecords / 2 && dblTaken <= dblRecords * 4;
}

/// The marker took a free record before any small file could. Write null bytes until the marker
/// fills its record and leaves it; it then has one cluster, also full of null bytes.
Fault FillMarker(RecordWork& work) {
    auto fault = Fault::None;
    std::int64_t lngSize = 0;
    const auto Grow = [&](std::int64_t lngTo) {
        if (Failed(fault) || lngTo <= lngSize)
            return;
        fault = platform::WriteBytes(FillDisk.Marker, Zeros.data(),
                                     static_cast<std::size_t>(lngTo - lngSize));
        lngSize = lngTo;
    };
    for (std::int64_t lngTo = work.lngSize / 2; lngTo <= work.lngSize; lngTo += lngSizeStep)
        Grow(lngTo);
    for (std::int64_t lngTo = lngLargestRecord; lngTo <= work.lngCluster; lngTo += lngLargestRecord)
        Grow(lngTo);
    return fault;
}

bool TakeStep(RecordWork& work) {
    MadeFile made;
    if (work.lngMade == 0 &&
        Failed(platform::ReadRecordCount(FillDisk.strDriveRoot, work.lngRecords)))
        work.lngRecords = 0;
    if (work.lngTooLarge - work.lngSize > lngSizeStep)
        return FindSizeStep(work);
    if (work.spares.empty() && Failed(work.Error = FillMarker(work)))
        return false;
    if (static_cast<std::int64_t>(work.spares.size()) < lngSpares) {
        const std::string strPath = PathOf(SpareFileName(work.lngMade));
        work.Error = MakeFile(work, strPath, 0, false, made);
        work.spares.push_back(strPath);
        return !Failed(work.Error);
    }
    work.Error = MakeNext(work, work.lngSize, false, made);
    return !Failed(work.Error) && !HasTakenAll(work, made.lngNumber) && !Failed(work.Error) &&
           work.lngMade < lngMostFiles;
}

/// Updates only after every hundredth file: painting costs more than creating a file.
void ShowTaken(std::int64_t lngMade, std::int64_t& lngShown) {
    if (lngMade / 100 == lngShown)
        return;
    lngShown = lngMade / 100;
    SetMainLine(MainLine::Status, "Places of deleted files taken: " + GroupedDigits(lngMade));
    RefreshClock();
    RepaintMain();
}

/// Runs steps until one returns false; F10 asks as in the filling.
FillOutcome TakeSteps(RecordWork& work, const std::function<bool()>& step) {
    bool blnMore = true;
    std::int64_t lngShown = -1;
    while (blnMore) {
        ui::RunSteps(
            ui::Effort::Long, [&] { return blnMore = step(); },
            [&] {
                ShowTaken(work.lngMade, lngShown);
                return !blnStop;
            });
        ui::DoEvents();
        if (blnStop && CancelFilling())
            return FillOutcome::Stopped;
    }
    if (work.Error == Fault::DiskFull)
        work.Error = Fault::None;
    return Failed(work.Error) ? FillOutcome::Faulted : FillOutcome::Done;
}

/// On the full disk: uses up the remaining room in the table and the folder.
FillOutcome TakeLastFileRecords(RecordWork& work) {
    const std::int64_t lngBefore = work.lngMade;
    return TakeSteps(work, [&work, lngBefore] {
        if (!work.spares.empty()) {
            (void)DeleteFileClearingAttributes(work.spares.back(), true, true, true);
            work.spares.pop_back();
            return true;
        }
        MadeFile made;
        work.Error = MakeNext(work, work.lngSize, false, made);
        return !Failed(work.Error) && work.lngMade - lngBefore < lngMostLast;
    });
}

/// The top folder cannot grow on a full disk: empty files in it take its free entries.
FillOutcome TakeTopFolder(RecordWork& work) {
    std::vector<std::string> made;
    const auto outcome = TakeSteps(work, [&] {
        MadeFile ignored;
        const std::int64_t lngBefore = work.lngMade;
        const std::string strPath =
            FillDisk.strDriveRoot + RootEntryName(FillDisk.strDummyFolder, lngBefore);
        // Any refusal means that no entry is left, or none that this user may take.
        const bool blnDone = !Failed(MakeFile(work, strPath, 0, false, ignored));
        if (work.lngMade > lngBefore)
            made.push_back(strPath);
        return blnDone && work.lngMade < lngMostEntries;
    });
    ui::RunSteps(
        ui::Effort::Long,
        [&] {
            if (made.empty())
                return false;
            // A file that stays is removed with the folder later, or prevents its removal.
            (void)DeleteFileClearingAttributes(made.back(), true, true, true);
            made.pop_back();
            return true;
        },
        [] { return true; });
    return outcome;
}

} // namespace

OldRecords OldRecordsOn(const std::string& strRoot) {
    platform::VolumeFacts facts;
    if (Failed(GetVolumeFacts(strRoot, facts)))
        return OldRecords::None;
    return facts.FileSystem == "NTFS"            ? OldRecords::FileTable
           : facts.FileSystem.starts_with("FAT") ? OldRecords::TopFolder
                                                 : OldRecords::None;
}

std::string OldRecordsText(OldRecords records) {
    switch (records) {
    case OldRecords::FileTable:
        return "Small files will also take the places in the master file table where deleted files "
               "have left their names and small contents.";
    case OldRecords::TopFolder:
        return "Empty files will also take the places in the top folder where deleted files have "
               "left their names.";
    case OldRecords::None:
        break;
    }
    return {};
}

FillOutcome TakeFreeRecords(RecordWork& work) {
    if (work.Old != OldRecords::FileTable)
        return FillOutcome::Done;
    return TakeSteps(work, [&work] { return TakeStep(work); });
}

FillOutcome TakeLastRecords(RecordWork& work) {
    auto outcome = FillOutcome::Done;
    if (work.Old == OldRecords::FileTable && work.lngSize > 0)
        outcome = TakeLastFileRecords(work);
    else if (work.Old == OldRecords::TopFolder)
        outcome = TakeTopFolder(work);
    else
        return outcome;
    ui::RunSteps(
        ui::Effort::Long,
        [] {
            (void)platform::FlushRecords(FillDisk.strDummyFolder);
            return false;
        },
        [] { return true; });
    return outcome;
}
