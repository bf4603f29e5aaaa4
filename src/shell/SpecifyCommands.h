// The commands that specify what is to be purged.
#pragma once

#include <string>
#include <vector>

void cmdSingleFile_Click();
/// 0: "Specify folder", 1: "Purge folders".
void cmdSpecifyDirectory_Click(int intIndex);
void cmdSpecifyFiles_Click();
void cmdSubdirectories_Click();
void cmdConfirmFiles_Click();
void cmdClear_Click();
/// Clears folder and file specification and updates the labels.
void ClearSpecification();

/// Handles files or a folder dropped on the main window.
void FilesDroppedOnMain(const std::vector<std::string>& paths);
/// The full paths of the files named on the command line. Call this before the current folder
/// changes.
std::vector<std::string> CommandLineFiles();
/// Handles the files from the command line like dropped files.
void OpenCommandLineFiles(const std::vector<std::string>& paths);
