// The purge of one file as a value: what is asked for, how far it is, what it came to.
#pragma once

#include "platform/Fault.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Result codes of a file purge.
enum PurgeResult : std::int16_t {
    PurgeDone = 0,
    PurgeEmptyPath = -1,
    PurgeCannotOpen = -2,
    PurgeWriteFailed = -3,
    PurgeNotDeleted = -4,
    PurgeFlushFailed = -7,
    PurgeBadType = -8,
    PurgeBadClusterSize = -9,
    PurgeLengthNotRestored = -11,
    PurgeStopped = -12,
    PurgeSeveralNames = -13, ///< other names lead to the same data; nothing was written
    PurgeVanished = -14,     ///< −2, as the file is gone: where the loops over files tell it so
    PurgeDiskFull = -15,
    PurgeFileChanged = -16, ///< somebody else writes to it, or gave it another name meanwhile
    PurgeNotLocal = -17,    ///< its data would have to be fetched first
    PurgeNoPasses = -18,    ///< asked for no pass at all
    PurgeNotVerified = -19, ///< what was written cannot be read back as it was written
    PurgeReplaced = -20,    ///< of a folder: another one has taken the place of the chosen one
    PurgeReadOnlyRefused = -53,
    PurgeSystemRefused = -54,
    PurgeNoSlack = -55
};

/// Why writing a file in place does not reach all of its data; bits, 0 = it does.
enum OutOfReach : std::uint32_t {
    ReachEncrypted = 0x01,
    ReachCompressed = 0x02,
    ReachSparse = 0x04,
    ReachCloudPlaceholder = 0x08,
    ReachHardLinks = 0x10,
    ReachOlderCopies = 0x20,
    ReachName = 0x40 ///< it was to be overwritten, too, or the dates were
};

/// Whether what was written was read back, and found to be the same.
enum class ReadBack : std::uint8_t {
    None,
    Cached, ///< by ordinary reads, which the system may have answered from its memory
    PastCache
};

/// A file, or one of its alternate data streams, while it is being purged. Lengths in bytes.
struct PurgeTarget {
    std::string Path;
    std::int64_t Length = 0; ///< its own: without what an overwrite has added
    std::int64_t Left = -1;  ///< the length in which the last overwrite left it; −1 before
    bool MayBeSparse = false;
    bool IsReparsePoint = false; ///< no link, but another driver has its data
    bool NoSlack = false;        ///< found out in slack mode: nothing to overwrite
};

/// How far an overwrite goes, in bytes.
struct ClusterSizes {
    std::int32_t Block = 0;   ///< what is written at a time: the listed cluster size
    std::int32_t Covered = 0; ///< up to a multiple of this: the listed size, or a larger real one
    std::int32_t Real = 0;    ///< as the drive has it
};

/// What a user may ask of the engine beyond type and passes. The options dialog sets it, and runs
/// hand it on as a whole: a new option is a member here, its box in the dialog, and its work in the
/// engine.
struct PurgeOptions {
    bool Verify = false; ///< the last overwrite is read back and compared
    /// A file that is deleted gets other names and dates before.
    bool OverwriteNames = false;
};

/// While a job is under way, all of it belongs to the engine but what the functions are told.
struct PurgeJob {
    // What is asked for.
    std::string Path;
    std::int16_t Type = 0; ///< index of a purge type
    std::int16_t Passes = 1;
    bool DeleteAfter = false;
    bool OKReadOnly = false, OKSystem = false; ///< files with these attributes may be purged
    bool SlackOnly = false;
    /// A file that has other names, too, is left as it is: overwriting it would destroy their data.
    /// (Its slack is nobody's data, and is purged all the same.)
    bool RefuseSeveralNames = false;
    PurgeOptions Options{};
    /// Asked before such a file is refused: true when it may be purged under all its names. May
    /// show a question.
    std::function<bool()> MayPurgeAllNames{};
    /// Called between two passes. False stops the job; the file then has its own length again.
    std::function<bool()> GoOn{};

    // What it came to.
    std::int16_t Result = PurgeDone; ///< PurgeResult
    std::int16_t PassesDone = 0;
    std::uint32_t Reach = 0;   ///< OutOfReach bits: what was not reached, also when it failed
    std::int64_t Length = 0;   ///< bytes that the file had when the job was done with it
    bool HasWritten = false;   ///< something was, or may have been, written over the file
    platform::Fault Trouble{}; ///< what the system said to the step that failed
    ReadBack HasReadBack{};
    std::int64_t DifferentAt = -1; ///< of PurgeNotVerified: the byte ...
    std::string DifferentPath{};   ///< ... and the file or the stream
    std::string LeftAs{};          ///< the path of a file that has another name and was not deleted

    double Seconds = 0; ///< that it took, without the time between two passes

    // The purge under way.
    std::uint32_t Attributes = 0; ///< platform::Attribute bits, as they were before
    std::size_t NextOverwrite = 0, NextTarget = 0; ///< where the pass under way stands
    bool Deleted = false;
    std::vector<PurgeTarget> Targets{};
    ClusterSizes Clusters{};
    bool FirstOverwrite = false;   ///< the file has not been overwritten yet
    std::uint32_t HardLinks = 0;   ///< names of the file, the most that any overwrite found
    bool RecordsHoldFiles = false; ///< its file system may keep small files in its own records
    bool VerifiesNow = false;      ///< the overwrite under way is the last one
    double BytesOverwritten = 0;   ///< or read back, streams included; goes on during an overwrite
    double BytesToOverwrite = 0;   ///< what it will be in the end
};

/// Checks attributes and permissions, overwrites the file pass after pass and deletes it, or gives
/// it its length back. Nothing else in the program overwrites a file.
void RunPurgeJob(PurgeJob& job);

/// Seconds by a clock that nobody sets, for what jobs and groups take.
double SecondsNow();

/// The share (0 to 1) of the job or the group under way that is written, for whoever shows it while
/// that yields; 0 when none is under way. Slack is too little to be counted.
double PurgeShareDone();

/// Tells the share of what is under way; empty when nothing is.
using ShareOfPurge = std::function<double()>;
/// Sets who tells PurgeShareDone from now on. Who did before.
ShareOfPurge TellPurgeShareBy(ShareOfPurge share);
