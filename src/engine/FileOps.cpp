// The system-extension table, the program's own folder, and the classification of a file.
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

/// The program's own folder; unknown until a run asks.
platform::FolderIdentity programFolder;
bool blnProgramFolderRead = false;

/// The folder that files were classified in last, with its backslash, and whether it is the
/// program's own.
std::string strFolderInHand;
bool blnFolderIsOurs = false;

ExtensionRow* FindRow(const std::string& extension) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(intRowCount); ++i)
        if (rowsOfExtensions[i].Extension == extension)
            return &rowsOfExtensions[i];
    return nullptr;
}

} // namespace

void InitSystemExtensions(std::int16_t initialVerdict) {
    ForgetFolders();
    intRowCount = 0;
    for (const char* extension : strSystemExtensions)
        rowsOfExtensions[static_cast<std::size_t>(intRowCount++)] = {extension, initialVerdict};
}

void SetExtensionVerdict(const std::string& extension, std::int16_t verdict) {
    if (ExtensionRow* row = FindRow(extension))
        row->Verdict = verdict;
}

bool IsSwapFile(const std::string& name) {
    const std::string extension = ExtensionOf(name); // asked about every file: most have another
    return extension.size() == 3 && (extension[0] | 0x20) == 's' &&
           platform::LowerCase(extension) == "swp";
}

std::int16_t ClassifyFileForPurge(const std::string& path) {
    const std::size_t lngFolder = path.rfind('\\') + 1;
    if (lngFolder == 0 || path.compare(0, lngFolder, strFolderInHand) != 0) {
        const std::string folder = path.substr(0, lngFolder);
        platform::FolderIdentity identity;
        // What cannot be asked about is told by its spelling alone.
        (void)platform::ReadFolderIdentity(folder, identity);
        EnterFolder(folder, identity);
    }
    if (blnFolderIsOurs)
        return ClassProgramFolder;
    const std::string lower = platform::LowerCase(path);
    const std::string extension = ExtensionOf(lower);
    if (extension.empty())
        return ClassNoObjection;
    // The whole path is compared, so that a paging file in a folder is judged by its extension
    // instead: deliberately so.
    if (lower == "pagefile.sys" || IsSwapFile(lower))
        return ClassSwapFile;
    const ExtensionRow* row = FindRow(extension);
    if (row == nullptr)
        return ClassNoObjection;
    return row->Verdict == -1  ? ClassSystemRefused
           : row->Verdict == 0 ? ClassSystemUndecided
                               : ClassNoObjection;
}

void ForgetFolders() {
    programFolder = {};
    blnProgramFolderRead = false;
    strFolderInHand.clear();
}

bool EnterFolder(const std::string& folder, const platform::FolderIdentity& identity) {
    const std::string own = platform::ProgramFolder();
    if (!blnProgramFolderRead)
        blnProgramFolderRead = !Failed(platform::ReadFolderIdentity(own, programFolder));
    strFolderInHand = folder;
    blnFolderIsOurs = (identity.IsKnown() && identity == programFolder) ||
                      platform::LowerCase(folder) == platform::LowerCase(FolderWithBackslash(own));
    return blnFolderIsOurs;
}
