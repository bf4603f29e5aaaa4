// Remains of deleted files outside all clusters, where dummy files do not reach: on NTFS names and
// small contents in free records of the file table, on FAT names in free entries of the top folder.
// Our small files, filled completely, take these places and are deleted with the dummies.
#pragma once

#include "disk/FillDisk.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

enum class OldRecords { None, FileTable, TopFolder };

/// Where old records lie, by the file system of the drive ("X:\"): NTFS, FAT, or another one.
OldRecords OldRecordsOn(const std::string& strRoot);
/// The sentence about old records in the plan of a purge; "" when nothing is done.
std::string OldRecordsText(OldRecords records);

/// State shared with the I/O thread while small files are created. While that thread works, the
/// interface thread reads only the atomic.
struct RecordWork {
    OldRecords Old = OldRecords::None;
    std::int64_t lngCluster = 4096;
    std::atomic<std::int64_t> lngMade{0};
    std::int64_t lngSize = 0;        ///< largest size that fits into a record; 0: unknown
    std::int64_t lngTooLarge = 4096; ///< smallest size known not to fit: the largest record
    std::vector<std::string> spares; ///< files whose long names reserve room in the folder
    std::uint64_t lngRecords = 0;    ///< records in the table when the purge began; 0: unknown
    std::uint64_t lngHighest = 0;    ///< the highest record number of our files
    std::int64_t lngBehind = 0;      ///< successive files placed after all earlier ones
    double dblFreeThen = 0;          ///< free space when the first of those was created
    platform::Fault Error = platform::Fault::None;
};

/// Takes all free records of NTFS. Runs before the filling, while the table and the folder of the
/// small files can still grow. Result: Done, Stopped by the user, or Faulted with work.Error.
FillOutcome TakeFreeRecords(RecordWork& work);
/// Runs when the disk is full: takes the records that the table gained meanwhile, or the free
/// entries of FAT's top folder. The files in the top folder are removed again.
FillOutcome TakeLastRecords(RecordWork& work);
