// One overwrite of one file, or of one of its streams.
#pragma once

#include "engine/OverwriteBuffers.h"
#include "engine/PurgeJob.h"

/// Overwrites a file up to the end of its last cluster, or only its slack, and forces that to the
/// disk. The file's own length is the one that it has when it
/// is open; what it was left with the last time tells whether it has changed meanwhile. 0 done; −2
/// the file cannot be opened, −3 a write failed, −7 what was written could not be forced to the
/// disk; −13 refused for its several names; −11 slack mode: the length could not be restored; −12
/// the user stopped the free-space purge; −15 the disk is full; −16 slack mode: the file has
/// changed and was left alone; −19 job.VerifiesNow, and what is read back is something else, or
/// cannot be read. The file is closed on every way out. In slack mode it has its own
/// length again, else it keeps the length to which it has grown.
std::int16_t OverwriteFileOnce(PurgeJob& job, PurgeTarget& target, std::int16_t value,
                               const OverwriteBlocks& blocks);
/// The same at once, on any thread: neither waits for a file that is held nor tells how far it is.
std::int16_t OverwriteFileAtOnce(PurgeJob& job, PurgeTarget& target, std::int16_t value,
                                 const OverwriteBlocks& blocks);
