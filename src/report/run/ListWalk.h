// The listing walk over a folder tree, and the counts that are taken by it.
#pragma once

#include "report/run/Run.h"

#include <cstdint>
#include <string>
#include <vector>

/// The listing walk of the current run: one folder and, if blnSubdirectories, all beneath it.
void ListFilesRecursive(const std::string& strFolder, const std::string& strSpec);
/// The same for an item of the run.
void ListItem(const RunItem& item);

/// Counting-only walk with blnSubdirectories as it stands: the number of matching files, or −1
/// when there are at least `intLimit` (0: no limit). Links are not counted. Clears blnStop first;
/// when it is set afterwards, the user stopped the count and the number is not complete.
std::int64_t CountMatchingFiles(const std::string& folder, const std::string& filespec,
                                std::int32_t intLimit);
/// What a purge run would find.
struct FilesToPurge {
    std::int64_t lngFiles = 0;   ///< as CountMatchingFiles, without what is never purged
    double dblBytes = 0;         ///< the sum of their sizes, as far as they were counted
    std::int64_t lngLeftOut = 0; ///< files that match but are never purged
    bool blnWatched = false;     ///< one of those counted is likely to be watched (IsSensitiveFile)
};
/// The same for a purge. With `blnUntilWatched` the count also ends, as at the limit, at the first
/// watched file.
FilesToPurge CountFilesToPurge(const std::string& folder, const std::string& filespec,
                               std::int32_t intLimit, bool blnUntilWatched = false);
/// The same for items, with the subfolders of folders among them when `blnSubfolders`. A stop that
/// was asked for before is not forgotten.
FilesToPurge CountItems(const std::vector<RunItem>& items, bool blnSubfolders,
                        std::int32_t intLimit = 0, bool blnUntilWatched = false);
/// The listing walk without any output, subfolders included: files, without what is never purged,
/// and the sum of their sizes. False when the user stopped it; blnStop is then set.
bool SumFileSizes(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                  double& dblBytes);
