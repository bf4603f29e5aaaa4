// An overwrite under way, step by step: what OverwriteFile drives.
#pragma once

#include "engine/OverwriteFile.h"
#include "engine/ReadBack.h"
#include "platform/Files.h"
#include "ui/Interface.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// `length` or the next multiple of `unit`.
inline std::int64_t RoundedUp(std::int64_t length, std::int64_t unit) {
    return (length + unit - 1) / unit * unit;
}

/// An overwrite under way. All but the atomics belongs to the steps until they have ended.
struct Overwrite {
    PurgeJob& Job;
    PurgeTarget& Target;
    std::int64_t Slack = 0; ///< in slack mode: bytes up to the end of the cluster
    std::string Run{};      ///< what one call writes: the block, as often as will do
    std::int64_t BlockSize = 0, BlocksPerRun = 1;
    ui::Effort Effort = ui::Effort::Long;
    bool FirstBlockAlone = false;
    std::vector<platform::Range> Ranges{}; ///< what is to be written; known once it is open
    std::size_t RangeIndex = 0;
    std::int64_t Position = 0; ///< of the next write
    std::int64_t FileEnd = 0;  ///< the length that the file has grown to, when all goes well
    bool Written = false;      ///< something was, or was tried
    bool EndUnknown = false;   ///< a write failed half-way
    bool Flushed = false;
    ReadingBack Reading{};
    std::atomic<std::int64_t> BytesRead = 0;
    std::atomic<std::int64_t> Blocks = 0, BlocksDone = 0; ///< the former estimated at first
    std::atomic<bool> Ended = false;                      ///< after its last step, not by a stop
    platform::File File{};
    platform::Fault Opening = platform::Fault::None;
    std::int16_t Result = 0; ///< PurgeResult
};

/// Opens a file or a stream for change, and asks it what it is. AccessDenied for a link that
/// somebody has put in its place since it was looked at: what that leads to was not chosen.
platform::Fault OpenTarget(const PurgeTarget& target, platform::File& file,
                           platform::OpenFileFacts& facts);
/// One step: opens the file, writes a run, reads one back, or flushes and closes; false after the
/// last. May run on the I/O thread.
bool StepOverwrite(Overwrite& work);
/// Ends an overwrite between two steps: flushes, and closes the file.
void FinishOverwrite(Overwrite& work);
