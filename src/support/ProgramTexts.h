// The program's language-dependent texts: numbered entries of a UTF-8 file.
#pragma once

#include <string>

enum class TextNumber : int {
    NextRunStem = 2,        ///< stem of the next-run setup file's name
    AcceptTypeTitle = 23,   ///< title of the question whether the purge type is right
    SettingsFolder = 310,   ///< the program's folder under the user's application-data folder
    SlackOnlyNote = 320,    ///< note in the options dialog, slack-only purge
    OrdinaryNote = 321,     ///< note in the options dialog, ordinary purge
    MakerLink = 330,        ///< address behind the maker's link
    DocumentationLink = 331 ///< address behind the manual's link
};

/// Loads the entries from `strProgramTextFile` ("number<TAB>text" lines). The built-in English
/// texts replace missing or malformed entries, or the whole file. Returns "" or one sentence that
/// tells the user what is wrong with the file.
std::string LoadProgramTexts(const std::string& strProgramTextFile);
/// The text of an entry: the loaded one, or else the built-in one.
std::string ProgramText(TextNumber number);
