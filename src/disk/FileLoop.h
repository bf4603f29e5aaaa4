// The loop over all files of folder trees that the disk purge and "Purge folders" share: counts
// them, then purges them one by one.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// One operation's loop. The same record serves counting first and purging then; the files purged
/// are counted in the current run.
struct FileLoop {
    std::string strTitle;       ///< of its boxes
    bool blnCounting = true;    ///< only adds up what is expected of the current run
    bool blnErrorBoxes = true;  ///< a failed file gets its box; else it is only counted
    std::int64_t lngFailed = 0; ///< files that could not be purged; one that is gone is none
    std::int64_t lngPartly = 0; ///< purged, but writing in place does not reach all of their data
    /// Whether a path lies in what was chosen. A file that has a name elsewhere, too, is passed
    /// over; so is one whose other names the system does not tell.
    std::function<bool(const std::string& strPath)> isChosen{};
    std::int64_t lngOtherNames = 0;        ///< files passed over so
    std::vector<std::string> otherNames{}; ///< the first of them
};

/// Whether the loop passes over a file: "pagefile.sys", *.swp, and all in the program's own folder.
bool IsNeverPurged(const std::string& strPath);
/// Walks one folder and, with blnSubfolders, everything below it. Links are neither followed nor
/// purged through; files in the program's own folder, "pagefile.sys" and *.swp are passed over.
/// False when the user ended the loop: blnStop is left set then.
bool WalkFiles(FileLoop& loop, const std::string& strFolder, bool blnSubfolders);
/// Ends counting; what comes next is purging. The number of files that were counted.
std::int64_t EndCounting(FileLoop& loop);
/// Bytes that purging the files that were counted will write.
double BytesToPurge();
/// The progress of the purging begins.
void BeginLoopProgress();
/// Ends the loop: clears blnStop unless the user stopped the loop.
void EndFileLoop(bool blnFinished);
/// Tells what a run left undone, one sentence per line, behind what was undone before it. No box
/// when that is nothing.
void ShowUndone(const FileLoop& loop, const std::string& strUndoneBefore = "");
