// Setup files: the choices that decide the next purge, written to a file and read back.
#pragma once

#include <string>

/// Reads a setup into the controls and the session. False on any error; what was read before the
/// fault keeps its new value: all of it when the fault is among the boxes, nothing when one of the
/// seven lines before them cannot be read.
bool ReadSetupFile(const std::string& path);
/// Whether the folders of the setup can be read back from a file: a comma would end the item.
bool FoldersFitSetupFile();
/// Writes the current setup, through a temporary file that replaces the old one. False on any
/// error; an existing file is then as it was. `blnWithFolders`: false leaves the folders empty,
/// where they would not be read back.
bool WriteSetupFile(const std::string& path, bool blnWithFolders = true);
/// The whole text of a setup file for the current setup, and its reading back (what the two
/// procedures above do without the file).
std::string SetupText(bool blnWithFolders = true);
bool ApplySetupText(const std::string& text);
/// Works out the path of the next-run file (in a portable copy: beside the program); once, at
/// start-up, after the program texts are loaded.
void FindNextRunSetupPath();
/// Path of the next-run file; "" when there is no place for one. Does not make the folder.
const std::string& NextRunSetupPath();
/// Makes the folder of the next-run file if it is missing.
bool MakeNextRunFolder();
