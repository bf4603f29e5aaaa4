// The window toolkit of the tests: a scripted user gives the answers.
#include "fakes/ScriptedUser.h"

#include "fakes/FakePlatform.h"

#include <deque>
#include <future>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>

namespace fake {

ScriptedUser user;

namespace {
using Steps = std::deque<Step>;

constexpr std::int64_t yieldsWithoutEnd = 20'000'000;

struct {
    std::vector<Steps> Waiting{1}; ///< the last entry has the steps added by the current action
    std::vector<std::pair<std::function<bool()>, Action>> During;
    std::set<ui::Form*> Forms; ///< all that were ever shown
    std::map<ui::Timer*, std::uint64_t> Due;
} script;

thread_local bool blnInsideStep = false;
bool blnThreadBusy = false;

/// Runs an action of the script; steps that it adds go before the waiting ones.
void Perform(const Action& action) {
    script.Waiting.emplace_back();
    if (action)
        action();
    const Steps left = std::move(script.Waiting.back());
    script.Waiting.pop_back();
    script.Waiting.back().insert(script.Waiting.back().begin(), left.begin(), left.end());
}

/// The list that begins with the next step; an empty list when none is left.
Steps& Next() {
    for (auto list = script.Waiting.rbegin(); list != script.Waiting.rend(); ++list)
        if (!list->empty())
            return *list;
    return script.Waiting.front();
}

std::string NextText() {
    if (Next().empty())
        return "no step is expected any more";
    const Step& next = Next().front();
    return "expected is: " + next.What + " \"" + next.Title + "\": \"" + next.Text + "\"";
}

bool FitsNext(const std::string& what, const std::string& title, const std::string& text) {
    if (Next().empty())
        return false;
    const Step& next = Next().front();
    return next.What == what && next.Title == title &&
           (next.Matches ? next.Matches(text) : what != "box" || next.Text == text);
}

/// Takes the next step, which must match the arguments.
Step Take(const std::string& what, const std::string& title, const std::string& text = "") {
    if (!FitsNext(what, title, text))
        throw std::runtime_error("Unexpected " + what + " \"" + title + "\": \"" + text + "\"\n" +
                                 NextText());
    Step step = std::move(Next().front());
    Next().pop_front();
    return step;
}

void NotInsideStep(const char* what) {
    if (blnInsideStep)
        ADD_FAILURE() << "ui::" << what << " was called inside a step of RunSteps.";
}

void RunTimers() {
    const std::uint64_t now = platform::TickCount();
    for (ui::Form* form : std::vector(script.Forms.begin(), script.Forms.end()))
        for (ui::Timer* timer : form->Timers) {
            if (!timer->Enabled || timer->Interval <= 0) {
                script.Due.erase(timer);
                continue;
            }
            const std::uint64_t next = now + static_cast<std::uint64_t>(timer->Interval);
            const auto [due, isNew] = script.Due.try_emplace(timer, next);
            if (now < due->second)
                continue;
            due->second = next;
            timer->Tick();
        }
}

void Pump() {
    if (++user.Yields > yieldsWithoutEnd)
        throw std::runtime_error("The program waits without end. " + NextText());
    RunTimers();
    const auto during = std::find_if(script.During.begin(), script.During.end(),
                                     [](const auto& item) { return item.first(); });
    if (during == script.During.end())
        return;
    const Action action = during->second;
    script.During.erase(during);
    Perform(action);
}
} // namespace

void ScriptedUser::Expect(Step step) {
    script.Waiting.back().push_back(std::move(step));
}

void ScriptedUser::During(std::function<bool()> when, Action action) {
    script.During.emplace_back(std::move(when), std::move(action));
}

void ScriptedUser::Finish() {
    EXPECT_TRUE(Next().empty()) << "The program ended its work, but " << NextText();
    EXPECT_TRUE(script.During.empty()) << "It never came to actions during the work.";
    EXPECT_TRUE(Modals.empty()) << Modals.back()->Name << " is still shown modally.";
}

void ScriptedUser::Reset() {
    for (ui::Form* form : script.Forms)
        form->Visible = false;
    *this = {};
    script = {};
    blnThreadBusy = false;
}

} // namespace fake

namespace ui {

using namespace fake;

void Show(Form& form) {
    NotInsideStep("Show");
    script.Forms.insert(&form);
    form.Visible = true;
    if (form.Activate)
        form.Activate();
}

void ShowModal(Form& form) {
    NotInsideStep("ShowModal");
    const Step step = Take("modal form", form.Name);
    EXPECT_FALSE(form.Visible) << form.Name << " is shown modally while it is shown already.";
    user.Modals.push_back(&form);
    Show(form);
    // Unless the form sets it, the focus is on the first control that can take it.
    for (ui::Control* control : form.Controls)
        if ((!user.Focus || user.Focus->Parent != &form) && CanReach(*control) &&
            control->Kind != ui::ControlKind::Label && control->Kind != ui::ControlKind::Frame)
            user.Focus = control;
    Perform(step.Do);
    EXPECT_FALSE(form.Visible) << form.Name << " is still shown after what was to close it.";
    Hide(form);
}

void Hide(Form& form) {
    NotInsideStep("Hide");
    form.Visible = false;
    if (!user.Modals.empty() && user.Modals.back() == &form)
        user.Modals.pop_back();
    if (user.Focus != nullptr && user.Focus->Parent == &form)
        user.Focus = nullptr;
}

void SetFocus(Control& control) {
    if (CanReach(control))
        user.Focus = &control;
}

void HoldEscape(bool hold) {
    user.EscapeHeld = hold;
}

bool HasFocus(const Control& control) {
    return user.Focus == &control;
}

void Repaint(Form& /*form*/) {
    NotInsideStep("Repaint");
}

void KeepOnScreen(Form& /*form*/) {}

void ShowTaskbarProgress(Form& /*form*/, double fraction, bool paused) {
    user.TaskbarFraction = fraction;
    user.TaskbarPaused = paused;
}

void EndProgram() {
    user.Ended = true;
}

bool Ending() {
    return user.Ending || user.Ended;
}

void DoEvents() {
    NotInsideStep("DoEvents");
    Pump();
}

void Wait(int milliseconds) {
    NotInsideStep("Wait");
    for (int left = milliseconds; left > 0; left -= 50) {
        Advance(std::min(left, 50));
        Pump();
    }
}

void OnKeyReleased(std::function<void(int)> handler) {
    user.KeyHandler = std::move(handler);
}

namespace {
bool RunStep(const std::function<bool()>& step) {
    blnInsideStep = true;
    const bool more = step();
    blnInsideStep = false;
    return more;
}

/// As in the product: the steps run in sequence on a separate thread.
void RunStepsOnThread(const std::function<bool()>& step, const std::function<bool()>& poll) {
    std::atomic<bool> cancelled = false;
    const auto worker = std::async(std::launch::async, [&] {
        while (!cancelled && RunStep(step)) {
        }
    });
    while (worker.wait_for(std::chrono::milliseconds(15)) != std::future_status::ready) {
        Pump();
        cancelled = cancelled || (poll && !poll());
    }
}
} // namespace

void RunSteps(Effort effort, const std::function<bool()>& step, const std::function<bool()>& poll) {
    NotInsideStep("RunSteps");
    // The thread is busy when a handler starts work during other work; run that work here.
    if (user.RealThreads && effort == Effort::Long && !blnThreadBusy) {
        blnThreadBusy = true;
        RunStepsOnThread(step, poll);
        blnThreadBusy = false;
        return;
    }
    const auto stepHere = [&] {
        user.InLongStep = effort == Effort::Long;
        const bool more = RunStep(step);
        user.InLongStep = false;
        return more;
    };
    while (stepHere()) {
        Pump();
        if (poll && !poll())
            return void(user.StepUnderWay && stepHere());
    }
}

int MsgBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title,
           const std::string& question, int defaultButton) {
    NotInsideStep("MsgBox");
    const bool hasNo = buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel;
    const bool hasCancel = buttons == Buttons::OKCancel || buttons == Buttons::YesNoCancel;
    const int quietly = hasCancel ? AnswerCancel : hasNo ? AnswerNo : AnswerOK;
    BoxSeen box{question, title, text, buttons, icon, defaultButton, quietly, user.EscapeHeld};
    const auto answer = [&](int wanted) {
        const bool exists = wanted == AnswerCancel ? hasCancel : hasNo != (wanted == AnswerOK);
        box.Answer = exists ? wanted : quietly;
        return exists;
    };
    if (user.Ending)
        return quietly;
    if (user.AnswerOthers && !FitsNext("box", title, text)) {
        answer(user.AnswerOthers(box));
    } else {
        const Step step = Take("box", title, text);
        EXPECT_TRUE(answer(step.Answer)) << text << " has no button for " << step.Answer;
        EXPECT_EQ(step.Expected.Icon.value_or(icon), icon) << text;
        EXPECT_EQ(step.Expected.Buttons.value_or(buttons), buttons) << text;
        EXPECT_EQ(step.Expected.DefaultButton.value_or(defaultButton), defaultButton) << text;
    }
    user.Boxes.push_back(box);
    return box.Answer;
}

/// Answers with the paths and, of a new file, the name of a type other than the first, separated by
/// "|".
std::vector<std::string> ChoosePaths(const PathQuestion& question, std::size_t* type) {
    const std::string chosen = Take("dialog", question.Title).Text;
    std::vector<std::string> paths;
    for (std::size_t from = 0, to = chosen.empty() ? chosen.npos : 0; to != chosen.npos;
         from = to + 1) {
        to = chosen.find('|', from);
        paths.push_back(chosen.substr(from, to - from));
    }
    for (std::size_t i = 1; type && i < question.Types.size() && !paths.empty(); ++i)
        if (question.Types[i].Name == paths.back()) {
            *type = i;
            paths.pop_back();
        }
    return paths;
}

bool PutOnClipboard(const std::string& text) {
    if (!user.ClipboardHeld)
        user.Clipboard = text;
    return !user.ClipboardHeld;
}

void Beep() {}

} // namespace ui
