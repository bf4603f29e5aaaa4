// What a purge run has to know of a person before it purges a file, and remembers for the run.
#pragma once

#include <string>

/// The sensitive-extension query: a message-box answer.
int AskSensitiveExtension(const std::string& strPath);
/// The file-monitoring query and the purge advice before a file that such software watches. False:
/// the run is cancelled.
bool GivePurgeAdvice(const std::string& strPath);
/// What the other names of a file mean for its purge.
enum class OtherNames {
    Chosen, ///< each of them is purged in this run, too
    Agreed, ///< the user wants the purge all the same
    Keep    ///< the file is to be left alone
};
/// Asks, once in a run, about a file whose data belong to a name, too, that the run does not purge.
OtherNames LookAtOtherNames(const std::string& strPath);
/// The confirmation of one file, where it is asked for. False: not to be purged.
bool ConfirmFile(const std::string& strPath);
