// Every question that a command may ask, and what answers it where nobody is asked: one table, for
// the run, for the help and for the tests.
#pragma once

#include <string>
#include <vector>

struct Question {
    const char* strName;          ///< of the question or the form
    const char* strAsks;          ///< for the help; "Ctrl+C ..." when it is about the stop itself
    const char* strAnswer;        ///< the button: "Yes", of a form "cmdOK"
    const char* strMeans = "yes"; ///< for the help: the answer in words
    /// The command line answers it, at a terminal, too: sets the fields of the form. False: they
    /// cannot be set as it says, and the answer is what changes nothing.
    bool (*fill)() = nullptr;
    /// With this option the other button is the answer, at a terminal, too.
    const char* strOption = "";
    const char* strOptionAnswer = "";
    const char* strOptionMeans = "";
};
extern const std::vector<Question> questions;
/// The answer in words: "it stays; with --system it is purged".
std::string MeaningOf(const Question& row);
/// The table as the help prints it.
std::string QuestionsText();

/// The row of a question; nullptr: it is not in the table, and its answer is what changes nothing.
const Question* QuestionOf(const std::string& strName);
/// The button that answers a question of a command; "" for whoever sits at the terminal, "none" for
/// what changes nothing.
std::string AnswerOf(const std::string& strName, bool blnAttended);
