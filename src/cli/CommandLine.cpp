// The tables of commands and options, and the parser that reads them.
#include "cli/CommandLine.h"

#include "support/Paths.h"
#include "support/StrProc.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr Command commands[] = {
    {"purge", "PATH...", Takes::Paths, true, "Purges files, and the files in folders."},
    {"list", "PATH...", Takes::Paths, false,
     "Lists what a purge would meet, and estimates the time it would take."},
    {"free-space", "DRIVE", Takes::Drive, true, "Purges the free space of a drive."},
    {"speed", "DRIVE", Takes::Drive, false, "Measures how fast a drive can be purged."},
    {"disk", "DRIVE", Takes::Drive, true, "Purges a whole drive: its free space, then its files."},
    {"run", "FILE.nws", Takes::SetupFile, true,
     "Purges the files of the folder that a setup file names."},
    {"version", "", Takes::Nothing, false, "Tells the version of the program."},
    {"help", "[COMMAND | questions]", Takes::Word, false,
     "Tells what a command does, or what is answered where nobody is asked."}};

using Line = CommandLine;
constexpr Option options[] = {
    {"files", 'f', "SPEC", "plr", nullptr, &Line::strFiles, "only such files of folders: *.tmp"},
    {"subfolders", 'r', "", "plr", &Line::blnSubfolders, nullptr, "with all lower subfolders"},
    {"from", 0, "FILE", "pl", nullptr, &Line::strFrom,
     "paths from a file, - for standard input; one a line, or each ended by NUL"},
    {"type", 't', "TYPE", "plrfsd", nullptr, &Line::strType, "random, patterns or both (random)"},
    {"passes", 'n', "N", "plrfsd", nullptr, &Line::strPasses,
     "how often: random 1-9 (6), patterns 1-7 (3), both 1-5 (2)"},
    {"slack-only", 's', "", "pr", &Line::blnSlackOnly, nullptr, "only behind the ends of files"},
    {"keep", 'k', "", "pr", &Line::blnKeep, nullptr, "does not delete the purged files"},
    {"read-only", 0, "", "pr", &Line::blnReadOnly, nullptr, "read-only files, too"},
    {"system", 0, "", "prfd", &Line::blnSystem, nullptr,
     "system files, the free space beside Windows, the system's folders, too"},
    {"sensitive", 0, "", "pr", &Line::blnSensitive, nullptr, "programs and their parts, too"},
    {"remove-empty-folders", 0, "", "pr", &Line::blnRemoveEmpty, nullptr,
     "removes subfolders that are empty after the purge"},
    {"exclude", 'x', "FOLDER", "d", nullptr, &Line::strExcluded,
     "keeps a top-level folder; . keeps the files beside them; may be repeated"},
    {"verify", 0, "", "pr", &Line::blnVerify, nullptr, "(not available in this version)"},
    {"names", 0, "", "pr", &Line::blnNames, nullptr, "(not available in this version)"},
    {"yes", 'y', "", "prfsd", &Line::blnYes, nullptr, "asks nothing: see help questions"},
    {"report", 'o', "FILE", "plrfsd", nullptr, &Line::strReport,
     "writes the report to a file; as records if its name ends in .json"},
    {"json", 'j', "", "plrfsd", &Line::blnJson, nullptr, "only records, one in a line"},
    {"quiet", 'q', "", "plrfsd", &Line::blnQuiet, nullptr, "tells only what went wrong"},
    {"help", 'h', "", "plrfsd", &Line::blnHelp, nullptr, "this text"}};

std::string SeeHelp(const CommandLine& line) {
    return " See: nullwright-cli help" + (line.strCommand.empty() ? "" : " " + line.strCommand);
}

/// "-n 3", "--passes 3", "--passes=3".
std::string TakeOption(CommandLine& line, const std::string& argument,
                       const std::vector<std::string>& arguments, std::size_t& next) {
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const auto option = std::find_if(std::begin(options), std::end(options), [&](auto& one) {
        return name == std::string("--") + one.strName ||
               (one.chrShort != 0 && name == std::string("-") + one.chrShort);
    });
    if (option == std::end(options))
        return "There is no option " + name + "." + SeeHelp(line);
    if (option->blnSwitch != nullptr) {
        line.*option->blnSwitch = true;
        return equals == std::string::npos ? "" : name + " takes no value.";
    }
    if (equals == std::string::npos && next == arguments.size())
        return name + " needs a value: " + name + " " + option->strValue + ".";
    const std::string value =
        equals == std::string::npos ? arguments[next++] : argument.substr(equals + 1);
    std::string& text = line.*option->strText;
    if (value.empty() || (!text.empty() && option->strText != &CommandLine::strExcluded))
        return name + (value.empty() ? " needs a value that is not empty." : " stands twice.");
    text += value + (option->strText == &CommandLine::strExcluded ? "\r\n" : "");
    return {};
}

std::string CheckOptions(const CommandLine& line) {
    for (const Option& option : options) {
        const bool given =
            option.blnSwitch != nullptr ? line.*option.blnSwitch : !(line.*option.strText).empty();
        if (given && !option.BelongsTo(line.strCommand))
            return std::string("--") + option.strName + " is no option of " + line.strCommand +
                   "." + SeeHelp(line);
    }
    if (line.blnVerify || line.blnNames)
        return std::string(line.blnVerify ? "--verify" : "--names") +
               " is not available in this version.";
    if (!line.strType.empty() && line.strType != "random" && line.strType != "patterns" &&
        line.strType != "both")
        return "--type is random, patterns or both, not " + line.strType + ".";
    return line.strFiles.find_first_of("\\/:") == std::string::npos
               ? ""
               : "--files is a name or a pattern, without a folder: " + line.strFiles + ".";
}

std::string CheckDriveArguments(CommandLine& line) {
    const std::string& text = line.arguments[0]; // "D", "D:" or "D:\"
    if (text.size() == 1 || text.substr(1) == ":" || text.substr(1) == ":\\")
        line.chrDrive = DriveLetterOf(text.substr(0, 1) + ":");
    if (line.chrDrive == 0)
        return text + " is no drive. It should be a letter, such as D:.";
    for (const std::string& name : LinesOf(line.strExcluded)) {
        if (name.find_first_of("\\/:") != std::string::npos)
            return "--exclude takes the name of a top-level folder, not " + name + ".";
        if (name == ".")
            line.blnKeepsTopFiles = true;
        else
            line.excluded.push_back(name);
    }
    line.blnExcludes = !line.excluded.empty();
    return {};
}

std::string CheckArguments(CommandLine& line, const Command& command) {
    const std::size_t count = line.arguments.size();
    const bool blnOne = command.takes == Takes::Drive || command.takes == Takes::SetupFile;
    if ((blnOne && count != 1) || (command.takes == Takes::Nothing && count > 0) ||
        (command.takes == Takes::Paths && count == 0 && line.strFrom.empty()))
        return std::string("That should be: nullwright-cli ") + command.strName + " " +
               command.strArguments + "." + SeeHelp(line);
    if (command.takes == Takes::SetupFile && line.strFiles.empty())
        return "A setup holds no file specification: say --files *.* for all files.";
    return command.takes == Takes::Drive ? CheckDriveArguments(line) : "";
}

} // namespace

std::span<const Command> Commands() {
    return commands;
}

std::span<const Option> Options() {
    return options;
}

bool Option::BelongsTo(const std::string& strCommand) const {
    return std::string(strOfCommands).find(strCommand[0]) != std::string::npos;
}

const Command* FindCommand(const std::string& strName) {
    const auto found = std::find_if(std::begin(commands), std::end(commands),
                                    [&](const Command& one) { return one.strName == strName; });
    return found == std::end(commands) ? nullptr : found;
}

std::string ReadCommandLine(const std::vector<std::string>& arguments, CommandLine& line) {
    bool blnOptions = true;
    std::string wrong;
    for (std::size_t next = 0; next < arguments.size();) {
        const std::string& argument = arguments[next++];
        if (blnOptions && argument == "--")
            blnOptions = false;
        else if (blnOptions && argument == "/?")
            line.blnHelp = true;
        else if (blnOptions && argument.size() > 1 && argument[0] == '-')
            wrong = TakeOption(line, argument, arguments, next);
        else if (line.strCommand.empty())
            line.strCommand = argument;
        else
            line.arguments.push_back(argument);
        if (!wrong.empty())
            return wrong;
    }
    if (line.blnHelp || line.strCommand == "help") {
        if (line.strCommand != "help" && !line.strCommand.empty())
            line.arguments = {line.strCommand};
        line.strCommand = "help";
        return line.arguments.size() <= 1 ? "" : "help takes one command.";
    }
    if (line.strCommand.empty())
        return "No command." + SeeHelp(line);
    const Command* command = FindCommand(line.strCommand);
    if (command == nullptr) {
        const std::string unknown = std::exchange(line.strCommand, "");
        return "There is no command " + unknown + "." + SeeHelp(line);
    }
    wrong = CheckOptions(line);
    return wrong.empty() ? CheckArguments(line, *command) : wrong;
}
