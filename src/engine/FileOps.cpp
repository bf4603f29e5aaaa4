#include "engine/FileOps.h"

#include "platform/System.h"
#include "support/Paths.h"

#include <array>

namespace {

struct ExtensionRow {
    std::string Extension; ///< in lower case
    std::int16_t Verdict = 0;
};

constexpr std::size_t intMaxRows = 20;
constexpr std::array<const char*, 12> strSystemExtensions = {
    "bat", "bin", "com", "dll", "drv", "exe", "ini", "ovl", "pif", "sys", "ocx", "kbd"};

std::array<ExtensionRow, intMaxRows> rowsOfExtensions;
std::int16_t intRowCount = 0;

ExtensionRow* FindRow(const std::string& extension) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(intRowCount); ++i)
        if (rowsOfExtensions[i].Extension == extension)
            return &rowsOfExtensions[i];
    return nullptr;
}

} // namespace

void InitSystemExtensions(std::int16_t initialVerdict) {
    intRowCount = 0;
    for (const char* extension : strSystemExtensions)
        rowsOfExtensions[static_cast<std::size_t>(intRowCount++)] = {extension, initialVerdict};
}

void SetExtensionVerdict(const std::string& extension, std::int16_t verdict) {
    if (ExtensionRow* row = FindRow(extension))
        row->Verdict = verdict;
}

std::int16_t ClassifyFileForPurge(const std::string& path) {
    const std::string lower = platform::LowerCase(path);
    const std::string programFolder = platform::LowerCase(platform::ProgramFolder());
    if (lower.rfind('\\') == programFolder.size() && lower.rfind(programFolder, 0) == 0)
        return ClassProgramFolder;
    const std::string extension = ExtensionOf(lower);
    if (extension.empty())
        return ClassNoObjection;
    // The whole path is compared, so that a paging file in a folder is judged by its extension
    // instead: deliberately so.
    if (lower == "pagefile.sys" || extension == "swp")
        return ClassSwapFile;
    const ExtensionRow* row = FindRow(extension);
    if (row == nullptr)
        return ClassNoObjection;
    return row->Verdict == -1  ? ClassSystemRefused
           : row->Verdict == 0 ? ClassSystemUndecided
                               : ClassNoObjection;
}
