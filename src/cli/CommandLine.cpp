// The tables of commands and options, and the parser that reads them.
#include "cli/CommandLine.h"

#include "platform/System.h"
#include "support/Paths.h"

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

constexpr const char* strFileRuns = " purge list run ";
constexpr const char* strPurges = " purge run ";
constexpr const char* strWrites = " purge run free-space speed disk ";
constexpr const char* strAll = " purge list run free-space speed disk ";

constexpr Option options[] = {
    {"files", 'f', "SPEC", strFileRuns, nullptr, &CommandLine::strFiles,
     "only the files of folders that match, such as *.tmp; run needs it"},
    {"subfolders", 'r', "", strFileRuns, &CommandLine::blnSubfolders, nullptr,
     "with all lower subfolders"},
    {"from", 0, "FILE", " purge list ", nullptr, &CommandLine::strFrom,
     "more paths from a file, - for standard input; one a line, or ended by NUL"},
    {"type", 't', "TYPE", " purge list run free-space speed disk ", nullptr, &CommandLine::strType,
     "random, patterns or both (random)"},
    {"passes", 'n', "N", " purge list run free-space speed disk ", nullptr, &CommandLine::strPasses,
     "how often: random 1-9 (6), patterns 1-7 (3), both 1-5 (2)"},
    {"slack-only", 's', "", strPurges, &CommandLine::blnSlackOnly, nullptr,
     "only the slack behind the ends of the files, which stay"},
    {"keep", 'k', "", strPurges, &CommandLine::blnKeep, nullptr,
     "does not delete the purged files"},
    {"read-only", 0, "", strPurges, &CommandLine::blnReadOnly, nullptr, "read-only files, too"},
    {"system", 0, "", " purge run free-space disk ", &CommandLine::blnSystem, nullptr,
     "system files, the drive of Windows, its folders, too"},
    {"sensitive", 0, "", strPurges, &CommandLine::blnSensitive, nullptr,
     "programs and their parts, too"},
    {"remove-empty-folders", 0, "", strPurges, &CommandLine::blnRemoveEmpty, nullptr,
     "removes subfolders that are empty after the purge"},
    {"exclude", 'x', "FOLDER", " disk ", nullptr, &CommandLine::strExcluded,
     "keeps a top-level folder; . keeps the files beside them; may be repeated"},
    {"verify", 0, "", strPurges, &CommandLine::blnVerify, nullptr,
     "(not available in this version)"},
    {"names", 0, "", strPurges, &CommandLine::blnNames, nullptr, "(not available in this version)"},
    {"yes", 'y', "", strWrites, &CommandLine::blnYes, nullptr, "asks nothing: see help questions"},
    {"report", 'o', "FILE", strAll, nullptr, &CommandLine::strReport,
     "writes the report to a file; as records if its name ends in .json"},
    {"json", 'j', "", strAll, &CommandLine::blnJson, nullptr,
     "one JSON record a line on standard output, and nothing else there"},
    {"quiet", 'q', "", strAll, &CommandLine::blnQuiet, nullptr, "tells only what went wrong"},
    {"help", 'h', "", strAll, &CommandLine::blnHelp, nullptr, "this text"}};

std::string SeeHelp(const CommandLine& line) {
    return " See: nullwright-cli help" + (line.strCommand.empty() ? "" : " " + line.strCommand);
}

/// One option, with its value from `attached` or else from the next argument.
std::string TakeOption(CommandLine& line, const Option* option, const std::string& written,
                       const std::string* attached, const std::vector<std::string>& arguments,
                       std::size_t& next) {
    if (option == nullptr)
        return "There is no option " + written + "." + SeeHelp(line);
    if (option->blnSwitch != nullptr) {
        line.*option->blnSwitch = true;
        return attached == nullptr ? "" : written + " takes no value." + SeeHelp(line);
    }
    if (attached == nullptr && next == arguments.size())
        return written + " needs a value: " + written + " " + option->strValue + ".";
    const std::string& value = attached != nullptr ? *attached : arguments[next++];
    if (value.empty())
        return written + " needs a value that is not empty.";
    std::string& text = line.*option->strText;
    if (option->strText == &CommandLine::strExcluded)
        text += value + "\r\n";
    else if (text.empty())
        text = value;
    else
        return written + " stands twice.";
    return {};
}

std::string TakeLong(CommandLine& line, const std::string& argument,
                     const std::vector<std::string>& arguments, std::size_t& next) {
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(2, equals == std::string::npos ? equals : equals - 2);
    const std::string value = equals == std::string::npos ? "" : argument.substr(equals + 1);
    const auto option = std::find_if(std::begin(options), std::end(options),
                                     [&](const Option& one) { return one.strName == name; });
    return TakeOption(line, option == std::end(options) ? nullptr : option, "--" + name,
                      equals == std::string::npos ? nullptr : &value, arguments, next);
}

/// "-ry" is "-r -y"; "-n3" is "-n 3".
std::string TakeShort(CommandLine& line, const std::string& argument,
                      const std::vector<std::string>& arguments, std::size_t& next) {
    for (std::size_t i = 1; i < argument.size(); ++i) {
        const auto option = std::find_if(std::begin(options), std::end(options), [&](auto& one) {
            return one.chrShort != 0 && one.chrShort == argument[i];
        });
        const bool known = option != std::end(options);
        const std::string rest = argument.substr(i + 1);
        const bool takesRest = known && option->strText != nullptr && !rest.empty();
        const std::string wrong =
            TakeOption(line, known ? option : nullptr, std::string("-") + argument[i],
                       takesRest ? &rest : nullptr, arguments, next);
        if (!wrong.empty() || (known && option->strText != nullptr))
            return wrong;
    }
    return {};
}

/// Every option that was given belongs to the command.
std::string CheckOptions(const CommandLine& line) {
    for (const Option& option : options) {
        const bool given =
            option.blnSwitch != nullptr ? line.*option.blnSwitch : !(line.*option.strText).empty();
        if (given && option.blnSwitch != &CommandLine::blnHelp &&
            std::string(option.strOfCommands).find(" " + line.strCommand + " ") ==
                std::string::npos)
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

/// "D", "D:" and "D:\".
char DriveOf(const std::string& text) {
    const std::string rest = text.empty() ? "?" : text.substr(1);
    return rest.empty() || rest == ":" || rest == ":\\" || rest == ":/"
               ? DriveLetterOf(text.substr(0, 1) + ":")
               : '\0';
}

/// A top-level folder by its name or by its path.
std::string TakeExcluded(CommandLine& line, std::string name) {
    if (name == ".") {
        line.blnKeepsTopFiles = true;
        return {};
    }
    const std::string given = name;
    if (DriveLetterOf(name) == line.chrDrive && name.size() > 3)
        name.erase(0, 3);
    name = FolderWithoutBackslash(name);
    if (name.empty() || name.find_first_of("\\/:") != std::string::npos)
        return "--exclude takes the name of a top-level folder of the drive: " + given + ".";
    line.excluded.push_back(name);
    line.blnExcludes = true;
    return {};
}

std::string CheckArguments(CommandLine& line, const Command& command) {
    const std::size_t count = line.arguments.size();
    const bool blnOne = command.takes == Takes::Drive || command.takes == Takes::SetupFile;
    if ((blnOne && count != 1) ||
        (command.takes == Takes::Paths && count == 0 && line.strFrom.empty()) ||
        (command.takes == Takes::Nothing && count > 0) ||
        (command.takes == Takes::Word && count > 1))
        return std::string("That should be: nullwright-cli ") + command.strName + " " +
               command.strArguments + "." + SeeHelp(line);
    if (command.takes == Takes::SetupFile && line.strFiles.empty())
        return "A setup holds no file specification: say --files *.* for all files.";
    if (command.takes != Takes::Drive)
        return {};
    line.chrDrive = DriveOf(line.arguments[0]);
    if (line.chrDrive == 0)
        return line.arguments[0] + " is no drive. It should be a letter, such as D:.";
    std::string rest = line.strExcluded, wrong;
    for (std::size_t end = 0; wrong.empty() && (end = rest.find("\r\n")) != std::string::npos;
         rest.erase(0, end + 2))
        wrong = TakeExcluded(line, rest.substr(0, end));
    return wrong;
}

} // namespace

std::span<const Command> Commands() {
    return commands;
}

std::span<const Option> Options() {
    return options;
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
        else if (blnOptions && argument.starts_with("--"))
            wrong = TakeLong(line, argument, arguments, next);
        else if (blnOptions && argument.size() > 1 && argument[0] == '-')
            wrong = TakeShort(line, argument, arguments, next);
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
