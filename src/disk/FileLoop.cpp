// The loop over all files of folder trees: counts them, then purges them one by one, and reports
// what was left.
#include "disk/FileLoop.h"

#include "disk/DriveReport.h"
#include "disk/RunProgress.h"
#include "drives/DriveWork.h"
#include "engine/FileOps.h"
#include "engine/OverwriteName.h"
#include "platform/Files.h"
#include "report/run/FileGroup.h"
#include "report/run/PurgeWalk.h"
#include "report/run/RunClock.h"
#include "report/run/RunJob.h"
#include "report/run/RunRecords.h"
#include "report/run/TimeEstimates.h"
#include "report/run/TreeWalk.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>

namespace {

constexpr std::int64_t intMostNamesTold = 5;
constexpr std::size_t intMostFailuresTold = 5;

const char* const strGoOn = "Click 'OK' to continue, or 'Cancel' to terminate this operation.";

/// Asks whether to go on; on Cancel the loop ends with blnStop set.
bool GoOn(const FileLoop& loop, const std::string& strText) {
    if (AskInRun(strText + strGoOn, ui::Buttons::OKCancel, ui::Icon::Question, loop.strTitle,
                 "next file") == ui::AnswerOK &&
        (!loop.isSameDisk || loop.isSameDisk())) { // the box may have stood for hours
        blnStop = false;
        return true;
    }
    SetMainLine(MainLine::PurgeFoldersMessage, "");
    blnStop = true;
    return false;
}

/// "Now purging (pass 1):C:\folder\name", preceded by the progress from the second file on.
/// Deliberate oddity: no blank follows the colon.
void ShowFile(int pass, const std::string& strPath) {
    const std::int64_t lngPurged = currentRun.Counts.lngNumFilesPurged;
    const std::int64_t lngTotal = currentRun.Request.lngNumFilesExpected;
    std::string strText;
    if (lngPurged >= 2 && lngTotal > 0)
        strText =
            GroupedDigits(lngPurged) + " files purged (" +
            FormatNumber(static_cast<double>(lngPurged) * 100 / static_cast<double>(lngTotal), 0) +
            "% of " + GroupedDigits(lngTotal) + ").  ";
    SetMainLine(MainLine::PurgeFoldersMessage,
                strText + "Now purging (pass" + SignedDigits(pass) + "):" + strPath);
}

/// Whether this loop purges all names (hard links) of a file.
bool AllNamesChosen(const FileLoop& loop, const std::string& strPath) {
    std::vector<std::string> names;
    bool blnKnown = false;
    WorkOnDrive(strPath, [&] { blnKnown = !Failed(platform::ListNames(strPath, names)); });
    return blnKnown && std::all_of(names.begin(), names.end(), [&](const std::string& strName) {
               return loop.isChosen(strName) && !IsNeverPurged(strName);
           });
}

void PassOver(FileLoop& loop, const std::string& strPath) {
    if (++loop.lngOtherNames <= intMostNamesTold)
        loop.otherNames.push_back(strPath);
}

/// Keeps what became of a file. One that is passed over, is not begun or has vanished is no
/// failure.
std::int16_t NoteFile(FileLoop& loop, PurgeJob& job) {
    job.Reach &= ~std::uint32_t{ReachHardLinks}; // the loop reaches the other names itself
    NoteJob(job);
    if (job.Result == PurgeSeveralNames)
        PassOver(loop, job.Path);
    const bool blnNotBegun = job.Result == PurgeStopped && !job.HasWritten;
    if (job.Result == PurgeSeveralNames || job.Result == PurgeVanished || blnNotBegun)
        return PurgeDone;
    if (job.Result != PurgeDone)
        ++loop.lngFailed;
    else if ((job.Reach & ~std::uint32_t{ReachName | ReachOlderCopies}) != 0)
        ++loop.lngPartly; // of the name the report tells
    else if ((job.Reach & ReachOlderCopies) != 0)
        ++loop.lngOlderCopies;
    return job.Result;
}

/// Runs all passes over one file, showing each; deletes the file after the last pass.
std::int16_t PurgeFileOfLoop(FileLoop& loop, const std::string& strPath) {
    PurgeJob job = JobOfRun(strPath);
    job.MayPurgeAllNames = [&] { return AllNamesChosen(loop, strPath); };
    job.GoOn = [&] {
        ShowFile(job.PassesDone + 1, strPath);
        return true;
    };
    ShowFile(1, strPath);
    RunJobOfRun(job, currentRun.Counts);
    return NoteFile(loop, job);
}

std::string FailureText(std::int16_t intResult) {
    return intResult == PurgeNotDeleted
               ? std::string("File deletion error.  File (shown below) may be hidden.")
               : "An error (" + std::to_string(intResult) + ") has been reported.";
}

/// After a file is counted or purged. False: the user ended the loop.
bool EndVisit(const FileLoop& loop, const std::string& strPath, std::int16_t intResult) {
    ui::DoEvents();
    if (blnStop && !GoOn(loop, strPath + "\r\n"))
        return false;
    // A file held by another program is passed over without a box.
    if (intResult >= 0 || intResult == PurgeCannotOpen || !loop.blnErrorBoxes)
        return true;
    return GoOn(loop, FailureText(intResult) + "\r\n" + strPath + "\r\n\r\n");
}

void NoteDone(const GatheredFile& file, bool blnPurged) {
    NoteFileDone(static_cast<double>(file.lngLength), blnPurged);
    RefreshClock();
}

bool PurgeAlone(FileLoop& loop, const GatheredFile& file) {
    const std::int64_t lngPurged = currentRun.Counts.lngNumFilesPurged;
    NoteFileBegun(file.lngLength);
    const std::int16_t intResult = PurgeFileOfLoop(loop, file.strPath);
    NoteDone(file, currentRun.Counts.lngNumFilesPurged > lngPurged);
    return EndVisit(loop, file.strPath, intResult);
}

/// Whether to go on is asked before the first pass of a group, and when it has had all of them:
/// what is purged is then noted all the same when the answer is no.
FileGroup GroupOfLoop(FileLoop& loop) {
    FileGroup group;
    group.goOn = [&](int intPassesDone, const std::string& strFirst) {
        ShowFile(intPassesDone + 1, strFirst);
        if (blnStop && intPassesDone == 0)
            loop.blnEnded = !GoOn(loop, strFirst + "\r\n");
        return !loop.blnEnded;
    };
    group.onPurged = [&](PurgeJob& job, const GatheredFile& file) {
        const std::int16_t intResult = NoteFile(loop, job);
        NoteDone(file, job.Result == PurgeDone);
        if (!loop.blnEnded)
            loop.blnEnded = !EndVisit(loop, file.strPath, intResult);
    };
    group.purgeAlone = [&](const GatheredFile& file) {
        if (!loop.blnEnded)
            loop.blnEnded = !PurgeAlone(loop, file);
    };
    return group;
}

bool VisitFile(FileLoop& loop, FileGroup& group, const std::string& strPath,
               const FoundFile& file) {
    if (file.NeverPurged)
        return true;
    const GatheredFile found{strPath, static_cast<std::int64_t>(file.Length)};
    if (loop.blnCounting) {
        ++currentRun.Request.lngNumFilesExpected;
        currentRun.Request.dblBytesExpected += static_cast<double>(file.Length);
        return EndVisit(loop, strPath, PurgeDone);
    }
    if (IsForGroup(strPath, found.lngLength)) {
        GatherFile(group, strPath, found.lngLength);
        return !loop.blnEnded && EndVisit(loop, strPath, PurgeDone);
    }
    PurgeGathered(group);
    return !loop.blnEnded && PurgeAlone(loop, found);
}

} // namespace

bool IsNeverPurged(const std::string& strPath) {
    return IsPagingFile(FileNameOf(strPath), true) ||
           ClassifyFileForPurge(strPath) == ClassProgramFolder;
}

bool WalkFiles(FileLoop& loop, const std::string& strFolder, bool blnSubfolders) {
    FileGroup group = GroupOfLoop(loop);
    TreeWalk walk;
    walk.blnSubfolders = blnSubfolders;
    walk.blnHoldFolders = true;
    walk.blnPagefile = true;
    walk.onFile = [&](const std::string& strPath, const FoundFile& file) {
        return VisitFile(loop, group, strPath, file);
    };
    walk.onFilesDone = [&] {
        PurgeGathered(group);
        return !loop.blnEnded;
    };
    walk.onUnread = [&](const std::string& strPath, const std::string& strWhy) {
        if (loop.blnCounting)
            loop.unread.emplace_back(strPath, strWhy);
        else
            TellUnread(strPath, strWhy);
    };
    // A link replaced the folder after it was listed, so its files can no longer be reached.
    walk.onLink = [&](const std::string& strPath, bool, bool blnInPlace) {
        if (blnInPlace)
            walk.onUnread(strPath, "A link has taken its place");
    };
    if (!loop.blnCounting && currentRun.Request.How.Options.OverwriteNames)
        walk.onFolderDone = [](const std::string& strFound) {
            TellBetweenFiles(FillIndexOf(strFound), true);
        };
    walk.onStop = walk.onTurn = [&](const std::string& strPath) {
        ui::DoEvents();
        return !blnStop || GoOn(loop, strPath + "\r\n");
    };
    return !blnStop && WalkTree(walk, strFolder);
}

double BytesToPurge() {
    return currentRun.Request.dblBytesExpected * OverwritesToEstimate();
}

void BeginLoopProgress() {
    BeginRunProgress(
        BytesToPurge(),
        [] {
            const std::int64_t lngFiles = currentRun.Request.lngNumFilesExpected;
            return "File " + GroupedDigits(std::min(FilesDone() + 1, lngFiles)) + " of " +
                   GroupedDigits(lngFiles) + ".";
        },
        ShareOfRun);
}

void EndFileLoop(bool blnFinished) {
    if (blnFinished)
        blnStop = false;
    SetMainLine(MainLine::PurgeFoldersMessage, "");
}

namespace {

/// The first failed files with their reasons, one per line.
std::string FirstFailures() {
    const std::vector<RunFailure>& failures = currentRun.Failures;
    std::string strText;
    for (std::size_t i = 0; i < failures.size() && i < intMostFailuresTold; ++i) {
        const FileRecord record = RecordAt(failures[i].Record);
        strText += record.Path + ": " + ReasonText(record, failures[i].strHolders) + "\r\n";
    }
    return strText;
}

} // namespace

void ShowUndone(const FileLoop& loop, const std::string& strUndoneBefore) {
    if (loop.blnCounting) // it never came to the purge
        for (const auto& [strFolder, strWhy] : loop.unread)
            TellUnread(strFolder, strWhy);
    const auto Sentence = [](std::int64_t lngCount, const char* strOne, const char* strMany) {
        return lngCount == 0 ? std::string()
                             : (lngCount == 1 ? std::string("One ") + strOne
                                              : GroupedDigits(lngCount) + " " + strMany) +
                                   "\r\n";
    };
    // The report has told of the free space, and lists the failures at its end.
    const std::string strTold =
        (strUndoneBefore.empty() ? "" : strUndoneBefore + "\r\n") +
        Sentence(loop.lngFailed, "file could not be purged.", "files could not be purged.") +
        FirstFailures();
    std::string strText =
        Sentence(currentRun.Counts.lngNumFoldersUnread, "folder could not be read completely.",
                 "folders could not be read completely.") +
        Sentence(loop.lngPartly,
                 "purged file was encrypted, compressed, sparse or in the cloud: older copies of "
                 "its data may remain.",
                 "purged files were encrypted, compressed, sparse or in the cloud: older copies of "
                 "their data may remain.") +
        Sentence(loop.lngOlderCopies,
                 "purged file: its file system may keep older copies of its data.",
                 "purged files: their file system may keep older copies of their data.") +
        Sentence(loop.lngOtherNames,
                 "file was not purged, as its data also belong to a name outside what was chosen:",
                 "files were not purged, as their data also belong to names outside what was "
                 "chosen:");
    for (const std::string& strPath : loop.otherNames)
        strText += strPath + "\r\n";
    if (loop.lngOtherNames > std::ssize(loop.otherNames))
        strText +=
            "and " + GroupedDigits(loop.lngOtherNames - std::ssize(loop.otherNames)) + " more\r\n";
    TellInReport(strText);
    strText = strTold + strText;
    if (strText.empty())
        return;
    strText.resize(strText.size() - 2);
    if (loop.lngFailed > 0 || currentRun.Counts.lngNumFoldersUnread > 0)
        OfferReport(strText, loop.strTitle);
    else
        ui::MsgBox(strText, ui::Buttons::OK, ui::Icon::Information, loop.strTitle);
}
