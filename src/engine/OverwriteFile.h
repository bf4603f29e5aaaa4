// One overwrite of one file, or of one of its streams. Module-level state of the engine.
#pragma once

#include <cstdint>
#include <string>

/// Length of the file (or stream) in hand in bytes; the whole-file overwrite raises 0 to 1.
inline std::int64_t lngCurrentFileLength = 0;
/// Passes of the current file already finished; for the progress figure only.
inline std::int16_t intPassesDone = 0;
/// The file in hand has not been overwritten yet in this purge.
inline bool blnFirstOverwrite = false;
/// Names that lead to the data of the file in hand, found out at its first overwrite; 0 before.
inline std::uint32_t lngHardLinks = 0;
/// A file that has several names is not to be overwritten.
inline bool blnRefuseSeveralNames = false;
/// Something was, or may have been, written over the file in hand.
inline bool blnBytesWritten = false;

/// Bytes written over the file in hand in this purge, streams included; goes on during an
/// overwrite.
inline double dblBytesOverwritten = 0;

/// Overwrites a file of lngCurrentFileLength bytes up to the end of its last cluster, or only its
/// slack, and forces that to the disk. PrepareOverwriteBuffers comes first. 0 done; −13 refused
/// for its several names; −2 the file cannot be opened, −3 a write failed, −7 what was written
/// could not be forced to the disk; −12 the user stopped the free-space purge. The file is closed
/// on every way out and keeps the length to which it has grown.
std::int16_t OverwriteFileOnce(const std::string& path, std::int16_t value, bool slackOnly,
                               std::int32_t clusterSize);
