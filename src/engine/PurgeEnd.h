// The end of a file's purge: the file goes, or has its own length again.
#pragma once

#include "engine/PurgeJob.h"

/// After the last pass. What somebody has added in the meantime is overwritten before. The result.
std::int16_t EndPurge(PurgeJob& job);
/// Deletes a file that has had all its passes, where nothing else is to be done with it, on any
/// thread; job.Deleted tells whether that worked. Else EndPurge does it.
void DeleteAtOnce(PurgeJob& job);
/// Settles what a job came to, whatever became of it: lengths, attributes, remarks.
void SettlePurge(PurgeJob& job);
