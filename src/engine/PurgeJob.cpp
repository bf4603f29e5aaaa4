// The purge of one file from its checks to its end, and how far it is.
#include "engine/PurgeJob.h"

#include "engine/PurgeBegin.h"
#include "engine/PurgeEnd.h"
#include "engine/PurgePass.h"
#include "support/Check.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

ShareOfPurge shareOfPurge; ///< empty when nothing is under way

/// Whether to go on after a pass; the time until that is known is not the job's.
bool GoesOn(PurgeJob& job) {
    const double began = SecondsNow();
    const bool blnGoesOn = !job.GoOn || job.GoOn();
    job.Seconds -= SecondsNow() - began;
    return blnGoesOn;
}

/// The pass loop.
std::int16_t OverwriteAllPasses(PurgeJob& job) {
    while (job.PassesDone < job.Passes) {
        const std::int16_t result = OverwritePass(job);
        if (result != PurgeDone)
            return result;
        ++job.PassesDone;
        if (job.PassesDone < job.Passes && !GoesOn(job))
            return PurgeStopped;
    }
    return PurgeDone;
}

} // namespace

double SecondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

ShareOfPurge TellPurgeShareBy(ShareOfPurge share) {
    return std::exchange(shareOfPurge, std::move(share));
}

void RunPurgeJob(PurgeJob& job) {
    Check(job.Targets.empty(), "a job runs once");
    ShareOfPurge outer = TellPurgeShareBy([&job] {
        return job.BytesToOverwrite > 0 ? job.BytesOverwritten / job.BytesToOverwrite : 0;
    });
    job.Seconds = -SecondsNow();
    if (BeginPurge(job))
        job.Result = OverwriteAllPasses(job);
    if (job.Result == PurgeDone && job.PassesDone > 0)
        job.Result = EndPurge(job);
    SettlePurge(job);
    TellPurgeShareBy(std::move(outer));
    job.Seconds += SecondsNow();
}

double PurgeShareDone() {
    return shareOfPurge ? std::min(shareOfPurge(), 1.0) : 0;
}
