// The help: every word of it stands in a table that the program works by.
#include "cli/Help.h"

#include "cli/CommandLine.h"
#include "cli/Outcome.h"
#include "cli/Questions.h"

#include "Version.h"

#include <algorithm>

namespace {

/// A row of two columns.
std::string Row(const std::string& left, std::size_t width, const char* right) {
    return "  " + left + std::string(std::max(width, left.size() + 1) - left.size(), ' ') + right +
           "\r\n";
}

std::string Usage(const Command& command) {
    return std::string(command.strName) + " " + command.strArguments;
}

std::string CommandText(const Command& command) {
    std::string text = "nullwright-cli " + Usage(command) + "\r\n" + command.strHelp + "\r\n\r\n";
    for (const Option& option : Options()) {
        const std::string strShort =
            option.chrShort != 0 ? std::string("-") + option.chrShort + ", " : "    ";
        if (option.BelongsTo(command.strName))
            text +=
                Row(strShort + "--" + option.strName + " " + option.strValue, 28, option.strHelp);
    }
    return text + Row("    --", 28, "ends the options");
}

std::string QuestionsText() {
    std::string text = "Where nobody is asked (without a terminal, or with --yes), these are the "
                       "answers.\r\nEach other question is answered by what destroys nothing. "
                       "Without a terminal and without\r\n--yes nothing that destroys begins.\r\n";
    for (const Question& row : Questions()) {
        text += std::string("\r\n  ") + row.strAsks + "\r\n    " + row.strMeans;
        if (*row.strOption != '\0')
            text += std::string("; with --") + row.strOption + " " + row.strOptionMeans;
    }
    return text + "\r\n";
}

} // namespace

std::string HelpText(const std::string& strOf) {
    const std::string strExitCodes = "Exit codes:\r\n" + ExitCodesText();
    if (strOf == "questions")
        return QuestionsText();
    if (strOf == "exit")
        return strExitCodes;
    if (const Command* command = FindCommand(strOf))
        return CommandText(*command);
    std::string text = "Nullwright " NW_VERSION ": destroys data beyond recovery.\r\n\r\n";
    text += "nullwright-cli COMMAND\r\n";
    for (const Command& command : Commands())
        text += Row(Usage(command), 20, command.strHelp);
    return strOf.empty()
               ? text + "\r\nOptions of a command: nullwright-cli help COMMAND\r\n" + strExitCodes
               : "";
}
