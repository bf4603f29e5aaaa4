// The console as a back end of the ui seam. It has no windows: forms are asked on the console, and
// their fields are read where they are wanted. The second half is defined in cli/.
#pragma once

#include "ui/Interface.h"

#include <string>

namespace ui::console {

/// To standard output. When nobody takes it any more, the work is stopped as by the stop key.
void Print(const std::string& text);
/// To standard error.
void PrintError(const std::string& text);
/// The rest of the report, whether it is final or not; the progress line goes.
void PrintRest();
/// Ctrl+C was pressed, the session ends, or nobody takes the output any more.
bool StopWanted();
/// Puts everything back as it was at the start.
void Reset();

// ---- What the program lets the console answer, tell and show -----------------------------------

/// The button that answers a box or a form without asking, by the name of the question or the form:
/// of a box its word ("Yes"), of a form its name ("cmdOK"). "": the person is asked; what names no
/// button is answered by what changes nothing.
std::string AnswerBeforehand(const std::string& question);
/// A box that asks nothing.
void TellBox(const std::string& text, Icon icon);
/// The text that grows, and who gets its lines, each of them once it is final.
const std::string& Report();
void TakeLines(const std::string& lines);
/// Called whenever the back end brings up to date what it shows. What stands on the terminal's last
/// line while work goes on, "" for nothing.
std::string Sync();

} // namespace ui::console
