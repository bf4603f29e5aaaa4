// The boxes of the disk purge: estimate, plan, exclusions and the last questions.
#pragma once

#include "platform/Places.h"

#include <cstdint>
#include <string>
#include <vector>

/// The user's choices and the facts about the drive.
struct DiskPurgeState {
    char chrDrive = 0;
    std::string strRoot;                 ///< "X:\"
    platform::FolderHold hold;           ///< of the root; tells its disk from another one
    bool blnGone = false;                ///< another disk, or none, has been found in the drive
    double dblFileBytes = 0;             ///< of all files, including excluded ones; 0 when unknown
    std::int64_t lngTopFiles = 0;        ///< files in the root, without those never purged
    std::vector<std::string> subfolders; ///< names of the root's folders, links left out
    bool blnExcludeTopFiles = false;
    std::vector<std::string> excluded; ///< names of excluded top-level folders
    /// Files that came to the top after it was listed are kept if there were none: nobody was
    /// asked.
    bool PurgesTopFiles() const { return lngTopFiles > 0 && !blnExcludeTopFiles; }
    std::int64_t NonExcluded() const; ///< number of top-level folders to be purged
    bool IsExcluded(const std::string& strName) const;
};

// The boxes of the disk purge, in their order. Each returns false when the operation is to end.

/// The speed test, where the drive has no measured speed yet. sngSpeed stays 0 without success.
bool MeasureSpeed(const DiskPurgeState& state, float& sngSpeed);
/// Shows capacity and estimated times, or that they are unknown.
bool ShowDiskEstimate(DiskPurgeState& state, float sngSpeed);
bool ShowPlan(const DiskPurgeState& state);
bool AskAboutTopFiles(DiskPurgeState& state);
bool AskAboutTopFolders(DiskPurgeState& state);
bool AskAboutSystemFolders(const DiskPurgeState& state);
/// Sets blnDisplayDialogBoxesDuringRemainderOfPurgeDrive.
bool AskAboutInterruption();
/// blnPurged: the free space was purged, as far as strUndone does not tell of a rest.
bool ShowFilesNext(const DiskPurgeState& state, bool blnPurged, const std::string& strUndone);
