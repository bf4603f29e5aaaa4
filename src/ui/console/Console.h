// The console as a back end of the ui seam. It has no windows: forms are asked on the console, and
// their fields are read where they are wanted. What it asks of the program is defined in cli/, what
// it asks of the system, with ui::RunSteps, in win32/ and by the tests.
#pragma once

#include "ui/Interface.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace ui::console {

/// To standard output.
void Print(const std::string& text);
/// To standard error.
void PrintError(const std::string& text);
/// The rest of the report, whether it is final or not; the progress line goes.
void PrintRest();

// ---- What the program lets the console answer, tell and show -----------------------------------

/// Somebody is there to be asked, and may be.
bool IsAttended();
/// The button that answers a box or a form without asking, by the name of the question or the form:
/// of a box its word ("Yes"), of a form its name ("cmdOK"). "": the person is asked; what names no
/// button is answered by what changes nothing.
std::string AnswerBeforehand(const std::string& question);
/// A box that asks nothing.
void TellBox(const std::string& text, Icon icon);
/// The text that grows, and who gets its lines, each of them once it is final.
const std::string& Report();
void TakeLines(const std::string& lines);
/// Called a few times in a second while work goes on. What stands on the terminal's last line then,
/// "" for nothing.
std::string Sync();

// ---- The system: streams, the stop key, the clock ----------------------------------------------

enum class Stream { In, Out, Error };

/// At the program's start. From here to its end Ctrl+C, a closed console and a log-off are counted
/// instead of ending it.
void OpenTerminal();
/// How often a stop was asked for: 1 after the first Ctrl+C, or when nobody takes standard output
/// any more. From 2 on the program is to end.
int Interrupts();

bool IsTerminal(Stream stream);
void Write(Stream stream, const std::string& text); ///< UTF-8
/// A line that a person has typed, without its end; false at the end of the input, and for Ctrl+C.
bool ReadLine(std::string& line);
/// All that comes from standard input, at most so many bytes.
bool ReadInput(std::string& text, std::size_t most);

/// Milliseconds since some moment in the past.
std::uint64_t Clock();
void Sleep(int milliseconds);

} // namespace ui::console
