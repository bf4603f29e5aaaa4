// The main window: the command buttons, the labels beside them that show the session's state, and
// the setup panel.
#pragma once

#include "ui/Controls.h"

#include <array>
#include <string>

struct FrmMain : ui::Form {
    ui::Frame fraMenu; ///< holds all the command buttons; disabled while an operation runs
    ui::Button cmdSingleFile, cmdSpecifyDirectory[2], cmdSpecifyFiles, cmdSubdirectories, cmdClear;
    ui::Button cmdTypeOfPurge, cmdConfirmFiles;
    ui::Button cmdProcessFiles[2];
    ui::Button cmdReportScreen; ///< not in the frame, because it works while an operation runs
    ui::Button cmdLargePurge[3];
    ui::Button cmdSetup, cmdHelp, cmdQuit;

    ui::Label lblSingleFile, lblDirectory, lblFiles, lblFiles2;
    ui::Label lblSubdirectories, lblSubdirectories2;
    ui::Label lblTypeOfPurge, lblConfirmFiles, lblConfirmFiles2;
    ui::Label lblEstimatedTime, lblPurgeFoldersMessage;
    ui::ProgressBar barProgress; ///< progress of a command on a drive
    ui::Label lblPurgeSpeed, lblLargePurgeMessage;
    ui::Label lblSetupFilename, lblOnlineDocumentation, lblAbout, lblCorvaneSystems, lblCV_URL;
    ui::Label lblStatus;       ///< the line at the foot of the window
    ui::Frame fraSeparator[5]; ///< thin lines between the groups

    ui::Frame fraSetup; ///< the setup panel
    ui::Button cmdLoadSetup, cmdSaveSetup, cmdClearSetup, cmdRestoreSetup, cmdKeepSetup;
    ui::Frame picSaveSetup; ///< how to save the setup
    ui::Button cmdSaveSetupForNextRun, cmdSaveSetupAsOperationFile, cmdDontSaveSetup;

    ui::Timer Clock2; ///< ends the quit guard

    /// True for one second after the file dialog of "Single file" closes. The second click of a
    /// double click may pass through the closing dialog and must not hit the control below.
    bool blnQuitGuard = false;

    std::array<ui::Label*, 4> Links() {
        return {&lblOnlineDocumentation, &lblAbout, &lblCorvaneSystems, &lblCV_URL};
    }
};
extern FrmMain frmMain;

/// Enables or disables the menu, the setup panel and "Save report". Every long operation must
/// enable them again on every exit path.
void EnableMain(bool blnEnabled);
/// Sets the quit guard and starts Clock2, which clears it after a second.
void StartQuitGuard();

// Functions that update the labels from the session's state.

/// lblSingleFile, lblDirectory, lblFiles and lblFiles2.
void UpdateFilesLabels();
/// lblSubdirectories and lblSubdirectories2; checks whether the folder has subfolders.
void UpdateSubdirectoriesLabels();
/// lblConfirmFiles and lblConfirmFiles2.
void UpdateConfirmFilesLabels();
/// lblTypeOfPurge.
void UpdateTypeOfPurgeLabel();
/// lblSetupFilename: the current setup, "" for none.
void SetSetupFilename(const std::string& strName);
/// Places the labels that depend on the length of their texts; part of LayOutMain.
void FitLabels();

// Handlers of the window itself; bound in frmMainLayout.cpp.

void cmdTypeOfPurge_Click();
void cmdHelp_Click();
void cmdQuit_Click();
/// The reason why Windows must not shut down now; "" when it may.
std::string ShutdownObjection();
void lblOnlineDocumentation_Click();
void lblAbout_Click();
void lblCorvaneSystems_Click();
void Clock2_Tick();
/// Moves the focus to the button under the mouse.
void Button_MouseOver(ui::Control& control);
/// Handles F10 (stop request) and F1 (manual), whichever window has the focus.
void KeyReleased(int intKeyCode);
