// The tables of commands and options, the parser that works by them, and the help, which is made of
// them.
#include "cli/CommandLine.h"

#include "cli/Outcome.h"
#include "cli/Questions.h"
#include "disk/DiskPurge.h"
#include "disk/FreeSpacePurge.h"
#include "disk/SpeedTest.h"
#include "shell/ProcessCommands.h"
#include "ui/console/Console.h"

#include "Version.h"

#include <algorithm>

// The help is read on terminals of 80 columns: its words have room for 57 characters here, and for
// 50 beside the options.
const std::vector<Command> commands = {
    {"purge", Takes::Paths, true, "Purges files, and the files in folders.",
     [] { cmdProcessFiles_Click(1); }},
    {"list", Takes::Paths, false, "Lists what a purge would meet, and estimates its time.",
     [] { cmdProcessFiles_Click(0); }},
    {"free-space", Takes::Drive, true, "Purges the free space of a drive.", PurgeFreeSpaceCommand},
    {"speed", Takes::Drive, false, "Measures how fast a drive is purged.", TestPurgeSpeedCommand},
    {"disk", Takes::Drive, true, "Purges a whole drive: its free space, then its files.",
     PurgeDiskCommand},
    {"run", Takes::SetupFile, true, "Purges files of the folder that a setup names.",
     [] { cmdProcessFiles_Click(1); }},
    {"version", Takes::Nothing, false, "Tells the version of the program.",
     [] { ui::console::Print("Nullwright " NW_VERSION "\r\n"); }},
    {"help", Takes::Word, false, "Tells more: of a command, or of \"questions\".",
     [] { ui::console::Print(HelpText(given.arguments.empty() ? "" : given.arguments[0])); }}};

namespace {

struct Option {
    const char* strName;
    char chrShort;             ///< 0 for none
    const char* strValue;      ///< as the help writes it, "" for a switch
    const char* strOfCommands; ///< their first letters
    const char* strHelp;
    bool BelongsTo(const Command& command) const {
        return std::string(strOfCommands).find(command.strName[0]) != std::string::npos;
    }
};

constexpr Option options[] = {
    {"files", 'f', "SPEC", "plr", "of folders only such files: *.tmp"},
    {"subfolders", 'r', "", "plr", "with all lower subfolders"},
    {"from", 0, "FILE", "pl", "paths from a file, - from input; by line or NUL"},
    {"type", 't', "TYPE", "plrfsd", "random, patterns or both (random)"},
    {"passes", 'n', "N", "plrfsd", "random 1-9 (6), patterns 1-7 (3), both 1-5 (2)"},
    {"slack-only", 's', "", "pr", "only behind the ends of files"},
    {"keep", 'k', "", "pr", "does not delete the purged files"},
    {"read-only", 0, "", "pr", "read-only files, too"},
    {"system", 0, "", "prfd", "system files, folders and Windows' drive, too"},
    {"sensitive", 0, "", "pr", "programs and their parts, too"},
    {"remove-empty-folders", 0, "", "pr", "removes subfolders that are empty afterwards"},
    {"exclude", 'x', "FOLDER", "d", "keeps a top folder, . the files there; repeatable"},
    {"verify", 0, "", "prfd", "reads back what was written, and compares it"},
    {"names", 0, "", "prd", "overwrites names and dates of what is deleted"},
    {"yes", 'y', "", "prfsd", "asks nothing: see help questions"},
    {"report", 'o', "FILE", "plrfsd", "writes the report to a file, .json as records"},
    {"json", 'j', "", "plrfsd", "only records, one in a line"},
    {"quiet", 'q', "", "plrfsd", "tells only what went wrong"},
    {"help", 'h', "", "plrfsdh", "this text"}};

constexpr const char* strExitCodes =
    "Exit codes:\r\n"
    "  0  all was done\r\n"
    "  1  something was not purged, or may still be there\r\n"
    "  2  wrong usage, or refused: nothing was touched\r\n"
    "  3  stopped: by Ctrl+C, by an answer, or as nobody took the output\r\n"
    "  4  a drive or the program failed, or writing the report\r\n";

const Command* FindCommand(const std::string& strName) {
    const auto found = std::ranges::find(commands, strName, &Command::strName);
    return found == commands.end() ? nullptr : &*found;
}

/// A row of two columns.
std::string Row(std::string left, std::size_t width, const char* right) {
    left.resize(std::max(width, left.size() + 1), ' ');
    return "  " + left + right + "\r\n";
}

std::string Usage(const Command& command) {
    constexpr const char* strTaken[] = {"", "PATH...", "DRIVE", "FILE.nws", "[COMMAND]"};
    return std::string(command.strName) + " " + strTaken[static_cast<int>(command.takes)];
}

std::string CommandText(const Command& command) {
    std::string text = "nullwright-cli " + Usage(command) + "\r\n" + command.strHelp + "\r\n\r\n";
    for (const Option& option : options) {
        std::string left = option.chrShort != 0 ? std::string{'-', option.chrShort, ','} : "";
        left.resize(4, ' ');
        if (option.BelongsTo(command))
            text += Row(left + "--" + option.strName + " " + option.strValue, 28, option.strHelp);
    }
    return text + Row("    --", 28, "ends the options");
}

std::string SeeHelp() {
    const bool blnKnown = FindCommand(given.strCommand) != nullptr;
    return " See: nullwright-cli help" + (blnKnown ? " " + given.strCommand : "");
}

/// "-n 3", "--passes 3", "--passes=3". Takes the value from behind `next`. False, with a message,
/// for what is none.
bool TakeOption(const std::string& argument, const std::vector<std::string>& arguments,
                std::size_t& next) {
    const std::size_t equals = argument.find('=');
    const bool blnEquals = equals != std::string::npos;
    const std::string name = argument.substr(0, equals);
    const auto option = std::ranges::find_if(options, [&](const Option& one) {
        return name == std::string("--") + one.strName ||
               (one.chrShort != 0 && name == std::string{'-', one.chrShort});
    });
    if (option == std::end(options))
        return TellError("There is no option " + name + "." + SeeHelp());
    std::vector<std::string>& values = given.options[option->strName];
    if (*option->strValue == '\0')
        return !blnEquals || TellError(name + " takes no value.");
    values.push_back(blnEquals                     ? argument.substr(equals + 1)
                     : next + 1 < arguments.size() ? arguments[++next]
                                                   : "");
    // What looks like an option is one: "-o --keep" must not lose it.
    if (values.back().empty() || (!blnEquals && values.back() != "-" && values.back()[0] == '-'))
        return TellError(name + " needs a value: " + name + " " + option->strValue + ".");
    // Windows takes \" for a quotation mark in the text, and the next options with it.
    if (values.back().find('"') != std::string::npos)
        return TellError("In quotation marks no \\ may stand at the end: " + values.back());
    return values.size() == 1 || option->strName == std::string("exclude") ||
           TellError(name + " stands twice.");
}

/// False, with a message, when the command cannot be given this.
bool MayBeGiven(const Command& command) {
    for (const Option& option : options)
        if (given.Has(option.strName) && !option.BelongsTo(command))
            return TellError(std::string("--") + option.strName + " is no option of " +
                             command.strName + "." + SeeHelp());
    const std::size_t count = given.arguments.size() + given.options.count("from");
    const std::size_t least = command.OnlyTells() ? 0 : 1,
                      most = command.takes == Takes::Nothing ? 0 : 1;
    if (count < least || (count > most && command.takes != Takes::Paths))
        return TellError("That should be \"nullwright-cli " + Usage(command) + "\"." + SeeHelp());
    if (command.takes == Takes::Word && count == 1 && HelpText(given.arguments[0]).empty())
        return TellError("There is no command " + given.arguments[0] +
                         ". See: nullwright-cli help");
    if (given.Of("files").find_first_of("\\/:") != std::string::npos)
        return TellError("--files is a name or a pattern, without a folder: " + given.Of("files"));
    if (command.takes == Takes::SetupFile && !given.Has("files"))
        return TellError("A setup holds no file specification: say --files *.* for all files.");
    return !command.blnDestroys || given.Has("yes") || ui::console::IsAttended() ||
           TellError("There is no terminal to ask at. To go on without questions: --yes.");
}

} // namespace

std::string HelpText(const std::string& strOf) {
    if (strOf == "questions")
        return QuestionsText();
    if (const Command* command = FindCommand(strOf))
        return CommandText(*command);
    std::string text = "Nullwright " NW_VERSION ": destroys data beyond recovery.\r\n\r\n"
                       "nullwright-cli COMMAND\r\n";
    for (const Command& command : commands)
        text += Row(Usage(command), 20, command.strHelp);
    text += "\r\nOptions of a command: nullwright-cli help COMMAND\r\n" + std::string(strExitCodes);
    return strOf.empty() ? text : "";
}

const Command* ReadCommandLine(const std::vector<std::string>& arguments) {
    given = {};
    bool blnOptions = true; // until "--"
    for (std::size_t next = 0; next < arguments.size(); ++next) {
        const std::string word = blnOptions && arguments[next] == "/?" ? "--help" : arguments[next];
        const bool blnOption = blnOptions && word.size() > 1 && word[0] == '-';
        if (blnOption && word == "--")
            blnOptions = false;
        else if (!blnOption)
            (given.strCommand.empty() ? given.strCommand : given.arguments.emplace_back()) = word;
        else if (!TakeOption(word, arguments, next))
            return nullptr;
    }
    if (given.Has("help") && given.strCommand != "help") // of the command before it
        given = {"help", {given.strCommand}};
    if (const Command* command = FindCommand(given.strCommand))
        return MayBeGiven(*command) ? command : nullptr;
    const std::string& name = given.strCommand;
    TellError((name.empty() ? "No command." : "There is no command " + name + ".") + SeeHelp());
    return nullptr;
}
