// Purges files pass by pass on a few threads: while one waits for its flush, others are written.
#include "engine/PurgeGroup.h"

#include "drives/DriveWork.h"
#include "engine/PurgeBegin.h"
#include "engine/PurgeEnd.h"
#include "engine/PurgePass.h"
#include "platform/Files.h"
#include "session/Session.h"
#include "support/Check.h"
#include "support/Numbers.h"
#include "support/Workers.h"
#include "ui/Interface.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <utility>

namespace {

/// A job that takes part in the passes.
struct Member {
    GroupedJob* Grouped = nullptr;
    std::int16_t Outcome = PurgeStopped; ///< of the pass under way
};

/// Checks one file. What is not plain is left to be purged alone, and nothing has changed yet.
bool Joins(GroupedJob& grouped) {
    PurgeJob& job = grouped.Job;
    // The attribute of a read-only file must not be lost when something else is in the way.
    const bool blnReadOnly = std::exchange(job.OKReadOnly, false);
    bool blnJoins = BeginPurge(job);
    job.OKReadOnly = blnReadOnly;
    std::int64_t lngLength = 0;
    for (const PurgeTarget& target : job.Targets)
        lngLength += target.Length;
    return blnJoins && lngLength <= lngLongestInGroup;
}

/// One pass over all members, until the program ends.
void RunPass(PurgeGroup& group, std::vector<Member>& members, std::atomic<std::int64_t>& done) {
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> blnEnding = false;
    const auto work = [&] {
        ReseedRandom();
        for (std::size_t i = next++; i < members.size() && !blnEnding; i = next++) {
            PurgeJob& job = members[i].Grouped->Job;
            members[i].Outcome = OverwritePassAtOnce(job);
            if (members[i].Outcome == PurgeDone && ++job.PassesDone == job.Passes)
                DeleteAtOnce(job);
            ++done;
        }
    };
    RunStepsOnDrive(
        members.front().Grouped->Job.Path, ui::Effort::Long,
        [&] {
            RunSideBySide(group.Threads, work);
            return false;
        },
        [&] {
            blnEnding = ui::Ending() && blnStop;
            return true;
        });
}

/// What the pass has left to this thread. False: the job takes part no more.
bool EndPass(Member& member) {
    PurgeJob& job = member.Grouped->Job;
    const std::int16_t outcome = std::exchange(member.Outcome, PurgeStopped);
    if (outcome == PurgeDone)
        return true;
    job.Result = outcome;
    member.Grouped->Alone = !job.HasWritten && outcome != PurgeStopped;
    const bool blnHeld =
        outcome == PurgeCannotOpen && job.Trouble == platform::Fault::SharingViolation;
    if (member.Grouped->Alone || !(blnHeld || outcome == PurgeSeveralNames))
        return false;
    job.Result = OverwritePass(job);
    if (job.Result == PurgeDone)
        ++job.PassesDone;
    return job.Result == PurgeDone;
}

} // namespace

void RunPurgeGroup(PurgeGroup& group) {
    double dblBegan = SecondsNow();
    std::vector<Member> members;
    for (GroupedJob& grouped : group.Jobs) {
        Check(grouped.Job.Targets.empty(), "a job runs once");
        grouped.Alone = !Joins(grouped);
        if (!grouped.Alone)
            members.push_back({&grouped});
        ui::DoEvents();
    }
    const int passes = group.Jobs.empty() ? 0 : group.Jobs.front().Job.Passes;
    std::atomic<std::int64_t> done = 0;
    const auto all = static_cast<double>(group.Jobs.size()) * passes;
    ShareOfPurge outer = TellPurgeShareBy([&done, all] { return static_cast<double>(done) / all; });
    for (int passesDone = 0; passesDone < passes && !members.empty(); ++passesDone) {
        const double dblPaused = SecondsNow();
        const bool blnGoesOn = !group.GoOn || group.GoOn(passesDone);
        dblBegan += SecondsNow() - dblPaused;
        if (!blnGoesOn) {
            for (const Member& member : members)
                member.Grouped->Job.Result = PurgeStopped;
            break;
        }
        RunPass(group, members, done);
        std::erase_if(members, [](Member& member) { return !EndPass(member); });
    }
    for (GroupedJob& grouped : group.Jobs) {
        if (grouped.Alone)
            continue;
        if (grouped.Job.Result == PurgeDone)
            grouped.Job.Result = EndPurge(grouped.Job);
        SettlePurge(grouped.Job);
        ui::DoEvents();
    }
    TellPurgeShareBy(std::move(outer));
    group.Seconds = SecondsNow() - dblBegan;
}
