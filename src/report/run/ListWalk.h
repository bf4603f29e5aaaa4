// The listing walk over a folder tree, and the counts based on it.
#pragma once

#include "report/run/Run.h"

#include <cstdint>
#include <string>
#include <vector>

/// The listing walk of the current run: one folder and, if blnSubdirectories, everything below it.
void ListFilesRecursive(const std::string& strFolder, const std::string& strSpec);
/// The listing walk for one item of the run.
void ListItem(const RunItem& item);

/// The files that a purge run would find.
struct FilesToPurge {
    /// Matching files without those that are never purged and without links, or −1 when there are
    /// at least as many as the limit says (0: no limit).
    std::int64_t lngFiles = 0;
    double dblBytes = 0;         ///< the sum of the counted files' sizes
    std::int64_t lngLeftOut = 0; ///< matching files that are never purged
    bool blnWatched = false;     ///< a counted file is probably watched (IsSensitiveFile)
    std::int64_t lngUnread = 0;  ///< folders that could not be read to their end
    std::string strUnread;       ///< the first of them
};
/// Counts for a purge, using blnSubdirectories. Clears blnStop first; if it is set afterwards, the
/// user stopped the count and the number is incomplete. With `blnUntilWatched`, the count also ends
/// at the first watched file, as it does at the limit.
FilesToPurge CountFilesToPurge(const std::string& folder, const std::string& filespec,
                               std::int32_t intLimit, bool blnUntilWatched = false);
/// Counts the files of items, including subfolders when `blnSubfolders`. Does not clear an earlier
/// stop request.
FilesToPurge CountItems(const std::vector<RunItem>& items, bool blnSubfolders,
                        std::int32_t intLimit = 0, bool blnUntilWatched = false);
/// The listing walk without output, including subfolders: counts files, except those never purged,
/// and adds up their sizes. False when the user stopped it; blnStop is then set.
bool SumFileSizes(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                  double& dblBytes);
