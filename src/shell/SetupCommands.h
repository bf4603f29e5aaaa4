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

/// What "Load setup" does with the file that was chosen: reads it, brings the labels up to date,
/// and says with a message box what went wrong.
void LoadSetupFromFile(const std::string& strPath);
/// Reads the setup that was saved for the next run, if there is one, and keeps a copy of the setup
/// in force for "Restore setup".
void LoadNextRunSetup();
/// Puts the main window where it was when the setup was saved for the next run.
void RestoreWindowPosition();
/// Hides the setup panel and enables the menu again; the end of every setup command.
void CloseSetupFrame();
