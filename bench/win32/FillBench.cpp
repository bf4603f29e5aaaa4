// What purging free space costs beyond the bytes themselves: fills and purges the free space of a
// drive, against plain writes and flushes of the same bytes to the same drive, in alternation.
//
//     nullwright_fillbench X [rounds]
//
// X is the letter of a scratch drive with some 1 GiB of free space. One random pass. Prints the
// times and the median of the rounds' ratios, which is to be at most 1.10; the exit code is 1 when
// it is above. Each round compares neighbours in time, so that a busy machine weighs on both. Told,
// too, but not judged, as the disk has its part in it: how long the interface stood still
// meanwhile.
#include "bench/Heartbeat.h"
#include "bench/win32/Tools.h"
#include "disk/FillDisk.h"
#include "disk/FreeSpacePurge.h"
#include "engine/FilePurge.h"
#include "platform/Files.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/frmMain.h"
#include "shell/Session.h"
#include "ui/Interface.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr double dblWorstRatio = 1.10;
constexpr std::size_t intPiece = 1 << 20;

/// The product's way. Returns seconds; the bytes written go to dblBytes.
double FillAndPurge(char chrDrive, double& dblBytes) {
    if (!ReadFreeSpace(chrDrive))
        bench::Give("the free space cannot be read");
    PlanDummyFiles(chrDrive);
    FillDisk.strDriveRoot = std::string(1, chrDrive) + ":\\";
    const double dblStart = bench::Seconds();
    blnPurgingFreeSpace = true;
    WriteDummyFiles();
    if (FillDisk.Outcome != FillOutcome::Done)
        bench::Give("the drive could not be filled");
    dblBytes = FillDisk.dblBytesInFinishedFiles;
    (void)PurgeDummyFiles(false, FillDisk.lngFilesWritten, "");
    blnPurgingFreeSpace = false;
    if (FillDisk.lngFilesPurged != FillDisk.lngFilesWritten)
        bench::Give("a dummy file could not be purged");
    return bench::Seconds() - dblStart;
}

void WritePlainly(const std::string& strPath, platform::Access access,
                  const std::vector<char>& piece, std::size_t intBytes) {
    platform::File file;
    bench::Need(platform::OpenFile(strPath, access, file), strPath);
    for (std::size_t intLeft = intBytes; intLeft > 0;) {
        const std::size_t intSize = std::min(intLeft, piece.size());
        bench::Need(platform::WriteBytes(file, piece.data(), intSize), strPath);
        intLeft -= intSize;
    }
    bench::Need(platform::FlushBytes(file), strPath);
    bench::Need(platform::CloseFile(file), strPath);
}

/// The same bytes in files of the same size, written and flushed, overwritten and flushed, deleted.
double WriteTwicePlainly(char chrDrive, double dblBytes) {
    const std::vector<char> nulls(intPiece, '\0'), others(intPiece, '\x5A');
    std::vector<std::size_t> sizes;
    for (auto intLeft = static_cast<std::size_t>(dblBytes); intLeft > 0; intLeft -= sizes.back())
        sizes.push_back(std::min(intLeft, static_cast<std::size_t>(dblMaxSizeDummyFile)));
    const auto PathOf = [&](std::size_t i) {
        return std::string(1, chrDrive) + ":\\fillbench" + std::to_string(i);
    };
    const double dblStart = bench::Seconds();
    for (std::size_t i = 0; i < sizes.size(); ++i)
        WritePlainly(PathOf(i), platform::Access::CreateNew, nulls, sizes[i]);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        WritePlainly(PathOf(i), platform::Access::Change, others, sizes[i]);
        bench::Need(platform::RemoveFile(PathOf(i)), PathOf(i));
    }
    return bench::Seconds() - dblStart;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argv[1][0] < 'D' || argv[1][0] > 'Z')
        bench::Give("usage: nullwright_fillbench X [rounds], X = D to Z, a scratch drive");
    const char chrDrive = argv[1][0];
    const int intRounds = argc > 2 ? std::max(std::atoi(argv[2]), 2) / 2 * 2 : 10;
    LoadMainForm();
    Initialization();
    InitializePurgeOptions();
    frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = 0;
    if (!PurgeLibraryReady())
        bench::Give("nwaux6.dll is not beside this program");
    ui::Show(frmMain);

    std::vector<double> ratios;
    double dblBytes = 0, dblOursBefore = 0, dblPlainBefore = 0;
    // Round 0 warms the drive and the page cache, and shows how long the interface stands still.
    // The order alternates, and two rounds make one ratio: what comes second finds the drive busy
    // with what the first has left, and is slower.
    for (int i = 0; i <= intRounds; ++i) {
        const double dblFirst = i % 2 == 0 ? 0 : WriteTwicePlainly(chrDrive, dblBytes);
        double dblOurs = 0;
        const auto Ours = [&] { dblOurs = FillAndPurge(chrDrive, dblBytes); };
        // The beat itself costs time: it is kept out of what is compared.
        if (i == 0)
            std::printf("longest stretch without messages %.1f ms\n",
                        bench::LongestStretch(Ours) * 1000);
        else
            Ours();
        const double dblPlain = i % 2 == 0 ? WriteTwicePlainly(chrDrive, dblBytes) : dblFirst;
        if (i == 0)
            continue;
        std::printf("%.0f MiB  fill and purge %.2f s  plain %.2f s\n", dblBytes / 1048576, dblOurs,
                    dblPlain);
        std::fflush(stdout);
        if (i % 2 == 0)
            ratios.push_back((dblOursBefore + dblOurs) / (dblPlainBefore + dblPlain));
        dblOursBefore = dblOurs;
        dblPlainBefore = dblPlain;
    }
    const double dblRatio = bench::Median(ratios);
    std::printf("median ratio %.3f (at most %.2f)\n", dblRatio, dblWorstRatio);
    return dblRatio <= dblWorstRatio ? 0 : 1;
}
