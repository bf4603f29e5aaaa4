// The commands that specify what is to be purged.
#include "shell/SpecifyCommands.h"

#include "disk/PurgeFolders.h"
#include "disk/SpeedTest.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "report/BatchDriver.h"
#include "report/run/ListWalk.h"
#include "report/run/Run.h"
#include "report/run/TimeEstimates.h"
#include "selection/frmFileSpecification.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "shell/ChosenItems.h"
#include "shell/frmMain.h"
#include "shell/SetupCommands.h"
#include "support/FolderSearch.h"
#include "support/MainWindow.h"
#include "support/Paths.h"
#include "ui/Interface.h"

namespace {

/// The contents of a folder itself. Links to folders do not count: they are never followed.
struct FolderContents {
    bool blnFiles = false;
    bool blnMatchingFiles = false;
    bool blnSubfolders = false;
};

/// Reads a folder until all facts are known; false when it cannot be read.
bool LookInto(const std::string& folder, const std::string& filespec, FolderContents& contents) {
    FolderContents found;
    std::size_t otherCase = 0;
    const platform::Fault fault = SearchFolder(folder, [&](const platform::FolderEntry& entry) {
        if (entry.IsFolder) {
            found.blnSubfolders |= !entry.IsLink;
        } else {
            found.blnFiles = true;
            const NameMatch match = MatchName(entry.Name, filespec);
            found.blnMatchingFiles |= match == NameMatch::Exact;
            otherCase += match == NameMatch::OtherCase ? 1u : 0u;
        }
        return !found.blnMatchingFiles || !found.blnSubfolders;
    });
    if (platform::Failed(fault))
        return false;
    found.blnMatchingFiles |= OtherCaseIsMeant(folder, otherCase);
    contents = found;
    return true;
}

/// Tells the user when the file specification cannot match anything in the folder. True when no box
/// was needed: there are matching files, or at least subfolders. A search ended by F10 shows no
/// box.
bool FolderCheck(FolderContents& contents) {
    bool blnRead = false;
    if (!RunSearch("Reading " + strDirPath,
                   [&] { blnRead = LookInto(strDirPath, strFilespec, contents); }))
        return false;
    if (!blnRead)
        ui::Complain("Cannot access the folder.");
    else if (!contents.blnFiles && !contents.blnSubfolders)
        ui::Complain("The folder contains no files and no subfolders.", "Empty folder");
    else if (!contents.blnMatchingFiles && !contents.blnSubfolders)
        ui::Complain("The folder contains no matching files and no subfolders.", "Empty folder");
    else
        return true;
    return false;
}

/// Whether a file matches, in the whole tree if subfolders are included. When F10 ends the search,
/// the answer is true.
bool SomethingMatches(const FolderContents& contents) {
    if (contents.blnMatchingFiles || !blnSubdirectories)
        return contents.blnMatchingFiles;
    bool blnFound = true;
    EnableMain(false);
    const bool blnSearched = RunSearch("Looking for files", [&] {
        const FilesToPurge found = CountFilesToPurge(strDirPath, strFilespec, 1);
        // A folder that could not be read may hold some.
        blnFound = found.lngFiles != 0 || found.lngLeftOut > 0 || found.lngUnread > 0;
    });
    EnableMain(true);
    return blnFound || !blnSearched;
}

void SetFolder(const std::string& folder) {
    ForgetChosenItems();
    strDirPath = folder;
    RememberFolder();
    strBrowsePath = strDirPath;
}

/// The speed measured for the drive of a path, as text for lblPurgeSpeed; "" when not measured.
std::string PurgeSpeedText(const std::string& path) {
    const int drive = DriveIndexOf(path);
    if (drive < 0 || sngPurgeSpeeds[static_cast<std::size_t>(drive)] <= 0)
        return {};
    const char letter = DriveLetterOf(path);
    return SpeedText(sngPurgeSpeeds[static_cast<std::size_t>(drive)]) +
           " MB/sec. (1 overwrite) for Drive " + letter +
           (letter <= 'B' ? " (floppy drive)." : ".");
}

void TakeSingleFile(const std::string& strChosen) {
    std::string path = strChosen;
    if (!TakePath(path, frmMain.cmdSingleFile.Caption))
        return;
    if (IsWildcard(FileNameOf(path))) { // possible on file systems of other operating systems
        ui::Complain("The name of a single file must not contain \"?\" or \"*\".",
                     frmMain.cmdSingleFile.Caption);
        return;
    }
    SetFolder(FolderPartOf(path));
    strFilespec = FileNameOf(path);
    blnMultipleFiles = false;
    blnSubdirectories = false;
    SetSetupFilename("");
    UpdateFilesLabels();
    UpdateSubdirectoriesLabels();
    SetMainLine(MainLine::PurgeSpeed, PurgeSpeedText(path));
    // Always set: without a measured speed the text is "" and clears the last file's estimate.
    SetMainLine(MainLine::EstimatedTime, SingleFileEstimate(path));
}

/// Takes over a chosen folder. A pattern was meant for the old folder, so the file specification is
/// cleared.
void TakeFolder(const std::string& folder) {
    const std::string& title = frmMain.cmdSpecifyDirectory[0].Caption;
    SetFolder(folder);
    strFilespec.clear();
    blnMultipleFiles = false;
    blnSubdirectories = false;
    SetSetupFilename("");
    SetMainLine(MainLine::LargePurgeMessage, "");
    SetMainLine(MainLine::EstimatedTime, "");
    UpdateFilesLabels();
    FolderContents contents;
    bool blnRead = false;
    if (!RunSearch("Reading " + folder, [&] {
            UpdateSubdirectoriesLabels();
            blnRead = LookInto(folder, "*.*", contents);
        }))
        return;
    if (!blnRead) {
        ui::Complain("Cannot access the folder.");
        return;
    }
    if (!contents.blnFiles ||
        ui::MsgBox("Do you wish to purge ALL files in " + strDirPath + "?", ui::Buttons::YesNo,
                   ui::Icon::Question, title, "all files") != ui::AnswerYes)
        return;
    strFilespec = "*.*";
    blnMultipleFiles = true;
    UpdateFilesLabels();
    (void)FolderCheck(contents); // it tells the user itself
}

void SpecifyFolder() {
    // Hide the old choice while the browser is open; show it again when the browser is cancelled.
    const std::string files = frmMain.lblFiles.Caption,
                      message = frmMain.lblLargePurgeMessage.Caption,
                      subfolders = frmMain.lblSubdirectories2.Caption,
                      setup = frmMain.lblSetupFilename.Caption;
    const auto write = [](const std::string& strFiles, const std::string& strMessage,
                          const std::string& strSubfolders, const std::string& strSetup) {
        frmMain.lblFiles.Caption = strFiles;
        SetMainLine(MainLine::LargePurgeMessage, strMessage);
        SetMainLine(MainLine::Subdirectories2, strSubfolders);
        SetSetupFilename(strSetup);
    };
    write("", "", "", "");
    const std::string folder = BrowseFolder("Specify folder containing files to be purged");
    if (folder.empty())
        write(files, message, subfolders, setup);
    else
        TakeFolder(folder);
}

/// Replaces folder and file specification by several chosen items.
void TakeItems(const std::vector<std::string>& paths) {
    if (!ChooseItems(paths))
        return;
    strDirPath.clear();
    strFilespec.clear();
    RememberFolder();
    blnMultipleFiles = true;
    blnSubdirectories = false;
    SetSetupFilename("");
    for (const MainLine line :
         {MainLine::LargePurgeMessage, MainLine::EstimatedTime, MainLine::PurgeSpeed})
        SetMainLine(line, "");
    UpdateFilesLabels();
    UpdateSubdirectoriesLabels();
}

void OpenGivenPath(const std::string& path) {
    const bool blnSetup = platform::LowerCase(ExtensionOf(path)) == "nws";
    bool blnFolder = false, blnFile = false;
    // A place without a letter is refused, so that nobody waits for a server for nothing. A setup
    // may lie anywhere.
    if (blnSetup || DriveIndexOf(path) >= 0)
        AskOnDrive(path, [&] {
            blnFolder = platform::FolderExists(path);
            blnFile = !blnFolder && platform::FileExists(path);
        });
    if (blnSetup && !blnFolder) {
        LoadSetupFromFile(path);
    } else if (blnFolder) {
        std::string folder = path;
        if (TakePath(folder, frmMain.cmdSpecifyDirectory[0].Caption))
            TakeFolder(FolderWithBackslash(folder));
    } else if (blnFile || DriveIndexOf(path) < 0) {
        TakeSingleFile(path); // which says what is wrong with the place
    } else {
        ui::Complain("File " + path + " not found.", frmMain.cmdSingleFile.Caption);
    }
}

void OpenGivenPaths(const std::vector<std::string>& paths) {
    if (paths.size() == 1)
        OpenGivenPath(paths.front());
    else if (!paths.empty())
        TakeItems(paths);
}

} // namespace

void cmdSingleFile_Click() {
    if (frmMain.blnQuitGuard)
        return;
    const auto paths = ui::ChoosePaths({ui::Choose::Files, "Specify file to be purged.",
                                        strBrowsePath.empty() ? strDirPath : strBrowsePath});
    if (paths.empty())
        return;
    StartQuitGuard();
    if (paths.size() == 1)
        TakeSingleFile(paths.front());
    else
        TakeItems(paths);
}

void cmdSpecifyDirectory_Click(int intIndex) {
    if (intIndex == 0)
        SpecifyFolder();
    else {
        EnableMain(false);
        PurgeFoldersCommand(frmMain.cmdSpecifyDirectory[1].Caption);
        // The labels tell what has been purged. After a stop they must not continue to say that it
        // is being purged.
        if (currentRun.State == RunState::Stopped)
            UpdateSubdirectoriesLabels();
        EnableMain(true);
    }
}

void cmdSpecifyFiles_Click() {
    if (frmMain.blnQuitGuard)
        return;
    if (strDirPath.empty()) {
        ui::Complain("The folder has not been specified.", "Folder unspecified");
        return;
    }
    const std::string filespec = AskFileSpecification(strDirPath);
    if (filespec.empty())
        return;
    strFilespec = filespec;
    blnMultipleFiles = true;
    SetSetupFilename("");
    SetMainLine(MainLine::EstimatedTime, "");
    UpdateFilesLabels();
    // The folder check may already have shown a box; do not show another.
    FolderContents contents;
    if (FolderCheck(contents) && !SomethingMatches(contents))
        ui::Complain("There are no files in " + strDirPath +
                         (blnSubdirectories ? "\r\nor in any of its subfolders." : "."),
                     frmMain.cmdSpecifyFiles.Caption);
}

void cmdSubdirectories_Click() {
    SetMainLine(MainLine::EstimatedTime, "");
    SetSetupFilename("");
    if (ItemsAreChosen()) {
        blnSubdirectories = FoldersAreChosen() && !blnSubdirectories;
        UpdateSubdirectoriesLabels();
        return;
    }
    if (strDirPath.empty())
        return;
    bool blnSubfolders = false;
    auto fault = platform::Fault::None;
    if (!RunSearch("Reading " + strDirPath,
                   [&] { fault = LookForSubfolders(strDirPath, blnSubfolders); }))
        return;
    if (platform::Failed(fault)) {
        ui::Complain("Error when attempting to access " + strDirPath + ".");
        return;
    }
    blnSubdirectories = blnSubfolders && !blnSubdirectories;
    UpdateSubdirectoriesLabels();
}

void cmdConfirmFiles_Click() {
    blnConfirmFiles = !blnConfirmFiles;
    SetSetupFilename("");
    UpdateConfirmFilesLabels();
}

void cmdClear_Click() {
    if (ui::MsgBox("Clear folder and file specifications?", ui::Buttons::YesNo, ui::Icon::Question,
                   frmMain.cmdClear.Caption, "clear") != ui::AnswerYes)
        return;
    ClearSpecification();
}

void ClearSpecification() {
    ForgetChosenItems();
    strDirPath.clear();
    strBrowsePath.clear(); // a setup would keep it
    strFilespec.clear();
    blnMultipleFiles = false;
    blnSubdirectories = false;
    SetSetupFilename("");
    SetMainLine(MainLine::EstimatedTime, "");
    UpdateFilesLabels();
    UpdateSubdirectoriesLabels();
}

// No new choice while an operation runs or the setup panel is open.
void FilesDroppedOnMain(const std::vector<std::string>& paths) {
    if (frmMain.fraMenu.Enabled)
        OpenGivenPaths(paths);
}

std::vector<std::string> CommandLineFiles() {
    std::vector<std::string> paths = platform::CommandLineArguments();
    for (std::string& path : paths)
        path = platform::FullPath(path);
    return paths;
}

void OpenCommandLineFiles(const std::vector<std::string>& paths) {
    OpenGivenPaths(paths);
}
