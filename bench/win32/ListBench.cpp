// What a run of the report window costs beyond what the system costs.
//
//   nullwright_listbench FOLDER [list | purge | hidden [FILES [ROUNDS]]]
//
// makes, in a folder of its own below FOLDER, (a) 1,000 folders of 100 files, and times in
// alternation the bare enumeration by the Win32 call that the program uses, and a listing run;
// (b) 2,000 files of 4 KiB, again and again, and times in alternation their purge by the engine
// alone and by a purge run ("hidden": without the window). The ratio is the median of the rounds'
// ratios, since neighbours on the machine disturb both parts of a round alike; the other figures
// are medians too. Everything that was made is removed at the end. The bars are 1.50 and 1.05.
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

constexpr int folders = 1000, filesPerFolder = 100;
int purgedFiles = 2000, rounds = 5;

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

// Of this program alone: what it makes the system do is in the elapsed time only.
double ProcessorSeconds() {
    FILETIME began, ended, kernel, user;
    GetProcessTimes(GetCurrentProcess(), &began, &ended, &kernel, &user);
    const auto seconds = [](const FILETIME& time) {
        return 1e-7 *
               static_cast<double>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
    };
    return seconds(kernel) + seconds(user);
}

struct Cost {
    double Elapsed = 0, Processor = 0; ///< s
};

template<typename Work>
Cost CostOf(Work work) {
    const double elapsed = Now(), processor = ProcessorSeconds();
    work();
    return {Now() - elapsed, ProcessorSeconds() - processor};
}

template<typename Figure>
double Median(const std::vector<std::array<Cost, 2>>& costs, Figure figure) {
    std::vector<double> figures;
    for (const auto& round : costs)
        figures.push_back(figure(round));
    std::sort(figures.begin(), figures.end());
    return figures[figures.size() / 2];
}

/// Both in turn, the one that begins changing, after a round that warms up.
template<typename First, typename Second>
void Compare(const char* names[2], double bar, First first, Second second) {
    std::vector<std::array<Cost, 2>> costs;
    for (int round = -1; round < rounds; ++round) {
        std::array<Cost, 2> both;
        if (round % 2 != 0)
            both[0] = first();
        both[1] = second();
        if (round % 2 == 0)
            both[0] = first();
        if (round >= 0)
            costs.push_back(both);
    }
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}}) {
        double fastest = costs[0][i].Elapsed;
        for (const auto& both : costs)
            fastest = std::min(fastest, both[i].Elapsed);
        std::printf("%-18s %8.3f s elapsed (fastest %.3f s), %.3f s of processor\n", names[i],
                    Median(costs, [i](const auto& both) { return both[i].Elapsed; }), fastest,
                    Median(costs, [i](const auto& both) { return both[i].Processor; }));
    }
    std::printf("ratio %.3f (bar %.2f)\n",
                Median(costs, [](const auto& both) { return both[1].Elapsed / both[0].Elapsed; }),
                bar);
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
    blnSubdirectories = true;
    SetRun(top, false);
    const auto bare = [&] {
        Sums sums;
        const Cost cost =
            CostOf([&] { Enumerate(L"\\\\?\\" + std::wstring(top.begin(), top.end()), sums); });
        if (sums.files != folders * filesPerFolder)
            Give("the enumeration counted wrongly");
        return cost;
    };
    const auto listing = [] {
        const Cost cost = CostOf(ProcessFiles);
        if (frmReport.lngNumFilesProcessed != folders * filesPerFolder)
            Give("the listing counted wrongly");
        return cost;
    };
    const char* names[] = {"bare enumeration", "listing run"};
    Compare(names, 1.5, bare, listing);
    RemoveTree(top);
}

void FillForPurge(const std::string& top) {
    const std::string content(4096, 'x');
    for (int i = 0; i < purgedFiles; ++i)
        MakeFile(Numbered(top + "\\file", i) + ".txt", content);
}

// In the order in which the folder lists them: a file system may take another one worse or better.
std::vector<std::string> ListedFiles(const std::string& top) {
    std::vector<std::string> paths;
    Need(platform::EnumerateFolder(top,
                                   [&](const platform::FolderEntry& entry) {
                                       paths.push_back(top + "\\" + entry.Name);
                                       return true;
                                   }),
         "cannot list the files");
    return paths;
}

void PurgeByEngine(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        std::int16_t result = 0;
        if (!PurgeFileWithChecks(path, 0, 1, true, false, false, false, 4096, result))
            Give("the engine failed");
    }
}

// The window has the report's last lines at the end of a run, the older ones it gets while nothing
// else is to be done, or when it is asked for them.
void FillReport() {
    const HWND report = FindWindowW(nullptr, L"Report");
    SendMessageW(FindWindowExW(report, nullptr, L"Edit", nullptr), WM_GETTEXTLENGTH, 0, 0);
}

void ComparePurge(const std::string& top) {
    Need(platform::MakeFolder(top), "cannot make the folder");
    blnSubdirectories = false;
    SetRun(top, true);
    const auto engine = [&] {
        FillForPurge(top);
        const std::vector<std::string> paths = ListedFiles(top);
        return CostOf([&] { PurgeByEngine(paths); });
    };
    std::vector<double> rests;
    const auto run = [&] {
        FillForPurge(top);
        const Cost cost = CostOf(ProcessFiles);
        if (frmReport.lngNumFilesPurged != purgedFiles)
            Give("not everything was purged");
        rests.push_back(CostOf(FillReport).Elapsed);
        return cost;
    };
    const char* names[] = {"engine alone", "purge run"};
    Compare(names, 1.05, engine, run);
    std::sort(rests.begin(), rests.end());
    std::printf("for the older lines of the report, after the run: %.3f s\n",
                rests[rests.size() / 2]);
    Need(platform::RemoveFolder(top), "cannot remove the folder");
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 5)
        Give("arguments: FOLDER [list | purge | hidden [FILES [ROUNDS]]]");
    const std::string what = argc > 2 ? argv[2] : "";
    if (argc > 3)
        purgedFiles = std::max(1, std::atoi(argv[3]));
    if (argc > 4)
        rounds = std::max(1, std::atoi(argv[4]));
    const std::string top = std::string(argv[1]) + "\\nullwright_listbench";
    if (!PurgeLibraryReady())
        Give("nwaux6.dll must lie beside this program");
    Initialization();
    InitializePurgeOptions();
    frmTypeOfPurge.cboNumberOfPasses[0].ListIndex = 0; // one random pass
    LoadReportForm();
    const auto measure = [&] {
        if (what.empty() || what == "list")
            CompareListing(top);
        if (what != "list")
            ComparePurge(top);
    };
    if (what == "hidden") {
        measure();
    } else {
        // From a handler, as a run always is.
        frmReport.Activate = measure;
        ui::Show(frmReport);
    }
    return 0;
}
