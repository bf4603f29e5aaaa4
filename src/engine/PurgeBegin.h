// The beginning of a file's purge: may it be purged, and what belongs to it.
#pragma once

#include "engine/PurgeJob.h"

/// Checks attributes and permissions, makes a read-only file writable, finds the file's streams and
/// what is to be written. True: the passes come next. Else job.Result is what the purge came to.
bool BeginPurge(PurgeJob& job);
