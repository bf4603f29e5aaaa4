// The main window: its labels, its own commands, and the functions that other rooms call.
#include "shell/frmMain.h"

#include "platform/Files.h"
#include "platform/System.h"
#include "report/frmReport.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "report/run/TimeEstimates.h"
#include "session/Session.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/SetupFiles.h"
#include "shell/ChosenItems.h"
#include "shell/frmMainPlaces.h"
#include "support/FolderSearch.h"
#include "support/MainWindow.h"
#include "support/Paths.h"
#include "support/ProgramTexts.h"
#include "ui/Interface.h"
#include "Version.h"

#include <algorithm>
#include <cstddef>

FrmMain frmMain;

namespace {

constexpr const char* strNotSpecified = "Not specified";
constexpr const char* strItemsAsChosen = "As chosen (point at the line above to see them)";
constexpr std::size_t intMostItemsInTip = 25;

/// The button that had the focus when the menu was disabled; it gets the focus back.
ui::Control* ctlFocusBefore = nullptr;

/// The width from a label's left edge to the window's right margin.
int RoomFrom(const ui::Label& label) {
    return frmMain.Width - label.Left - 120;
}

/// Writes a white-on-black label. It is only as wide and high as its text may need, and hidden
/// without text: an empty black bar says nothing.
void WriteMessageLabel(ui::Label& label, const std::string& strText, int intMaxWidth,
                       int intMaxLines) {
    constexpr int intLineHeight = 240;
    const int intWidthOfCharacter = label.Bold ? 110 : 95; // rounded up
    int intLines = 1, intLongest = 0, intInLine = 0;
    for (const char c : strText) {
        if (c == '\n') {
            ++intLines;
            intInLine = 0;
        } else if (c != '\r' && (c & 0xC0) != 0x80) {
            ++intInLine;
        }
        intLongest = std::max(intLongest, intInLine);
        if (intInLine * intWidthOfCharacter > intMaxWidth) { // the label wraps this line
            ++intLines;
            intInLine = 0;
        }
    }
    if (strText.ends_with("\r\n"))
        --intLines;
    label.Width = std::min(intLongest * intWidthOfCharacter + 120, intMaxWidth);
    label.Height = std::clamp(intLines, 1, intMaxLines) * intLineHeight;
    label.Caption = strText;
    label.Visible = !strText.empty();
    HideCovered();
}

void WriteSubdirectories2(const std::string& strText) {
    WriteMessageLabel(frmMain.lblSubdirectories2, strText, RoomFrom(frmMain.lblSubdirectories2), 1);
}

void WritePurgeSpeed(const std::string& strText) {
    WriteMessageLabel(frmMain.lblPurgeSpeed, strText, RoomFrom(frmMain.lblPurgeSpeed), 1);
}

void WriteLargePurgeMessage(const std::string& strText) {
    WriteMessageLabel(frmMain.lblLargePurgeMessage, strText, RoomFrom(frmMain.lblLargePurgeMessage),
                      5);
}

/// The explanation of a file specification for several files: "(All files.)" and similar.
std::string FilespecMeaning(const std::string& strSpec) {
    if (strSpec == "*.*")
        return "(All files.)";
    if (strSpec.find_first_of("?*") == std::string::npos)
        return "";
    const std::string strExt = strSpec.size() > 2 ? strSpec.substr(2) : "";
    if (strSpec.starts_with("*.") && !strExt.empty() &&
        strExt.find_first_of("?*.") == std::string::npos)
        return "(All files with extension " + strExt + ".)";
    return "(All files of the form " + strSpec + ".)";
}

/// Places the explanation after a file specification; a single file's name gets the whole line.
void PlaceFilesLabels() {
    const bool blnMeaning = !FilespecMeaning(strFilespec).empty();
    constexpr int intWidthOfCharacter = 110;
    const int intRoom = RoomFrom(frmMain.lblFiles);
    frmMain.lblFiles.Width = intRoom;
    if (blnMeaning)
        frmMain.lblFiles.Width = std::min(
            static_cast<int>(std::min<std::size_t>(strFilespec.size(), 500)) * intWidthOfCharacter +
                240,
            intRoom / 2);
    frmMain.lblFiles2.Visible = blnMeaning;
    frmMain.lblFiles2.Left = frmMain.lblFiles.Left + frmMain.lblFiles.Width;
    frmMain.lblFiles2.Width = RoomFrom(frmMain.lblFiles2);
}

void OpenAddress(const std::string& strAddress) {
    const platform::Fault fault = platform::OpenLink(strAddress);
    if (platform::Failed(fault))
        ui::Complain("Cannot open " + strAddress + ".\r\n" + platform::FaultText(fault) + ".");
}

std::string ManualPath() {
    return FolderWithBackslash(platform::ProgramFolder()) + "manual.html";
}

/// Whether the manual exists; shows an error if not.
bool IsManualThere() {
    const std::string strManual = ManualPath();
    if (platform::FileExists(strManual))
        return true;
    ui::Complain("The user manual should be in the file\r\n" + strManual +
                     "\r\nbut there is no such file.",
                 "Help");
    return false;
}

/// Whether an operation is running. A disabled menu does not prove it: the menu is also disabled
/// while a setup is loaded or saved.
bool IsRunning() {
    return !frmMain.fraSetup.Enabled;
}

} // namespace

// ---- Labels ------------------------------------------------------------------------------------

void UpdateFilesLabels() {
    frmMain.lblSingleFile.Caption = "To purge multiple files, specify folder and files.";
    frmMain.lblDirectory.Caption = strDirPath.empty() ? strNotSpecified : strDirPath;
    frmMain.lblFiles.Caption = strFilespec.empty() ? strNotSpecified : strFilespec;
    frmMain.lblDirectory.ToolTip.clear();
    if (ItemsAreChosen()) {
        frmMain.lblDirectory.Caption = ChosenItemsText();
        frmMain.lblDirectory.ToolTip = ChosenItemsList(intMostItemsInTip);
        frmMain.lblFiles.Caption = strItemsAsChosen;
    }
    frmMain.lblFiles2.Caption = FilespecMeaning(strFilespec);
    PlaceFilesLabels();
}

void UpdateSubdirectoriesLabels() {
    bool blnFound = !ItemsAreChosen() || FoldersAreChosen();
    // Keep the choice when the folder cannot be read now, for example without its medium, and when
    // the user does not want to wait.
    if (!strDirPath.empty())
        (void)RunSearch("Reading " + strDirPath,
                        [&] { (void)LookForSubfolders(strDirPath, blnFound); });
    // If the label says that there are no subfolders, the state must agree with it.
    if (!blnFound || (strDirPath.empty() && !ItemsAreChosen()))
        blnSubdirectories = false;
    frmMain.lblSubdirectories.Caption = blnSubdirectories ? "Yes" : "No";
    SetMainLine(MainLine::Subdirectories2,
                !blnFound && ItemsAreChosen() ? "(No folder is among the chosen items.)"
                : !blnFound                   ? "(The folder has no subfolders.)"
                : blnSubdirectories ? "(Operate on all specified files in lower subfolders.)"
                                    : "(Do not operate on files in lower subfolders.)");
}

void UpdateConfirmFilesLabels() {
    frmMain.lblConfirmFiles.Caption = blnConfirmFiles ? "Yes" : "No";
    frmMain.lblConfirmFiles2.Caption = blnConfirmFiles
                                           ? "(Confirm purge operation for each file.)"
                                           : "(Do not confirm purge operation for each file.)";
}

void UpdateTypeOfPurgeLabel() {
    frmMain.lblTypeOfPurge.Caption = TypeOfPurgeSummary();
}

void SetSetupFilename(const std::string& strName) {
    frmMain.lblSetupFilename.Caption = strName;
}

void FitLabels() {
    PlaceFilesLabels();
    WriteSubdirectories2(std::string(frmMain.lblSubdirectories2.Caption));
    WritePurgeSpeed(std::string(frmMain.lblPurgeSpeed.Caption));
    WriteLargePurgeMessage(std::string(frmMain.lblLargePurgeMessage.Caption));
}

void SetMainLine(MainLine line, const std::string& text) {
    switch (line) {
    case MainLine::Status:
        frmMain.lblStatus.Caption = text;
        break;
    case MainLine::LargePurgeMessage:
        WriteLargePurgeMessage(text);
        break;
    case MainLine::PurgeFoldersMessage:
        frmMain.lblPurgeFoldersMessage.Caption = text;
        break;
    case MainLine::Subdirectories2:
        WriteSubdirectories2(text);
        break;
    case MainLine::PurgeSpeed:
        frmMain.lblPurgeSpeed.Bold = !text.empty();
        WritePurgeSpeed(text);
        break;
    case MainLine::EstimatedTime:
        frmMain.lblEstimatedTime.Caption = text;
        break;
    }
}

void ClearStatus() {
    if (frmMain.lblStatus.Caption.empty())
        return;
    SetMainLine(MainLine::Status, "");
    RepaintMain();
}

void RepaintMain() {
    ui::Repaint(frmMain);
}

void ShowMainProgress(double dblFraction) {
    frmMain.barProgress.Visible = dblFraction >= 0;
    frmMain.barProgress.Fraction = std::max(dblFraction, 0.0);
    ui::ShowTaskbarProgress(frmMain, dblFraction, false);
}

// ---- The menu ----------------------------------------------------------------------------------

void EnableMenu(bool blnEnabled) {
    if (frmMain.fraMenu.Enabled == blnEnabled)
        return;
    if (!blnEnabled) {
        ctlFocusBefore = nullptr;
        for (ui::Control* control : frmMain.Controls)
            if (control->Container == &frmMain.fraMenu && ui::HasFocus(*control))
                ctlFocusBefore = control;
    }
    frmMain.fraMenu.Enabled = blnEnabled;
    // Otherwise the focus would move to a link, and an accidental Enter would open a browser.
    for (ui::Label* link : frmMain.Links())
        link->Enabled = blnEnabled;
    if (blnEnabled && ctlFocusBefore)
        ui::SetFocus(*ctlFocusBefore);
}

void EnableMain(bool blnEnabled) {
    frmMain.fraSetup.Enabled = blnEnabled;
    EnableMenu(blnEnabled);
    // To save a report pumps messages and waits for a drive, which no command may do in another's
    // work.
    frmReport.cmdSaveReport.Enabled = blnEnabled && !frmReport.txbText.Text.empty();
}

CommandsInReach TakeCommandsAway() {
    const CommandsInReach before{frmMain.fraMenu.Enabled, frmMain.fraSetup.Enabled,
                                 frmReport.cmdSaveReport.Enabled};
    EnableMain(false);
    return before;
}

void GiveCommandsBack(const CommandsInReach& before) {
    frmMain.fraSetup.Enabled = before.blnSetup;
    EnableMenu(before.blnMenu);
    frmReport.cmdSaveReport.Enabled = before.blnSave;
}

void Button_MouseOver(ui::Control& control) {
    // The report window in front must keep the focus; the mouse must not move it to this button.
    if (&control == &frmMain.cmdReportScreen && frmReport.Visible)
        return;
    if (!ui::HasFocus(control))
        ui::SetFocus(control);
}

void KeyReleased(int intKeyCode) {
    constexpr int intKeyF1 = 112, intKeyF10 = 121;
    if (intKeyCode == intKeyF10) {
        blnStop = true;
        ShowClock(); // the clock shows the pause
    } else if (intKeyCode == intKeyF1 && IsManualThere())
        OpenAddress(ManualPath());
}

// ---- The window's own commands -----------------------------------------------------------------

void cmdTypeOfPurge_Click() {
    ui::ShowModal(frmTypeOfPurge);
    if (frmTypeOfPurge.blnAccepted)
        frmReport.lblPausedDone.Caption.clear();
    UpdateTypeOfPurgeLabel();
    // The estimate for a single file depends on the number of overwrites.
    if (!blnMultipleFiles && !strFilespec.empty())
        SetMainLine(MainLine::EstimatedTime, SingleFileEstimate(strDirPath + strFilespec));
}

void cmdHelp_Click() {
    if (IsManualThere() &&
        ui::MsgBox("The user manual is in the file\r\n" + ManualPath() +
                       "\r\n\r\nDo you wish to open it now?",
                   ui::Buttons::YesNo, ui::Icon::Question, "Help", "manual") == ui::AnswerYes)
        OpenAddress(ManualPath());
}

void lblAbout_Click() {
    const std::string& strSetup = NextRunSetupPath();
    const std::string strFolder = strSetup.substr(0, strSetup.rfind('\\') + 1);
    const bool blnPortable = strFolder == FolderWithBackslash(platform::ProgramFolder());
    ui::MsgBox("Nullwright " NW_VERSION "\r\n\r\n" NW_COPYRIGHT
               "\r\nMIT License, without warranty of any kind.\r\n\r\n" +
                   (strSetup.empty() ? "There is no folder in which settings could be kept."
                                     : "Settings" + std::string(blnPortable ? " (portable)" : "") +
                                           ": " + strFolder),
               ui::Buttons::OK, ui::Icon::Information, "About Nullwright");
}

void lblOnlineDocumentation_Click() {
    OpenAddress(ProgramText(TextNumber::DocumentationLink));
}

void lblCorvaneSystems_Click() {
    OpenAddress(ProgramText(TextNumber::MakerLink));
}

void StartQuitGuard() {
    frmMain.blnQuitGuard = true;
    frmMain.Clock2.Enabled = true;
}

void Clock2_Tick() {
    frmMain.blnQuitGuard = false;
    frmMain.Clock2.Enabled = false;
}

std::string ShutdownObjection() {
    return IsRunning() ? "An operation is still running." : "";
}

void cmdQuit_Click() {
    if (frmMain.blnQuitGuard)
        return;
    if (IsRunning()) {
        // "Quit" itself is disabled now, so the user is closing the window. Ending here would leave
        // dummy files and a half-purged file, so the operation is asked to stop. The commands on
        // drives ask the user themselves. Nobody is asked when the session ends: the box would
        // answer No by itself.
        if (ui::Ending() || !currentRun.Request.blnInReport || !currentRun.IsUnderWay() ||
            AskInReport("An operation is still running.\r\nDo you wish to stop it?",
                        ui::Buttons::YesNo, "Nullwright", "quit", 2) == ui::AnswerYes) {
            blnStop = true;
            ShowClock();
        }
        return;
    }
    ui::EndProgram();
}
