// The system-extension table with its verdicts for one run, and the classification of files.
#pragma once

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
std::int16_t ClassifyFileForPurge(const std::string& path);
