// The window toolkit of the tests: a person who follows a script.
#include "fakes/ScriptedUser.h"

#include "fakes/FakePlatform.h"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>

namespace fake {

ScriptedUser user;

namespace {
enum class Kind { Box, Modal, OpenFile, SaveFile, Folder };
const char* const kindNames[] = {"box", "modal form", "open dialog", "save dialog",
                                 "folder browser"};

struct Step {
    Kind What = Kind::Box;
    std::string Title, Text; ///< of a dialog Text is the path to answer; of a form Title its name
    Matcher Matches;         ///< in place of Text when set
    int Answer = 0;
    Look Expected;
    ui::Form* Form = nullptr;
    Action Do;
};

constexpr std::int64_t yieldsWithoutProgress = 5'000'000;
constexpr int worstSurprises = 1000;

/// Steps in waiting; the last list is that of the action in hand.
std::vector<std::deque<Step>> steps;
std::vector<std::pair<std::function<bool()>, Action>> during;
std::vector<ui::Form*> modals;
std::set<ui::Form*> forms; ///< all that were ever shown
std::map<ui::Timer*, std::uint64_t> due;
std::set<ui::Timer*> ticking;
std::function<void(int)> keyHandler;
bool insideStep, lookingAtHooks;
std::int64_t idleYields, callsAtLastYield;
int surprises;

void Expect(Step step) {
    if (steps.empty())
        steps.emplace_back();
    steps.back().push_back(std::move(step));
}

/// Runs an action of the script; what it left waiting goes before what waited already.
void Perform(const Action& action) {
    if (!action)
        return;
    idleYields = 0;
    steps.emplace_back();
    const std::size_t depth = steps.size();
    action();
    if (steps.size() != depth || depth < 2)
        return; // Reset within an action
    std::deque<Step> left = std::move(steps.back());
    steps.pop_back();
    steps.back().insert(steps.back().begin(), left.begin(), left.end());
}

/// The step that is next in order, whatever its kind.
Step* Next() {
    for (auto list = steps.rbegin(); list != steps.rend(); ++list)
        if (!list->empty())
            return &list->front();
    return nullptr;
}

std::string Waiting() {
    const Step* next = Next();
    return next == nullptr
               ? "no step is expected any more"
               : std::string("expected is: ") + kindNames[static_cast<int>(next->What)] + " \"" +
                     next->Title + "\": \"" + next->Text + "\"";
}

bool FitsNext(Kind kind, const std::string& title, const std::string& text) {
    const Step* next = Next();
    return next != nullptr && next->What == kind && next->Title == title &&
           (kind != Kind::Box || (next->Matches ? next->Matches(text) : next->Text == text));
}

/// Takes the next step when it is this one; else the test has failed.
bool Take(Kind kind, const std::string& title, const std::string& text, Step& step) {
    idleYields = 0;
    if (!FitsNext(kind, title, text)) {
        ADD_FAILURE() << "Unexpected " << kindNames[static_cast<int>(kind)] << " \"" << title
                      << "\": \"" << text << "\"\n"
                      << Waiting();
        if (++surprises > worstSurprises)
            throw std::runtime_error("The program shows boxes without end.");
        return false;
    }
    for (auto list = steps.rbegin(); list != steps.rend(); ++list)
        if (!list->empty()) {
            step = std::move(list->front());
            list->pop_front();
            break;
        }
    return true;
}

void NotInsideStep(const char* what) {
    if (insideStep)
        ADD_FAILURE() << "ui::" << what << " was called inside a step of RunSteps.";
}

void RunTimers() {
    const std::uint64_t now = platform::TickCount();
    std::vector<ui::Timer*> timers;
    for (ui::Form* form : forms)
        timers.insert(timers.end(), form->Timers.begin(), form->Timers.end());
    for (ui::Timer* timer : timers) {
        if (!timer->Enabled || timer->Interval <= 0) {
            due.erase(timer);
            continue;
        }
        const auto interval = static_cast<std::uint64_t>(timer->Interval);
        const auto [when, isNew] = due.try_emplace(timer, now + interval);
        if (now < when->second || ticking.count(timer) > 0)
            continue;
        when->second = now + interval;
        ticking.insert(timer);
        if (timer->Tick)
            timer->Tick();
        ticking.erase(timer);
    }
}

void Pump() {
    ++user.Yields;
    const std::int64_t calls = CallsMade();
    idleYields = calls == callsAtLastYield ? idleYields + 1 : 0;
    callsAtLastYield = calls;
    if (idleYields > yieldsWithoutProgress)
        throw std::runtime_error("The program waits without end. " + Waiting());
    RunTimers();
    if (lookingAtHooks)
        return;
    for (std::size_t i = 0; i < during.size(); ++i) {
        lookingAtHooks = true;
        const bool isTime = during[i].first();
        lookingAtHooks = false;
        if (!isTime)
            continue;
        const Action action = during[i].second;
        during.erase(during.begin() + static_cast<std::ptrdiff_t>(i));
        Perform(action);
        return;
    }
}

bool Reach(const ui::Control& control, const char* what) {
    const bool can = CanReach(control);
    if (!can)
        ADD_FAILURE() << "A person could not " << what << " " << control.Name << " (\""
                      << control.Caption << "\").";
    idleYields = 0;
    return can;
}

void Invoke(const ui::Handler& handler) {
    if (handler)
        handler();
}

template<typename List>
int IndexOf(const List& list, const std::string& item) {
    for (std::size_t i = 0; i < list.Items.size(); ++i)
        if (list.Items[i].Text == item)
            return static_cast<int>(i);
    ADD_FAILURE() << list.Name << " has no item \"" << item << "\".";
    return -1;
}

void PressFirst(ui::Form& form, bool ui::Button::*which) {
    for (ui::Control* control : form.Controls)
        if (control->Kind == ui::ControlKind::Button && static_cast<ui::Button*>(control)->*which &&
            CanReach(*control)) {
            Click(*control);
            return;
        }
    ADD_FAILURE() << form.Name << " has no such button that could be pressed.";
}

std::string Dialog(Kind kind, const std::string& title, const std::string& startFolder) {
    user.DialogFolders.push_back(startFolder);
    Step step;
    return Take(kind, title, "", step) ? step.Text : "";
}
} // namespace

// ---- The script --------------------------------------------------------------------------------

void ScriptedUser::Box(const std::string& title, const std::string& text, int answer, Look look) {
    Expect({Kind::Box, title, text, {}, answer, look, nullptr, {}});
}

void ScriptedUser::BoxLike(const std::string& title, const std::string& part, int answer) {
    BoxLike(title, Contains(part), answer);
}

void ScriptedUser::BoxLike(const std::string& title, Matcher text, int answer, Look look) {
    Expect({Kind::Box, title, "(by condition)", std::move(text), answer, look, nullptr, {}});
}

void ScriptedUser::Modal(ui::Form& form, Action action) {
    Expect({Kind::Modal, form.Name, "", {}, 0, {}, &form, std::move(action)});
}

void ScriptedUser::OpenFile(const std::string& title, const std::string& path) {
    Expect({Kind::OpenFile, title, path, {}, 0, {}, nullptr, {}});
}

void ScriptedUser::SaveFile(const std::string& title, const std::string& path) {
    Expect({Kind::SaveFile, title, path, {}, 0, {}, nullptr, {}});
}

void ScriptedUser::Folder(const std::string& title, const std::string& path) {
    Expect({Kind::Folder, title, path, {}, 0, {}, nullptr, {}});
}

void ScriptedUser::During(std::function<bool()> when, Action action) {
    during.emplace_back(std::move(when), std::move(action));
}

void ScriptedUser::Finish() {
    if (Next() != nullptr)
        ADD_FAILURE() << "The program ended its work, but " << Waiting();
    if (!during.empty())
        ADD_FAILURE() << "It never came to " << during.size() << " action(s) during the work.";
    if (!modals.empty())
        ADD_FAILURE() << modals.back()->Name << " is still shown modally.";
}

void ScriptedUser::Reset() {
    for (ui::Form* form : forms)
        form->Visible = false;
    *this = {};
    steps.clear();
    during.clear();
    modals.clear();
    forms.clear();
    due.clear();
    ticking.clear();
    keyHandler = {};
    insideStep = lookingAtHooks = false;
    idleYields = callsAtLastYield = 0;
    surprises = 0;
}

Matcher Contains(const std::string& part) {
    return [part](const std::string& text) { return text.find(part) != std::string::npos; };
}

// ---- What a person does ------------------------------------------------------------------------

bool CanReach(const ui::Control& control) {
    if (control.Parent == nullptr || !control.Parent->Visible)
        return false;
    if (!modals.empty() && modals.back() != control.Parent)
        return false;
    for (const ui::Control* c = &control; c != nullptr; c = c->Container)
        if (!c->Visible || !c->Enabled)
            return false;
    return true;
}

void Click(ui::Control& control) {
    if (!Reach(control, "click"))
        return;
    user.Focus = &control;
    if (control.Kind == ui::ControlKind::CheckBox) {
        auto& box = static_cast<ui::CheckBox&>(control);
        box.Value = box.Value == 0 ? 1 : 0;
    } else if (control.Kind == ui::ControlKind::OptionButton) {
        for (ui::Control* other : control.Parent->Controls)
            if (other->Kind == control.Kind && other->Container == control.Container)
                static_cast<ui::OptionButton*>(other)->Value = other == &control;
    }
    Invoke(control.Click);
}

void Choose(ui::ComboBox& combo, const std::string& item) {
    const int index = IndexOf(combo, item);
    if (!Reach(combo, "choose in") || index < 0)
        return;
    user.Focus = &combo;
    combo.ListIndex = index;
    Invoke(combo.Click);
}

void Choose(ui::ListBox& list, const std::string& item) {
    const int index = IndexOf(list, item);
    if (!Reach(list, "choose in") || index < 0)
        return;
    user.Focus = &list;
    list.ListIndex = index;
    for (std::size_t i = 0; i < list.Items.size(); ++i) {
        bool& selected = list.Items[i].Selected;
        const bool isIt = i == static_cast<std::size_t>(index);
        selected = list.MultiSelect ? selected != isIt : isIt;
    }
    Invoke(list.Click);
}

void DoubleClick(ui::ListBox& list, const std::string& item) {
    Choose(list, item);
    if (CanReach(list))
        Invoke(list.DoubleClick);
}

void Type(ui::TextBox& textBox, const std::string& text) {
    if (!Reach(textBox, "type into"))
        return;
    if (textBox.Locked)
        ADD_FAILURE() << textBox.Name << " is locked.";
    user.Focus = &textBox;
    textBox.Text = text;
    textBox.SelStart = text.size();
    textBox.SelLength = 0;
    Invoke(textBox.Change);
}

void ReleaseMouse(ui::TextBox& textBox, std::size_t start, std::size_t length) {
    if (!Reach(textBox, "point at"))
        return;
    user.Focus = &textBox;
    textBox.SelStart = start;
    textBox.SelLength = length;
    Invoke(textBox.MouseUp);
}

void HoverOver(ui::Control& control) {
    if (Reach(control, "point at"))
        Invoke(control.MouseOver);
}

void PressF10() {
    PressKey(121);
}

void PressKey(int virtualKey) {
    idleYields = 0;
    if (keyHandler)
        keyHandler(virtualKey);
}

void PressEnter(ui::Form& form) {
    PressFirst(form, &ui::Button::Default);
}

void PressEscape(ui::Form& form) {
    PressFirst(form, &ui::Button::Cancel);
}

void CloseForm(ui::Form& form) {
    if (!form.Visible || (!modals.empty() && modals.back() != &form))
        ADD_FAILURE() << "A person could not close " << form.Name << ".";
    else if (form.Close)
        form.Close();
    else
        ui::Hide(form);
}

void DropFiles(ui::Form& form, const std::vector<std::string>& paths) {
    if (!form.Visible || !modals.empty() || !form.FilesDropped)
        ADD_FAILURE() << "A person could not drop files on " << form.Name << ".";
    else
        form.FilesDropped(paths);
}

void FireTimers(int milliseconds) {
    ui::Wait(milliseconds);
}

} // namespace fake

// ---- The seam ----------------------------------------------------------------------------------

namespace ui {

using namespace fake;

void Show(Form& form) {
    NotInsideStep("Show");
    user.FormsShown.push_back(&form);
    forms.insert(&form);
    form.Visible = true;
    if (form.Activate)
        form.Activate();
}

void ShowModal(Form& form) {
    NotInsideStep("ShowModal");
    Step step;
    const bool expected = Take(Kind::Modal, form.Name, "", step);
    if (form.Visible)
        ADD_FAILURE() << form.Name << " is shown modally while it is shown already.";
    modals.push_back(&form);
    const std::size_t depth = modals.size();
    Show(form);
    Perform(step.Do);
    if (modals.size() < depth)
        return; // Reset, or closed from outside
    if (form.Visible && expected)
        ADD_FAILURE() << form.Name << " is still shown after what was to close it.";
    if (form.Visible && form.Close)
        form.Close();
    Hide(form);
}

void Hide(Form& form) {
    NotInsideStep("Hide");
    form.Visible = false;
    if (!modals.empty() && modals.back() == &form)
        modals.pop_back();
    if (user.Focus != nullptr && user.Focus->Parent == &form)
        user.Focus = nullptr;
}

void SetFocus(Control& control) {
    if (CanReach(control))
        user.Focus = &control;
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

int RunMessageLoop() {
    return 0;
}

void EndProgram() {
    user.Ended = true;
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
    keyHandler = std::move(handler);
}

void RunSteps(Effort /*effort*/, const std::function<bool()>& step,
              const std::function<bool()>& poll) {
    NotInsideStep("RunSteps");
    for (;;) {
        insideStep = true;
        const bool more = step();
        insideStep = false;
        if (!more)
            return;
        Pump();
        if (poll && !poll())
            return;
    }
}

int MsgBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title,
           int defaultButton) {
    NotInsideStep("MsgBox");
    const bool hasNo = buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel;
    const bool hasCancel = buttons == Buttons::OKCancel || buttons == Buttons::YesNoCancel;
    int answer = hasCancel ? AnswerCancel : hasNo ? AnswerNo : AnswerOK;
    const auto exists = [&](int wanted) {
        return wanted == AnswerCancel ? hasCancel : wanted == AnswerOK ? !hasNo : hasNo;
    };
    Step step;
    if (user.AnswerOthers && !FitsNext(Kind::Box, title, text)) {
        idleYields = 0;
        const int wanted = user.AnswerOthers({title, text, buttons, icon, defaultButton, answer});
        answer = exists(wanted) ? wanted : answer;
    } else if (Take(Kind::Box, title, text, step)) {
        if (exists(step.Answer))
            answer = step.Answer;
        else
            ADD_FAILURE() << "The box \"" << text << "\" has no button for " << step.Answer;
        const Look& look = step.Expected;
        EXPECT_EQ(look.Icon.value_or(icon), icon) << text;
        EXPECT_EQ(look.Buttons.value_or(buttons), buttons) << text;
        EXPECT_EQ(look.DefaultButton.value_or(defaultButton), defaultButton) << text;
    }
    user.Boxes.push_back({title, text, buttons, icon, defaultButton, answer});
    return answer;
}

bool OpenFileDialog(const std::string& title, const std::string& /*filterName*/,
                    const std::string& /*filterPattern*/, const std::string& startFolder,
                    std::string& path) {
    const std::string chosen = Dialog(Kind::OpenFile, title, startFolder);
    if (!chosen.empty())
        path = chosen;
    return !chosen.empty();
}

bool SaveFileDialog(const std::string& title, const std::string& /*filterName*/,
                    const std::string& /*filterPattern*/, const std::string& startFolder,
                    std::string& path) {
    const std::string chosen = Dialog(Kind::SaveFile, title, startFolder);
    if (!chosen.empty())
        path = chosen;
    return !chosen.empty();
}

std::string BrowseFolderDialog(const std::string& title, const std::string& startFolder) {
    return Dialog(Kind::Folder, title, startFolder);
}

void PutOnClipboard(const std::string& text) {
    user.Clipboard = text;
}

void Beep() {
    ++user.Beeps;
}

} // namespace ui
