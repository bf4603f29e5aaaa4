// One purge job as a part of a run: its clock, its counts, its list of failures.
#pragma once

#include "engine/PurgeJob.h"
#include "report/run/Run.h"
#include "report/run/RunRecords.h"

/// A job for a file by the run's settings. It deletes the file unless the settings say otherwise.
PurgeJob JobOfRun(const std::string& strPath);
/// Runs a job and counts it in `counts`. Its result says PurgeVanished when the file is gone, and
/// PurgeNoSlack when nothing behind its end was to be written.
void RunJobOfRun(PurgeJob& job, RunCounts& counts = currentRun.Counts);
/// The record of a job that was run.
FileRecord RecordOfJob(const PurgeJob& job);
/// Keeps it.
void NoteJob(const PurgeJob& job);
