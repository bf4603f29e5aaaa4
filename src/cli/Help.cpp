// The help: every word of it stands in a table that the program works by.
#include "cli/Help.h"

#include "cli/CommandLine.h"
#include "cli/Outcome.h"
#include "cli/Questions.h"

#include "Version.h"

#include <algorithm>

namespace {

std::string Padded(const std::string& text, std::size_t width) {
    return text + std::string(text.size() < width ? width - text.size() : 1, ' ');
}

std::string OptionLine(const Option& option) {
    std::string name = option.chrShort ? std::string("-") + option.chrShort + ", --" : "    --";
    name += option.strName;
    if (*option.strValue != '\0')
        name += std::string(" ") + option.strValue;
    return "  " + Padded(name, 28) + option.strHelp + "\r\n";
}

std::string QuestionsText() {
    std::string text = "Where nobody is asked (without a terminal, or with --yes), these are the "
                       "answers.\r\nEach other question is answered by what destroys nothing. "
                       "Without a terminal and without\r\n--yes nothing that destroys begins.\r\n";
    for (const Question& row : Questions()) {
        text += std::string("\r\n  ") + row.strAsks + "\r\n    " + row.strMeans;
        for (const Option& option : Options())
            if (row.blnOption != nullptr && (option.blnSwitch == row.blnOption ||
                                             (option.strText == &CommandLine::strExcluded &&
                                              row.blnOption != &CommandLine::blnSystem)))
                text += std::string("; with --") + option.strName + " " + row.strOptionMeans;
    }
    return text + "\r\n";
}

} // namespace

std::string HelpText(const std::string& strOf) {
    if (strOf == "questions")
        return QuestionsText();
    if (const Command* command = FindCommand(strOf)) {
        std::string text = std::string("nullwright-cli ") + command->strName + " " +
                           command->strArguments + "\r\n" + command->strHelp + "\r\n\r\n";
        for (const Option& option : Options())
            if (option.BelongsTo(strOf))
                text += OptionLine(option);
        return text + "  --                          ends the options\r\n";
    }
    std::string text = "Nullwright " NW_VERSION ": destroys data beyond recovery.\r\n\r\n";
    for (const Command& command : Commands())
        text +=
            "  " +
            Padded(std::string("nullwright-cli ") + command.strName + " " + command.strArguments,
                   44) +
            command.strHelp + "\r\n";
    return text + "\r\nOptions of a command: nullwright-cli help COMMAND\r\nExit codes:\r\n" +
           ExitCodesText();
}
