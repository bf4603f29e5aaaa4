// The questions that a purge run asks before it purges a file, and the answers kept for the run.
#pragma once

#include <string>

/// The sensitive-extension query; returns a message-box answer.
int AskSensitiveExtension(const std::string& strPath);
/// The file-monitoring query, and the purge advice before a file that such software watches. False:
/// cancel the run.
bool GivePurgeAdvice(const std::string& strPath);
/// How the other names (hard links) of a file affect its purge.
enum class OtherNames {
    Chosen, ///< this run also purges all of them
    Agreed, ///< the user wants the purge anyway
    Keep    ///< leave the file alone
};
/// Asks, once per run, about a file that also has a name which the run does not purge.
OtherNames LookAtOtherNames(const std::string& strPath);
/// Asks for confirmation of one file, if confirmations are on. False: do not purge it.
bool ConfirmFile(const std::string& strPath);
