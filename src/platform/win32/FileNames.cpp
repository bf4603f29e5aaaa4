// Queries and changes by a file's name: attributes, facts, streams, deletion, renaming.
#include "platform/Files.h"
#include "platform/win32/FindData.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <cwchar>
#include <windows.h>

namespace platform {
namespace {

/// Reads the facts of a name from its folder. This works also for files that cannot be opened at
/// all, such as the swap file. Names with wildcards are refused.
bool FindByName(const std::wstring& path, WIN32_FIND_DATAW& found) {
    if (path.find_first_of(L"*?", path.compare(0, 4, L"\\\\?\\") == 0 ? 4 : 0) !=
        std::wstring::npos) {
        SetLastError(ERROR_INVALID_NAME);
        return false;
    }
    HANDLE search =
        FindFirstFileExW(path.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr, 0);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    FindClose(search);
    return true;
}

/// Attributes and length of a name; for a link, those of the link itself.
bool AskByName(const std::wstring& path, WIN32_FILE_ATTRIBUTE_DATA& facts) {
    if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &facts))
        return true;
    const DWORD error = GetLastError();
    WIN32_FIND_DATAW found;
    if ((error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED) &&
        FindByName(path, found)) {
        facts.dwFileAttributes = found.dwFileAttributes;
        facts.nFileSizeHigh = found.nFileSizeHigh;
        facts.nFileSizeLow = found.nFileSizeLow;
        return true;
    }
    SetLastError(error);
    return false;
}

/// Attributes and reparse tag of an open file. FAT does not support the query, but has no reparse
/// points either.
bool AskForTag(HANDLE handle, FILE_ATTRIBUTE_TAG_INFO& tagged) {
    if (GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &tagged, sizeof tagged))
        return true;
    FILE_BASIC_INFO known;
    if (GetLastError() != ERROR_INVALID_PARAMETER ||
        !GetFileInformationByHandleEx(handle, FileBasicInfo, &known, sizeof known))
        return false;
    tagged = {known.FileAttributes, 0};
    return (known.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
}

} // namespace

Fault ReadAttributes(const std::string& path, std::uint32_t& attributes, std::uint64_t* length) {
    WIN32_FILE_ATTRIBUTE_DATA facts;
    if (!AskByName(WidePath(path), facts))
        return LastFault();
    attributes = facts.dwFileAttributes;
    if (length)
        *length = Joined(facts.nFileSizeHigh, facts.nFileSizeLow);
    return Fault::None;
}

Fault WriteAttributes(const std::string& path, std::uint32_t attributes) {
    // Only these can be set by name; the system refuses the others (compressed, folder ...).
    constexpr DWORD settable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                               FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                               FILE_ATTRIBUTE_TEMPORARY | FILE_ATTRIBUTE_OFFLINE |
                               FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    const DWORD wanted = attributes & settable;
    return SetFileAttributesW(WidePath(path).c_str(), wanted != 0 ? wanted : FILE_ATTRIBUTE_NORMAL)
               ? Fault::None
               : LastFault();
}

Fault ReadFileLength(const std::string& path, std::uint64_t& length) {
    WIN32_FILE_ATTRIBUTE_DATA facts;
    if (!AskByName(WidePath(path), facts))
        return LastFault();
    if ((facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return Fault::AccessDenied;
    length = Joined(facts.nFileSizeHigh, facts.nFileSizeLow);
    return Fault::None;
}

Fault ReadFileFacts(const std::string& path, FileFacts& facts) {
    const std::wstring wide = WidePath(path);
    // Open without access rights, so that files held by other programs can be queried.
    HANDLE handle = CreateFileW(
        wide.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        WIN32_FIND_DATAW found;
        if ((error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) ||
            !FindByName(wide, found))
            return FaultOfError(error);
        facts.Attributes = found.dwFileAttributes;
        facts.Length = Joined(found.nFileSizeHigh, found.nFileSizeLow);
        facts.HardLinks = 1;
        facts.IsLink = TellsLink(found.dwFileAttributes, found.dwReserved0);
        facts.ReparseTag = found.dwReserved0;
        return Fault::None;
    }
    // Two queries to the file itself. GetFileInformationByHandle would also query the volume, which
    // can take longer than everything else.
    FILE_STANDARD_INFO known;
    FILE_ATTRIBUTE_TAG_INFO tagged;
    const Fault fault =
        GetFileInformationByHandleEx(handle, FileStandardInfo, &known, sizeof known) &&
                AskForTag(handle, tagged)
            ? Fault::None
            : LastFault();
    CloseHandle(handle);
    if (Failed(fault))
        return fault;
    DWORD attributes = tagged.FileAttributes;
    const DWORD tag = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? tagged.ReparseTag : 0;
    // Wine opens a link's target whatever the flags say; only the name still reveals the link.
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        const DWORD byName = GetFileAttributesW(wide.c_str());
        if (byName != INVALID_FILE_ATTRIBUTES)
            attributes |= byName & FILE_ATTRIBUTE_REPARSE_POINT;
    }
    facts.Attributes = attributes;
    facts.Length = static_cast<std::uint64_t>(known.EndOfFile.QuadPart);
    facts.HardLinks = known.NumberOfLinks;
    facts.IsLink = TellsLink(attributes, tag);
    facts.ReparseTag = tag;
    return Fault::None;
}

Fault ListStreams(const std::string& path, std::vector<Stream>& streams) {
    std::vector<Stream> listed;
    WIN32_FIND_STREAM_DATA found;
    HANDLE search = FindFirstStreamW(WidePath(path).c_str(), FindStreamInfoStandard, &found, 0);
    DWORD error = GetLastError();
    bool more = search != INVALID_HANDLE_VALUE;
    while (more) {
        // The name has the form ":stream:$DATA"; for the unnamed stream "::$DATA".
        std::wstring name = found.cStreamName;
        const std::wstring kind = L":$DATA";
        if (name.size() > kind.size() &&
            name.compare(name.size() - kind.size(), kind.size(), kind) == 0)
            name.resize(name.size() - kind.size());
        if (name.size() > 1 && name[0] == L':')
            listed.push_back(
                {path + Narrow(name), static_cast<std::uint64_t>(found.StreamSize.QuadPart)});
        more = FindNextStreamW(search, &found) != 0;
        error = GetLastError(); // read now, before another call changes it
    }
    if (search != INVALID_HANDLE_VALUE)
        FindClose(search);
    switch (error) {
    case ERROR_HANDLE_EOF:           // end of the list, or a file without streams
    case ERROR_INVALID_PARAMETER:    // a file system without streams
    case ERROR_INVALID_FUNCTION:     // the same, from a redirector
    case ERROR_NOT_SUPPORTED:        // the same
    case ERROR_CALL_NOT_IMPLEMENTED: // the same, from Wine
        streams = std::move(listed);
        return Fault::None;
    default:
        return error == ERROR_SUCCESS ? Fault::Other : FaultOfError(error);
    }
}

Fault ListNames(const std::string& path, std::vector<std::string>& names) {
    // Looked up at run time: Wine has neither and would not load a program that imports them.
    using FindFirst = HANDLE(WINAPI*)(LPCWSTR, DWORD, LPDWORD, PWSTR);
    using FindNext = BOOL(WINAPI*)(HANDLE, LPDWORD, PWSTR);
    static const HMODULE library = GetModuleHandleW(L"kernel32");
    static const auto findFirst = reinterpret_cast<FindFirst>(
        reinterpret_cast<void (*)()>(GetProcAddress(library, "FindFirstFileNameW")));
    static const auto findNext = reinterpret_cast<FindNext>(
        reinterpret_cast<void (*)()>(GetProcAddress(library, "FindNextFileNameW")));
    if (findFirst == nullptr || findNext == nullptr)
        return Fault::NotSupported;
    const std::wstring wide = WidePath(path);
    std::wstring volume(wide.size() + MAX_PATH, L'\0'); // "\\?\C:\", or where it is mounted
    if (!GetVolumePathNameW(wide.c_str(), volume.data(), static_cast<DWORD>(volume.size())))
        return LastFault();
    volume.resize(std::wcslen(volume.c_str()));
    while (!volume.empty() && volume.back() == L'\\')
        volume.pop_back();

    std::vector<std::string> found;
    std::wstring name(MAX_PATH, L'\0'); // one name at a time: "\folder\file"
    HANDLE search = INVALID_HANDLE_VALUE;
    DWORD error = ERROR_SUCCESS;
    while (error == ERROR_SUCCESS) {
        auto size = static_cast<DWORD>(name.size());
        bool more = false;
        if (search == INVALID_HANDLE_VALUE) {
            search = findFirst(wide.c_str(), 0, &size, name.data());
            more = search != INVALID_HANDLE_VALUE;
        } else {
            more = findNext(search, &size, name.data()) != 0;
        }
        if (more) {
            found.push_back(NarrowPath(volume + name.c_str()));
        } else if (error = GetLastError(); error == ERROR_MORE_DATA && size > name.size()) {
            name.resize(size);
            error = ERROR_SUCCESS;
        }
    }
    if (search != INVALID_HANDLE_VALUE)
        FindClose(search);
    if (error != ERROR_HANDLE_EOF)
        return FaultOfError(error);
    names = std::move(found);
    return Fault::None;
}

Fault RemoveFile(const std::string& path) {
    // For a link this deletes the link itself.
    return DeleteFileW(WidePath(path).c_str()) ? Fault::None : LastFault();
}

Fault RenameReplacing(const std::string& from, const std::string& to) {
    return MoveFileExW(WidePath(from).c_str(), WidePath(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
               ? Fault::None
               : LastFault();
}

Fault RenameNew(const std::string& from, const std::string& to) {
    return MoveFileExW(WidePath(from).c_str(), WidePath(to).c_str(), MOVEFILE_WRITE_THROUGH)
               ? Fault::None
               : LastFault();
}

Fault WriteDates(const std::string& path, std::int64_t seconds) {
    HANDLE handle =
        CreateFileW(WidePath(path).c_str(), FILE_WRITE_ATTRIBUTES,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return LastFault();
    constexpr LONGLONG from1601To1970 = 11'644'473'600, unitsPerSecond = 10'000'000;
    FILE_BASIC_INFO dates = {}; // no attributes: those stay
    dates.CreationTime.QuadPart = (from1601To1970 + seconds) * unitsPerSecond;
    dates.LastAccessTime = dates.LastWriteTime = dates.ChangeTime = dates.CreationTime;
    const Fault fault = SetFileInformationByHandle(handle, FileBasicInfo, &dates, sizeof dates)
                            ? Fault::None
                            : LastFault();
    CloseHandle(handle);
    return fault;
}

bool FileExists(const std::string& path) {
    std::uint32_t attributes = 0;
    return !Failed(ReadAttributes(path, attributes)) &&
           (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

} // namespace platform
