// The scripted user: answers the boxes and dialogs that a test expects, in order, and uses the
// controls as a person could.
#pragma once

#include "ui/Interface.h"

#include <optional>

namespace fake {

/// A message box that was shown.
struct BoxSeen {
    std::string Question, Title, Text;
    ui::Buttons Buttons;
    ui::Icon Icon;
    int DefaultButton;
    int Answer;
    bool EscapeHeld; ///< Escape has no effect in the box
};

using Action = std::function<void()>;
using Matcher = std::function<bool(const std::string& text)>;

/// Expectations on a box besides title and text; unset fields are not checked.
struct Look {
    std::optional<ui::Icon> Icon = std::nullopt;
    std::optional<ui::Buttons> Buttons = std::nullopt;
    std::optional<int> DefaultButton = std::nullopt;
};

/// The next thing that the user expects.
struct Step {
    std::string What, Title; ///< "box", "modal form" with its name as the title, "dialog"
    std::string Text;        ///< of a box; of a dialog the path to answer
    Matcher Matches = {};    ///< in place of Text when set
    int Answer = 0;
    Look Expected = {};
    Action Do = {};
};

constexpr Look Informs{ui::Icon::Information, ui::Buttons::OK, 1};
constexpr Look Warns{ui::Icon::Exclamation, ui::Buttons::OK, 1};
constexpr Look AsksOKCancel{ui::Icon::Question, ui::Buttons::OKCancel, 1};
constexpr Look AsksYesNo{ui::Icon::Question, ui::Buttons::YesNo, 1};
constexpr Look AsksYesNoCancel{ui::Icon::Question, ui::Buttons::YesNoCancel, 1};

/// Steps are expected in the order in which they were added. Steps added inside an action come
/// before the waiting ones.
struct ScriptedUser {
    /// A message box with this title and text, letter by letter, gets this answer.
    void Box(const std::string& title, const std::string& text, int answer = ui::AnswerOK,
             Look look = {}) {
        Expect({"box", title, text, {}, answer, look});
    }
    void Box(const std::string& title, const std::string& text, Look look) {
        Box(title, text, ui::AnswerOK, look);
    }
    /// The same, but the text only has to contain a part or to satisfy a condition.
    void BoxLike(const std::string& title, const std::string& part, int answer = ui::AnswerOK,
                 Look look = {}) {
        const auto has = [=](const std::string& text) { return text.find(part) != text.npos; };
        Expect({"box", title, part, has, answer, look});
    }
    void BoxLike(const std::string& title, Matcher text, int answer = ui::AnswerOK) {
        Expect({"box", title, "(by condition)", std::move(text), answer});
    }
    /// ShowModal shows a form. Its Activate runs first, then the action, which must cause the form
    /// to be hidden. The action runs even if Activate has already hidden the form.
    void Modal(ui::Form& form, Action action = {}) {
        Expect({"modal form", form.Name, "", {}, 0, {}, std::move(action)});
    }
    /// A common dialog (open, save, folder) with this title; an empty path cancels.
    void Dialog(const std::string& title, const std::string& path) {
        Expect({"dialog", title, path});
    }
    void Expect(Step step);
    /// An action of the user while the program works: `when` is checked at each message pump, and
    /// the action runs once. Not part of the order of steps.
    void During(std::function<bool()> when, Action action);
    /// Fails the test when steps or During-actions are left, or a modal form is still open.
    void Finish();
    void Reset();

    /// Answers a box that is not the next step, for runs whose boxes a test cannot foresee (faults
    /// at every call). Unset: such a box fails the test. An answer without a button is Cancel.
    std::function<int(const BoxSeen& box)> AnswerOthers;

    /// RunSteps runs long work on a thread, as in the product. For tests over a thread-safe back
    /// end; the fake drives are not thread-safe.
    bool RealThreads = false;

    bool StepUnderWay = false; ///< when `poll` ends RunSteps, as it may be on the thread

    std::vector<BoxSeen> Boxes;    ///< all that were shown
    std::vector<ui::Form*> Modals; ///< currently shown modal forms, the last on top
    std::string Clipboard;
    bool ClipboardHeld = false; ///< by another program
    double TaskbarFraction = -1;
    bool TaskbarPaused = false;
    ui::Control* Focus = nullptr;
    std::function<void(int)> KeyHandler;
    bool InLongStep = false; ///< the current call is off the interface thread
    bool Ending = false;     ///< the session ends: see ui::Ending
    bool EscapeHeld = false;
    bool Ended = false;      ///< EndProgram was called
    std::int64_t Yields = 0; ///< number of DoEvents calls
};
extern ScriptedUser user;

// User actions. Each fails the test when a user could not do it: the control or a frame around it
// is hidden or disabled, or its form is not shown or lies under a modal one.
bool CanReach(const ui::Control& control);
/// Presses a button or link, toggles a check box, selects an option button (and clears the others
/// of its container).
void Click(ui::Control& control);
/// Chooses an item by its text; toggles it in a multiple-choice list.
void Choose(ui::ComboBox& combo, const std::string& item);
void Choose(ui::ListBox& list, const std::string& item);
/// Replaces the text of a text box.
void Type(ui::TextBox& textBox, const std::string& text);
void PressF10();
/// Enter presses the button with the focus, else the form's Default one; Escape its Cancel one.
void PressEnter(ui::Form& form);
void PressEscape(ui::Form& form);
/// The cross in the title bar.
void CloseForm(ui::Form& form);
void DropFiles(ui::Form& form, const std::vector<std::string>& paths);

} // namespace fake
