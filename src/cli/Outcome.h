// What a command came to: what it told, and the exit code.
#pragma once

#include <string>

/// Something was refused or went wrong before the command began.
inline bool blnComplained = false;

enum ExitCode : int { ExitDone, ExitLeft, ExitRefused, ExitStopped, ExitFailed };
/// What they mean, for the help.
inline constexpr const char* strExitCodes[] = {
    "all was done", "something was not purged, or may still be there",
    "wrong usage, or refused: nothing was touched",
    "stopped: by Ctrl+C, by an answer, or as nobody took the output",
    "a drive or the program failed, or writing the report"};

/// Wires the console: what answers questions, where report and messages go.
void BeginTelling();
/// Somebody is there to be asked, and --yes does not forbid it.
bool IsAttended();
/// A line that says what is wrong. Returns false.
bool TellError(const std::string& strLine);
/// Ends the telling, and writes the report file. The exit code of the run.
int EndTelling();
