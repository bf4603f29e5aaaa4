// Boxes and modal forms on the console: answered beforehand, asked at the terminal, or answered by
// what changes nothing.
#include "ui/console/Console.h"

#include <algorithm>

namespace ui {

using namespace console;

namespace {

struct Choice {
    std::string Word; ///< as the person reads it
    std::string Name; ///< as the program answers it
    int Answer = 0;   ///< of a box
    Button* Press = nullptr;
};
using Choices = std::vector<Choice>;

Choices ChoicesOf(Buttons buttons) {
    if (buttons == Buttons::OKCancel)
        return {{"OK", "OK", AnswerOK}, {"Cancel", "Cancel", AnswerCancel}};
    Choices choices{{"Yes", "Yes", AnswerYes}, {"No", "No", AnswerNo}};
    if (buttons == Buttons::YesNoCancel)
        choices.push_back({"Cancel", "Cancel", AnswerCancel});
    return choices;
}

bool IsUsable(const Control& control) {
    return control.Visible && control.Enabled &&
           (!control.Container || IsUsable(*control.Container));
}

/// The first choice that begins with what was typed, in either case.
std::size_t Typed(const Choices& choices, const std::string& line) {
    const auto isSame = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
    const auto begins = [&](const Choice& choice) {
        return std::ranges::mismatch(line, choice.Word, isSame).in1 == line.end();
    };
    return static_cast<std::size_t>(std::ranges::find_if(choices, begins) - choices.begin());
}

/// Asks a person, who types the number of a choice or the beginning of its word; Enter is the
/// choice `first`. nullptr when there is no answer: the input has ended, or Ctrl+C was pressed.
const Choice* Ask(const std::string& text, const Choices& choices, std::size_t first) {
    std::string prompt, line;
    for (const Choice& choice : choices)
        prompt += std::to_string(&choice - choices.data() + 1) + " " + choice.Word + ", ";
    prompt.resize(prompt.size() - 2);
    prompt += first < choices.size() ? " (Enter: " + choices[first].Word + "): " : ": ";
    PrintRest();
    PrintError("\r\n" + text + "\r\n");
    while (true) {
        PrintError(prompt);
        const int interrupts = Interrupts();
        if (!ReadLine(line) || Interrupts() > interrupts)
            return nullptr;
        const bool isNumber = line.size() == 1 && line[0] >= '1' && line[0] <= '9';
        const std::size_t typed = line.empty() ? first
                                  : isNumber   ? static_cast<std::size_t>(line[0] - '1')
                                               : Typed(choices, line);
        if (typed < choices.size())
            return &choices[typed];
    }
}

/// nullptr: the answer that changes nothing.
const Choice* AnswerTo(const std::string& beforehand, const std::string& text,
                       const Choices& choices, std::size_t first) {
    const auto found = std::ranges::find(choices, beforehand, &Choice::Name);
    if (found != choices.end())
        return &*found;
    return beforehand.empty() ? Ask(text, choices, first) : nullptr;
}

} // namespace

int MsgBox(const std::string& text, Buttons buttons, Icon icon, const std::string& /*title*/,
           const std::string& question, int defaultButton) {
    if (buttons == Buttons::OK) {
        PrintRest();
        TellBox(text, icon);
        return AnswerOK;
    }
    const Choices choices = ChoicesOf(buttons);
    const Choice* answer = AnswerTo(AnswerBeforehand(question), text, choices,
                                    static_cast<std::size_t>(defaultButton - 1));
    return answer ? answer->Answer : buttons == Buttons::YesNo ? AnswerNo : AnswerCancel;
}

void ShowModal(Form& form) {
    if (form.Visible)
        return;
    if (!Ending())
        Show(form);
    const std::string beforehand = AnswerBeforehand(form.Name); // it may enable a button
    std::string text = form.Caption;
    Choices choices;
    for (Control* control : form.Controls)
        if (control->Kind == ControlKind::Button && IsUsable(*control))
            choices.push_back({control->Caption, control->Name, 0, static_cast<Button*>(control)});
        else if (control->Kind == ControlKind::Label && IsUsable(*control))
            text += (control->Caption.empty() ? "" : "\r\n") + control->Caption;
    const auto byEnter =
        std::ranges::find_if(choices, [](const Choice& choice) { return choice.Press->Default; });
    const Choice* answer =
        AnswerTo(beforehand, text, choices, static_cast<std::size_t>(byEnter - choices.begin()));
    if (answer && answer->Press->Click)
        answer->Press->Click();
    else if (form.Close)
        form.Close(); // what its fields say must not pass for an answer
    form.Visible = false;
}

std::vector<std::string> ChoosePaths(const PathQuestion& /*question*/, std::size_t* /*type*/) {
    return {}; // paths stand on the command line
}

bool PutOnClipboard(const std::string& /*text*/) {
    return false;
}

void Beep() {}

} // namespace ui
