// What purging free space costs beyond the bytes themselves: fills and purges the free space of a
// drive, against plain writes and flushes of the same bytes.
//
//     nullwright_fillbench X Y [rounds]
//
// X and Y are the letters of two scratch drives on one disk, with some 1 GiB of free space each, Y
// with a little more. Ours goes to X and the plain writes to Y, by turns within one and the same
// run: whenever ours has written and flushed a dummy file, a file of the same size is written and
// flushed plainly; whenever ours has overwritten, flushed and deleted one, so is one of those. What
// else the disk has to do thus falls on both alike. Ours takes all the time from start to end, less
// that of the plain turns. One random pass. Prints the times of each round and the median of their
// ratios, which is to be at most 1.10; the exit code is 1 when it is above.
//
// Told, too, but not judged, as the disk has its part in it: how long the interface stood still.
#include "bench/runs/Tools.h"
#include "disk/DummyPlan.h"
#include "disk/FillDisk.h"
#include "disk/FillDiskPurge.h"
#include "disk/FreeSpacePurge.h"
#include "platform/Files.h"
#include "report/run/Run.h"
#include "session/Session.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

// The linker leads the program's calls of these here, and gives the true ones other names. See the
// CMakeLists.txt of the benches.
platform::Fault TrueClose(platform::File& file) __asm__("__real_" NW_CLOSE_SYMBOL);
platform::Fault CloseInTurn(platform::File& file) __asm__("__wrap_" NW_CLOSE_SYMBOL);
platform::Fault TrueRemove(const std::string& path) __asm__("__real_" NW_REMOVE_SYMBOL);
platform::Fault RemoveInTurn(const std::string& path) __asm__("__wrap_" NW_REMOVE_SYMBOL);

namespace {

constexpr double dblWorstRatio = 1.10;
constexpr std::size_t intPiece = 1 << 20;

enum class Phase { Alone, Filling, Purging };
Phase phase = Phase::Alone; ///< Alone: no plain turns
char chrPlain = 'Y';
std::vector<std::uint64_t> sizes; ///< of the files that were written plainly
std::size_t intOverwritten = 0;   ///< of these
double dblPlain = 0;              ///< seconds of the plain turns

void WritePlainly(std::size_t i, platform::Access access, char chrByte) {
    static std::vector<char> piece(intPiece);
    std::fill(piece.begin(), piece.end(), chrByte);
    const std::string strPath = std::string(1, chrPlain) + ":\\fillbench" + std::to_string(i);
    const double dblStart = bench::Seconds();
    platform::File file;
    bench::Need(platform::OpenFile(strPath, access, file), strPath);
    for (std::uint64_t lngLeft = sizes[i]; lngLeft > 0;) {
        const auto intSize =
            static_cast<std::size_t>(std::min<std::uint64_t>(lngLeft, piece.size()));
        bench::Need(platform::WriteBytes(file, piece.data(), intSize), strPath);
        lngLeft -= intSize;
    }
    bench::Need(platform::FlushBytes(file), strPath);
    bench::Need(TrueClose(file), strPath);
    if (access == platform::Access::Change)
        bench::Need(TrueRemove(strPath), strPath);
    dblPlain += bench::Seconds() - dblStart;
}

/// The product's way, with the plain turns or without. Returns its own seconds.
double FillAndPurge(char chrDrive, bool blnTurns) {
    if (!ReadFreeSpace(chrDrive))
        bench::Give("the free space cannot be read");
    PlanDummyFiles(chrDrive);
    FillDisk.strDriveRoot = std::string(1, chrDrive) + ":\\";
    sizes.clear();
    intOverwritten = 0;
    dblPlain = 0;
    RunRequest request;
    request.How = PurgeHowInForce();
    BeginRun(request);
    const double dblStart = bench::Seconds();
    blnPurgingFreeSpace = true;
    phase = blnTurns ? Phase::Filling : Phase::Alone;
    WriteDummyFiles();
    if (FillDisk.Outcome != FillOutcome::Done)
        bench::Give("the drive could not be filled");
    phase = blnTurns ? Phase::Purging : Phase::Alone;
    (void)PurgeDummyFiles(false, FillDisk.lngFilesWritten, "");
    phase = Phase::Alone;
    blnPurgingFreeSpace = false;
    currentRun.State = RunState::Done;
    if (FillDisk.lngFilesPurged != FillDisk.lngFilesWritten || intOverwritten != sizes.size())
        bench::Give("a dummy file could not be purged");
    return bench::Seconds() - dblStart - dblPlain;
}

} // namespace

platform::Fault CloseInTurn(platform::File& file) {
    std::uint64_t lngLength = 0;
    if (phase == Phase::Filling)
        bench::Need(platform::ReadLength(file, lngLength), "the length of a dummy file");
    const platform::Fault fault = TrueClose(file);
    if (lngLength > 0) {
        sizes.push_back(lngLength);
        WritePlainly(sizes.size() - 1, platform::Access::CreateNew, '\0');
    }
    return fault;
}

platform::Fault RemoveInTurn(const std::string& path) {
    const platform::Fault fault = TrueRemove(path);
    // The last that goes is the marker of the folder.
    if (phase == Phase::Purging && intOverwritten < sizes.size())
        WritePlainly(intOverwritten++, platform::Access::Change, '\x5A');
    return fault;
}

int main(int argc, char** argv) {
    const auto isScratch = [&](int i) {
        return argc > i && argv[i][0] >= 'D' && argv[i][0] <= 'Z';
    };
    if (!isScratch(1) || !isScratch(2) || argv[1][0] == argv[2][0])
        bench::Give("usage: nullwright_fillbench X Y [rounds], scratch drives from D to Z");
    const char chrDrive = argv[1][0];
    chrPlain = argv[2][0];
    const int intRounds = argc > 3 ? std::max(std::atoi(argv[3]), 1) : 5;
    bench::BeginProgram();

    // The beat itself costs time: it is kept out of what is compared. This warms both drives, too.
    const double dblStretch = bench::StretchOf([&] { (void)FillAndPurge(chrDrive, false); });
    if (dblStretch > 0)
        std::printf("longest stretch without messages %.1f ms\n", dblStretch * 1000);
    (void)FillAndPurge(chrDrive, true);
    std::vector<double> ratios;
    for (int i = 0; i < intRounds; ++i) {
        const double dblOurs = FillAndPurge(chrDrive, true);
        double dblBytes = 0;
        for (const std::uint64_t lngSize : sizes)
            dblBytes += static_cast<double>(lngSize);
        ratios.push_back(dblOurs / dblPlain);
        std::printf("%.0f MiB  fill and purge %.2f s  plain %.2f s  ratio %.3f\n",
                    dblBytes / 1048576, dblOurs, dblPlain, ratios.back());
        std::fflush(stdout);
    }
    const double dblRatio = bench::Median(ratios);
    std::printf("median ratio %.3f (at most %.2f)\n", dblRatio, dblWorstRatio);
    return dblRatio <= dblWorstRatio ? 0 : 1;
}
