// Where paths lead: identity of folders, folders held open, real paths, volumes.
#include "platform/Places.h"
#include "platform/win32/AskForText.h"
#include "platform/win32/FindData.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <windows.h>

namespace platform {
namespace {

/// Opens a folder or a file for queries only, with all sharing allowed.
HANDLE OpenToAsk(const std::wstring& path, DWORD flags) {
    return CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                       nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
}

FolderIdentity IdentityOf(HANDLE handle) {
    FolderIdentity identity;
    FILE_ID_INFO known;
    if (GetFileInformationByHandleEx(handle, FileIdInfo, &known, sizeof known)) {
        for (int i = 7; i >= 0; --i) {
            identity.Low = identity.Low << 8 | known.FileId.Identifier[i];
            identity.High = identity.High << 8 | known.FileId.Identifier[i + 8];
        }
        identity.Volume = known.VolumeSerialNumber;
        // All bits set: the file system has no number for this folder.
        return identity.Low == ~std::uint64_t{0} ? FolderIdentity{identity.Volume} : identity;
    }
    BY_HANDLE_FILE_INFORMATION facts; // FAT and old servers
    if (GetFileInformationByHandle(handle, &facts)) {
        identity.Volume = facts.dwVolumeSerialNumber;
        identity.Low = Joined(facts.nFileIndexHigh, facts.nFileIndexLow);
    }
    return identity.Low == ~std::uint64_t{0} ? FolderIdentity{identity.Volume} : identity;
}

bool IsRoot(const std::wstring& path) {
    return path.size() <= sizeof R"(\\?\C:\)" - 1;
}

/// Whether an opened folder is a link. Wine opens a link's target whatever the flags say, so there
/// only the name reveals it.
bool TellsLinkOf(HANDLE handle, const std::wstring& path, bool& isFolder) {
    FILE_ATTRIBUTE_TAG_INFO tagged = {};
    if (!GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &tagged, sizeof tagged)) {
        BY_HANDLE_FILE_INFORMATION facts = {}; // a file system without reparse tags has no links
        isFolder = GetFileInformationByHandle(handle, &facts) &&
                   (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        return false;
    }
    isFolder = (tagged.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if ((tagged.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
        return TellsLink(tagged.FileAttributes, tagged.ReparseTag);
    const DWORD byName = GetFileAttributesW(path.c_str());
    return byName != INVALID_FILE_ATTRIBUTES && TellsLink(byName, 0);
}

bool HasLetter(const std::wstring& path) {
    const std::wstring prefix = L"\\\\?\\";
    return path.size() > 6 && path.compare(0, 4, prefix) == 0 && path[5] == L':' &&
           path[6] == L'\\';
}

} // namespace

// The right to list counts as read access, which makes the sharing mode effective: without shared
// deletion, the folder can be neither renamed nor removed.
Fault HoldFolder(const std::string& path, FolderHold& hold) {
    const std::wstring wide = WidePath(path);
    HANDLE handle = CreateFileW(wide.c_str(), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        // A link can be recognised without the right to list its target.
        const DWORD error = GetLastError();
        const DWORD byName = GetFileAttributesW(wide.c_str());
        if (error == ERROR_ACCESS_DENIED && byName != INVALID_FILE_ATTRIBUTES && !IsRoot(wide) &&
            (byName & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
            hold = {0, {}, true};
            return Fault::None;
        }
        return FaultOfError(error);
    }
    bool isFolder = true;
    const bool isLink = TellsLinkOf(handle, wide, isFolder) && !IsRoot(wide);
    if (!isFolder || isLink) {
        CloseHandle(handle);
        if (!isFolder)
            return Fault::NotFound;
        hold = {0, {}, true};
        return Fault::None;
    }
    hold = {reinterpret_cast<std::uintptr_t>(handle), IdentityOf(handle), false};
    return Fault::None;
}

void LetGo(FolderHold& hold) {
    if (hold.Handle != 0)
        CloseHandle(reinterpret_cast<HANDLE>(hold.Handle)); // NOLINT: that is what the seam carries
    hold.Handle = 0;
}

Fault ReadFolderIdentity(const std::string& path, FolderIdentity& identity) {
    HANDLE handle = OpenToAsk(WidePath(path), 0);
    if (handle == INVALID_HANDLE_VALUE)
        return LastFault();
    identity = IdentityOf(handle);
    CloseHandle(handle);
    return Fault::None;
}

Fault ReadRealPath(const std::string& path, std::string& real) {
    const std::wstring wide = WidePath(path);
    HANDLE handle = OpenToAsk(wide, IsRoot(wide) ? 0 : FILE_FLAG_OPEN_REPARSE_POINT);
    if (handle == INVALID_HANDLE_VALUE)
        return LastFault();
    // A server or a driver may know a file only by the name by which it was opened.
    std::wstring name;
    for (const DWORD form : {DWORD{FILE_NAME_NORMALIZED}, DWORD{FILE_NAME_OPENED}}) {
        name = AskForText([handle, form](wchar_t* buffer, DWORD size) {
            return GetFinalPathNameByHandleW(handle, buffer, size, form | VOLUME_NAME_DOS);
        });
        if (!name.empty())
            break;
    }
    CloseHandle(handle);
    if (!HasLetter(name))
        return Fault::NotSupported;
    real = NarrowPath(name);
    return Fault::None;
}

Fault ReadVolumeRoot(const std::string& path, std::string& root) {
    const std::wstring wide = WidePath(path);
    std::wstring found(wide.size() + 2, L'\0');
    if (!GetVolumePathNameW(wide.c_str(), found.data(), static_cast<DWORD>(found.size())))
        return LastFault();
    found.resize(found.find(L'\0'));
    root = NarrowPath(found);
    return Fault::None;
}

bool FolderTellsCase(const std::string& path) {
    constexpr ULONG flagTellsCase =
        1; // FILE_CS_FLAG_CASE_SENSITIVE_DIR, missing in some compilers' headers
    FILE_CASE_SENSITIVE_INFO known = {};
    HANDLE handle = OpenToAsk(WidePath(path), 0);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const bool told =
        GetFileInformationByHandleEx(handle, FileCaseSensitiveInfo, &known, sizeof known) &&
        (known.Flags & flagTellsCase) != 0;
    CloseHandle(handle);
    return told;
}

bool SameButForCase(const std::string& name, const std::string& other) {
    const std::wstring one = Widen(name);
    const std::wstring two = Widen(other);
    return CompareStringOrdinal(one.data(), static_cast<int>(one.size()), two.data(),
                                static_cast<int>(two.size()), TRUE) == CSTR_EQUAL;
}

} // namespace platform
