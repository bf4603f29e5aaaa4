// What a command came to: what it told, and the exit code.
#pragma once

#include <cstddef>
#include <string>

/// What this run of the program has told.
inline struct Told {
    bool blnComplained = false; ///< something was refused or went wrong before the command began
    std::size_t lngRecords = 0; ///< printed as JSON
} told;

enum ExitCode : int { ExitDone, ExitLeft, ExitRefused, ExitStopped, ExitFailed };

/// A line that says what is wrong. Returns false.
bool TellError(const std::string& strLine);
/// Ends the telling, and writes the report file. The exit code of the run.
int EndTelling();
