// The auxiliary library: sets a file's length and forces its data to the disk, by the file's path
// as a string in the process's ANSI code page (UTF-8 in Nullwright, by its manifest).
//
// Every function returns 0 on success and a negative number on failure. None of them creates a
// file.
#include "win32/Wide.h"

#include <cstdint>
#include <windows.h>

namespace {

constexpr std::int32_t resultDone = 0;
constexpr std::int32_t resultBadArgument = -1; // no path, or a length below −1
constexpr std::int32_t resultCannotOpen = -2;
constexpr std::int32_t resultNotDone = -3;
constexpr std::int32_t resultHeld = -4; // another program holds the file

/// Tells a file held by another program from any other failure of the last call, which is `result`.
std::int32_t FailureOr(std::int32_t result) {
    switch (GetLastError()) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_BUSY:
        return resultHeld;
    default:
        return result;
    }
}

/// Memory from the process heap, so that this library needs no C++ runtime.
wchar_t* Room(std::size_t units) {
    return static_cast<wchar_t*>(HeapAlloc(GetProcessHeap(), 0, units * sizeof(wchar_t)));
}

/// The path's UTF-16 units, or nullptr when there are none. The caller frees them.
wchar_t* WideFromAnsi(const char* path, std::size_t& length) {
    std::size_t bytes = 0;
    while (path[bytes] != '\0')
        if (++bytes > 0x20000) // no path is that long
            return nullptr;
    wchar_t* units = bytes > 0 ? Room(bytes) : nullptr;
    if (units == nullptr)
        return nullptr;
    if (GetACP() == CP_UTF8) {
        // The system's conversion cannot carry half a surrogate pair.
        length = platform::WidenUnits(path, bytes, units);
    } else {
        const int count = static_cast<int>(bytes);
        length = static_cast<std::size_t>(
            MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, path, count, units, count));
    }
    if (length == 0) {
        HeapFree(GetProcessHeap(), 0, units);
        return nullptr;
    }
    return units;
}

/// Sets the last error also when it fails before it calls the system.
HANDLE OpenExisting(const char* path, DWORD rights, DWORD sharing) {
    std::size_t length = 0;
    wchar_t* units = WideFromAnsi(path, length);
    HANDLE file = INVALID_HANDLE_VALUE;
    DWORD error = ERROR_INVALID_NAME;
    if (wchar_t* form = units != nullptr ? Room(length + 5) : nullptr; form != nullptr) {
        form[platform::ExtendPath(units, length, form)] = L'\0';
        file = CreateFileW(form, rights, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
        error = GetLastError();
        HeapFree(GetProcessHeap(), 0, form);
    }
    if (units != nullptr)
        HeapFree(GetProcessHeap(), 0, units);
    SetLastError(error);
    return file;
}

} // namespace

/// Sets a file's length in bytes. A length of −1 changes nothing; the result is then 0 when the
/// file can be opened for change: it exists, is writable, and no other program has it open for
/// writing.
extern "C" std::int32_t _change_filesize64(const char* path, std::int64_t newLength) {
    if (path == nullptr || newLength < -1)
        return resultBadArgument;
    HANDLE file = OpenExisting(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ);
    if (file == INVALID_HANDLE_VALUE)
        return FailureOr(resultCannotOpen);
    std::int32_t result = resultDone;
    if (newLength >= 0) {
        LARGE_INTEGER end;
        end.QuadPart = newLength;
        if (!SetFilePointerEx(file, end, nullptr, FILE_BEGIN) || !SetEndOfFile(file))
            result = FailureOr(resultNotDone);
    }
    if (!CloseHandle(file))
        result = resultNotDone;
    return result;
}

/// The same for lengths below 2 GiB.
extern "C" std::int32_t _change_filesize(const char* path, std::int32_t newLength) {
    return _change_filesize64(path, newLength);
}

/// Returns after the file's data have been forced to the disk.
extern "C" std::int32_t _flush_file(const char* path) {
    if (path == nullptr)
        return resultBadArgument;
    // A flush needs no exclusive access, so allow all sharing.
    HANDLE file =
        OpenExisting(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    if (file == INVALID_HANDLE_VALUE)
        return resultCannotOpen;
    std::int32_t result = FlushFileBuffers(file) ? resultDone : resultNotDone;
    if (!CloseHandle(file))
        result = resultNotDone;
    return result;
}
