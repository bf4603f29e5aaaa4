// One purge job as a part of a run: its clock, its counts, its list of failures.
#include "report/run/RunJob.h"

#include "engine/FileProc.h"
#include "support/Check.h"

namespace {

/// What is no failure: nothing was to be done, nobody could have done it, or the user stopped it.
bool IsFailure(std::int16_t result) {
    return result < 0 && result != PurgeStopped && result != PurgeNoSlack &&
           result != PurgeVanished && result != PurgeNoPasses;
}

} // namespace

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
    } else if (IsFailure(job.Result)) {
        currentRun.Failures.push_back({job.Path, job.Result, job.Trouble});
    }
}
