// Purges the free space of a drive by way of dummy files: fills it with files of null bytes, purges
// each of them through the file purge, and deletes what is left of them.
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
    double dblBytesInFinishedFiles = 0;     ///< of all dummy files already closed
    double dblFreeSpaceAtStart = 0;         ///< the 100 % mark; grows when space is freed meanwhile
    double dblFreeSpaceNow = 0;             ///< as read last, less what was written since
    std::string strStatusText;              ///< the sentence shown while writing

    /// Mebibytes to write for a speed test; 0 fills the disk. In a test no message is shown but the
    /// query that answers F10.
    std::int16_t intTestQuantity = 0;
    FillOutcome Outcome = FillOutcome::NothingWritten;
    double dblUnfilled = 0; ///< still free for this user when the disk was full
    double dblKeptBack = 0; ///< free on the volume, but not for this user (quota, reserve)
    std::int64_t lngFilesWritten = 0;
    std::int64_t lngFilesPurged = 0;
    platform::File Marker; ///< keeps the folder marked as in use
};
extern FillDiskState FillDisk;

/// "A" and "B" are floppy drives, whatever the system calls them.
bool IsFloppyLetter(char chrDrive);

/// Fills the drive FillDisk.strDriveRoot with dummy files of at most dblMaxSizeDummyFile bytes.
/// Reads the free space anew, and plans the files anew. Shows its own messages; the outcome is in
/// FillDisk. The files are flushed: what counts as written is on the disk.
void WriteDummyFiles();
/// F10 was pressed while the disk is being filled: asks. True when it is to end; else F10 is
/// forgotten.
bool CancelFilling();
/// What the length of a dummy file on FillDisk.strDriveRoot is a multiple of, but for the last
/// small one: the drive's real cluster, or the one that purging writes in where that is larger.
std::int64_t DummyClusterSize();
/// Asks the system what is free now, into dblUnfilled and dblKeptBack; what it does not tell is 0.
void ReadUnfilledSpace(const std::string& strRoot);
/// Sets the main window's status line to how much is written and how much is still to be.
void ShowDummyFileProgress();
