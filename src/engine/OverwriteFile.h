// One overwrite of one file, or of one of its streams. Module-level state of the engine.
#pragma once

#include <cstdint>
#include <string>

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

/// Passes of the current file already finished, and how many it gets; for the progress figure only.
inline std::int16_t intPassesDone = 0;
inline std::int16_t intPassesInAll = 1;
/// The file being purged has not been overwritten yet in this purge.
inline bool blnFirstOverwrite = false;
/// Names that lead to the data of the file being purged, the most that any overwrite found; 0
/// before the first.
inline std::uint32_t lngHardLinks = 0;
/// A file that has several names is not to be overwritten.
inline bool blnRefuseSeveralNames = false;
/// Something was, or may have been, written over the file.
inline bool blnBytesWritten = false;
/// The file system may keep small files in its own records, outside all clusters.
inline bool blnRecordsHoldFiles = false;

/// Bytes written over the file in this purge, streams included; goes on during an
/// overwrite.
inline double dblBytesOverwritten = 0;

/// Overwrites a file up to the end of its last cluster, or only its slack, and forces that to the
/// disk. PrepareOverwriteBuffers comes first. The file's own length is the one that it has when it
/// is open; what it was left with the last time tells whether it has changed meanwhile. 0 done; −2
/// the file cannot be opened, −3 a write failed, −7 what was written could not be forced to the
/// disk; −13 refused for its several names; −11 slack mode: the length could not be restored; −12
/// the user stopped the free-space purge; −15 the disk is full; −16 slack mode: the file has
/// changed and was left alone. The file is closed on every way out. In slack mode it has its own
/// length again, else it keeps the length to which it has grown.
std::int16_t OverwriteFileOnce(PurgeTarget& target, std::int16_t value, bool slackOnly,
                               const ClusterSizes& clusters);
