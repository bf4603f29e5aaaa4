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
using Chosen = Choices::const_iterator; ///< the end: none

/// What was typed: the number of a choice, or the beginning of its word in either case; nothing is
/// the choice `first`.
Chosen ChoiceTyped(const std::string& line, const Choices& choices, Chosen first) {
    if (line.empty())
        return first;
    const auto isSame = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
    return std::ranges::find_if(choices, [&](const Choice& choice) {
        return line == std::to_string(&choice - choices.data() + 1) ||
               std::ranges::equal(line, choice.Word.substr(0, line.size()), isSame);
    });
}

/// Asks a person, until one of the choices is typed. None when there is no answer: the input has
/// ended, or Ctrl+C was pressed.
Chosen Ask(const std::string& text, const Choices& choices, Chosen first) {
    std::string prompt, line;
    for (const Choice& choice : choices)
        prompt += std::to_string(&choice - choices.data() + 1) + " " + choice.Word + ", ";
    prompt.resize(prompt.size() - 2);
    prompt += first != choices.end() ? " (Enter: " + first->Word + "): " : ": ";
    PrintRest();
    PrintError("\r\n" + text + "\r\n" + prompt);
    while (ReadLine(line)) {
        if (const Chosen typed = ChoiceTyped(line, choices, first); typed != choices.end())
            return typed;
        PrintError(prompt);
    }
    return choices.end();
}

/// None: the answer that changes nothing.
Chosen AnswerTo(const std::string& beforehand, const std::string& text, const Choices& choices,
                Chosen first) {
    return beforehand.empty() ? Ask(text, choices, first)
                              : std::ranges::find(choices, beforehand, &Choice::Name);
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
    const Chosen answer =
        AnswerTo(AnswerBeforehand(question), text, choices, choices.begin() + defaultButton - 1);
    // The last button changes nothing.
    return answer != choices.end() ? answer->Answer : choices.back().Answer;
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
    const Chosen answer = AnswerTo(beforehand, text, choices, byEnter);
    if (answer != choices.end() && answer->Press->Click)
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
