// Writes and purges small files of the speed test. They are named as dummies, so that they are
// known as ours after a crash.
#include "disk/SmallFileTest.h"

#include "disk/Folder.h"
#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "engine/GroupPace.h"
#include "engine/PurgeGroup.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "report/run/RunJob.h"
#include "session/Session.h"
#include "settings/frmTypeOfPurge.h"
#include "ui/Interface.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr std::size_t intMostFiles = 256;
constexpr double dblMostSeconds = 1;
constexpr double dblSecondsPerDay = 86400;
constexpr std::int64_t lngFirstNumber = 1000; ///< behind the dummy's own

bool WriteSmallFile(const std::string& path) {
    auto fault = platform::Fault::None;
    WorkOnDrive(path, [&] {
        platform::File file;
        fault = platform::OpenFile(path, platform::Access::CreateNew, file);
        if (Failed(fault))
            return;
        const std::string bytes(intSmallFileLength, 's');
        fault = platform::WriteBytes(file, bytes.data(), bytes.size());
        const platform::Fault closing = platform::CloseFile(file);
        fault = Failed(fault) ? fault : closing;
    });
    return !Failed(fault);
}

PurgeJob JobFor(const std::string& path) {
    PurgeJob job = JobOfRun(path);
    job.DeleteAfter = true;
    job.SlackOnly = job.RefuseSeveralNames = false;
    job.Options = {};
    return job;
}

/// All of them, or false.
bool PurgeSmallFiles(const std::vector<std::string>& paths, int threads) {
    PurgeGroup group;
    group.Threads = threads;
    for (const std::string& path : paths)
        group.Jobs.push_back({JobFor(path)});
    if (threads > 1) {
        RunPurgeGroup(group);
    } else {
        RunPurgeJob(group.Jobs.front().Job);
        group.Seconds = group.Jobs.front().Job.Seconds;
    }
    const bool blnAll =
        std::all_of(group.Jobs.begin(), group.Jobs.end(), [](const GroupedJob& grouped) {
            return !grouped.Alone && grouped.Job.Result == PurgeDone;
        });
    if (blnAll)
        NoteGroupPace(paths.front(), threads, paths.size(), group.Seconds);
    return blnAll;
}

double SecondsSince(double dblBegan) {
    const double dblSeconds = platform::SecondsSinceMidnight() - dblBegan;
    return dblSeconds < 0 ? dblSeconds + dblSecondsPerDay : dblSeconds;
}

} // namespace

double SecondsForSmallFile(const std::string& strFolder) {
    double dblSeconds = 0;
    std::size_t files = 0;
    bool blnAll = true;
    while (blnAll && files < intMostFiles && dblSeconds < dblMostSeconds && !blnStop) {
        const int threads = ThreadsForGroup(strFolder);
        std::vector<std::string> paths;
        for (std::size_t i = 0; blnAll && i < (threads > 1 ? FilesForGroup(strFolder) : 1); ++i) {
            paths.push_back(DummyFilePath(strFolder, strDummyFileFolderStub,
                                          lngFirstNumber + static_cast<std::int64_t>(i)));
            blnAll = WriteSmallFile(paths.back());
        }
        const double dblBegan = platform::SecondsSinceMidnight();
        blnAll = blnAll && PurgeSmallFiles(paths, threads);
        dblSeconds += SecondsSince(dblBegan);
        files += paths.size();
        for (const std::string& path : paths)
            if (!blnAll)
                WorkOnDrive(path,
                            [&] { (void)DeleteFileClearingAttributes(path, true, true, true); });
        ui::DoEvents();
    }
    return blnAll && files > 0 && !blnStop
               ? dblSeconds / static_cast<double>(files) / GetNumOverwrites()
               : 0;
}
