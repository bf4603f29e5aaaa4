// The result of each file of a run, in compact form. Kept until the next run begins, for the list
// of failures and for the saved report.
#pragma once

#include "engine/PurgeJob.h"
#include "platform/Fault.h"

#include <cstddef>
#include <cstdint>
#include <string>

enum class FileFate : std::uint8_t {
    Listed,
    Link,     ///< left alone, because it leads elsewhere
    Declined, ///< the user refused it, or stopped the run before it
    Refused,  ///< refused because of its kind: Result has the reason
    Begun     ///< the purge began: Result tells how it ended
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

/// Stores a record of the current run. A failure is also added to the run's list, with the programs
/// that hold the file, if Windows tells them.
void NoteRecord(FileRecord record);
std::size_t NumRecords();
FileRecord RecordAt(std::size_t index);
/// Deletes the records of the last run when a new one begins.
void ForgetRecords();

/// Whether a file should have been purged and could not be.
bool IsFailure(const FileRecord& record);
/// Whether a file was chosen and is still there unpurged, for whatever reason: failures, refusals,
/// and what the user declined; or whether its name was to go and may remain. Links lead elsewhere,
/// and files without slack have nothing to purge.
bool IsLeft(const FileRecord& record);
/// The text after a file's path in the report: " (4,096 bytes) purged".
std::string RecordTail(const FileRecord& record);
/// The reason why a file could not be purged: "unable to open file for writing (in use by
/// Editor)".
std::string ReasonText(const FileRecord& record, const std::string& strHolders);
