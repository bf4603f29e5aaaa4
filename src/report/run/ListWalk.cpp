// The walk of a listing run, and walks on the side, which only count.
#include "report/run/ListWalk.h"

#include "engine/FileProc.h"
#include "report/run/PurgeWalk.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "report/run/TreeWalk.h"
#include "session/Session.h"
#include "support/Numbers.h"
#include "ui/Interface.h"

#include <utility>

namespace {

bool AnnounceFolder(const std::string& folder, const FolderList& list) {
    if (list.Files.size() == list.LinkedFiles)
        return true;
    if (!currentRun.Request.blnDisplayFolderNames) {
        // The dots only show that something is done: they end before they fill the report, which
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

// What a purge will pass over, where the listing names what it will not.
void ListLink(const std::string& path, bool folder, bool) {
    if (folder ? currentRun.Request.blnDisplayFolderNames : currentRun.Request.blnDisplayFileNames)
        TellLink(path);
}

} // namespace

void ListFilesRecursive(const std::string& strFolder, const std::string& strSpec) {
    TreeWalk walk;
    walk.strFilespec = strSpec;
    walk.blnSubfolders = currentRun.Request.blnSubdirectories;
    walk.onFolder = AnnounceFolder;
    walk.onFile = ListFile;
    walk.onLink = ListLink;
    walk.onTurn = GoesOn;
    WalkTree(walk, strFolder);
}

namespace {

// Counts what lies in a folder; with `forPurge` without what is never purged.
FilesToPurge Count(const std::string& folder, const std::string& filespec, bool subfolders,
                   bool forPurge, std::int32_t limit, bool untilWatched) {
    FilesToPurge found;
    TreeWalk walk;
    walk.strFilespec = filespec;
    walk.blnSubfolders = subfolders;
    walk.blnPagefile = blnPurgingDrive;
    walk.onFile = [&](const std::string&, const FoundFile& file) {
        if (forPurge && file.NeverPurged) {
            ++found.lngLeftOut;
            return true;
        }
        ++found.lngFiles;
        found.dblBytes += static_cast<double>(file.Length);
        found.blnWatched = forPurge && (found.blnWatched || IsSensitiveFile(file.Name, false));
        if ((limit > 0 && found.lngFiles >= limit) || (untilWatched && found.blnWatched)) {
            found.lngFiles = -1;
            return false;
        }
        return true;
    };
    walk.onTurn = [](const std::string&) {
        ui::DoEvents();
        return !blnStop;
    };
    WalkTree(walk, folder);
    return found;
}

} // namespace

FilesToPurge CountAhead(const std::string& folder, const std::string& filespec,
                        bool blnSubfolders) {
    return Count(folder, filespec, blnSubfolders, true, 0, false);
}

std::int64_t CountMatchingFiles(const std::string& folder, const std::string& filespec,
                                std::int32_t intLimit) {
    blnStop = false;
    return Count(folder, filespec, blnSubdirectories, false, intLimit, false).lngFiles;
}

FilesToPurge CountFilesToPurge(const std::string& folder, const std::string& filespec,
                               std::int32_t intLimit, bool blnUntilWatched) {
    blnStop = false;
    return Count(folder, filespec, blnSubdirectories, true, intLimit, blnUntilWatched);
}

bool SumFileSizes(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                  double& dblBytes) {
    blnStop = false;
    const FilesToPurge found = CountAhead(folder, filespec, true);
    lngFiles = found.lngFiles;
    dblBytes = found.dblBytes;
    return !blnStop;
}
