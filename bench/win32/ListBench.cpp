// What a listing run of the report window costs beyond the bare enumeration.
//
//   nullwright_listbench FOLDER [ROUNDS]
//
// makes, in a folder of its own below FOLDER, 1,000 folders of 100 files, and times in alternation
// the bare enumeration by the Win32 call that the program uses, and a listing run. The ratio, which
// is to be at most 1.50, is the median of the rounds' ratios, since neighbours on the machine
// disturb both parts of a round alike. Everything that was made is removed at the end; the exit
// code is 1 when the ratio is above.
#include "bench/runs/Tools.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "report/BatchDriver.h"
#include "report/frmReport.h"
#include "report/run/Run.h"
#include "session/Session.h"
#include "settings/frmTypeOfPurge.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr double worstRatio = 1.50;
constexpr int folders = 1000, filesPerFolder = 100;

void MakeTree(const std::string& top) {
    bench::Need(platform::MakeFolder(top), "cannot make the tree");
    for (int i = 0; i < folders; ++i) {
        const std::string folder = bench::Numbered(top + "\\folder", i);
        bench::Need(platform::MakeFolder(folder), "cannot make a folder");
        for (int k = 0; k < filesPerFolder; ++k)
            bench::MakeFile(bench::Numbered(folder + "\\a file of the tree ", k) + ".txt", "x");
    }
}

void RemoveTree(const std::string& top) {
    for (int i = 0; i < folders; ++i) {
        const std::string folder = bench::Numbered(top + "\\folder", i);
        for (int k = 0; k < filesPerFolder; ++k)
            bench::Need(
                platform::RemoveFile(bench::Numbered(folder + "\\a file of the tree ", k) + ".txt"),
                "cannot remove a file");
        bench::Need(platform::RemoveFolder(folder), "cannot remove a folder");
    }
    bench::Need(platform::RemoveFolder(top), "cannot remove the tree");
}

struct Sums {
    long long files = 0;
    unsigned long long bytes = 0;
};

// The bare enumeration: the same call, depth-first, names joined for the subfolders only.
void Enumerate(const std::wstring& folder, Sums& sums) {
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileExW((folder + L"\\*").c_str(), FindExInfoBasic, &found,
                                     FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE)
        bench::Give("cannot enumerate");
    std::vector<std::wstring> below;
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..")
            continue;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            below.push_back(folder + L"\\" + name);
        } else {
            ++sums.files;
            sums.bytes +=
                (static_cast<unsigned long long>(found.nFileSizeHigh) << 32) + found.nFileSizeLow;
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    for (const std::wstring& next : below)
        Enumerate(next, sums);
}

double SecondsOfEnumeration(const std::wstring& top) {
    Sums sums;
    const double begun = bench::Seconds();
    Enumerate(top, sums);
    const double seconds = bench::Seconds() - begun;
    if (sums.files != folders * filesPerFolder)
        bench::Give("the enumeration counted wrongly");
    return seconds;
}

double SecondsOfRun() {
    const double begun = bench::Seconds();
    ProcessFiles();
    const double seconds = bench::Seconds() - begun;
    if (currentRun.Counts.lngNumFilesProcessed != folders * filesPerFolder)
        bench::Give("the listing counted wrongly");
    return seconds;
}

/// Both in turn, the one that begins changing, after a round that warms up. Returns the ratio.
double Compare(const std::string& top, int rounds) {
    const std::wstring wide = L"\\\\?\\" + std::wstring(top.begin(), top.end());
    std::vector<double> bares, runs, ratios;
    for (int round = -1; round < rounds; ++round) {
        double bare = round % 2 != 0 ? SecondsOfEnumeration(wide) : 0;
        const double run = SecondsOfRun();
        if (round % 2 == 0)
            bare = SecondsOfEnumeration(wide);
        if (round < 0)
            continue;
        bares.push_back(bare);
        runs.push_back(run);
        ratios.push_back(run / bare);
    }
    const double ratio = bench::Median(ratios);
    std::printf("bare enumeration %.3f s, listing run %.3f s, ratio %.3f (bar %.2f)\n",
                bench::Median(bares), bench::Median(runs), ratio, worstRatio);
    return ratio;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3)
        bench::Give("arguments: FOLDER [ROUNDS]");
    const std::string top = std::string(argv[1]) + "\\nullwright_scratch";
    Initialization();
    LoadReportForm();
    blnSubdirectories = true;
    currentRun.Request.strDirPath = top + "\\";
    currentRun.Request.strFilespec = "*.*";
    currentRun.Request.blnPurgeFiles = false;
    currentRun.Request.blnDisplayFolderNames = false;
    currentRun.Request.blnDisplayFileNames = false;
    MakeTree(top);
    const double ratio = Compare(top, argc > 2 ? std::max(1, std::atoi(argv[2])) : 5);
    RemoveTree(top);
    return ratio <= worstRatio ? 0 : 1;
}
