// The walk of a purge run: how it handles files, links and folders.
#include "report/run/PurgeWalk.h"

#include "engine/OverwriteName.h"
#include "engine/PurgeJob.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "report/run/ListedFile.h"
#include "report/run/ResultTexts.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "report/run/RunRecords.h"
#include "report/run/TreeWalk.h"
#include "session/Session.h"
#include "support/Paths.h"

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

bool PurgeFoundFile(const std::string& path, const FoundFile& file) {
    ++currentRun.Counts.lngNumFilesProcessed;
    const std::int64_t purged = currentRun.Counts.lngNumFilesPurged;
    PurgeListedFile(path, static_cast<std::int64_t>(file.Length));
    if (!file.NeverPurged) // files that are never purged were not counted
        NoteFileDone(static_cast<double>(file.Length),
                     currentRun.Counts.lngNumFilesPurged > purged);
    return true;
}

bool GoesOn(const std::string&) {
    CheckPauseStop();
    return !blnStop;
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
    const platform::Fault fault = platform::EnumerateFolder(
        folder, [&](const platform::FolderEntry&) { return !(found = true); });
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
    const bool removed = !platform::Failed(RemoveEvenReadOnly(path));
    currentRun.Counts.lngNumFoldersRemoved += removed ? 1 : 0;
    if (removed)
        WriteReportLine("Folder " + folder + " removed" + OutOfReachText(reach) + ".");
    else if (path != FolderWithoutBackslash(folder))
        WriteReportLine("Folder " + folder + " not removed, left as " + path + "\\.");
}

} // namespace

void TellLink(const std::string& strPath) {
    const FileRecord record{strPath, FileFate::Link};
    WriteReportLine(strPath + RecordTail(record));
    NoteRecord(record);
}

namespace {

TreeWalk PurgeTreeWalk(const std::string& spec, bool slackOnly) {
    TreeWalk walk;
    walk.strFilespec = spec;
    walk.blnSubfolders = currentRun.Request.blnSubdirectories;
    walk.blnHoldFolders = true;
    walk.onFolder = BeginFolder;
    walk.onFile = PurgeFoundFile;
    walk.onLink = [](const std::string& path, bool, bool) { TellLink(path); };
    walk.onGone = [](const std::string& path) {
        const FileRecord record{path, FileFate::Refused, 0, PurgeVanished};
        WriteReportLine(path + RecordTail(record));
        NoteRecord(record);
    };
    walk.onUnread = [](const std::string&) { ++currentRun.Counts.lngNumFoldersUnread; };
    walk.onTurn = GoesOn;
    if (currentRun.Request.How.Options.OverwriteNames)
        walk.onFolderDone = [](const std::string& folder) {
            const std::string text = FillIndexOf(folder);
            if (!text.empty())
                AppendReport(text, false);
        };
    // A slack-only purge disables this check box in the options dialog without clearing it.
    if (currentRun.Request.How.blnDeleteEmptyFolders && !slackOnly)
        walk.onSubfolderDone = RemoveIfEmpty;
    return walk;
}

} // namespace

void NWesPurgeRecursive(const std::string& strFolder, const std::string& strSpec,
                        bool blnSlackOnly) {
    WalkTree(PurgeTreeWalk(strSpec, blnSlackOnly), strFolder);
}

void PurgeItem(const RunItem& item) {
    const bool slackOnly = currentRun.Request.How.blnPurgeSlackOnly;
    if (item.names.empty()) {
        NWesPurgeRecursive(item.strFolder, item.strFilespec, slackOnly);
        return;
    }
    TreeWalk walk = PurgeTreeWalk(item.strFilespec, slackOnly);
    walk.names = item.names;
    WalkTree(walk, item.strFolder);
}
