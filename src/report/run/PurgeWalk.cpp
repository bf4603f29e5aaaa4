// The walk of a purge run: how it handles files, links and folders.
#include "report/run/PurgeWalk.h"

#include "drives/DriveWork.h"
#include "engine/HeldFiles.h"
#include "engine/OverwriteName.h"
#include "engine/PurgeJob.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "report/run/FileGroup.h"
#include "report/run/ListedFile.h"
#include "report/run/ResultTexts.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "report/run/RunRecords.h"
#include "report/run/TreeWalk.h"
#include "session/Session.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>
#include <string_view>

namespace {

// Extends the expected totals by this folder, if nothing was counted ahead.
void ExpectFilesOf(const FolderList& list) {
    RunRequest& request = currentRun.Request;
    if (request.blnSubdirectories || request.lngNumFilesExpected > 0 || !request.Items.empty())
        return;
    for (const FoundFile& file : list.Files) {
        if (file.IsLink || file.NeverPurged)
            continue;
        ++request.lngNumFilesExpected;
        request.dblBytesExpected += static_cast<double>(file.Length);
    }
    ShowClock();
}

bool BeginFolder(const std::string& folder, const FolderList& list) {
    ExpectFilesOf(list);
    // Write the folder's line, followed by an empty line before its first file.
    if (!list.Files.empty() && !blnStop)
        AppendReport("\r\n" + folder + "\r\n\r\n", false);
    return true;
}

/// A file is done, purged or not.
void NoteDone(std::int64_t length, bool blnPurged) {
    ++currentRun.Counts.lngNumFilesProcessed;
    NoteFileDone(static_cast<double>(length), blnPurged);
}

void PurgeAlone(const GatheredFile& file) {
    const std::int64_t purged = currentRun.Counts.lngNumFilesPurged;
    PurgeListedFile(file.strPath, file.lngLength);
    NoteDone(file.lngLength, currentRun.Counts.lngNumFilesPurged > purged);
}

bool GoesOn(const std::string&) {
    CheckPauseStop();
    return !blnStop;
}

// Purges what is gathered. False: the run was stopped meanwhile.
bool EndGroup(FileGroup& group) {
    if (group.files.empty())
        return !blnStop;
    PurgeGathered(group);
    return GoesOn({});
}

// Small files that need no question are gathered; all others are purged after those before them.
bool PurgeFoundFile(FileGroup& group, const std::string& path, const FoundFile& file) {
    const auto length = static_cast<std::int64_t>(file.Length);
    if (!file.NeverPurged && IsForGroup(path, length) && IsPurgedPlainly(path, length)) {
        GatherFile(group, path, length);
        return true;
    }
    if (!EndGroup(group))
        return false;
    if (!file.NeverPurged) {
        PurgeAlone({path, length});
    } else { // these were not counted
        PurgeListedFile(path, length);
        ++currentRun.Counts.lngNumFilesProcessed;
    }
    return true;
}

FileGroup GroupOfRun() {
    FileGroup group;
    group.goOn = [](int, const std::string&) {
        const std::size_t end = ReportEnd();
        CheckPauseStop();
        if (blnStop) // its empty line comes after the lines of the files
            ReplaceReportTail(end, {});
        return !blnStop;
    };
    group.onPurged = [](PurgeJob& job, const GatheredFile& file) {
        TellPurgedFile(job, file.lngLength);
        NoteDone(file.lngLength, job.Result == PurgeDone);
        ui::DoEvents();
    };
    group.purgeAlone = [](const GatheredFile& file) {
        if (!blnStop) // as between files that were not gathered
            PurgeAlone(file);
    };
    return group;
}

// The read-only attribute of a folder protects nothing; it marks a custom icon, for example. But
// the system refuses to remove a read-only folder.
platform::Fault RemoveEvenReadOnly(const std::string& folder) {
    const platform::Fault fault = platform::RemoveFolder(folder);
    std::uint32_t attributes = 0;
    if (fault != platform::Fault::AccessDenied ||
        platform::Failed(platform::ReadAttributes(folder, attributes)) ||
        (attributes & platform::AttributeReadOnly) == 0 ||
        platform::Failed(
            platform::WriteAttributes(folder, attributes ^ platform::AttributeReadOnly)))
        return fault;
    const platform::Fault second = platform::RemoveFolder(folder);
    if (platform::Failed(second))
        (void)platform::WriteAttributes(folder, attributes);
    return second;
}

bool IsEmpty(const std::string& folder) {
    bool found = false;
    auto fault = platform::Fault::None;
    WorkOnDrive(folder, [&] {
        fault = platform::EnumerateFolder(
            folder, [&](const platform::FolderEntry&) { return !(found = true); });
    });
    return !platform::Failed(fault) && !found;
}

void RemoveIfEmpty(const std::string& folder) {
    std::string path = FolderWithoutBackslash(folder);
    std::uint32_t reach = 0;
    // Who stays keeps its name.
    if (currentRun.Request.How.Options.OverwriteNames) {
        if (!IsEmpty(folder))
            return;
        reach = OverwriteName(path, true) ? 0u : ReachName;
    }
    // Fails, as it should, when the folder still holds anything.
    bool removed = false;
    WorkOnDrive(path, [&] { removed = !platform::Failed(RemoveEvenReadOnly(path)); });
    currentRun.Counts.lngNumFoldersRemoved += removed ? 1 : 0;
    if (removed)
        TellBetweenFiles("Folder " + folder + " removed" + OutOfReachText(reach) + ".", reach != 0);
    if (removed || path == FolderWithoutBackslash(folder))
        return;
    const bool left = platform::Failed(
        TryWhileHeld([&] { return platform::RenameNew(path, FolderWithoutBackslash(folder)); }));
    TellBetweenFiles("Folder " + folder + " not removed, " +
                         (left ? "left as " + path + "\\." : "its dates may have changed."),
                     left);
}

} // namespace

void TellBetweenFiles(const std::string& strLines, bool blnWarning) {
    constexpr std::string_view strEnd = "\r\n";
    for (std::size_t from = 0; from < strLines.size();) {
        const std::size_t to = std::min(strLines.find(strEnd, from), strLines.size());
        const std::string line = strLines.substr(from, to - from);
        currentRun.Notes.push_back({NumRecords(), line, blnWarning});
        WriteReportLine(line);
        from = to + strEnd.size();
    }
}

void TellUnread(const std::string& strFolder, const std::string& strWhy) {
    ++currentRun.Counts.lngNumFoldersUnread;
    TellBetweenFiles(strFolder + ": could not be read completely: " + strWhy + ".", true);
}

void TellReplaced(const std::string& strFolder) {
    ++currentRun.Counts.lngNumFoldersUnread;
    const FileRecord record{strFolder, FileFate::Refused, 0, PurgeReplaced};
    WriteReportLine(strFolder + RecordTail(record));
    NoteRecord(record);
}

void TellLink(const std::string& strPath) {
    const FileRecord record{strPath, FileFate::Link};
    WriteReportLine(strPath + RecordTail(record));
    NoteRecord(record);
}

namespace {

TreeWalk PurgeTreeWalk(FileGroup& group, const std::string& spec, bool slackOnly) {
    TreeWalk walk;
    walk.strFilespec = spec;
    walk.blnSubfolders = currentRun.Request.blnSubdirectories;
    walk.blnHoldFolders = true;
    walk.onFolder = BeginFolder;
    walk.onFile = [&](const std::string& path, const FoundFile& file) {
        return PurgeFoundFile(group, path, file);
    };
    walk.onFilesDone = [&] { return EndGroup(group); };
    walk.onLink = [&](const std::string& path, bool, bool) {
        if (EndGroup(group))
            TellLink(path);
    };
    walk.onGone = [](const std::string& path) {
        const FileRecord record{path, FileFate::Refused, 0, PurgeVanished};
        WriteReportLine(path + RecordTail(record));
        NoteRecord(record);
    };
    walk.onUnread = TellUnread;
    walk.onReplaced = TellReplaced;
    walk.onTurn = GoesOn;
    if (currentRun.Request.How.Options.OverwriteNames)
        walk.onFolderDone = [](const std::string& folder) {
            TellBetweenFiles(FillIndexOf(folder), true);
        };
    // A slack-only purge disables this check box in the options dialog without clearing it.
    if (currentRun.Request.How.blnDeleteEmptyFolders && !slackOnly)
        walk.onSubfolderDone = RemoveIfEmpty;
    return walk;
}

} // namespace

void NWesPurgeRecursive(const std::string& strFolder, const std::string& strSpec, bool blnSlackOnly,
                        const RunItem& item) {
    FileGroup group = GroupOfRun();
    TreeWalk walk = PurgeTreeWalk(group, strSpec, blnSlackOnly);
    walk.names = item.names;
    walk.Chosen = item.Identity;
    WalkTree(walk, strFolder);
}

void PurgeItem(const RunItem& item) {
    NWesPurgeRecursive(item.strFolder, item.strFilespec, currentRun.Request.How.blnPurgeSlackOnly,
                       item);
}
