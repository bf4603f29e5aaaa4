// The main window: the command buttons, the labels that show the session's state beside them, and
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
    ui::Button cmdReportScreen; ///< not in the frame: it works while an operation runs
    ui::Button cmdLargePurge[3];
    ui::Button cmdSetup, cmdHelp, cmdQuit;

    ui::Label lblSingleFile, lblDirectory, lblFiles, lblFiles2;
    ui::Label lblSubdirectories, lblSubdirectories2;
    ui::Label lblTypeOfPurge, lblConfirmFiles, lblConfirmFiles2;
    ui::Label lblEstimatedTime, lblPurgeFoldersMessage;
    ui::ProgressBar barProgress; ///< of a command on a drive
    ui::Label lblPurgeSpeed, lblLargePurgeMessage;
    ui::Label lblSetupFilename, lblOnlineDocumentation, lblAbout, lblCorvaneSystems, lblCV_URL;
    ui::Label lblStatus;       ///< the line at the foot of the window
    ui::Frame fraSeparator[5]; ///< thin lines between the groups

    ui::Frame fraSetup; ///< the setup panel
    ui::Button cmdLoadSetup, cmdSaveSetup, cmdClearSetup, cmdRestoreSetup, cmdKeepSetup;
    ui::Frame picSaveSetup; ///< how to save the setup
    ui::Button cmdSaveSetupForNextRun, cmdSaveSetupAsOperationFile, cmdDontSaveSetup;

    ui::Timer Clock2; ///< ends the quit guard

    /// True for one second after the file dialog of "Single file" has closed: a second click of an
    /// impatient double click, falling through the closing dialog, must not hit what lies below.
    bool blnQuitGuard = false;

    std::array<ui::Label*, 4> Links() {
        return {&lblOnlineDocumentation, &lblAbout, &lblCorvaneSystems, &lblCV_URL};
    }
};
extern FrmMain frmMain;

/// Enables or disables the menu and the setup panel; around long operations, on every way out.
void EnableMain(bool blnEnabled);
/// Sets the quit guard and starts Clock2, which takes it away after a second.
void StartQuitGuard();

// The labels, brought up to date with the session's state.

/// lblSingleFile, lblDirectory, lblFiles and lblFiles2.
void UpdateFilesLabels();
/// lblSubdirectories and lblSubdirectories2; looks whether the folder has subfolders.
void UpdateSubdirectoriesLabels();
/// lblConfirmFiles and lblConfirmFiles2.
void UpdateConfirmFilesLabels();
/// lblTypeOfPurge.
void UpdateTypeOfPurgeLabel();
/// lblSetupFilename: the setup in force, "" for none.
void SetSetupFilename(const std::string& strName);
/// Gives the labels that are as long as their texts their places; part of LayOutMain.
void FitLabels();

// Handlers that belong to the window itself; bound in frmMainLayout.cpp.

void cmdTypeOfPurge_Click();
void cmdHelp_Click();
void cmdQuit_Click();
/// Why Windows must not shut down now, "" when it may.
std::string ShutdownObjection();
void lblOnlineDocumentation_Click();
void lblAbout_Click();
void lblCorvaneSystems_Click();
void Clock2_Tick();
/// The focus follows the mouse.
void Button_MouseOver(ui::Control& control);
/// F10 asks for a stop, F1 opens the manual, whichever window has the focus.
void KeyReleased(int intKeyCode);
