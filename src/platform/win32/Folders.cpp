// Folders on Windows: enumeration, creation, removal.
#include "platform/Folders.h"
#include "platform/Files.h"
#include "platform/win32/FindData.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <windows.h>

namespace platform {
namespace {

/// Whether opening a link to a folder opens the link and not its target. Wine opens the target
/// whatever the flags say, and would then remove the target.
bool OpensAsLink(const std::wstring& path) {
    HANDLE handle = CreateFileW(
        path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    FILE_ATTRIBUTE_TAG_INFO known;
    const bool told =
        GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &known, sizeof known) &&
        (known.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    CloseHandle(handle);
    return told;
}

} // namespace

Fault EnumerateFolder(const std::string& folder,
                      const std::function<bool(const FolderEntry&)>& visit) {
    std::wstring pattern = WidePath(folder);
    if (pattern.empty())
        return Fault::InvalidName;
    if (pattern.back() != L'\\')
        pattern += L'\\';
    pattern += L'*';
    WIN32_FIND_DATAW found;
    // Skip short names and fetch large portions: both are faster.
    HANDLE search = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found,
                                     FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE) {
        // The root of an empty volume does not even contain ".".
        if (GetLastError() == ERROR_FILE_NOT_FOUND && FolderExists(folder))
            return Fault::None;
        return LastFault();
    }
    DWORD error = ERROR_NO_MORE_FILES;
    bool more = true;
    bool wanted = true;
    while (more && wanted) {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") {
            FolderEntry entry;
            entry.Name = Narrow(name);
            entry.Attributes = found.dwFileAttributes;
            entry.IsFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
            entry.IsLink = TellsLink(found.dwFileAttributes, found.dwReserved0);
            if (!entry.IsFolder)
                entry.Length = Joined(found.nFileSizeHigh, found.nFileSizeLow);
            wanted = visit(entry);
        }
        if (wanted) {
            more = FindNextFileW(search, &found) != 0;
            error = more ? error : GetLastError(); // read now, before another call changes it
        }
    }
    FindClose(search);
    return error == ERROR_NO_MORE_FILES ? Fault::None : FaultOfError(error);
}

Fault MakeFolder(const std::string& path) {
    return CreateDirectoryW(WidePath(path).c_str(), nullptr) ? Fault::None : LastFault();
}

Fault RemoveFolder(const std::string& path) {
    const std::wstring wide = WidePath(path);
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
        !OpensAsLink(wide))
        return Fault::NotSupported;
    return RemoveDirectoryW(wide.c_str()) ? Fault::None : LastFault();
}

bool FolderExists(const std::string& path) {
    std::uint32_t attributes = 0;
    return !Failed(ReadAttributes(path, attributes)) &&
           (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace platform
