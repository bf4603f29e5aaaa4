// The system-extension table with its verdicts for one run, and the classification of files.
#pragma once

#include "platform/Places.h"

#include <cstdint>
#include <string>

enum Classification : std::int16_t {
    ClassNoObjection = 0,
    ClassProgramFolder = 1,
    ClassSwapFile = 2,
    ClassSystemUndecided = 7,
    ClassSystemRefused = 8
};

/// Fills the table; called when a run starts. Verdict 0 ask, 1 allowed, −1 refused.
void InitSystemExtensions(std::int16_t initialVerdict);
void SetExtensionVerdict(const std::string& extension, std::int16_t verdict);
/// *.swp
bool IsSwapFile(const std::string& name);
/// The folder of the file is asked about once, and for the next file in the same folder no more.
std::int16_t ClassifyFileForPurge(const std::string& path);

/// A run begins: what was found out about folders is forgotten.
void ForgetFolders();
/// Tells of a folder (with its backslash) that is held open what it is; the files that are
/// classified next lie in it. True for the program's own, by whatever path it was reached.
bool EnterFolder(const std::string& folder, const platform::FolderIdentity& identity);
