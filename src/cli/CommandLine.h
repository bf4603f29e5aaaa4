// What stands on the command line: commands and options, each a row of a table that the parser and
// the help read.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

struct CommandLine {
    std::string strCommand;
    std::vector<std::string> arguments; ///< paths, a drive, a setup file, what help is wanted of

    std::string strFiles, strType, strPasses, strFrom, strReport;
    std::string strExcluded; ///< a folder a line
    bool blnSubfolders = false, blnSlackOnly = false, blnKeep = false, blnReadOnly = false;
    bool blnSystem = false, blnSensitive = false, blnRemoveEmpty = false;
    bool blnYes = false, blnJson = false, blnQuiet = false, blnHelp = false;
    bool blnVerify = false, blnNames = false;

    // Worked out from the others.
    bool blnExcludes = false;          ///< --exclude names folders
    bool blnKeepsTopFiles = false;     ///< --exclude . is there
    std::vector<std::string> excluded; ///< names of top-level folders
    char chrDrive = 0;
};

/// What a command is given: no path, any number of them, one drive, one file, or a word.
enum class Takes { Nothing, Paths, Drive, SetupFile, Word };

struct Command {
    const char* strName;
    const char* strArguments; ///< as the help writes them
    Takes takes;
    bool blnDestroys; ///< begins only when somebody can be asked, or with --yes
    const char* strHelp;
};
std::span<const Command> Commands();
const Command* FindCommand(const std::string& strName);

struct Option {
    const char* strName;
    char chrShort;             ///< 0 for none
    const char* strValue;      ///< as the help writes it, "" for a switch
    const char* strOfCommands; ///< their first letters
    bool CommandLine::*blnSwitch;
    std::string CommandLine::*strText;
    const char* strHelp;
    bool BelongsTo(const std::string& strCommand) const;
};
std::span<const Option> Options();

/// Reads the command line. "" or what is wrong with it, in one line.
std::string ReadCommandLine(const std::vector<std::string>& arguments, CommandLine& line);
