// The loop over all files of folder trees that the disk purge and "Purge folders" share: counts
// them, then purges them one by one.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// The loop of one operation. The same record first counts and then purges; the current run counts
/// the purged files.
struct FileLoop {
    std::string strTitle;       ///< of its boxes
    bool blnCounting = true;    ///< only adds to the counts that the current run expects
    bool blnErrorBoxes = true;  ///< a failed file gets a box; else it is only counted
    bool blnEnded = false;      ///< by the user, while files were purged side by side
    std::int64_t lngFailed = 0; ///< files that could not be purged; vanished files do not count
    std::int64_t lngPartly = 0; ///< purged files of which writing in place does not reach all data
    std::int64_t lngOlderCopies = 0; ///< the same, for no other reason than their file system
    /// Whether a path lies in what was chosen. A file is passed over if one of its names lies
    /// elsewhere, or if the system does not tell its other names.
    std::function<bool(const std::string& strPath)> isChosen{};
    /// Whether the drive still holds what was chosen; tells the user if not. Empty: not checked.
    std::function<bool()> isSameDisk{};
    std::int64_t lngOtherNames = 0;        ///< number of files passed over for that reason
    std::vector<std::string> otherNames{}; ///< the first of them
    /// Folders that could not be read while counting, and why. They may be read in the purge.
    std::vector<std::pair<std::string, std::string>> unread{};
};

/// Whether the loop passes over a file: "pagefile.sys", *.swp, and everything in the program's own
/// folder.
bool IsNeverPurged(const std::string& strPath);
/// Walks one folder and, with blnSubfolders, everything below it. Links are neither followed nor
/// purged through. Files in the program's own folder, "pagefile.sys" and *.swp are passed over.
/// False when the user ended the loop; blnStop then stays set.
bool WalkFiles(FileLoop& loop, const std::string& strFolder, bool blnSubfolders);
/// Bytes that purging the counted files will write.
double BytesToPurge();
/// Starts the progress display of the purging.
void BeginLoopProgress();
/// Ends the loop: clears blnStop unless the user stopped the loop.
void EndFileLoop(bool blnFinished);
/// Tells what a run left undone, one sentence per line, after strUndoneBefore. Shows no box when
/// there is nothing to tell.
void ShowUndone(const FileLoop& loop, const std::string& strUndoneBefore = "");
