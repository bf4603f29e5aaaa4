// Open files: reading, writing, lengths. Names and attributes are in FileNames.cpp.
#include "platform/Files.h"
#include "platform/win32/FileHandle.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <algorithm>
#include <windows.h>

namespace platform {
namespace {

/// A call takes a 32-bit count; this limit per call is a multiple of every cluster size.
constexpr std::size_t intLargestRun = std::size_t{1} << 30;

/// Of reading past the cache: a parameter that the system does not take means that it cannot.
Fault FaultOfRead() {
    const DWORD error = GetLastError();
    return error == ERROR_INVALID_PARAMETER ? Fault{Fault::NotSupported.Kind, error} : LastFault();
}

} // namespace

Fault OpenFile(const std::string& path, Access access, File& file) {
    DWORD rights = GENERIC_READ | GENERIC_WRITE;
    DWORD sharing = FILE_SHARE_READ;
    DWORD disposition = OPEN_EXISTING;
    // Overwriting and filling write a file from start to end, so the system need not cache it.
    DWORD flags = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN;
    switch (access) {
    case Access::Read:
        rights = GENERIC_READ;
        sharing = FILE_SHARE_READ | FILE_SHARE_WRITE;
        flags = FILE_ATTRIBUTE_NORMAL;
        break;
    case Access::ReadPastCache:
        rights = GENERIC_READ;
        sharing = FILE_SHARE_READ | FILE_SHARE_WRITE;
        flags = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_NO_BUFFERING;
        break;
    case Access::Change:
        break;
    case Access::ChangeItself:
        flags |= FILE_FLAG_OPEN_REPARSE_POINT;
        break;
    case Access::CreateNew:
        disposition = CREATE_NEW;
        break;
    case Access::Replace:
        // Open first, then truncate: CREATE_ALWAYS refuses to empty a hidden or system file.
        disposition = OPEN_ALWAYS;
        break;
    }
    HANDLE handle =
        CreateFileW(WidePath(path).c_str(), rights, sharing, nullptr, disposition, flags, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return access == Access::ReadPastCache ? FaultOfRead() : LastFault();
    if (access == Access::Replace && !SetEndOfFile(handle)) {
        const Fault fault = LastFault();
        CloseHandle(handle);
        return fault;
    }
    file.Handle = reinterpret_cast<std::uintptr_t>(handle);
    return Fault::None;
}

Fault ReadBytes(File file, void* data, std::size_t size, std::size_t& read) {
    auto* bytes = static_cast<unsigned char*>(data);
    std::size_t total = 0;
    while (total < size) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min(size - total, intLargestRun));
        if (!ReadFile(HandleOf(file), bytes + total, wanted, &count, nullptr)) {
            if (GetLastError() == ERROR_HANDLE_EOF)
                break;
            return FaultOfRead();
        }
        total += count;
        if (count < wanted) // the end; past the cache nothing could be read from there on
            break;
    }
    read = total;
    return Fault::None;
}

Fault WriteBytes(File file, const void* data, std::size_t size) {
    const auto* bytes = static_cast<const unsigned char*>(data);
    while (size > 0) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min(size, intLargestRun));
        if (!WriteFile(HandleOf(file), bytes, wanted, &count, nullptr))
            return LastFault();
        if (count != wanted)
            return Fault::DiskFull;
        bytes += count;
        size -= count;
    }
    return Fault::None;
}

Fault SeekTo(File file, std::uint64_t position) {
    LARGE_INTEGER target;
    target.QuadPart = static_cast<LONGLONG>(position);
    return SetFilePointerEx(HandleOf(file), target, nullptr, FILE_BEGIN) ? Fault::None
                                                                         : LastFault();
}

Fault ReadLength(File file, std::uint64_t& length) {
    LARGE_INTEGER size;
    if (!GetFileSizeEx(HandleOf(file), &size))
        return LastFault();
    length = static_cast<std::uint64_t>(size.QuadPart);
    return Fault::None;
}

Fault ChangeLength(File file, std::uint64_t length) {
    FILE_END_OF_FILE_INFO end; // unlike SetEndOfFile, this keeps the position
    end.EndOfFile.QuadPart = static_cast<LONGLONG>(length);
    return SetFileInformationByHandle(HandleOf(file), FileEndOfFileInfo, &end, sizeof end)
               ? Fault::None
               : LastFault();
}

Fault FlushBytes(File file) {
    return FlushFileBuffers(HandleOf(file)) ? Fault::None : LastFault();
}

Fault CloseFile(File& file) {
    HANDLE handle = HandleOf(file);
    file.Handle = 0;
    return CloseHandle(handle) ? Fault::None : LastFault();
}

} // namespace platform
