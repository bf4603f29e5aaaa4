// What a purge run of the report window costs beyond the purge engine alone.
//
//   nullwright_purgerunbench FOLDER [hidden] [FILES [ROUNDS [KIB]]]
//
// Makes, in a folder of its own below FOLDER, two folders of FILES files of KIB KiB (10,000 of 4),
// and lets a purge run purge the one, from a handler, as runs always are, in the shown window
// ("hidden": without it). Before every 50 files of the run, or every file from 1 MiB on, the engine
// alone purges as many of the other folder, in its listed order. So whatever else the disk has to
// do falls on both alike; to compare whole runs one after another tells nothing, as one and the
// same takes now 0.8 s, now 1.7.
//
// What the run takes is all the time from its start to its end, less that of the engine's turns. In
// these the run's clocks stand still, and its windows get no time: that belongs to the run. (They
// do get a little while large files are overwritten on the I/O thread.)
//
// Prints the two times of each round, their ratio, and the ratio of the sums over all rounds, which
// is to be at most 1.05; the exit code is 1 when it is above.
#include "bench/win32/Tools.h"
#include "engine/FilePurge.h"
#include "platform/Folders.h"
#include "report/BatchDriver.h"
#include "report/frmReport.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/Session.h"
#include "ui/Interface.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

// The linker leads the program's calls of these here, and gives the true ones other names. See the
// CMakeLists.txt of the benches.
bool TruePurge(const std::string& path, std::int16_t purgeTypeIndex, std::int16_t numPasses,
               bool deleteAfter, bool okReadOnly, bool okSystem, bool slackOnly,
               std::int32_t reserved, std::int16_t& resultCode,
               std::uint32_t* reach) __asm__("__real_" NW_PURGE_SYMBOL);
bool PurgeInTurn(const std::string& path, std::int16_t purgeTypeIndex, std::int16_t numPasses,
                 bool deleteAfter, bool okReadOnly, bool okSystem, bool slackOnly,
                 std::int32_t reserved, std::int16_t& resultCode,
                 std::uint32_t* reach) __asm__("__wrap_" NW_PURGE_SYMBOL);
void TrueDoEvents() __asm__("__real_" NW_EVENTS_SYMBOL);
void DoEventsOfRun() __asm__("__wrap_" NW_EVENTS_SYMBOL);
using TicksCall = ULONGLONG(WINAPI*)();
using CounterCall = BOOL(WINAPI*)(LARGE_INTEGER*);
extern TicksCall trueTicks __asm__("__real___imp_GetTickCount64");
extern TicksCall ticksOfRun __asm__("__wrap___imp_GetTickCount64");
extern CounterCall trueCounter __asm__("__real___imp_QueryPerformanceCounter");
extern CounterCall counterOfRun __asm__("__wrap___imp_QueryPerformanceCounter");

namespace {

constexpr double worstRatio = 1.05;

std::size_t portion = 50;       // files of one turn
std::vector<std::string> paths; // of the engine's turns
std::size_t purgedInTurns = 0;  // of these
std::size_t purgedByRun = 0;
LONGLONG countsOfTurns = 0; // of the performance counter, in this round
LONGLONG countsBefore = 0;  // in the rounds before
bool inTurn = false;

LONGLONG Counts() {
    LARGE_INTEGER counter{};
    trueCounter(&counter);
    return counter.QuadPart;
}

LONGLONG CountsPerSecond() {
    static const LONGLONG frequency = [] {
        LARGE_INTEGER read{};
        QueryPerformanceFrequency(&read);
        return read.QuadPart;
    }();
    return frequency;
}

double Seconds(LONGLONG counts) {
    return static_cast<double>(counts) / static_cast<double>(CountsPerSecond());
}

std::vector<std::string> ListedFiles(const std::string& folder) {
    std::vector<std::string> listed;
    bench::Need(platform::EnumerateFolder(folder,
                                          [&](const platform::FolderEntry& entry) {
                                              listed.push_back(folder + "\\" + entry.Name);
                                              return true;
                                          }),
                folder);
    return listed;
}

void PurgeByEngine() {
    inTurn = true;
    const LONGLONG begun = Counts();
    for (const std::size_t end = std::min(purgedInTurns + portion, paths.size());
         purgedInTurns < end; ++purgedInTurns) {
        std::int16_t result = 0;
        if (!TruePurge(paths[purgedInTurns], 0, 1, true, false, false, false, 4096, result,
                       nullptr))
            bench::Give("the engine failed");
    }
    countsOfTurns += Counts() - begun;
    inTurn = false;
}

struct Round {
    double Engine = 0, Run = 0; // seconds
};

Round OneRound(const std::string& top, std::size_t files, const std::string& content) {
    const std::string folders[] = {top + "\\engine", top + "\\run"};
    for (std::size_t i = 0; i < files; ++i)
        for (const std::string& folder : folders)
            bench::MakeFile(bench::Numbered(folder + "\\file", static_cast<int>(i)) + ".txt",
                            content);
    paths = ListedFiles(folders[0]);
    purgedInTurns = purgedByRun = 0;
    countsBefore += std::exchange(countsOfTurns, 0);
    frmReport.strDirPath = folders[1] + "\\";
    frmReport.strFilespec = "*.*";
    frmReport.blnPurgeFiles = true;
    const LONGLONG begun = Counts();
    ProcessFiles();
    const LONGLONG all = Counts() - begun;
    if (frmReport.lngNumFilesPurged != static_cast<std::int64_t>(files) || purgedByRun != files ||
        purgedInTurns != files)
        bench::Give("not everything was purged");
    return {Seconds(countsOfTurns), Seconds(all - countsOfTurns)};
}

double Compare(const std::string& top, std::size_t files, int rounds, const std::string& content) {
    std::vector<double> ratios;
    Round sums;
    for (int i = 0; i <= rounds; ++i) {
        const Round round = OneRound(top, files, content);
        if (i == 0) // it warms up
            continue;
        ratios.push_back(round.Run / round.Engine);
        sums.Engine += round.Engine;
        sums.Run += round.Run;
        std::printf("engine alone %.3f s, purge run %.3f s, ratio %.3f\n", round.Engine, round.Run,
                    ratios.back());
        std::fflush(stdout);
    }
    const double ratio = sums.Run / sums.Engine;
    std::printf("in all %.3f s and %.3f s, ratio %.3f (bar %.2f); median %.3f\n", sums.Engine,
                sums.Run, ratio, worstRatio, bench::Median(ratios));
    return ratio;
}

} // namespace

bool PurgeInTurn(const std::string& path, std::int16_t purgeTypeIndex, std::int16_t numPasses,
                 bool deleteAfter, bool okReadOnly, bool okSystem, bool slackOnly,
                 std::int32_t reserved, std::int16_t& resultCode, std::uint32_t* reach) {
    if (purgedByRun++ % portion == 0)
        PurgeByEngine();
    return TruePurge(path, purgeTypeIndex, numPasses, deleteAfter, okReadOnly, okSystem, slackOnly,
                     reserved, resultCode, reach);
}

void DoEventsOfRun() {
    if (!inTurn)
        TrueDoEvents();
}

TicksCall ticksOfRun = []() WINAPI -> ULONGLONG {
    return trueTicks() - static_cast<ULONGLONG>(1000 * Seconds(countsBefore + countsOfTurns));
};

CounterCall counterOfRun = [](LARGE_INTEGER* counter) WINAPI -> BOOL {
    counter->QuadPart = Counts() - countsBefore - countsOfTurns;
    return TRUE;
};

int main(int argc, char** argv) {
    if (argc < 2)
        bench::Give("arguments: FOLDER [hidden] [FILES [ROUNDS [KIB]]]");
    const bool blnHidden = argc > 2 && std::string(argv[2]) == "hidden";
    const auto number = [&](int place, int otherwise) {
        place += blnHidden ? 1 : 0;
        return argc > place ? std::max(1, std::atoi(argv[place])) : otherwise;
    };
    const auto files = static_cast<std::size_t>(number(2, 10000));
    const int rounds = number(3, 5);
    const std::string content(static_cast<std::size_t>(number(4, 4)) << 10, 'x');
    if (content.size() >= 1 << 20)
        portion = 1;
    if (!PurgeLibraryReady())
        bench::Give("nwaux6.dll must lie beside this program");
    const std::string top = std::string(argv[1]) + "\\nullwright_scratch";
    for (const std::string& folder : {top, top + "\\engine", top + "\\run"})
        bench::Need(platform::MakeFolder(folder), folder);
    Initialization();
    InitializePurgeOptions();
    frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = 0; // one random pass
    LoadReportForm();
    double ratio = 0;
    frmReport.Activate = [&] { ratio = Compare(top, files, rounds, content); };
    if (blnHidden)
        frmReport.Activate();
    else
        ui::Show(frmReport);
    for (const std::string& folder : {top + "\\engine", top + "\\run", top})
        bench::Need(platform::RemoveFolder(folder), folder);
    return ratio <= worstRatio ? 0 : 1;
}
