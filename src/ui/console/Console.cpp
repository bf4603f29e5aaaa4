// The part of the ui seam that shows and waits: report lines, the progress line, yielding. Timers
// do not run: they only refresh what windows show.
#include "ui/console/Console.h"

#include <algorithm>

namespace ui::console {

namespace {

constexpr int intKeyF10 = 121;
constexpr int intPumpInterval = 30; ///< milliseconds
constexpr std::uint64_t lngSyncInterval = 250;
constexpr std::size_t lngProgressWidth = 79;

struct {
    std::function<void(int)> KeyHandler;
    std::size_t Printed = 0; ///< of the report, bytes
    std::string Progress;    ///< what stands on the terminal's last line
    std::uint64_t LastPump = 0, LastSync = 0;
    int InterruptsSeen = 0;
} state;

/// Over what stands there, cut to the width of a terminal.
void ShowProgressLine(std::string text) {
    while (UnitsOf(text) > lngProgressWidth)
        text.pop_back(); // a character counts at its first byte, so none is cut through
    if (text == state.Progress)
        return;
    Write(Stream::Error, "\r" + std::string(lngProgressWidth, ' ') + "\r" + text);
    state.Progress = text;
}

/// How far the report is final. The last line that has its end may still change: a file's line gets
/// a ruler under it while the file is at work.
std::size_t FinalEnd(const std::string& text) {
    const std::size_t last = std::min(text.rfind('\n'), text.size());
    return last == 0 || last == text.size() ? 0 : text.rfind('\n', last - 1) + 1; // npos + 1 is 0
}

void PrintReport(std::size_t end) {
    state.Printed = std::min(state.Printed, Report().size()); // it may have begun anew
    if (end > state.Printed)
        TakeLines(Report().substr(state.Printed, end - state.Printed));
    state.Printed = std::max(state.Printed, end);
}

/// Ctrl+C is the stop key. It stays pressed where nobody could say how to go on: each step of a
/// command begins by forgetting earlier stops.
void PressStop() {
    const int interrupts = Interrupts();
    const bool isHeld = Ending() || (interrupts > 0 && !IsAttended());
    if (state.KeyHandler && (isHeld || interrupts > state.InterruptsSeen))
        state.KeyHandler(intKeyF10);
    state.InterruptsSeen = interrupts;
}

void Pump() {
    state.LastPump = Clock();
    PrintReport(FinalEnd(Report()));
    if (state.LastPump - state.LastSync < lngSyncInterval)
        return;
    state.LastSync = state.LastPump;
    ShowProgressLine(Sync());
}

} // namespace

void Print(const std::string& text) {
    ShowProgressLine("");
    Write(Stream::Out, text);
}

void PrintError(const std::string& text) {
    ShowProgressLine("");
    Write(Stream::Error, text);
}

void PrintRest() {
    PrintReport(Report().size());
    ShowProgressLine("");
}

} // namespace ui::console

namespace ui {

using namespace console;

void Show(Form& form) {
    form.Visible = true;
    if (form.Activate)
        form.Activate();
}

void Hide(Form& form) {
    form.Visible = false;
}

void SetFocus(Control& /*control*/) {}

void HoldEscape(bool /*hold*/) {}

bool HasFocus(const Control& /*control*/) {
    return false;
}

void Repaint(Form& /*form*/) {
    DoEvents();
}

void KeepOnScreen(Form& /*form*/) {}

void ShowTaskbarProgress(Form& /*form*/, double /*fraction*/, bool /*paused*/) {}

void EndProgram() {}

bool Ending() {
    return Interrupts() >= 2;
}

void DoEvents() {
    PressStop();
    if (Clock() - state.LastPump >= intPumpInterval)
        Pump();
}

void Wait(int milliseconds) {
    for (int left = milliseconds; left > 0 && !Ending(); left -= intPumpInterval) {
        DoEvents();
        console::Sleep(intPumpInterval);
    }
}

void OnKeyReleased(std::function<void(int)> handler) {
    state.KeyHandler = std::move(handler);
}

} // namespace ui
