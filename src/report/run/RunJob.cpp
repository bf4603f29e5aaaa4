// One purge job as a part of a run: its clock, its counts, its list of failures.
#include "report/run/RunJob.h"

#include "engine/FileProc.h"
#include "report/run/RunRecords.h"
#include "support/Check.h"

PurgeJob JobOfRun(const std::string& strPath) {
    Check(currentRun.IsUnderWay(), "files are purged by a run only");
    const PurgeHow& how = currentRun.Request.How;
    PurgeJob job;
    job.Path = strPath;
    job.Type = how.intPurgeType;
    job.Passes = how.intNumberOfPasses;
    job.DeleteAfter = !how.blnDoNotDeletePurgedFiles;
    job.OKReadOnly = how.blnOKToPurgeReadOnlyFiles;
    job.OKSystem = how.blnOKToPurgeSystemFiles;
    job.SlackOnly = how.blnPurgeSlackOnly;
    job.RefuseSeveralNames = true;
    return job;
}

void RunJobOfRun(PurgeJob& job, RunCounts& counts) {
    RunPurgeJob(job);
    if (job.Result == PurgeCannotOpen && IsGone(job.Path))
        job.Result = PurgeVanished;
    if (job.Result == PurgeDone && job.SlackOnly && !job.HasWritten)
        job.Result = PurgeNoSlack; // its length has changed since it was looked at
    counts.blnDataDestroyed = counts.blnDataDestroyed || job.HasWritten;
    if (job.Result == PurgeDone) {
        ++counts.lngNumFilesPurged;
        counts.dblTotalBytesPurged += static_cast<double>(job.Length);
    }
}

void NoteJob(const PurgeJob& job) {
    NoteRecord({job.Path, FileFate::Begun, job.Length, job.Result, job.PassesDone, job.Reach,
                job.Trouble});
}
