// The help, made of the tables of commands, options and questions.
#pragma once

#include <string>

/// Of a command, of "questions" or "exit", or of the whole for ""; "" for any other word.
std::string HelpText(const std::string& strOf);
