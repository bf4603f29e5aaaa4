// nullwright_diskbench: purging files on a real disk, without Wine: our purge run, GNU shred with
// --remove=unlink, and a plain loop of open, write, flush, close, delete, by turns in one run.
//
//   nullwright_diskbench ROOT [--files n] [--slow-files n] [--size MiB] [--runs n]
//
// ROOT holds the folders C, on the disk that is measured, and S, where a flush takes 5 ms; what is
// missing is left out. Prints the table of docs/performance.md; the exit code is 1 when a bar is
// missed. The last line is our run with and without reading back.
#include "bench/Measure.h"
#include "engine/GroupPace.h"
#include "fakes/ScriptedUser.h"
#include "posix/ScratchRoot.h"
#include "report/frmReport.h"
#include "report/run/Run.h"
#include "settings/frmPurgeConfirmation.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <memory>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

struct Case {
    std::string Drive; ///< "C"
    int Files = 0, Passes = 0;
    std::size_t Bytes = 0; ///< of each file
    int Runs = 0;
};
constexpr int intContenders = 4;

std::string strRoot; ///< of the host
bool blnAllKept = true;

void Require(bool done, const std::string& what) {
    if (done)
        return;
    std::perror(what.c_str());
    std::_Exit(2);
}

std::string Folder(const Case& which) {
    return strRoot + "/" + which.Drive + "/bench";
}

std::vector<std::string> Paths(const Case& which) {
    std::vector<std::string> paths;
    for (int i = 0; i < which.Files; ++i)
        paths.push_back(Folder(which) + "/file" + std::to_string(10000 + i));
    return paths;
}

void Write(int file, std::size_t bytes) {
    static const std::string block(1 << 20, 'p');
    while (bytes > 0) {
        const ssize_t count = write(file, block.data(), std::min(bytes, block.size()));
        Require(count > 0, "write");
        bytes -= static_cast<std::size_t>(count);
    }
}

/// The files, on the disk with all that belongs to them.
void Make(const Case& which) {
    std::filesystem::create_directory(Folder(which));
    for (const std::string& path : Paths(which)) {
        const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        Require(file >= 0, path);
        Write(file, which.Bytes);
        Require(fdatasync(file) == 0 || which.Files > 1, path);
        close(file);
    }
    const int folder = open(Folder(which).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    Require(syncfs(folder) == 0, "syncfs");
    close(folder);
}

void PurgeByRun(const Case& which) {
    const std::string report = posix::PurgeFolder(which.Drive + ":\\bench");
    if (currentRun.Counts.lngNumFilesPurged == which.Files)
        return;
    std::fprintf(stderr, "not everything was purged\n%s\n", report.c_str());
    std::_Exit(2);
}

void PurgeOneByOne(const Case& which) {
    intGroupThreads = 1;
    PurgeByRun(which);
}

void PurgeByShred(const Case& which) {
    std::vector<std::string> arguments = {"shred", "-n", std::to_string(which.Passes),
                                          "--remove=unlink", "--"};
    for (const std::string& path : Paths(which))
        arguments.push_back(path);
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    int status = 1;
    Require(posix_spawnp(&child, "shred", nullptr, nullptr, pointers.data(), environ) == 0,
            "shred");
    Require(waitpid(child, &status, 0) == child && status == 0, "shred");
}

void PurgePlainly(const Case& which) {
    for (const std::string& path : Paths(which)) {
        const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        Require(file >= 0, path);
        for (int pass = 0; pass < which.Passes; ++pass) {
            Require(lseek(file, 0, SEEK_SET) == 0, path);
            Write(file, which.Bytes);
            Require(fdatasync(file) == 0, path);
        }
        Require(close(file) == 0 && unlink(path.c_str()) == 0, path);
    }
}

/// Medians of seconds: our run, shred, the plain loop, our run one at a time.
std::vector<double> Measure(const Case& which) {
    void (*const contenders[intContenders])(const Case&) = {PurgeByRun, PurgeByShred, PurgePlainly,
                                                            PurgeOneByOne};
    std::vector<double> seconds[intContenders];
    // Whoever comes after whom alternates: the disk may still be at work for the one before.
    for (int run = 0; run < which.Runs; ++run)
        for (int turn = 0; turn < intContenders; ++turn) {
            const int next = (turn * (run % 2 == 0 ? 1 : 3) + run) % intContenders;
            Make(which);
            posix::BeginProgram(which.Passes);
            const double start = bench::Seconds();
            contenders[next](which);
            seconds[next].push_back(bench::Seconds() - start);
            Require(std::filesystem::remove(Folder(which)), "something is left");
        }
    std::vector<double> medians;
    for (const auto& times : seconds)
        medians.push_back(bench::Median(times));
    return medians;
}

/// A line of the table; `dblFaster` is how many times as fast as shred it should be, 0: the bar is
/// the plain loop.
void Row(const char* strWhat, const Case& which, double dblFaster) {
    if (!std::filesystem::exists(strRoot + "/" + which.Drive)) {
        std::printf("| %s | not measured: no such drive here | | | | | | |\n", strWhat);
        return;
    }
    const std::vector<double> medians = Measure(which);
    const double dblByShred = medians[1] / medians[0], dblByPlain = medians[0] / medians[2];
    const bool blnKept = (dblFaster > 0 ? dblByShred >= dblFaster : dblByPlain <= 1.05) &&
                         medians[0] <= 1.05 * medians[3];
    char strBar[80];
    if (dblFaster > 0)
        std::snprintf(strBar, sizeof strBar, "at least %.0f times as fast as shred", dblFaster);
    else
        std::snprintf(strBar, sizeof strBar, "at most 1.05 of plain");
    std::printf(
        "| %d %s, %d pass%s | %.3f s | %.3f s | %.3f s | %.3f s | %.2f | %.2f | %s | %s |\n",
        which.Files, strWhat, which.Passes, which.Passes == 1 ? "" : "es", medians[0], medians[3],
        medians[1], medians[2], dblByShred, dblByPlain, strBar, blnKept ? "yes" : "NO");
    std::fflush(stdout);
    blnAllKept = blnAllKept && blnKept;
}

/// Reads all files past the cache; nothing else.
void ReadPlainly(const Case& which) {
    constexpr std::size_t unit = 1 << 20;
    static const std::unique_ptr<void, void (*)(void*)> buffer(std::aligned_alloc(unit, unit),
                                                               std::free);
    for (const std::string& path : Paths(which)) {
        const int file = open(path.c_str(), O_RDONLY | O_DIRECT | O_CLOEXEC);
        Require(file >= 0, path);
        while (read(file, buffer.get(), unit) > 0)
            continue;
        close(file);
    }
}

/// Our run with and without reading back, and the disk's own time for the reading, by turns: a disk
/// may read more slowly than it writes.
void VerifyRow(const Case& which) {
    std::vector<double> seconds[2], plain;
    for (int run = 0; run < which.Runs; ++run)
        for (const bool verify : {run % 2 != 0, run % 2 == 0}) {
            Make(which);
            posix::BeginProgram(which.Passes);
            purgeOptions.Verify = verify;
            double start = bench::Seconds();
            if (verify) {
                ReadPlainly(which);
                plain.push_back(bench::Seconds() - start);
                start = bench::Seconds();
            }
            PurgeByRun(which);
            seconds[verify].push_back(bench::Seconds() - start);
            Require(std::filesystem::remove(Folder(which)), "something is left");
        }
    const double once = bench::Median(seconds[0]), read = bench::Median(seconds[1]);
    const double least = once + bench::Median(plain);
    const bool blnKept = read <= 2.2 * once;
    std::printf(
        "| %d file of %zu MiB, 1 pass, read back | %.3f s, without %.3f s: %.2f | | | %.3f s | "
        "| %.2f | at most 2.2 of once | %s |\n",
        which.Files, which.Bytes >> 20, read, once, read / once, least, read / least,
        blnKept ? "yes" : "NO");
    blnAllKept = blnAllKept && blnKept;
}

} // namespace

int main(int argc, char** argv) {
    int intFiles = 2000, intSlowFiles = 200, intMebibytes = 1024, intRuns = 5;
    bool blnUnderstood = argc % 2 == 0;
    for (int i = 2; i + 1 < argc; i += 2) {
        const std::pair<const char*, int*> numbers[] = {{"--files", &intFiles},
                                                        {"--slow-files", &intSlowFiles},
                                                        {"--size", &intMebibytes},
                                                        {"--runs", &intRuns}};
        bool blnKnown = false;
        for (const auto& [name, number] : numbers)
            if (std::strcmp(argv[i], name) == 0) {
                *number = std::atoi(argv[i + 1]);
                blnKnown = *number > 0;
            }
        blnUnderstood = blnUnderstood && blnKnown;
    }
    if (!blnUnderstood) {
        std::printf("arguments: ROOT [--files n] [--slow-files n] [--size MiB] [--runs n]\n");
        return 2;
    }
    strRoot = argv[1];
    posix::UseRoot(strRoot);
    posix::blnOrders = false;
    std::printf("| purged and deleted | ours | one at a time | shred | plain loop | shred / ours | "
                "ours / plain | "
                "bar | kept |\n|---|---|---|---|---|---|---|---|---|\n");
    constexpr std::size_t intSmall = 4096;
    for (const int passes : {1, 6})
        Row("files of 4 KiB", {"C", intFiles, passes, intSmall, intRuns}, 2);
    const std::size_t intLarge = static_cast<std::size_t>(intMebibytes) << 20;
    Row(("file of " + std::to_string(intMebibytes) + " MiB").c_str(),
        {"C", 1, 1, intLarge, intRuns}, 0);
    VerifyRow({"C", 1, 1, intLarge, intRuns});
    // Nothing but the flush counts there: fewer rounds tell as much.
    for (const int passes : {1, 6})
        Row("files of 4 KiB, a flush takes 5 ms", {"S", intSlowFiles, passes, intSmall, 3}, 6);
    return blnAllKept ? 0 : 1;
}
