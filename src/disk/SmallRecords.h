// What deleted files leave outside all clusters, where dummy files do not reach: on NTFS names and
// small contents in free records of the table of files, on FAT names in free entries of the top
// folder. Small files of ours take these places, each with full content, and go with the dummies.
#pragma once

#include "disk/FillDisk.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

enum class OldRecords { None, FileTable, TopFolder };

/// By the file system of the drive ("X:\"): NTFS, FAT, or another one.
OldRecords OldRecordsOn(const std::string& strRoot);
/// What the plan of a purge says of them: a sentence, "" where nothing is done.
std::string OldRecordsText(OldRecords records);

/// What the making of small files shares with the I/O thread. While that works, the interface
/// thread reads the atomic only.
struct RecordWork {
    OldRecords Old = OldRecords::None;
    std::int64_t lngCluster = 4096;
    std::atomic<std::int64_t> lngMade{0};
    std::int64_t lngSize = 0;        ///< what a record has room for; 0: not known
    std::int64_t lngTooLarge = 4096; ///< what it has no room for: the largest record
    std::vector<std::string> spares; ///< files whose long names keep room in the folder
    std::uint64_t lngRecords = 0;    ///< that the table had when the purge began; 0: unknown
    std::uint64_t lngHighest = 0;    ///< the highest record that a file of ours has
    std::int64_t lngBehind = 0;      ///< so many files in a row went behind all before
    double dblFreeThen = 0;          ///< when the first one of them was made
    platform::Fault Error = platform::Fault::None;
};

/// Before the filling, while the folder of the small files and the table can still grow: takes all
/// free records of NTFS. Done, Stopped by the user, or Faulted with work.Error.
FillOutcome TakeFreeRecords(RecordWork& work);
/// When the disk is full: takes what the table got meanwhile, or the free entries of FAT's top
/// folder; there the files are removed again.
FillOutcome TakeLastRecords(RecordWork& work);
