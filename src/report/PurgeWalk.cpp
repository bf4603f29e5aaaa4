// The walk of a purge run: each folder is held open, its files are purged, then its subfolders.
#include "report/PurgeWalk.h"

#include "drives/DriveWork.h"
#include "engine/FileOps.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Places.h"
#include "report/FolderList.h"
#include "report/frmReport.h"
#include "report/PurgeOneFile.h"
#include "report/ReportProgress.h"
#include "report/ReportText.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "support/Paths.h"

PurgeRun purgeRun;

namespace {

// What the progress bar measures by, where nothing was counted ahead.
void ExpectFilesOf(const FolderList& list) {
    if (blnSubdirectories || frmReport.lngNumFilesExpected > 0)
        return;
    for (const FoundFile& file : list.Files) {
        if (file.IsLink || file.NeverPurged)
            continue;
        ++frmReport.lngNumFilesExpected;
        frmReport.dblBytesExpected += static_cast<double>(file.Length);
    }
    ShowReportProgress();
}

void PurgeListedFile(const std::string& folder, const FoundFile& file, bool blnSlackOnly) {
    ++frmReport.lngNumFilesProcessed;
    const std::int64_t purged = frmReport.lngNumFilesPurged;
    PurgeOneFile(folder + file.Name, static_cast<std::int64_t>(file.Length), blnSlackOnly);
    if (!file.NeverPurged) // it was not counted either
        NoteFileDone(static_cast<double>(file.Length), frmReport.lngNumFilesPurged > purged);
}

// The files of one folder; false when the walk of it ends here.
bool PurgeFolderFiles(const std::string& folder, const std::string& filespec, bool blnSlackOnly,
                      std::vector<FoundFolder>& subfolders) {
    FolderList list;
    const platform::Fault fault = TakeFolderList(folder, filespec, blnSubdirectories, list);
    if (platform::Failed(fault))
        ++frmReport.lngNumFoldersUnread;
    ExpectFilesOf(list);
    // The folder's line, and an empty one before its first file.
    if (!list.Files.empty() && !blnStop)
        AppendReport("\r\n" + folder + "\r\n\r\n", false);
    for (const FoundFile& file : list.Files) {
        if (blnStop)
            return false;
        if (file.IsLink)
            TellLink(folder + file.Name);
        else
            PurgeListedFile(folder, file, blnSlackOnly);
        CheckPauseStop();
    }
    subfolders = std::move(list.Subfolders);
    return !platform::Failed(fault) && !blnStop;
}

// On a folder the attribute protects nothing: it marks one with an icon, for example. Yet the
// system removes none that has it.
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

void RemoveIfEmpty(const std::string& folder) {
    // Fails, as it should, when the folder still holds anything.
    if (platform::Failed(RemoveEvenReadOnly(FolderWithoutBackslash(folder))))
        return;
    ++frmReport.lngNumFoldersRemoved;
    WriteReportLine("Folder " + folder + " removed.");
}

} // namespace

void TellLink(const std::string& strPath) {
    WriteReportLine(strPath + ": a link, not purged.");
}

namespace {

// The folder stays held while the walk is in it or below: a link that is put in its place would
// lead the walk to what nobody chose. False, when that is told, for what is not to be entered.
bool HoldForWalk(const std::string& folder, platform::FolderHold& hold) {
    auto fault = platform::Fault::None;
    WorkOnDrive(folder, [&] { fault = platform::HoldFolder(folder, hold); });
    if (platform::Failed(fault)) {
        ++frmReport.lngNumFoldersUnread;
        return false;
    }
    if (hold.IsLink) {
        TellLink(folder);
        return false;
    }
    EnterFolder(folder, hold.Identity);
    return true;
}

void PurgeHeldFolder(const std::string& folder, const std::string& strSpec, bool blnSlackOnly);

// False when the folder was not entered.
bool EnterAndPurge(const std::string& folder, const std::string& strSpec, bool blnSlackOnly) {
    platform::FolderHold hold;
    if (!HoldForWalk(folder, hold))
        return false;
    PurgeHeldFolder(folder, strSpec, blnSlackOnly);
    platform::LetGo(hold);
    return true;
}

void PurgeHeldFolder(const std::string& folder, const std::string& strSpec, bool blnSlackOnly) {
    std::vector<FoundFolder> subfolders;
    if (!PurgeFolderFiles(folder, strSpec, blnSlackOnly, subfolders))
        return;
    for (const FoundFolder& found : subfolders) {
        const std::string subfolder = folder + found.Name + "\\";
        // The list is as old as the purge of all before it: the folder is looked at again when it
        // is entered.
        if (found.IsLink) {
            TellLink(subfolder);
        } else if (EnterAndPurge(subfolder, strSpec, blnSlackOnly)) {
            if (blnStop)
                return;
            // The options dialog switches the box off in a slack-only purge without clearing it.
            if (blnDeleteEmptyFolders && !blnSlackOnly)
                RemoveIfEmpty(subfolder);
        }
        // Folders without a single file to be purged must not keep the user waiting.
        CheckPauseStop();
        if (blnStop)
            return;
    }
}

} // namespace

void NWesPurgeRecursive(const std::string& strFolder, const std::string& strSpec,
                        bool blnSlackOnly) {
    EnterAndPurge(FolderWithBackslash(strFolder), strSpec, blnSlackOnly);
}
