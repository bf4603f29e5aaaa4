// What became of each file of a run: kept, short, until the next run begins, for the list of
// failures and for the saved report.
#pragma once

#include "engine/PurgeJob.h"
#include "platform/Fault.h"

#include <cstddef>
#include <cstdint>
#include <string>

enum class FileFate : std::uint8_t {
    Listed,
    Link,     ///< left alone, as it leads to something else
    Declined, ///< the user did not want it, or stopped the run before it
    Refused,  ///< by what it is: Result is the reason
    Begun     ///< its purge began: Result says how it ended
};

struct FileRecord {
    std::string Path;
    FileFate Fate = FileFate::Begun;
    std::int64_t Bytes = 0;
    std::int16_t Result = 0; ///< PurgeResult or Classification
    std::int16_t PassesDone = 0;
    std::uint32_t Reach = 0;   ///< OutOfReach bits
    platform::Fault Trouble{}; ///< what the system said
    std::int64_t Time = 0;     ///< milliseconds since the run began; set by NoteRecord
    ReadBack HasReadBack{};
    std::string Remark{}; ///< belongs to what the result says: " at byte 4,096", ", left as ..."
};

/// Keeps a record of the current run. One that is a failure goes on the run's list, with the
/// programs that hold the file, where Windows tells them.
void NoteRecord(FileRecord record);
std::size_t NumRecords();
FileRecord RecordAt(std::size_t index);
/// A run begins: the records of the last one go.
void ForgetRecords();

/// A file that was to be purged and could not be.
bool IsFailure(const FileRecord& record);
/// What the report says of a file behind its path: " (4,096 bytes) purged".
std::string RecordTail(const FileRecord& record);
/// Why a file could not be purged, in words: "unable to open file for writing (Another program is
/// using the file: Editor)".
std::string ReasonText(const FileRecord& record, const std::string& strHolders);
