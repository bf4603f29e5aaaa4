// Boxes and modal forms on the console: answered beforehand, asked at the terminal, or answered by
// what changes nothing.
#include "ui/console/Console.h"
#include "ui/console/Terminal.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace ui {

using namespace console;

namespace {

struct Choice {
    std::string Word; ///< as the person reads it
    std::string Name; ///< as the program answers it
    int Answer = 0;   ///< of a box
    Button* Press = nullptr;
};

std::vector<Choice> ChoicesOf(Buttons buttons) {
    std::vector<Choice> choices;
    const bool ok = buttons == Buttons::OKCancel;
    for (const auto& [word, answer, isThere] :
         {std::tuple("OK", AnswerOK, ok),
          {"Yes", AnswerYes, !ok},
          {"No", AnswerNo, !ok},
          {"Cancel", AnswerCancel, buttons != Buttons::YesNo}})
        if (isThere)
            choices.push_back({word, word, answer});
    return choices;
}

bool IsUsable(const Control& control) {
    return control.Visible && control.Enabled &&
           (!control.Container || IsUsable(*control.Container));
}

std::vector<Choice> ChoicesOf(Form& form) {
    std::vector<Choice> choices;
    for (Control* control : form.Controls)
        if (control->Kind == ControlKind::Button && IsUsable(*control))
            choices.push_back({control->Caption, control->Name, 0, static_cast<Button*>(control)});
    return choices;
}

/// "1 Yes, 2 No (Enter: No): ".
std::string PromptOf(const std::vector<Choice>& choices, std::size_t first) {
    std::string prompt;
    for (std::size_t i = 0; i < choices.size(); ++i)
        prompt += (i == 0 ? "" : ", ") + std::to_string(i + 1) + " " + choices[i].Word;
    return prompt + (first < choices.size() ? " (Enter: " + choices[first].Word + "): " : ": ");
}

/// The choice that was typed, by its number or by its first letters, in either case.
const Choice* Typed(const std::vector<Choice>& choices, const std::string& line) {
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const std::string& word = choices[i].Word;
        if (line == std::to_string(i + 1) ||
            (!line.empty() && line.size() <= word.size() &&
             std::equal(line.begin(), line.end(), word.begin(),
                        [](char a, char b) { return (a | 0x20) == (b | 0x20); })))
            return &choices[i];
    }
    return nullptr;
}

/// Nothing when there is no answer: the input has ended, or Ctrl+C was pressed.
const Choice* AskPerson(const std::string& text, const std::vector<Choice>& choices,
                        std::size_t first) {
    PrintRest();
    PrintError("\r\n" + text + "\r\n");
    std::string line;
    while (true) {
        PrintError(PromptOf(choices, first));
        const int interrupts = Interrupts();
        if (!ReadLine(line) || Interrupts() > interrupts)
            return nullptr;
        if (line.empty() && first < choices.size())
            return &choices[first];
        if (const Choice* typed = Typed(choices, line))
            return typed;
    }
}

/// Nothing: the answer that changes nothing.
const Choice* AnswerTo(const std::string& beforehand, const std::string& text,
                       const std::vector<Choice>& choices, std::size_t first) {
    for (const Choice& choice : choices)
        if (choice.Name == beforehand)
            return &choice;
    return beforehand.empty() ? AskPerson(text, choices, first) : nullptr;
}

std::string TextOf(const Form& form) {
    std::string text = form.Caption;
    for (const Control* control : form.Controls)
        if (control->Kind == ControlKind::Label && IsUsable(*control) && !control->Caption.empty())
            text += "\r\n" + control->Caption;
    return text;
}

} // namespace

int MsgBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title,
           int defaultButton) {
    if (buttons == Buttons::OK) {
        PrintRest();
        TellBox(text, icon);
        return AnswerOK;
    }
    const std::vector<Choice> choices = ChoicesOf(buttons);
    const Choice* answer = AnswerTo(AnswerBeforehand({title, text}), text, choices,
                                    static_cast<std::size_t>(defaultButton - 1));
    return answer ? answer->Answer : buttons == Buttons::YesNo ? AnswerNo : AnswerCancel;
}

void ShowModal(Form& form) {
    if (form.Visible)
        return;
    if (!Ending())
        Show(form);
    const std::string beforehand = AnswerBeforehand({form.Name, ""}); // it may enable a button
    const std::vector<Choice> choices = ChoicesOf(form);
    const auto byEnter = std::find_if(choices.begin(), choices.end(),
                                      [](const Choice& choice) { return choice.Press->Default; });
    const Choice* answer = AnswerTo(beforehand, TextOf(form), choices,
                                    static_cast<std::size_t>(byEnter - choices.begin()));
    if (answer && answer->Press->Click)
        answer->Press->Click();
    else if (form.Close)
        form.Close(); // what its fields say must not pass for an answer
    form.Visible = false;
}

bool OpenFileDialog(const std::string&, const std::string&, const std::string&, const std::string&,
                    std::string&) {
    return false; // paths stand on the command line
}

bool OpenFilesDialog(const std::string&, const std::string&, const std::string&, const std::string&,
                     std::vector<std::string>&) {
    return false;
}

bool SaveFileDialog(const std::string&, const std::vector<FileType>&, const std::string&,
                    std::string&, std::size_t&) {
    return false;
}

std::string BrowseFolderDialog(const std::string&, const std::string&) {
    return {};
}

void PutOnClipboard(const std::string&) {}

void Beep() {}

} // namespace ui
