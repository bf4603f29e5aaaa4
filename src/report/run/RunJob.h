// One purge job in a run: what it is to do, its counts, its record.
#pragma once

#include "engine/PurgeJob.h"
#include "report/run/Run.h"
#include "report/run/RunRecords.h"

/// Creates a job for a file by the run's settings. It deletes the file unless they say otherwise.
PurgeJob JobOfRun(const std::string& strPath);
/// Runs a job and counts it.
void RunJobOfRun(PurgeJob& job, RunCounts& counts = currentRun.Counts);
/// Counts a job that was run in `counts`. The result is PurgeVanished when the file no longer
/// exists, and PurgeNoSlack when there was no slack to overwrite.
void CountJob(PurgeJob& job, RunCounts& counts = currentRun.Counts);
/// The record of a job that was run.
FileRecord RecordOfJob(const PurgeJob& job);
/// Keeps it.
void NoteJob(const PurgeJob& job);
