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

struct {
    /// Steps in waiting; the last list is that of the action in hand.
    std::vector<std::deque<Step>> Steps{1};
    std::vector<std::pair<std::function<bool()>, Action>> During;
    std::vector<ui::Form*> Modals;
    std::set<ui::Form*> Forms; ///< all that were ever shown
    std::map<ui::Timer*, std::uint64_t> Due;
    std::set<ui::Timer*> Ticking;
    std::function<void(int)> KeyHandler;
    bool InsideStep = false, LookingAtHooks = false;
    std::int64_t IdleYields = 0, CallsAtLastYield = 0;
} script;

void Expect(Step step) {
    script.Steps.back().push_back(std::move(step));
}

/// Runs an action of the script; what it left waiting goes before what waited already.
void Perform(const Action& action) {
    script.IdleYields = 0;
    script.Steps.emplace_back();
    const std::size_t depth = script.Steps.size();
    if (action)
        action();
    if (script.Steps.size() != depth)
        return; // Reset within an action
    std::deque<Step> left = std::move(script.Steps.back());
    script.Steps.pop_back();
    script.Steps.back().insert(script.Steps.back().begin(), left.begin(), left.end());
}

/// The step that is next in order, whatever its kind.
Step* Next() {
    for (auto list = script.Steps.rbegin(); list != script.Steps.rend(); ++list)
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
    script.IdleYields = 0;
    if (!FitsNext(kind, title, text)) {
        ADD_FAILURE() << "Unexpected " << kindNames[static_cast<int>(kind)] << " \"" << title
                      << "\": \"" << text << "\"\n"
                      << Waiting();
        return false;
    }
    for (auto list = script.Steps.rbegin(); list != script.Steps.rend(); ++list)
        if (!list->empty()) {
            step = std::move(list->front());
            list->pop_front();
            break;
        }
    return true;
}

void NotInsideStep(const char* what) {
    if (script.InsideStep)
        ADD_FAILURE() << "ui::" << what << " was called inside a step of RunSteps.";
}

void RunTimers() {
    const std::uint64_t now = platform::TickCount();
    std::vector<ui::Timer*> timers;
    for (ui::Form* form : script.Forms)
        timers.insert(timers.end(), form->Timers.begin(), form->Timers.end());
    for (ui::Timer* timer : timers) {
        if (!timer->Enabled || timer->Interval <= 0) {
            script.Due.erase(timer);
            continue;
        }
        const auto interval = static_cast<std::uint64_t>(timer->Interval);
        const auto [when, isNew] = script.Due.try_emplace(timer, now + interval);
        if (now < when->second || script.Ticking.count(timer) > 0)
            continue;
        when->second = now + interval;
        script.Ticking.insert(timer);
        if (timer->Tick)
            timer->Tick();
        script.Ticking.erase(timer);
    }
}

void Pump() {
    ++user.Yields;
    const std::int64_t calls = CallsMade();
    script.IdleYields = calls == script.CallsAtLastYield ? script.IdleYields + 1 : 0;
    script.CallsAtLastYield = calls;
    if (script.IdleYields > yieldsWithoutProgress)
        throw std::runtime_error("The program waits without end. " + Waiting());
    RunTimers();
    if (script.LookingAtHooks)
        return;
    for (std::size_t i = 0; i < script.During.size(); ++i) {
        script.LookingAtHooks = true;
        const bool isTime = script.During[i].first();
        script.LookingAtHooks = false;
        if (!isTime)
            continue;
        const Action action = script.During[i].second;
        script.During.erase(script.During.begin() + static_cast<std::ptrdiff_t>(i));
        Perform(action);
        return;
    }
}

/// Takes the focus to the control.
bool Reach(ui::Control& control, const char* what) {
    script.IdleYields = 0;
    const bool can = CanReach(control);
    if (can)
        user.Focus = &control;
    else
        ADD_FAILURE() << "A person could not " << what << " " << control.Name << " (\""
                      << control.Caption << "\").";
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

bool ChooseFile(Kind kind, const std::string& title, const std::string& startFolder,
                std::string& path) {
    const std::string chosen = Dialog(kind, title, startFolder);
    if (!chosen.empty())
        path = chosen;
    return !chosen.empty();
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
    script.During.emplace_back(std::move(when), std::move(action));
}

void ScriptedUser::Finish() {
    if (Next() != nullptr)
        ADD_FAILURE() << "The program ended its work, but " << Waiting();
    if (!script.During.empty())
        ADD_FAILURE() << "It never came to " << script.During.size()
                      << " action(s) during the work.";
    if (!script.Modals.empty())
        ADD_FAILURE() << script.Modals.back()->Name << " is still shown modally.";
}

void ScriptedUser::Reset() {
    for (ui::Form* form : script.Forms)
        form->Visible = false;
    *this = {};
    script = {};
}

Matcher Contains(const std::string& part) {
    return [part](const std::string& text) { return text.find(part) != std::string::npos; };
}

// ---- What a person does ------------------------------------------------------------------------

bool CanReach(const ui::Control& control) {
    const ui::Form* form = control.Parent;
    const ui::Control* c = &control;
    while (c != nullptr && c->Visible && c->Enabled)
        c = c->Container;
    return c == nullptr && form != nullptr && form->Visible &&
           (script.Modals.empty() || script.Modals.back() == form);
}

void Click(ui::Control& control) {
    if (!Reach(control, "click"))
        return;
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
    combo.ListIndex = index;
    Invoke(combo.Click);
}

void Choose(ui::ListBox& list, const std::string& item) {
    const int index = IndexOf(list, item);
    if (!Reach(list, "choose in") || index < 0)
        return;
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
    textBox.Text = text;
    textBox.SelStart = text.size();
    textBox.SelLength = 0;
    Invoke(textBox.Change);
}

void ReleaseMouse(ui::TextBox& textBox, std::size_t start, std::size_t length) {
    if (!Reach(textBox, "point at"))
        return;
    textBox.SelStart = start;
    textBox.SelLength = length;
    Invoke(textBox.MouseUp);
}

void HoverOver(ui::Control& control) {
    if (CanReach(control))
        Invoke(control.MouseOver);
    else
        ADD_FAILURE() << "A person could not point at " << control.Name;
}

void PressF10() {
    PressKey(121);
}

void PressKey(int virtualKey) {
    script.IdleYields = 0;
    if (script.KeyHandler)
        script.KeyHandler(virtualKey);
}

void PressEnter(ui::Form& form) {
    PressFirst(form, &ui::Button::Default);
}

void PressEscape(ui::Form& form) {
    PressFirst(form, &ui::Button::Cancel);
}

void CloseForm(ui::Form& form) {
    if (!form.Visible || (!script.Modals.empty() && script.Modals.back() != &form))
        ADD_FAILURE() << "A person could not close " << form.Name << ".";
    else if (form.Close)
        form.Close();
    else
        ui::Hide(form);
}

void DropFiles(ui::Form& form, const std::vector<std::string>& paths) {
    if (!form.Visible || !script.Modals.empty() || !form.FilesDropped)
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
    script.Forms.insert(&form);
    form.Visible = true;
    Invoke(form.Activate);
}

void ShowModal(Form& form) {
    NotInsideStep("ShowModal");
    Step step;
    const bool expected = Take(Kind::Modal, form.Name, "", step);
    if (form.Visible)
        ADD_FAILURE() << form.Name << " is shown modally while it is shown already.";
    script.Modals.push_back(&form);
    const std::size_t depth = script.Modals.size();
    Show(form);
    Perform(step.Do);
    if (script.Modals.size() < depth)
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
    if (!script.Modals.empty() && script.Modals.back() == &form)
        script.Modals.pop_back();
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
    script.KeyHandler = std::move(handler);
}

void RunSteps(Effort /*effort*/, const std::function<bool()>& step,
              const std::function<bool()>& poll) {
    NotInsideStep("RunSteps");
    for (;;) {
        script.InsideStep = true;
        const bool more = step();
        script.InsideStep = false;
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
        script.IdleYields = 0;
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
    return ChooseFile(Kind::OpenFile, title, startFolder, path);
}

bool SaveFileDialog(const std::string& title, const std::string& /*filterName*/,
                    const std::string& /*filterPattern*/, const std::string& startFolder,
                    std::string& path) {
    return ChooseFile(Kind::SaveFile, title, startFolder, path);
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
