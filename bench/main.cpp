// nullwright_bench: measures what docs/performance.md says of the purge engine, in one run.
//
//   nullwright_bench [--folder C:\scratch] [--size MiB] [--files n] [--runs n] [bench ...]
//
// The benches are overwrite, small, pump, memory and yield; without a name all of them run.
#include "bench/Bench.h"
#include "engine/FilePurge.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "support/MainWindow.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

// What the engine tells the main window, which is not linked here.
void SetMainLine(MainLine, const std::string&) {}
void ClearStatus() {}
void RepaintMain() {}
void EnableMenu(bool) {}
void ShowMainProgress(double) {}

namespace bench {
namespace {

bool blnAllKept = true;

void EmptyFolder() {
    std::vector<std::string> names;
    (void)platform::EnumerateFolder(settings.Folder, [&](const platform::FolderEntry& entry) {
        if (!entry.IsFolder && entry.Name.compare(0, 6, "bench-") == 0)
            names.push_back(entry.Name);
        return true;
    });
    for (const std::string& name : names)
        (void)platform::RemoveFile(InFolder(name));
}

} // namespace

std::string InFolder(const std::string& name) {
    return settings.Folder + "\\" + name;
}

bool MakeFile(const std::string& path, std::uint64_t length) {
    platform::File file;
    if (Failed(OpenFile(path, platform::Access::Replace, file)))
        return false;
    const std::string block(1 << 20, 'm');
    bool done = true;
    for (std::uint64_t left = length; done && left > 0;) {
        const std::uint64_t size = std::min<std::uint64_t>(left, block.size());
        done = !Failed(WriteBytes(file, block.data(), static_cast<std::size_t>(size)));
        left -= size;
    }
    done = done && !Failed(FlushBytes(file));
    return !Failed(CloseFile(file)) && done;
}

void Require(bool done, const std::string& what) {
    if (done)
        return;
    std::printf("Cannot go on: %s\n", what.c_str());
    EmptyFolder();
    (void)platform::RemoveFolder(settings.Folder);
    std::exit(2);
}

double SecondsFor(const std::function<void()>& work) {
    const double start = Seconds();
    work();
    return Seconds() - start;
}

std::string Text(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

void Row(const std::string& what, const std::string& figure, const std::string& bar, bool kept) {
    std::printf("| %s | %s | %s | %s |\n", what.c_str(), figure.c_str(), bar.c_str(),
                kept ? "yes" : "NO");
    std::fflush(stdout);
    blnAllKept = blnAllKept && kept;
}

} // namespace bench

int main() {
    using namespace bench;
    const std::pair<const char*, void (*)()> benches[] = {{"overwrite", BenchOverwrite},
                                                          {"small", BenchSmallFiles},
                                                          {"pump", BenchPumping},
                                                          {"memory", BenchMemory},
                                                          {"yield", BenchYield}};
    std::vector<std::string> chosen;
    const std::vector<std::string> arguments = platform::CommandLineArguments();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const std::string value = i + 1 < arguments.size() ? arguments[i + 1] : "";
        const int number = std::atoi(value.c_str());
        if (argument.compare(0, 2, "--") != 0) {
            chosen.push_back(argument);
            continue;
        }
        ++i;
        if (argument == "--folder" && !value.empty()) {
            settings.Folder = value;
        } else if (argument == "--size" && number > 0) {
            settings.Bytes = static_cast<std::uint64_t>(number) << 20;
        } else if (argument == "--files" && number > 0) {
            settings.Files = number;
        } else if (argument == "--runs" && number > 0) {
            settings.Runs = number;
        } else {
            std::printf("What is %s %s?\n", argument.c_str(), value.c_str());
            return 2;
        }
    }
    if (Failed(platform::LoadAuxiliaryLibrary())) {
        std::printf("nwaux6.dll is not beside this program.\n");
        return 2;
    }
    if (Failed(platform::MakeFolder(settings.Folder))) {
        std::printf("The scratch folder %s must not exist yet, and the one above it must.\n",
                    settings.Folder.c_str());
        return 2;
    }
    std::printf("| measured | figure | bar | kept |\n|---|---|---|---|\n");
    for (const auto& [name, run] : benches)
        if (chosen.empty() || std::find(chosen.begin(), chosen.end(), name) != chosen.end())
            run();
    EmptyFolder();
    (void)platform::RemoveFolder(settings.Folder);
    return blnAllKept ? 0 : 1;
}
