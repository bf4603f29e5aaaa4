// Every question that a command may ask, and what answers it where nobody is asked: one table, for
// the run, for the help and for the tests.
#pragma once

#include "cli/CommandLine.h"
#include "ui/console/Console.h"

#include <span>
#include <string>

struct Question {
    const char* strWhere;         ///< the title of the box, or the name of the form; "" any box
    const char* strPart;          ///< a piece of the text
    const char* strAsks;          ///< for the help
    const char* strAnswer;        ///< the button: "Yes", of a form "cmdOK"
    const char* strMeans = "yes"; ///< for the help: the answer in words
    /// With this option the other button is the answer, at a terminal, too.
    const char* strOption = "";
    const char* strOptionAnswer = "";
    const char* strOptionMeans = "";
    /// The command line answers it, at a terminal, too: sets the fields of the form. False: they
    /// cannot be set as it says, and the answer is what changes nothing.
    bool (*fill)(const CommandLine& line) = nullptr;
};
std::span<const Question> Questions();

/// The row of a question; nullptr: it is not in the table, and its answer is what changes nothing.
const Question* QuestionOf(const ui::console::Asked& asked);
/// The button that answers a question of a command; "" for whoever sits at the terminal, "none" for
/// what changes nothing.
std::string AnswerOf(const ui::console::Asked& asked, const CommandLine& line, bool blnAttended);
