#include "report/BatchDriver.h"
#include "report/FolderList.h"
#include "report/frmReport.h"
#include "report/ReportProgress.h"
#include "report/Walks.h"
#include "shell/Session.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

namespace {

// A summing walk lists without writing anything.
bool blnSilent = false;

bool CountingOnly() {
    return !frmReport.blnListFiles && !frmReport.blnPurgeFiles;
}

// Yields; true when the walk is to end. Only a walk with a report can be paused.
bool PollStop() {
    if (blnSilent || CountingOnly())
        ui::DoEvents();
    else
        CheckPauseStop();
    return blnStop;
}

void AnnounceFolder(const std::string& folder) {
    if (blnSilent || CountingOnly())
        return;
    if (!frmReport.blnDisplayFolderNames) {
        AppendReport(" .", true);
        return;
    }
    AppendReport("\r\n" + folder, true);
    if (frmReport.blnDisplayFileNames)
        AppendReport("\r\n", false);
}

// What a purge will pass over, where the listing names what it will not.
void ListLink(const std::string& path, bool blnDisplayed) {
    if (blnDisplayed && !blnSilent && !CountingOnly())
        TellLink(path);
}

// False when the walk is to end.
bool TakeFile(const std::string& folder, const FoundFile& file) {
    ++frmReport.lngNumFilesProcessed;
    frmReport.dblTotalBytesPurged += static_cast<double>(file.Length);
    if (CountingOnly()) {
        if (intStopAt > 0 && frmReport.lngNumFilesProcessed >= intStopAt) {
            frmReport.lngNumFilesProcessed = -1;
            return false;
        }
        return true;
    }
    if (!blnSilent && frmReport.blnListFiles && frmReport.blnDisplayFileNames) {
        AppendReport(folder + file.Name + " (" +
                         GroupedDigits(static_cast<std::int64_t>(file.Length)) + " bytes)   \r\n",
                     true);
    }
    if (!blnSilent)
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

// The state of the report form that a walk on the side must leave as it was.
struct KeptState {
    bool blnListFiles = frmReport.blnListFiles;
    bool blnPurgeFiles = frmReport.blnPurgeFiles;
    std::int64_t lngNumFilesProcessed = frmReport.lngNumFilesProcessed;
    double dblTotalBytesPurged = frmReport.dblTotalBytesPurged;
    std::int32_t intLimit = intStopAt;
    bool blnLower = blnSubdirectories;
};

void GiveBack(const KeptState& kept) {
    frmReport.blnListFiles = kept.blnListFiles;
    frmReport.blnPurgeFiles = kept.blnPurgeFiles;
    frmReport.lngNumFilesProcessed = kept.lngNumFilesProcessed;
    frmReport.dblTotalBytesPurged = kept.dblTotalBytesPurged;
    intStopAt = kept.intLimit;
    blnSubdirectories = kept.blnLower;
}

void WalkAside(const std::string& folder, const std::string& filespec, bool blnListing,
               std::int64_t& files, double& bytes) {
    blnSilent = true;
    frmReport.blnListFiles = blnListing;
    frmReport.blnPurgeFiles = false;
    frmReport.lngNumFilesProcessed = 0;
    frmReport.dblTotalBytesPurged = 0;
    ListFilesRecursive(folder, filespec);
    blnSilent = false;
    files = frmReport.lngNumFilesProcessed;
    bytes = frmReport.dblTotalBytesPurged;
}

} // namespace

void ListFilesRecursive(const std::string& strFolder, const std::string& strSpec) {
    const std::string folder = FolderWithBackslash(strFolder);
    std::vector<FoundFolder> subfolders;
    if (!ListFolder(folder, strSpec, subfolders))
        return;
    for (const FoundFolder& subfolder : subfolders) {
        if (subfolder.IsLink) {
            ListLink(folder + subfolder.Name + "\\", frmReport.blnDisplayFolderNames);
            continue;
        }
        ListFilesRecursive(folder + subfolder.Name, strSpec);
        if (PollStop() || frmReport.lngNumFilesProcessed == -1)
            return;
    }
}

void CountAhead(const std::string& folder, const std::string& filespec, std::int32_t intLimit,
                std::int64_t& lngFiles, double& dblBytes) {
    const KeptState kept;
    intStopAt = intLimit;
    WalkAside(folder, filespec, false, lngFiles, dblBytes);
    GiveBack(kept);
}

std::int64_t CountMatchingFiles(const std::string& folder, const std::string& filespec,
                                std::int32_t intLimit, double* dblBytes) {
    blnStop = false;
    std::int64_t files = 0;
    double bytes = 0;
    CountAhead(folder, filespec, intLimit, files, bytes);
    if (dblBytes)
        *dblBytes = bytes;
    return files;
}

bool SumFileSizes(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                  double& dblBytes) {
    const KeptState kept;
    blnStop = false;
    intStopAt = 0;
    blnSubdirectories = true;
    WalkAside(folder, filespec, true, lngFiles, dblBytes);
    GiveBack(kept);
    return !blnStop;
}
