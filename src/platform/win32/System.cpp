// Well-known folders, the command line, the clock and program facts on Windows.
#include "platform/System.h"
#include "platform/win32/AskForText.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <cstdlib>
#include <windows.h>

#include <knownfolders.h>
#include <shellapi.h>
#include <shlobj.h>

namespace platform {
namespace {

/// The same path with the long forms of names such as "PROGRA~1", as a listing returns them: paths
/// that are compared must be written in one way only. Missing parts stay unchanged.
std::wstring WithLongNames(const std::wstring& path) {
    const std::wstring names = AskForText([&path](wchar_t* buffer, DWORD size) -> std::size_t {
        return GetLongPathNameW(path.c_str(), buffer, size);
    });
    return names.empty() ? path : names;
}

} // namespace

Fault ReadApplicationDataFolder(std::string& folder) {
    PWSTR path = nullptr; // the roaming folder is special folder 26
    const HRESULT result =
        SHGetKnownFolderPath(FOLDERID_RoamingAppData, KF_FLAG_CREATE, nullptr, &path);
    if (SUCCEEDED(result))
        folder = NarrowPath(path);
    CoTaskMemFree(path);
    if (SUCCEEDED(result))
        return Fault::None;
    return HRESULT_FACILITY(result) == FACILITY_WIN32
               ? FaultOfError(static_cast<std::uint32_t>(HRESULT_CODE(result)))
               : Fault::Other;
}

std::string ProgramPath() {
    static const std::string path =
        NarrowPath(WithLongNames(AskForText([](wchar_t* buffer, DWORD size) -> std::size_t {
            return GetModuleFileNameW(nullptr, buffer, size);
        })));
    return path;
}

std::string ProgramFolder() {
    static const std::string folder = [] {
        const std::string path = ProgramPath();
        const std::size_t last = path.find_last_of('\\');
        return last == std::string::npos ? std::string() : path.substr(0, last);
    }();
    return folder;
}

std::string SystemFolder() {
    return NarrowPath(AskForText([](wchar_t* buffer, DWORD size) -> std::size_t {
        return GetSystemWindowsDirectoryW(buffer, size);
    }));
}

std::vector<std::string> CommandLineArguments() {
    std::vector<std::string> arguments;
    int count = 0;
    PWSTR* list = CommandLineToArgvW(GetCommandLineW(), &count);
    if (list == nullptr)
        return arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(Narrow(list[i]));
    LocalFree(list);
    return arguments;
}

Fault ChangeCurrentFolder(const std::string& folder) {
    // Not the "\\?\" form: the system would then append bare names to it unchanged.
    return SetCurrentDirectoryW(Widen(folder).c_str()) ? Fault::None : LastFault();
}

// The system resolves only the part before the names. It would strip trailing blanks and points
// from a name, and the shorter name may belong to another file.
std::string FullPath(const std::string& path) {
    const auto full = [](const std::wstring& text) {
        return AskForText([&text](wchar_t* buffer, DWORD size) -> std::size_t {
            return GetFullPathNameW(text.c_str(), size, buffer, nullptr);
        });
    };
    const auto slash = [&path](std::size_t at) {
        return at < path.size() && (path[at] == '\\' || path[at] == '/');
    };
    const bool onDrive = path.size() > 1 && path[1] == ':';
    if (path.empty() || (slash(0) && slash(1)))
        return path.empty() ? path : NarrowPath(WithLongNames(full(Widen(path))));
    std::string settled = path;
    if (!onDrive)
        settled = NarrowPath(full(slash(0) ? L"\\" : L".")) + "\\" + path;
    else if (!slash(2))
        settled = NarrowPath(full(Widen(path.substr(0, 2) + "."))) + "\\" + path.substr(2);
    return NarrowPath(WithLongNames(WidePath(settled)));
}

void EndForMistake(const std::string& text) {
    MessageBoxW(nullptr, Widen(text).c_str(), L"Nullwright",
                MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND);
    TerminateProcess(GetCurrentProcess(), ERROR_INTERNAL_ERROR);
    std::abort();
}

std::uint64_t TickCount() {
    return GetTickCount64();
}

double SecondsSinceMidnight() {
    FILETIME now;
    GetSystemTimePreciseAsFileTime(&now);
    SYSTEMTIME world;
    SYSTEMTIME local;
    if (!FileTimeToSystemTime(&now, &world) ||
        !SystemTimeToTzSpecificLocalTime(nullptr, &world, &local))
        GetLocalTime(&local);
    constexpr std::uint64_t unitsPerSecond = 10'000'000; // one unit is 100 ns
    const std::uint64_t units = std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime;
    return local.wHour * 3600.0 + local.wMinute * 60.0 + local.wSecond +
           static_cast<double>(units % unitsPerSecond) / static_cast<double>(unitsPerSecond);
}

} // namespace platform
