// The part of the ui seam that shows and waits: report lines, the progress line, yielding, work on
// a thread. Timers do not run: they only refresh what windows show.
#include "ui/console/Console.h"

#include "ui/console/Terminal.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace ui::console {

Wiring wiring;

namespace {

constexpr int intKeyF10 = 121;
constexpr std::uint64_t lngPumpInterval = 30; ///< milliseconds
constexpr std::uint64_t lngProgressInterval = 250;
constexpr std::uint64_t lngStayAwakeInterval = 30'000;
constexpr std::size_t lngProgressWidth = 79;
constexpr auto pollInterval = std::chrono::milliseconds(15);

struct {
    std::function<void(int)> KeyHandler;
    std::size_t Printed = 0; ///< of the report, bytes
    std::string Progress;    ///< what stands on the terminal's last line
    std::uint64_t LastPump = 0, LastProgress = 0, LastAwake = 0;
    int InterruptsSeen = 0;
    bool OutputGone = false;
    bool Quitting = false;
    bool ThreadBusy = false;
} state;

void ShowProgressLine(const std::string& text) {
    if (text == state.Progress)
        return;
    const std::size_t before = UnitsOf(state.Progress), now = UnitsOf(text);
    Write(Stream::Error, "\r" + text + std::string(before > now ? before - now : 0, ' ') +
                             (text.empty() ? "\r" : ""));
    state.Progress = text;
}

std::string CutToWidth(std::string text) {
    while (UnitsOf(text) > lngProgressWidth) {
        while ((static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
            text.pop_back();
        text.pop_back();
    }
    return text;
}

/// How far the report is final. The last line that has its end may still change: a file's line gets
/// a ruler under it while the file is at work.
std::size_t FinalEnd(const std::string& text) {
    const std::size_t last = text.rfind('\n');
    const std::size_t before =
        last == std::string::npos || last == 0 ? last : text.rfind('\n', last - 1);
    return before == std::string::npos || last == 0 ? 0 : before + 1;
}

void PrintReport(bool all) {
    if (!wiring.Report)
        return;
    const std::string& text = wiring.Report->Text;
    state.Printed = text.empty() ? 0 : std::min(state.Printed, text.size());
    const std::size_t end = all ? text.size() : FinalEnd(text);
    if (end <= state.Printed)
        return;
    wiring.Lines(text.substr(state.Printed, end - state.Printed));
    state.Printed = end;
}

/// Ctrl+C is the stop key. A program that is ending presses it for whoever may not have seen it.
void PressStop() {
    const int interrupts = Interrupts();
    if (state.KeyHandler && (interrupts > state.InterruptsSeen || Ending() || state.OutputGone))
        state.KeyHandler(intKeyF10);
    state.InterruptsSeen = interrupts;
}

void Sync() {
    PrintReport(false);
    if (wiring.Sync)
        wiring.Sync();
    if (!wiring.Progress || !IsTerminal(Stream::Error) ||
        Clock() - state.LastProgress < lngProgressInterval)
        return;
    state.LastProgress = Clock();
    ShowProgressLine(CutToWidth(wiring.Progress()));
}

void Pump() {
    state.LastPump = Clock();
    PressStop();
    Sync();
}

void KeepAwake() {
    if (state.LastAwake != 0 && Clock() - state.LastAwake < lngStayAwakeInterval)
        return;
    state.LastAwake = Clock();
    StayAwake();
}

/// The one thread for work that may block. It is never joined: the end of the program ends it.
struct Worker {
    std::mutex Mutex;
    std::condition_variable Changed;
    const std::function<bool()>* Step = nullptr; ///< nullptr: at rest
    std::atomic<bool> Cancelled{false};

    void Work() {
        std::unique_lock lock(Mutex);
        while (true) {
            Changed.wait(lock, [&] { return Step != nullptr; });
            lock.unlock();
            while (!Cancelled && (*Step)()) {
            }
            lock.lock();
            Step = nullptr;
            Changed.notify_all();
        }
    }
};

Worker& TheWorker() {
    static Worker* const worker = [] {
        auto* const made = new Worker;
        std::thread([made] { made->Work(); }).detach();
        return made;
    }();
    return *worker;
}

void RunOnThread(const std::function<bool()>& step, const std::function<bool()>& poll) {
    Worker& worker = TheWorker();
    std::unique_lock lock(worker.Mutex);
    worker.Cancelled = false;
    worker.Step = &step;
    worker.Changed.notify_all();
    while (!worker.Changed.wait_for(lock, pollInterval, [&] { return worker.Step == nullptr; })) {
        lock.unlock();
        KeepAwake();
        Pump();
        if (!worker.Cancelled && poll && !poll())
            worker.Cancelled = true;
        lock.lock();
    }
}

} // namespace

void Print(const std::string& text) {
    ShowProgressLine("");
    state.OutputGone = state.OutputGone || !Write(Stream::Out, text);
}

void PrintError(const std::string& text) {
    ShowProgressLine("");
    Write(Stream::Error, text);
}

void PrintRest() {
    PrintReport(true);
    ShowProgressLine("");
}

bool StopWanted() {
    return Interrupts() > 0 || state.OutputGone;
}

void Reset() {
    wiring = {};
    state = {};
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

int RunMessageLoop() {
    return 0;
}

void EndProgram() {
    state.Quitting = true;
}

bool Ending() {
    return state.Quitting || Interrupts() >= 2;
}

void DoEvents() {
    if (Clock() - state.LastPump >= lngPumpInterval)
        Pump();
}

void Wait(int milliseconds) {
    const std::uint64_t begun = Clock();
    while (Clock() - begun < static_cast<std::uint64_t>(std::max(milliseconds, 0)) && !Ending()) {
        Pump();
        console::Sleep(static_cast<int>(lngPumpInterval));
    }
}

void OnKeyReleased(std::function<void(int)> handler) {
    state.KeyHandler = std::move(handler);
}

void RunSteps(Effort effort, const std::function<bool()>& step, const std::function<bool()>& poll) {
    KeepAwake();
    // A handler that runs while the thread is busy has its work done here.
    if (effort == Effort::Long && UsesThreads() && !state.ThreadBusy) {
        state.ThreadBusy = true;
        RunOnThread(step, poll);
        state.ThreadBusy = false;
        return;
    }
    while (step()) {
        DoEvents();
        if (poll && !poll())
            return;
    }
}

} // namespace ui
