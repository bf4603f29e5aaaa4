// The walk of a listing run, and walks that only count.
#include "report/run/ListWalk.h"

#include "engine/FileProc.h"
#include "report/run/PurgeWalk.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "report/run/RunRecords.h"
#include "report/run/TreeWalk.h"
#include "session/Session.h"
#include "support/Numbers.h"
#include "ui/Interface.h"

namespace {

bool AnnounceFolder(const std::string& folder, const FolderList& list) {
    if (list.Files.size() == list.LinkedFiles)
        return true;
    if (currentRun.Request.WritesDots()) {
        // The dots only show activity. They end before they fill the report, because a full report
        // would end the listing.
        const std::string dot = " .";
        if (!ReportIsNearlyFull(dot.size()))
            AppendReport(dot, true);
        return true;
    }
    AppendReport("\r\n" + folder, true);
    if (currentRun.Request.blnDisplayFileNames)
        AppendReport("\r\n", false);
    return true;
}

bool ListFile(const std::string& path, const FoundFile& file) {
    const auto bytes = static_cast<double>(file.Length);
    ++currentRun.Counts.lngNumFilesProcessed;
    currentRun.Counts.dblTotalBytesPurged += bytes;
    NoteRecord({path, FileFate::Listed, static_cast<std::int64_t>(file.Length)});
    if (currentRun.Request.blnDisplayFileNames) {
        AppendReport(path + " (" + GroupedDigits(static_cast<std::int64_t>(file.Length)) +
                         " bytes)   \r\n",
                     true);
    }
    NoteFileDone(bytes, true);
    return true;
}

bool GoesOn(const std::string&) {
    CheckPauseStop();
    return !blnStop;
}

// Lists a link; a purge will pass over it.
void ListLink(const std::string& path, bool folder, bool) {
    if (folder ? currentRun.Request.blnDisplayFolderNames : currentRun.Request.blnDisplayFileNames)
        TellLink(path);
}

} // namespace

void ListItem(const RunItem& item) {
    TreeWalk walk;
    walk.strFilespec = item.strFilespec;
    walk.names = item.names;
    walk.blnSubfolders = currentRun.Request.blnSubdirectories;
    walk.onFolder = AnnounceFolder;
    walk.onFile = ListFile;
    walk.onLink = ListLink;
    walk.onUnread = TellUnread;
    walk.Chosen = item.Identity;
    walk.onReplaced = TellReplaced;
    walk.onTurn = GoesOn;
    WalkTree(walk, item.strFolder);
}

void ListFilesRecursive(const std::string& strFolder, const std::string& strSpec) {
    ListItem({strFolder, strSpec, {}});
}

namespace {

struct CountWish {
    bool Subfolders = false;
    std::int32_t Limit = 0;
    bool UntilWatched = false;
};

// Counts the files of an item. False when counting is to end.
bool CountItem(const RunItem& item, const CountWish& wish, FilesToPurge& found) {
    TreeWalk walk;
    walk.strFilespec = item.strFilespec;
    walk.names = item.names;
    walk.blnSubfolders = wish.Subfolders;
    walk.blnPagefile = blnPurgingDrive;
    walk.onFile = [&](const std::string&, const FoundFile& file) {
        if (file.NeverPurged) {
            ++found.lngLeftOut;
            return true;
        }
        ++found.lngFiles;
        found.dblBytes += static_cast<double>(file.Length);
        found.blnWatched = found.blnWatched || IsSensitiveFile(file.Name, false);
        if ((wish.Limit > 0 && found.lngFiles >= wish.Limit) ||
            (wish.UntilWatched && found.blnWatched)) {
            found.lngFiles = -1;
            return false;
        }
        return true;
    };
    walk.onUnread = [&](const std::string& folder, const std::string&) {
        if (found.lngUnread++ == 0)
            found.strUnread = folder;
    };
    walk.onTurn = [](const std::string&) {
        ui::DoEvents();
        return !blnStop;
    };
    return WalkTree(walk, item.strFolder);
}

} // namespace

FilesToPurge CountItems(const std::vector<RunItem>& items, bool blnSubfolders,
                        std::int32_t intLimit, bool blnUntilWatched) {
    FilesToPurge found;
    for (const RunItem& item : items)
        if (!CountItem(item, {blnSubfolders, intLimit, blnUntilWatched}, found))
            break;
    return found;
}

FilesToPurge CountFilesToPurge(const std::string& folder, const std::string& filespec,
                               std::int32_t intLimit, bool blnUntilWatched) {
    blnStop = false;
    return CountItems({{folder, filespec, {}}}, blnSubdirectories, intLimit, blnUntilWatched);
}

bool SumFileSizes(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                  double& dblBytes) {
    blnStop = false;
    const FilesToPurge found = CountItems({{folder, filespec, {}}}, true);
    lngFiles = found.lngFiles;
    dblBytes = found.dblBytes;
    return !blnStop;
}
