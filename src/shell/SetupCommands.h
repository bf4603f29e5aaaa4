// The commands of the setup panel.
#pragma once

#include <string>

void cmdSetup_Click();
void cmdLoadSetup_Click();
void cmdSaveSetup_Click();
void cmdClearSetup_Click();
void cmdRestoreSetup_Click();
void cmdKeepSetup_Click();
void cmdSaveSetupForNextRun_Click();
void cmdSaveSetupAsOperationFile_Click();
void cmdDontSaveSetup_Click();

/// Loads the setup file chosen in "Load setup", updates the labels, and reports errors in a message
/// box.
void LoadSetupFromFile(const std::string& strPath);
/// Loads the setup saved for the next run, if there is one, and keeps a copy of the current setup
/// for "Restore setup".
void LoadNextRunSetup();
/// Moves the main window to the place saved with the setup for the next run.
void RestoreWindowPosition();
/// Hides the setup panel and enables the menu again; every setup command ends with this.
void CloseSetupFrame();
