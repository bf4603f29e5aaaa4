// What stands on the command line: commands and options, each a row of a table that the parser and
// the help read.
#pragma once

#include <map>
#include <string>
#include <vector>

struct CommandLine {
    std::string strCommand;
    std::vector<std::string> arguments{}; ///< paths, a drive, a setup file, what help is wanted of
    /// The options by their long names, with their values; of a switch there are none. "exclude ."
    /// is one of its own.
    std::map<std::string, std::vector<std::string>> options{};
    char chrDrive = 0; ///< of a command on a drive

    bool Has(const std::string& strOption) const { return options.contains(strOption); }
    /// The value of an option.
    std::string Of(const std::string& strOption, const char* strWithout = "") const {
        return Has(strOption) ? options.at(strOption).front() : strWithout;
    }
};
inline CommandLine given; ///< to this run of the program

/// What a command is given: no path, any number of them, one drive, one file, or a word.
enum class Takes { Nothing, Paths, Drive, SetupFile, Word };

struct Command {
    const char* strName;
    Takes takes;
    bool blnDestroys; ///< begins only when somebody can be asked, or with --yes
    const char* strHelp;
    void (*perform)(); ///< what it is given has been taken
    bool OnlyTells() const { return takes == Takes::Nothing || takes == Takes::Word; }
};
extern const std::vector<Command> commands;

/// The help of a command, of "questions", or of the whole for ""; "" for any other word.
std::string HelpText(const std::string& strOf);

/// Reads the arguments into given. The command; nullptr, with a message, when something is wrong.
const Command* ReadCommandLine(const std::vector<std::string>& arguments);
