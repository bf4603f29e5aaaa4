// What a command came to: what it told, and the exit code.
#pragma once

#include "cli/CommandLine.h"

#include <string>

enum ExitCode : int {
    ExitDone = 0,
    ExitLeft = 1,    ///< something was not purged
    ExitRefused = 2, ///< wrong usage, or refused: nothing was touched
    ExitStopped = 3, ///< by Ctrl+C, by an answer, or as nobody took the output any more
    ExitFailed = 4   ///< a drive or the program failed
};
/// Each code with its words, a line each, for the help.
std::string ExitCodesText();

/// Wires the console: what answers questions, where report and messages go.
void BeginTelling(const CommandLine& line, bool blnAttended);
/// A line that says what is wrong; "" says nothing.
void TellError(const std::string& strLine);
/// Something was refused or went wrong before the command began.
bool HasComplained();
/// Ends the telling, and writes the report file. The exit code of the run.
int EndTelling();
