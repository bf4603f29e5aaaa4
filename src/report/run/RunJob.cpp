// One purge job in a run: what it is to do, its counts, its record.
#include "report/run/RunJob.h"

#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "engine/GroupPace.h"
#include "engine/PurgeGroup.h"
#include "support/Check.h"
#include "support/Numbers.h"

namespace {

/// Where a verification failed, what has changed, and where the file is left under another name.
std::string RemarkOf(const PurgeJob& job) {
    std::string text;
    if (job.Result == PurgeNotVerified) {
        text = " at byte " + GroupedDigits(job.DifferentAt);
        if (const std::size_t colon = job.DifferentPath.find(':', 2); colon != std::string::npos)
            text += " of its stream " + job.DifferentPath.substr(colon + 1);
    }
    if (job.Result == PurgeFileChanged && job.RefuseSeveralNames && job.HardLinks > 1)
        text = " (it has another name now)";
    return job.LeftAs.empty() ? text : text + ", left as " + job.LeftAs;
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
    job.Options = how.Options;
    return job;
}

void RunJobOfRun(PurgeJob& job, RunCounts& counts) {
    RunPurgeJob(job);
    if (job.Result == PurgeDone && !job.SlackOnly && job.Length <= lngLongestInGroup)
        NoteGroupPace(job.Path, 1, 1, job.Seconds);
    CountJob(job, counts);
}

void CountJob(PurgeJob& job, RunCounts& counts) {
    if (job.Result == PurgeCannotOpen)
        WorkOnDrive(job.Path, [&] {
            if (IsGone(job.LeftAs.empty() ? job.Path : job.LeftAs))
                job.Result = PurgeVanished;
        });
    if (job.Result == PurgeDone && job.SlackOnly && !job.HasWritten)
        job.Result = PurgeNoSlack; // the length has changed since the folder was listed
    counts.blnDataDestroyed = counts.blnDataDestroyed || job.HasWritten;
    if (job.Result == PurgeDone) {
        ++counts.lngNumFilesPurged;
        counts.dblTotalBytesPurged += static_cast<double>(job.Length);
    }
}

FileRecord RecordOfJob(const PurgeJob& job) {
    FileRecord record{job.Path,       FileFate::Begun, job.Length, job.Result,
                      job.PassesDone, job.Reach,       job.Trouble};
    record.HasReadBack = job.HasReadBack;
    record.Remark = RemarkOf(job);
    // The program was ended: the file is still there, and its data are destroyed in part.
    if (job.Result == PurgeStopped && job.PassesDone == 0 && job.HasWritten)
        record.Remark = " during pass 1";
    return record;
}

void NoteJob(const PurgeJob& job) {
    NoteRecord(RecordOfJob(job));
}
