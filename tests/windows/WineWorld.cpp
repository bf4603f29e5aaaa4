// The contract's world on Windows, or on Wine.
#include "contract/ContractWorld.h"

#include "windows/Environment.h"

namespace contract {
namespace {

std::string scratch;
HANDLE held;

/// On Wine: a file's name on the host, in quotes; "" elsewhere.
std::wstring HostName(const std::wstring& path) {
    using UnixName = char*(CDECL*)(const wchar_t*);
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void (*)()>(
        GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    char* name = unixName != nullptr ? unixName(path.c_str()) : nullptr;
    const std::wstring quoted =
        name != nullptr ? L"\"" + platform::Widen(name) + L"\"" : std::wstring();
    HeapFree(GetProcessHeap(), 0, name);
    return quoted;
}

/// Lets a program of the host make or remove a link, as Wine says that it makes links and makes
/// none. True when `path` is there, or gone, in the end.
bool LetHostLink(const std::wstring& line, const std::wstring& path, bool toBeThere) {
    const PROCESS_INFORMATION process = Execute(line);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    for (int i = 0; i < 1000; ++i) { // a program of the host cannot be waited for: it has no handle
        if ((GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) == toBeThere)
            return true;
        Sleep(10);
    }
    return false;
}

void RemoveLink(const std::wstring& path) {
    if (const std::wstring name = HostName(path); name.empty())
        RemoveDirectoryW(path.c_str());
    else
        LetHostLink(L"\\\\?\\unix\\bin\\unlink " + name, path, false);
}

/// Removes a folder with all in it, links as links. Nothing but the scratch folder.
void RemoveBelow(const std::string& folder) {
    if (scratch.empty() || folder.compare(0, scratch.size(), scratch) != 0)
        return;
    (void)platform::EnumerateFolder(folder, [&](const platform::FolderEntry& entry) {
        const std::string path = folder + "\\" + entry.Name;
        if (!entry.IsFolder) {
            (void)platform::WriteAttributes(path, 0);
            (void)platform::RemoveFile(path);
        } else if (entry.IsLink) {
            RemoveLink(platform::WidePath(path));
        } else {
            RemoveBelow(path);
        }
        return true;
    });
    (void)platform::RemoveFolder(folder);
}

} // namespace

std::string MakeScratchFolder() {
    std::string base = Environment(L"NW_TEST_FOLDER");
    if (base.empty())
        base = Environment(L"TEMP");
    if (base.empty())
        return {};
    scratch = base + "\\nullwright-contract-" + std::to_string(GetCurrentProcessId());
    RemoveBelow(scratch);
    if (!CreateDirectoryW(platform::WidePath(scratch).c_str(), nullptr))
        scratch.clear();
    return scratch;
}

void RemoveScratchFolder() {
    RemoveBelow(scratch);
    scratch.clear();
}

std::string SmallDrive() {
    return Environment(L"NW_SMALL_DRIVE");
}

void HoldFile(const std::string& path) {
    held = CreateFileW(platform::WidePath(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0,
                       nullptr);
    EXPECT_NE(held, INVALID_HANDLE_VALUE);
}

void LetGoOfFile() {
    CloseHandle(held);
}

bool MakeFolderLink(const std::string& path, const std::string& target) {
    const std::wstring link = platform::Widen(path);
    constexpr DWORD withoutPrivilege = 2; // SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE
    return (CreateSymbolicLinkW(link.c_str(), platform::Widen(target).c_str(),
                                SYMBOLIC_LINK_FLAG_DIRECTORY | withoutPrivilege) &&
            GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES) ||
           (!HostName(link).empty() &&
            LetHostLink(L"\\\\?\\unix\\bin\\ln -s " + HostName(platform::Widen(target)) + L" " +
                            HostName(link),
                        link, true));
}

bool MakeHardLink(const std::string& path, const std::string& other) {
    return CreateHardLinkW(platform::WidePath(other).c_str(), platform::WidePath(path).c_str(),
                           nullptr) != 0;
}

std::int64_t LastWritten(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA known = {};
    GetFileAttributesExW(platform::WidePath(path).c_str(), GetFileExInfoStandard, &known);
    const FILETIME& time = known.ftLastWriteTime;
    return static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 |
                                     time.dwLowDateTime) /
               10'000'000 -
           11'644'473'600;
}

bool KeepsStreams() {
    DWORD flags = 0;
    return GetVolumeInformationW(platform::Widen(scratch.substr(0, 3)).c_str(), nullptr, 0, nullptr,
                                 nullptr, &flags, nullptr, 0) &&
           (flags & FILE_NAMED_STREAMS) != 0;
}

} // namespace contract
