// Gathers files up to the size that the drive is worth, purges them, and hands them on in order.
#include "report/run/FileGroup.h"

#include "engine/GroupPace.h"
#include "engine/PurgeGroup.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunJob.h"

#include <algorithm>
#include <utility>

namespace {

/// Of all files of a group, bytes: a pass must not keep a stop waiting.
constexpr double dblMostBytes = 8 << 20;

} // namespace

bool IsForGroup(const std::string& strPath, std::int64_t lngLength) {
    return lngLength <= lngLongestInGroup && !currentRun.Request.How.blnPurgeSlackOnly &&
           ThreadsForGroup(strPath) > 1;
}

void GatherFile(FileGroup& group, const std::string& strPath, std::int64_t lngLength) {
    group.files.push_back({strPath, lngLength});
    group.dblBytes += static_cast<double>(lngLength);
    if (group.files.size() >= FilesForGroup(strPath) || group.dblBytes >= dblMostBytes)
        PurgeGathered(group);
}

void PurgeGathered(FileGroup& group) {
    const std::vector<GatheredFile> files = std::exchange(group.files, {});
    const double dblBytes = std::exchange(group.dblBytes, 0);
    if (files.empty() || !group.goOn(0, files.front().strPath))
        return;
    if (files.size() == 1)
        return group.purgeAlone(files.front());
    PurgeGroup purge;
    const std::string& strFirst = files.front().strPath;
    purge.Threads = std::min(ThreadsForGroup(strFirst), static_cast<int>(files.size()));
    for (const GatheredFile& file : files)
        purge.Jobs.push_back({JobOfRun(file.strPath)});
    purge.GoOn = [&](int passesDone) { return group.goOn(passesDone, strFirst); };
    NoteFilesBegun(dblBytes, std::ssize(files));
    RunPurgeGroup(purge);
    NoteFilesOverwritten();
    std::size_t inGroup = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        GroupedJob& grouped = purge.Jobs[i];
        if (grouped.Alone) {
            group.purgeAlone(files[i]);
            continue;
        }
        inGroup += grouped.Job.Result == PurgeDone ? 1 : 0;
        CountJob(grouped.Job);
        group.onPurged(grouped.Job, files[i]);
    }
    if (inGroup == files.size()) // what failed tells nothing about the drive
        NoteGroupPace(strFirst, ThreadsForGroup(strFirst), files.size(), purge.Seconds);
}
