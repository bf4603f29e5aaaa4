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

/// What was typed: the number of a choice, or the beginning of its word in either case; nothing is
/// the choice `first`.
std::size_t ChoiceTyped(const std::string& line, const Choices& choices, std::size_t first) {
    if (line.empty())
        return first;
    const auto isSame = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
    const auto isMeant = [&](const Choice& choice) {
        return line == std::to_string(&choice - choices.data() + 1) ||
               std::ranges::equal(line, choice.Word.substr(0, line.size()), isSame);
    };
    return static_cast<std::size_t>(std::ranges::find_if(choices, isMeant) - choices.begin());
}

/// Asks a person, until one of the choices is typed. nullptr when there is no answer: the input has
/// ended, or Ctrl+C was pressed.
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
        if (!ReadLine(line))
            return nullptr;
        const std::size_t typed = ChoiceTyped(line, choices, first);
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
    Choices choices{{"Yes", "Yes", AnswerYes}, {"No", "No", AnswerNo}};
    if (buttons == Buttons::OKCancel)
        choices = {{"OK", "OK", AnswerOK}};
    if (buttons != Buttons::YesNo)
        choices.push_back({"Cancel", "Cancel", AnswerCancel});
    const Choice* answer = AnswerTo(AnswerBeforehand(question), text, choices,
                                    static_cast<std::size_t>(defaultButton - 1));
    return (answer ? *answer : choices.back()).Answer; // the last button changes nothing
}

void ShowModal(Form& form) {
    if (form.Visible)
        return;
    if (!Ending())
        Show(form);
    const std::string beforehand = AnswerBeforehand(form.Name); // it may enable a button
    std::string text = form.Caption;
    Choices choices;
    for (Control* control : form.Controls) {
        const bool isUsable = EffectivelyVisible(*control) && EffectivelyEnabled(*control);
        if (isUsable && control->Kind == ControlKind::Button)
            choices.push_back({control->Caption, control->Name, 0, static_cast<Button*>(control)});
        else if (isUsable && control->Kind == ControlKind::Label && !control->Caption.empty())
            text += "\r\n" + control->Caption;
    }
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
