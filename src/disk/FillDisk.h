// Purges the free space of a drive with dummy files: fills it with files of null bytes, purges each
// with the file purge, and deletes the remains.
#pragma once

#include "platform/Files.h"

#include <cstdint>
#include <string>

/// How the last WriteDummyFiles ended.
enum class FillOutcome {
    NothingWritten, ///< refused, with a message, before the first file
    Done,           ///< the disk is full, or the test quantity is written
    Stopped,        ///< the user said Yes to "Cancel?"
    Faulted         ///< an error other than a full disk; the user was told, unless in a test
};

/// Module state. All sizes are bytes.
struct FillDiskState {
    std::string strDriveRoot;               ///< "X:\", the drive being filled
    std::string strDummyFolder;             ///< without trailing backslash; "" when there is none
    std::string strCurrentDummyFile;        ///< the file being written, lower-cased
    std::int64_t lngBytesInCurrentFile = 0; ///< written to it
    double dblBytesInFinishedFiles = 0;     ///< bytes in all closed dummy files
    double dblFreeSpaceAtStart = 0;         ///< the 100 % mark; grows when space is freed meanwhile
    double dblFreeSpaceNow = 0;             ///< as last read, minus bytes written since
    std::string strStatusText;              ///< the sentence shown while writing

    /// Mebibytes to write for a speed test; 0 fills the disk. A test shows no message except the
    /// question after F10.
    std::int16_t intTestQuantity = 0;
    FillOutcome Outcome = FillOutcome::NothingWritten;
    double dblUnfilled = 0; ///< still free for this user when the disk was full
    double dblKeptBack = 0; ///< free on the volume, but not for this user (quota, reserve)
    std::int64_t lngFilesWritten = 0;
    std::int64_t lngFilesPurged = 0;
    std::int64_t lngFilesVerified = 0; ///< of these: read back past the cache, and alike
    platform::File Marker;             ///< keeps the folder marked as in use
};
extern FillDiskState FillDisk;

/// "A" and "B" are floppy drives, whatever the system calls them.
bool IsFloppyLetter(char chrDrive);

/// Fills the drive FillDisk.strDriveRoot with dummy files of at most dblMaxSizeDummyFile bytes.
/// First reads the free space and plans the files again. Shows its own messages; the outcome is in
/// FillDisk. The files are flushed: bytes counted as written are on the disk.
void WriteDummyFiles();
/// Handles F10 during the filling by a question. True when the filling is to end; else F10 is
/// cleared.
bool CancelFilling();
/// Every dummy file on FillDisk.strDriveRoot except the last small one is a multiple of this long:
/// the drive's real cluster size, or the cluster size of the purge if that is larger.
std::int64_t DummyClusterSize();
/// Reads the free space into dblUnfilled and dblKeptBack; an unknown value becomes 0.
void ReadUnfilledSpace(const std::string& strRoot);
/// Shows in the main window's status line how much is written and how much remains.
void ShowDummyFileProgress();
