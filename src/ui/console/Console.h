// The console as a back end of the ui seam: what the program lets it answer, tell and show. It has
// no windows: forms are asked on the console, and their fields are read where they are wanted.
#pragma once

#include "ui/Interface.h"

#include <functional>
#include <string>

namespace ui::console {

/// A question: a box, or a form that is shown modally.
struct Asked {
    std::string Where; ///< the title of the box, or the name of the form
    std::string Text;  ///< of the box
};

struct Wiring {
    /// Somebody sits at a terminal and can be asked.
    bool Attended = false;
    /// The button that answers without asking: of a box by its word ("Yes"), of a form by its name
    /// ("cmdOK"). "": the person is asked; where there is none the answer is what changes nothing.
    std::function<std::string(const Asked&)> Answer;
    /// A box that asks nothing.
    std::function<void(const std::string& title, const std::string& text, Icon icon)> Tell;
    /// The text that grows, and who gets its lines, each of them once it is final.
    const TextBox* Report = nullptr;
    std::function<void(const std::string& lines)> Lines;
    /// What stands on the terminal's last line while work goes on, "" for nothing.
    std::function<std::string()> Progress;
    /// Called whenever the back end brings up to date what it shows.
    std::function<void()> Sync;
};
extern Wiring wiring;

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

} // namespace ui::console
