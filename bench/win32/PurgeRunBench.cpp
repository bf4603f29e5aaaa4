// What a purge run of the report window costs beyond the purge engine alone.
//
//   nullwright_purgerunbench FOLDER [hidden] [FILES [ROUNDS [KIB]]]
//
// Makes, in a folder of its own below FOLDER, two folders of FILES files of KIB KiB (10,000 of 4),
// and lets a purge run purge the one, from a handler, as runs always are, in the shown window
// ("hidden": without it). Before every 50 files of the run, or before every single one when they
// are of 1 MiB or more, the engine alone purges as many of the other folder, in its listed order.
// So whatever else the disk has to do falls on both alike; to compare whole runs one after another
// tells nothing, as one and the same takes now half the time, now twice.
//
// What the run takes is all the time from its start to its end, less that of the engine's turns. In
// these the run's clocks stand still, and its windows get no time: that belongs to the run.
//
// Prints the two times of each round, their ratio, and the ratio of the sums over all rounds, which
// is to be at most 1.05; the exit code is 1 when it is above. Told, too: what the report's window
// takes after the run for the lines that it lacks, when all of them are asked for at once.
#include "bench/runs/Tools.h"
#include "engine/FilePurge.h"
#include "engine/GroupPace.h"
#include "platform/Folders.h"
#include "report/BatchDriver.h"
#include "report/frmReport.h"
#include "report/run/Run.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/frmMain.h"
#include "shell/frmMainLayout.h"
#include "ui/Interface.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

// The linker leads the program's calls of these here, and gives the true ones other names. See the
// CMakeLists.txt of the benches.
void TruePurge(PurgeJob& job) __asm__("__real_" NW_PURGE_SYMBOL);
void PurgeInTurn(PurgeJob& job) __asm__("__wrap_" NW_PURGE_SYMBOL);
// Messages and windows: the engine's calls between its steps, and what runs of many steps do.
void TrueDoEvents() __asm__("__real_" NW_EVENTS_SYMBOL);
void DoEventsOfRun() __asm__("__wrap_" NW_EVENTS_SYMBOL);
void TruePumpQueue() __asm__("__real_" NW_PUMP_SYMBOL);
void PumpQueueOfRun() __asm__("__wrap_" NW_PUMP_SYMBOL);
void TrueSyncAll(int how) __asm__("__real_" NW_SYNC_SYMBOL);
void SyncAllOfRun(int how) __asm__("__wrap_" NW_SYNC_SYMBOL);
// The clocks.
using TicksCall = ULONGLONG(WINAPI*)();
using CounterCall = BOOL(WINAPI*)(LARGE_INTEGER*);
extern TicksCall ticksOfRun __asm__("__wrap___imp_GetTickCount64");
extern CounterCall trueCounter __asm__("__real___imp_QueryPerformanceCounter");
extern CounterCall counterOfRun __asm__("__wrap___imp_QueryPerformanceCounter");

namespace {

constexpr double worstRatio = 1.05;

std::size_t portion = 50;       // files of one turn
std::vector<std::string> paths; // of the engine's turns
std::size_t purgedInTurns = 0;  // of these
std::size_t purgedByRun = 0;
// Of the performance counter.
LONGLONG countsOfTurns = 0; // in this round
LONGLONG countsBefore = 0;  // in the rounds before
LONGLONG turnBegun = 0;
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

/// What the run takes for the time.
LONGLONG CountsOfRun() {
    return (inTurn ? turnBegun : Counts()) - countsBefore - countsOfTurns;
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
    turnBegun = Counts();
    inTurn = true;
    for (const std::size_t end = std::min(purgedInTurns + portion, paths.size());
         purgedInTurns < end; ++purgedInTurns) {
        PurgeJob job{paths[purgedInTurns]};
        job.DeleteAfter = true;
        TruePurge(job);
        if (job.Result != PurgeDone)
            bench::Give("the engine failed");
    }
    inTurn = false;
    countsOfTurns += Counts() - turnBegun;
}

struct Round { // seconds
    double Engine = 0, Run = 0, OlderLines = 0;
};

double FillReport() {
    const HWND report = FindWindowW(nullptr, L"Report");
    const LONGLONG begun = Counts();
    SendMessageW(FindWindowExW(report, nullptr, L"Edit", nullptr), WM_GETTEXTLENGTH, 0, 0);
    return Seconds(Counts() - begun);
}

Round OneRound(const std::string& top, std::size_t files, const std::string& content) {
    const std::string folders[] = {top + "\\engine", top + "\\run"};
    for (std::size_t i = 0; i < files; ++i)
        for (const std::string& folder : folders)
            bench::MakeFile(bench::Numbered(folder + "\\file", static_cast<int>(i)) + ".txt",
                            content);
    paths = ListedFiles(folders[0]);
    purgedInTurns = purgedByRun = 0;
    countsBefore += std::exchange(countsOfTurns, 0);
    currentRun.Request.strDirPath = folders[1] + "\\";
    currentRun.Request.strFilespec = "*.*";
    currentRun.Request.blnPurgeFiles = true;
    ResetReportWindow(); // as the command does before it shows the report
    ui::Repaint(frmReport);
    const LONGLONG begun = Counts();
    ProcessFiles();
    const LONGLONG all = Counts() - begun;
    if (currentRun.Counts.lngNumFilesPurged != static_cast<std::int64_t>(files) ||
        purgedByRun != files || purgedInTurns != files)
        bench::Give("not everything was purged");
    return {Seconds(countsOfTurns), Seconds(all - countsOfTurns), FillReport()};
}

double Compare(const std::string& top, std::size_t files, int rounds, const std::string& content) {
    std::vector<double> ratios, olderLines;
    Round sums;
    for (int i = 0; i <= rounds; ++i) {
        const Round round = OneRound(top, files, content);
        if (i == 0) // it warms up
            continue;
        ratios.push_back(round.Run / round.Engine);
        olderLines.push_back(round.OlderLines);
        sums.Engine += round.Engine;
        sums.Run += round.Run;
        std::printf("engine alone %.3f s, purge run %.3f s, ratio %.3f\n", round.Engine, round.Run,
                    ratios.back());
        std::fflush(stdout);
    }
    const double ratio = sums.Run / sums.Engine;
    std::printf("in all %.3f s and %.3f s, ratio %.3f (bar %.2f); median %.3f\n", sums.Engine,
                sums.Run, ratio, worstRatio, bench::Median(ratios));
    std::printf("for the older lines of the report, after the run: %.3f s\n",
                bench::Median(olderLines));
    return ratio;
}

} // namespace

void PurgeInTurn(PurgeJob& job) {
    if (purgedByRun++ % portion == 0)
        PurgeByEngine();
    TruePurge(job);
}

void DoEventsOfRun() {
    if (!inTurn)
        TrueDoEvents();
}

void PumpQueueOfRun() {
    if (!inTurn)
        TruePumpQueue();
}

void SyncAllOfRun(int how) {
    if (!inTurn)
        TrueSyncAll(how);
}

TicksCall ticksOfRun = []() WINAPI -> ULONGLONG {
    return static_cast<ULONGLONG>(CountsOfRun() * 1000 / CountsPerSecond());
};

CounterCall counterOfRun = [](LARGE_INTEGER* counter) WINAPI -> BOOL {
    counter->QuadPart = CountsOfRun();
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
    for (const std::string& folder : {top + "\\engine", top + "\\run"})
        if (!ListedFiles(folder).empty())
            bench::Give(folder + " is not empty");
    intGroupThreads = 1; // the engine's calls are told apart file by file
    LoadMainForm();
    Initialization();
    InitializePurgeOptions();
    frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = 0; // one random pass
    LoadReportForm();
    double ratio = 0;
    frmReport.Activate = [&] { ratio = Compare(top, files, rounds, content); };
    if (blnHidden) {
        frmReport.Activate();
    } else {
        ui::Show(frmMain);
        ui::Show(frmReport);
    }
    for (const std::string& folder : {top + "\\engine", top + "\\run", top})
        bench::Need(platform::RemoveFolder(folder), folder);
    return ratio <= worstRatio ? 0 : 1;
}
