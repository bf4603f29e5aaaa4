// The commands with which the user says what is to be purged.
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
/// Forgets folder and file specification, and the labels say so.
void ClearSpecification();

/// Files or a folder were dropped on the main window.
void FilesDroppedOnMain(const std::vector<std::string>& paths);
/// What the command line names, in full: to be asked before the current folder changes.
std::vector<std::string> CommandLineFiles();
/// Opens what the command line named as if it were dropped.
void OpenCommandLineFiles(const std::vector<std::string>& paths);
