// The overwrites of one pass over a file and its streams.
#include "engine/PurgePass.h"

#include "engine/OverwriteBuffers.h"
#include "engine/OverwriteFile.h"
#include "engine/PurgeTypes.h"
#include "ui/Interface.h"

namespace {

using Overwriter = std::int16_t (*)(PurgeJob& job, PurgeTarget& target, std::int16_t value,
                                    const OverwriteBlocks& blocks);

std::int16_t OverwriteOrAsk(PurgeJob& job, PurgeTarget& target, std::int16_t value,
                            const OverwriteBlocks& blocks) {
    std::int16_t result = OverwriteFileOnce(job, target, value, blocks);
    // Asked about at every opening: the file may have got another name meanwhile.
    if (result == PurgeSeveralNames && job.MayPurgeAllNames && job.MayPurgeAllNames()) {
        job.RefuseSeveralNames = false;
        result = OverwriteFileOnce(job, target, value, blocks);
    }
    return result;
}

std::int16_t RestOfPass(PurgeJob& job, Overwriter overwrite) {
    const OverwriteBlocks blocks = PrepareOverwriteBlocks(job.Clusters.Block);
    const auto values = OverwritesOfType(job.Type);
    for (; job.NextOverwrite < values.size(); ++job.NextOverwrite, job.NextTarget = 0) {
        job.VerifiesNow = job.Options.Verify && job.PassesDone + 1 >= job.Passes &&
                          job.NextOverwrite + 1 == values.size();
        for (; job.NextTarget < job.Targets.size(); ++job.NextTarget) {
            PurgeTarget& target = job.Targets[job.NextTarget];
            if (job.SlackOnly && !HasSlack(target.Length, job.Clusters.Covered))
                target.NoSlack = true;
            const std::int16_t result = overwrite(job, target, values[job.NextOverwrite], blocks);
            if (result != PurgeDone)
                return result;
        }
        job.FirstOverwrite = false;
    }
    job.NextOverwrite = 0;
    return PurgeDone;
}

} // namespace

std::int16_t OverwritePass(PurgeJob& job) {
    ui::DoEvents();
    return RestOfPass(job, OverwriteOrAsk);
}

std::int16_t OverwritePassAtOnce(PurgeJob& job) {
    return RestOfPass(job, OverwriteFileAtOnce);
}
