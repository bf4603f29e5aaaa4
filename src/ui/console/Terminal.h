// What the console back end asks of the system: streams, the stop key, the clock; and
// ui::RunSteps. Declared here; defined in win32/, and by the tests.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace ui::console {

enum class Stream { In, Out, Error };

/// At the program's start and end. Between them Ctrl+C, a closed console and a log-off are counted
/// instead of ending the program.
void OpenTerminal();
void CloseTerminal();
/// How often a stop was asked for: 1 after the first Ctrl+C. From 2 on the program is to end.
int Interrupts();

bool IsTerminal(Stream stream);
/// UTF-8. False: nobody takes it any more.
bool Write(Stream stream, const std::string& text);
/// A line that a person has typed, without its end; false at the end of the input, and for Ctrl+C.
bool ReadLine(std::string& line);
/// All that comes from standard input, at most so many bytes.
bool ReadInput(std::string& text, std::size_t most);

/// Milliseconds since some moment in the past.
std::uint64_t Clock();
void Sleep(int milliseconds);

} // namespace ui::console
