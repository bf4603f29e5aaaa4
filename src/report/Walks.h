// What the batch driver is made of: the two walks over a folder tree, what a purge run asks, does
// and writes about one file, and the summary.
#pragma once

#include <cstdint>
#include <string>

/// What a purge run has settled at its start, and what it was told on its way.
struct PurgeRun {
    std::int16_t intPurgeType = 0;
    std::int16_t intNumberOfPasses = 0;
    std::int32_t lngClusterSize = 0; ///< bytes, of the drive in hand
    double dblRulerLength = 0;       ///< bytes from which a file gets the progress ruler
    bool blnMonitoringAsked = false; ///< the file-monitoring query comes once per run
    bool blnNoMonitoring = false;    ///< it was answered No: no advice in this run
    int intOtherNames = 0;           ///< answer to the question about other names; 0 not asked yet
    bool blnDataDestroyed = false;   ///< of some file at least in part, whatever became of it
};
extern PurgeRun purgeRun;

/// Listing, counting or summing walk of one folder and, if blnSubdirectories, all beneath it.
void ListFilesRecursive(const std::string& strFolder, const std::string& strSpec);
/// CountFilesToPurge inside a run, all of them: a stop asked for before is not forgotten.
void CountAhead(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                double& dblBytes);
/// Purge walk of one folder and, if blnSubdirectories, all beneath it.
void NWesPurgeRecursive(const std::string& strFolder, const std::string& strSpec,
                        bool blnSlackOnly);

/// The line of a link, lest it be passed over in silence: it is left alone.
void TellLink(const std::string& strPath);
/// Asks what there is to ask about one file, purges it, and writes its line. `lngLength` is the
/// length in bytes that the folder lists. Ends with blnStop set when the run is to end.
void PurgeOneFile(const std::string& strPath, std::int64_t lngLength, bool blnSlackOnly);
/// The text that a file purge's result, or the file's classification, appends to the file's line.
std::string ResultText(std::int16_t intResultCode, bool blnSlackOnly, const std::string& strPath);
/// " (encrypted: ...)" for OutOfReach bits, "" for none.
std::string OutOfReachText(std::uint32_t lngReach);

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

/// The lines that close a run, without the closing time.
std::string SummaryText();
