// What a run of the report window costs beyond what the system costs.
//
//   nullwright_listbench FOLDER [list | purge | hidden]
//
// makes, in a folder of its own below FOLDER, (a) 1,000 folders of 100 files, and times in
// alternation the bare enumeration by the Win32 call that the program uses, and a listing run;
// (b) 2,000 files of 4 KiB, again and again, and times in alternation their purge by the engine
// alone and by a purge run. Medians of five; everything that was made is removed at the end.
// The bars are 1.50 and 1.05.
#include "engine/FilePurge.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "report/BatchDriver.h"
#include "report/frmReport.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/Session.h"
#include "ui/Interface.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int folders = 1000, filesPerFolder = 100, rounds = 5;
constexpr int purgedFiles = 2000;

// A plain function behind a pointer: GCC 12 breaks on a call that it knows never to return, with
// stack-clash protection on.
void (*const volatile endProgram)(int) = std::exit;

void Give(const char* what) {
    std::printf("listbench: %s\n", what);
    endProgram(2);
}

void Need(platform::Fault fault, const char* what) {
    if (platform::Failed(fault) && fault != platform::Fault::AlreadyExists)
        Give(what);
}

double Now() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

template<typename Work>
double Timed(Work work) {
    const double start = Now();
    work();
    return Now() - start;
}

double Median(std::array<double, rounds> times) {
    std::sort(times.begin(), times.end());
    return times[rounds / 2];
}

void MakeFile(const std::string& path, const std::string& content) {
    platform::File file;
    Need(platform::OpenFile(path, platform::Access::Replace, file), "cannot make a file");
    Need(platform::WriteBytes(file, content.data(), content.size()), "cannot write a file");
    Need(platform::CloseFile(file), "cannot close a file");
}

std::string Numbered(const std::string& stem, int number) {
    return stem + std::to_string(10000 + number);
}

void MakeTree(const std::string& top) {
    Need(platform::MakeFolder(top), "cannot make the tree");
    for (int i = 0; i < folders; ++i) {
        const std::string folder = Numbered(top + "\\folder", i);
        Need(platform::MakeFolder(folder), "cannot make a folder");
        for (int k = 0; k < filesPerFolder; ++k)
            MakeFile(Numbered(folder + "\\a file of the tree ", k) + ".txt", "x");
    }
}

void RemoveTree(const std::string& top) {
    for (int i = 0; i < folders; ++i) {
        const std::string folder = Numbered(top + "\\folder", i);
        for (int k = 0; k < filesPerFolder; ++k)
            Need(platform::RemoveFile(Numbered(folder + "\\a file of the tree ", k) + ".txt"),
                 "cannot remove a file");
        Need(platform::RemoveFolder(folder), "cannot remove a folder");
    }
    Need(platform::RemoveFolder(top), "cannot remove the tree");
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
        Give("cannot enumerate");
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

void SetRun(const std::string& folder, bool blnPurge) {
    frmReport.strDirPath = folder + "\\";
    frmReport.strFilespec = "*.*";
    frmReport.blnPurgeFiles = blnPurge;
    frmReport.blnDisplayFolderNames = false;
    frmReport.blnDisplayFileNames = false;
}

void CompareListing(const std::string& top) {
    MakeTree(top);
    std::array<double, rounds> bare{}, listing{};
    blnSubdirectories = true;
    SetRun(top, false);
    for (int round = -1; round < rounds; ++round) { // the first one warms up
        Sums sums;
        const double t1 =
            Timed([&] { Enumerate(L"\\\\?\\" + std::wstring(top.begin(), top.end()), sums); });
        const double t2 = Timed(ProcessFiles);
        if (sums.files != folders * filesPerFolder || frmReport.lngNumFilesProcessed != sums.files)
            Give("the counts differ");
        if (round >= 0) {
            bare[static_cast<std::size_t>(round)] = t1;
            listing[static_cast<std::size_t>(round)] = t2;
        }
    }
    RemoveTree(top);
    std::printf("bare enumeration  %8.3f s\nlisting run       %8.3f s   ratio %.2f (bar 1.50)\n",
                Median(bare), Median(listing), Median(listing) / Median(bare));
}

void FillForPurge(const std::string& top) {
    const std::string content(4096, 'x');
    for (int i = 0; i < purgedFiles; ++i)
        MakeFile(Numbered(top + "\\file", i) + ".txt", content);
}

void PurgeByEngine(const std::string& top) {
    for (int i = 0; i < purgedFiles; ++i) {
        std::int16_t result = 0;
        if (!PurgeFileWithChecks(Numbered(top + "\\file", i) + ".txt", 0, 1, true, false, false,
                                 false, 4096, result))
            Give("the engine failed");
    }
}

void ComparePurge(const std::string& top) {
    Need(platform::MakeFolder(top), "cannot make the folder");
    std::array<double, rounds> engine{}, run{};
    blnSubdirectories = false;
    SetRun(top, true);
    for (int round = -1; round < rounds; ++round) {
        FillForPurge(top);
        const double t1 = Timed([&] { PurgeByEngine(top); });
        FillForPurge(top);
        const double t2 = Timed(ProcessFiles);
        if (frmReport.lngNumFilesPurged != purgedFiles)
            Give("not everything was purged");
        if (round >= 0) {
            engine[static_cast<std::size_t>(round)] = t1;
            run[static_cast<std::size_t>(round)] = t2;
        }
    }
    Need(platform::RemoveFolder(top), "cannot remove the folder");
    std::printf("engine alone      %8.3f s\npurge run         %8.3f s   ratio %.2f (bar 1.05)\n",
                Median(engine), Median(run), Median(run) / Median(engine));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3)
        Give("arguments: the folder to work in, and \"list\", \"purge\" or \"hidden\"");
    const std::string what = argc == 3 ? argv[2] : "";
    const std::string top = std::string(argv[1]) + "\\nullwright_listbench";
    if (!PurgeLibraryReady())
        Give("nwaux6.dll must lie beside this program");
    Initialization();
    InitializePurgeOptions();
    frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = 0; // one random pass
    LoadReportForm();
    if (what != "hidden") // a purge without the window: what the window's own work is
        ui::Show(frmReport);
    if (what.empty() || what == "list")
        CompareListing(top);
    if (what != "list")
        ComparePurge(top);
    return 0;
}
