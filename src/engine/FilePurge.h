// Overwrites one file in place, pass after pass, or only the slack behind its end.
#pragma once

#include <cstdint>
#include <string>

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
    PurgeFileChanged = -16, ///< somebody else writes to it
    PurgeNotLocal = -17,    ///< its data would have to be fetched first
    PurgeNoPasses = -18,    ///< asked for no pass at all
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
    ReachOlderCopies = 0x20
};

/// Checks attributes and permissions, purges one file and restores its length when it is kept.
/// True when resultCode is 0 or more. `reserved` is not used. `reach`, when given, takes the
/// OutOfReach bits of the file, also when the purge fails. With `refuseSeveralNames` a file that
/// has other names, too, is left as it is, PurgeSeveralNames: overwriting it would destroy their
/// data. (Its slack is nobody's data, and is purged all the same.)
bool PurgeFileWithChecks(const std::string& path, std::int16_t purgeTypeIndex,
                         std::int16_t numPasses, bool deleteAfter, bool okReadOnly, bool okSystem,
                         bool slackOnly, std::int32_t reserved, std::int16_t& resultCode,
                         std::uint32_t* reach = nullptr, bool refuseSeveralNames = false);

/// All passes of one file, then deletion, or in slack mode the restoring of its length.
std::int16_t PurgeFile(const std::string& path, std::int16_t purgeTypeIndex, std::int16_t numPasses,
                       bool deleteAfter, bool slackOnly);

/// The length in bytes that the file had that PurgeFileWithChecks was done with last.
std::int64_t LengthOfPurgedFile();

/// Whether that purge, finished or not, wrote anything over the file.
bool PurgeHasWritten();

/// The share (0 to 1) of the purge under way that is written, for whoever shows it while the purge
/// yields; 0 when none is under way. Slack is too little to be counted.
double PurgeShareDone();

/// The auxiliary library is there and whole. On false the user has been told, and nothing may be
/// purged.
bool PurgeLibraryReady();
