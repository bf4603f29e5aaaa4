// The purge walk over a folder tree.
#pragma once

#include <cstdint>
#include <string>

/// What a purge run has settled at its start, and what it was told on its way.
struct PurgeRun {
    std::int16_t intPurgeType = 0;
    std::int16_t intNumberOfPasses = 0;
    std::int32_t lngClusterSize = 0; ///< bytes, of the current drive
    double dblRulerLength = 0;       ///< bytes from which a file gets the progress ruler
    bool blnMonitoringAsked = false; ///< the file-monitoring query comes once per run
    bool blnNoMonitoring = false;    ///< it was answered No: no advice in this run
    int intOtherNames = 0;           ///< answer to the question about other names; 0 not asked yet
    bool blnDataDestroyed = false;   ///< of some file at least in part, whatever became of it
};
extern PurgeRun purgeRun;

/// Purge walk of one folder and, if blnSubdirectories, all beneath it.
void NWesPurgeRecursive(const std::string& strFolder, const std::string& strSpec,
                        bool blnSlackOnly);

/// Writes the line of a link. It is left alone, and the user should know.
void TellLink(const std::string& strPath);
