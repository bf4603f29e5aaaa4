// The walk of a listing run, and the same walk on the side, which only counts.
#include "report/ListWalk.h"

#include "engine/FileProc.h"
#include "report/BatchDriver.h"
#include "report/FolderList.h"
#include "report/frmReport.h"
#include "report/PurgeWalk.h"
#include "report/ReportProgress.h"
#include "report/ReportText.h"
#include "session/Session.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <utility>

namespace {

// The current walk only counts and writes nothing.
bool blnCountingOnly = false;
// It counts what a purge will do: what is never purged is left out, and watched files are noted.
bool blnForPurge = false;
bool blnToFirstWatched = false;
FilesToPurge filesToPurge;

// Yields; true when the walk is to end. Only a walk with a report can be paused.
bool PollStop() {
    if (blnCountingOnly)
        ui::DoEvents();
    else
        CheckPauseStop();
    return blnStop;
}

void AnnounceFolder(const std::string& folder) {
    if (blnCountingOnly)
        return;
    if (!frmReport.blnDisplayFolderNames) {
        // The dots only show that something is done: they end before they fill the report, which
        // would end the listing.
        const std::string dot = " .";
        if (ReportEnd() + dot.size() <= lngMaxReportText)
            AppendReport(dot, true);
        return;
    }
    AppendReport("\r\n" + folder, true);
    if (frmReport.blnDisplayFileNames)
        AppendReport("\r\n", false);
}

// What a purge will pass over, where the listing names what it will not.
void ListLink(const std::string& path, bool blnDisplayed) {
    if (blnDisplayed && !blnCountingOnly)
        TellLink(path);
}

// False when the walk is to end.
bool TakeFile(const std::string& folder, const FoundFile& file) {
    if (blnForPurge && file.NeverPurged) {
        ++filesToPurge.lngLeftOut;
        return true;
    }
    ++frmReport.lngNumFilesProcessed;
    frmReport.dblTotalBytesPurged += static_cast<double>(file.Length);
    if (blnCountingOnly) {
        filesToPurge.blnWatched =
            blnForPurge && (filesToPurge.blnWatched || IsSensitiveFile(file.Name, false));
        if ((intStopAt > 0 && frmReport.lngNumFilesProcessed >= intStopAt) ||
            (blnToFirstWatched && filesToPurge.blnWatched)) {
            frmReport.lngNumFilesProcessed = -1;
            return false;
        }
        return true;
    }
    if (frmReport.blnListFiles && frmReport.blnDisplayFileNames) {
        AppendReport(folder + file.Name + " (" +
                         GroupedDigits(static_cast<std::int64_t>(file.Length)) + " bytes)   \r\n",
                     true);
    }
    NoteFileDone(static_cast<double>(file.Length), true);
    return !PollStop();
}

// The files of one folder; false when the walk of it ends here.
bool ListFolder(const std::string& folder, const std::string& filespec,
                std::vector<FoundFolder>& subfolders) {
    FolderList list;
    const platform::Fault fault = TakeFolderList(folder, filespec, blnSubdirectories, list);
    if (list.Files.size() > list.LinkedFiles)
        AnnounceFolder(folder);
    for (const FoundFile& file : list.Files) {
        if (file.IsLink)
            ListLink(folder + file.Name, frmReport.blnDisplayFileNames);
        else if (!TakeFile(folder, file))
            return false;
    }
    subfolders = std::move(list.Subfolders);
    return !platform::Failed(fault) && !blnStop;
}

} // namespace

void ListFilesRecursive(const std::string& strFolder, const std::string& strSpec) {
    const std::string folder = FolderWithBackslash(strFolder);
    std::vector<FoundFolder> subfolders;
    if (!ListFolder(folder, strSpec, subfolders))
        return;
    for (const FoundFolder& subfolder : subfolders) {
        if (subfolder.IsLink)
            ListLink(folder + subfolder.Name + "\\", frmReport.blnDisplayFolderNames);
        else
            ListFilesRecursive(folder + subfolder.Name, strSpec);
        if (PollStop() || frmReport.lngNumFilesProcessed == -1)
            return;
    }
}

namespace {

void Count(const std::string& folder, const std::string& filespec, std::int32_t intLimit,
           std::int64_t& lngFiles, double& dblBytes) {
    // The walk counts in the report form, whose totals belong to the run or to the report shown.
    const std::int64_t files = std::exchange(frmReport.lngNumFilesProcessed, 0);
    const double bytes = std::exchange(frmReport.dblTotalBytesPurged, 0);
    const std::int32_t limit = std::exchange(intStopAt, intLimit);
    blnCountingOnly = true;
    ListFilesRecursive(folder, filespec);
    blnCountingOnly = false;
    intStopAt = limit;
    lngFiles = std::exchange(frmReport.lngNumFilesProcessed, files);
    dblBytes = std::exchange(frmReport.dblTotalBytesPurged, bytes);
}

} // namespace

void CountAhead(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                double& dblBytes) {
    blnForPurge = true;
    Count(folder, filespec, 0, lngFiles, dblBytes);
    blnForPurge = false;
}

std::int64_t CountMatchingFiles(const std::string& folder, const std::string& filespec,
                                std::int32_t intLimit) {
    blnStop = false;
    std::int64_t files = 0;
    double bytes = 0;
    Count(folder, filespec, intLimit, files, bytes);
    return files;
}

FilesToPurge CountFilesToPurge(const std::string& folder, const std::string& filespec,
                               std::int32_t intLimit, bool blnUntilWatched) {
    blnStop = false;
    filesToPurge = {};
    blnForPurge = true;
    blnToFirstWatched = blnUntilWatched;
    Count(folder, filespec, intLimit, filesToPurge.lngFiles, filesToPurge.dblBytes);
    blnForPurge = blnToFirstWatched = false;
    return filesToPurge;
}

bool SumFileSizes(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                  double& dblBytes) {
    blnStop = false;
    const bool blnLower = std::exchange(blnSubdirectories, true);
    CountAhead(folder, filespec, lngFiles, dblBytes);
    blnSubdirectories = blnLower;
    return !blnStop;
}
