// The setup panel: load, save, clear and restore the setup.
#include "shell/SetupCommands.h"

#include "platform/Files.h"
#include "platform/System.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "settings/SetupFiles.h"
#include "settings/TextFiles.h"
#include "shell/ChosenItems.h"
#include "shell/frmMain.h"
#include "shell/frmMainPlaces.h"
#include "shell/SpecifyCommands.h"
#include "support/FolderSearch.h"
#include "support/MainWindow.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <charconv>

namespace {

constexpr const char* strOperationFiles = "Operation files (*.nws)";
constexpr const char* strOperationPattern = "*.nws";

/// The setup loaded at start-up, as in its file; without a file, the state after start-up.
std::string strSetupAtStart;

void UpdateAllLabels() {
    ForgetChosenItems(); // a setup replaces the chosen items
    RememberFolder();
    UpdateFilesLabels();
    UpdateSubdirectoriesLabels();
    UpdateConfirmFilesLabels();
    UpdateTypeOfPurgeLabel();
}

/// The path of the file beside the next-run setup that stores the window's place: two lines, left
/// and top in twips.
std::string WindowPositionPath() {
    const std::string strSetup = NextRunSetupPath();
    return strSetup.empty() ? "" : strSetup.substr(0, strSetup.rfind('.')) + ".pos";
}

/// Ignores failures: a window that opens elsewhere next time is no loss.
void SaveWindowPosition() {
    const std::string strText =
        std::to_string(frmMain.Left) + "\r\n" + std::to_string(frmMain.Top) + "\r\n";
    static_cast<void>(WriteTextFile(WindowPositionPath(), strText));
}

/// Reads a number and its line end from the start of a text.
bool TakeNumber(std::string_view& strText, int& intNumber) {
    const auto result = std::from_chars(strText.data(), strText.data() + strText.size(), intNumber);
    if (result.ec != std::errc{})
        return false;
    strText.remove_prefix(static_cast<std::size_t>(result.ptr - strText.data()));
    if (!strText.starts_with("\r\n"))
        return false;
    strText.remove_prefix(2);
    return true;
}

/// Writes the current setup. A folder whose path could not be read back would make the whole file
/// invalid and cause a complaint at the next start. So it is left out, and the user is told.
bool SaveSetup(const std::string& strPath) {
    const bool blnWithFolders = FoldersFitSetupFile();
    if (!WriteSetupFile(strPath, blnWithFolders))
        return false;
    if (!blnWithFolders)
        ui::Complain("The folder\r\n" +
                         (strDirPath.find(',') == std::string::npos ? strBrowsePath : strDirPath) +
                         "\r\ncannot be loaded again from a setup file, as there is a comma in its "
                         "path.\r\nThe setup was saved without the folder.",
                     "Save setup");
    if (ItemsAreChosen())
        ui::Complain("The chosen items are not part of a setup.\r\n"
                     "The setup was saved without them.",
                     "Save setup");
    return true;
}

} // namespace

void RestoreWindowPosition() {
    std::string strText;
    if (!ReadTextFile(WindowPositionPath(), strText))
        return;
    std::string_view strRest = strText;
    int intLeft = 0, intTop = 0;
    if (!TakeNumber(strRest, intLeft) || !TakeNumber(strRest, intTop))
        return;
    frmMain.Left = intLeft;
    frmMain.Top = intTop;
    frmMain.Position = ui::StartPosition::Manual;
    ui::KeepOnScreen(frmMain);
}

void LoadNextRunSetup() {
    const std::string strPath = NextRunSetupPath();
    if (!strPath.empty() && platform::FileExists(strPath)) {
        if (ReadTextFile(strPath, strSetupAtStart) && ApplySetupText(strSetupAtStart))
            return;
        ui::Complain("Error when attempting to load setup from file " + strPath + "!");
    }
    strSetupAtStart = SetupText();
}

void LoadSetupFromFile(const std::string& strPath) {
    bool blnThere = false;
    AskOnDrive(strPath, [&] { blnThere = platform::FileExists(strPath); });
    if (!blnThere) {
        ui::Complain("File " + strPath + " not found!", "Error when attempting to load setup.");
        return;
    }
    const std::string strBefore = SetupText() + strFilespec;
    const bool blnLoaded = ReadSetupFile(strPath);
    // A failed load may also have changed part of the state, and the window must show the folder
    // that would be purged.
    if (blnLoaded || SetupText() + strFilespec != strBefore) {
        UpdateAllLabels();
        SetMainLine(MainLine::EstimatedTime, "");
        SetSetupFilename(blnLoaded ? strPath : "");
    }
    if (!blnLoaded)
        ui::Complain("Error when attempting to load setup from file " + strPath + "!");
}

void CloseSetupFrame() {
    frmMain.fraSetup.Visible = false;
    HideCovered();
    EnableMenu(true);
    ui::SetFocus(frmMain.cmdSetup);
}

void cmdSetup_Click() {
    ClearStatus();
    EnableMenu(false);
    frmMain.fraSetup.Visible = true;
    HideCovered();
    ui::SetFocus(frmMain.cmdLoadSetup);
}

void cmdLoadSetup_Click() {
    frmMain.fraSetup.Visible = false;
    const auto paths = ui::ChoosePaths({ui::Choose::File,
                                        "Specify operation file to be loaded",
                                        strBrowsePath,
                                        {{strOperationFiles, strOperationPattern}}});
    if (!paths.empty())
        LoadSetupFromFile(paths.front());
    CloseSetupFrame();
}

void cmdSaveSetup_Click() {
    frmMain.fraSetup.Visible = false;
    frmMain.picSaveSetup.Visible = true;
    ui::SetFocus(frmMain.cmdSaveSetupForNextRun);
}

void cmdClearSetup_Click() {
    ClearSpecification();
    CloseSetupFrame();
}

void cmdRestoreSetup_Click() {
    // This cannot fail: the text was applied before, or written from the current setup.
    static_cast<void>(ApplySetupText(strSetupAtStart));
    UpdateAllLabels();
    SetMainLine(MainLine::EstimatedTime, "");
    CloseSetupFrame();
}

void cmdKeepSetup_Click() {
    CloseSetupFrame();
}

void cmdSaveSetupForNextRun_Click() {
    if (MakeNextRunFolder() && SaveSetup(NextRunSetupPath())) {
        SaveWindowPosition();
        SetMainLine(MainLine::Status, "The setup was saved for the next run.");
    } else {
        ui::Complain("Cannot save setup!");
    }
    frmMain.picSaveSetup.Visible = false;
    CloseSetupFrame();
}

void cmdSaveSetupAsOperationFile_Click() {
    const auto paths = ui::ChoosePaths({ui::Choose::NewFile,
                                        "Specify operation file to be saved",
                                        strBrowsePath,
                                        {{strOperationFiles, strOperationPattern}}});
    if (!paths.empty()) {
        std::string strPath = paths.front();
        // With another extension, the file would not be offered for loading. When dropped, it would
        // be taken for a file to purge and not for a setup.
        if (platform::LowerCase(ExtensionOf(strPath)) != "nws")
            strPath += ".nws";
        const bool blnWrite =
            !platform::FileExists(strPath) ||
            ui::MsgBox("Overwrite existing file " + strPath + "?", ui::Buttons::YesNoCancel,
                       ui::Icon::Question, "File exists", "overwrite") == ui::AnswerYes;
        if (blnWrite && SaveSetup(strPath))
            SetMainLine(MainLine::Status, "The setup was saved in " + strPath + ".");
        else if (blnWrite)
            ui::Complain("Cannot save setup in operation file " + strPath + "!");
    }
    frmMain.picSaveSetup.Visible = false;
    CloseSetupFrame();
}

void cmdDontSaveSetup_Click() {
    frmMain.picSaveSetup.Visible = false;
    CloseSetupFrame();
}
