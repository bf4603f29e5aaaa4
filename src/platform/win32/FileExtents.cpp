// Where an open file's bytes lie: its size, its clusters, its allocated ranges.
#include "platform/Files.h"

#include "platform/win32/FileHandle.h"
#include "platform/win32/LastFault.h"

#include <windows.h>
#include <winioctl.h>

namespace platform {
Fault ReadOpenFileFacts(File file, OpenFileFacts& facts) {
    FILE_STANDARD_INFO known;
    FILE_BASIC_INFO basic;
    if (!GetFileInformationByHandleEx(HandleOf(file), FileStandardInfo, &known, sizeof known) ||
        !GetFileInformationByHandleEx(HandleOf(file), FileBasicInfo, &basic, sizeof basic))
        return LastFault();
    facts.Length = static_cast<std::uint64_t>(known.EndOfFile.QuadPart);
    facts.Allocated = static_cast<std::uint64_t>(known.AllocationSize.QuadPart);
    facts.HardLinks = known.NumberOfLinks;
    facts.Attributes = basic.FileAttributes;
    return Fault::None;
}

Fault ReadFileNumber(File file, std::uint64_t& number) {
    BY_HANDLE_FILE_INFORMATION known;
    if (!GetFileInformationByHandle(HandleOf(file), &known))
        return LastFault();
    // The upper 16 bits count how often the record was used.
    const std::uint64_t index = std::uint64_t{known.nFileIndexHigh & 0xFFFFu} << 32;
    if ((index | known.nFileIndexLow) == 0)
        return Fault::NotSupported;
    number = index | known.nFileIndexLow;
    return Fault::None;
}

Fault HasClusters(File file, bool& hasClusters) {
    STARTING_VCN_INPUT_BUFFER start = {};
    RETRIEVAL_POINTERS_BUFFER found = {}; // room for one extent; ERROR_MORE_DATA is an answer, too
    DWORD size = 0;
    if (!DeviceIoControl(HandleOf(file), FSCTL_GET_RETRIEVAL_POINTERS, &start, sizeof start, &found,
                         sizeof found, &size, nullptr)) {
        const DWORD error = GetLastError();
        if (error != ERROR_MORE_DATA && error != ERROR_HANDLE_EOF)
            return error == ERROR_SUCCESS ? Fault::NotSupported : FaultOfError(error);
        hasClusters = error == ERROR_MORE_DATA;
        return Fault::None;
    }
    // Wine succeeds for every file, with an empty extent that begins after the requested one.
    if (size == 0 || found.ExtentCount == 0 || found.StartingVcn.QuadPart != 0 ||
        found.Extents[0].NextVcn.QuadPart <= 0)
        return Fault::NotSupported;
    hasClusters = true;
    return Fault::None;
}

Fault ListAllocatedRanges(File file, std::uint64_t length, std::vector<Range>& ranges) {
    constexpr DWORD intMost = 256;
    FILE_ALLOCATED_RANGE_BUFFER found[intMost];
    FILE_ALLOCATED_RANGE_BUFFER asked = {};
    std::vector<Range> all;
    bool more = true;
    while (more && static_cast<std::uint64_t>(asked.FileOffset.QuadPart) < length) {
        asked.Length.QuadPart = static_cast<LONGLONG>(length) - asked.FileOffset.QuadPart;
        DWORD size = 0;
        more = false;
        if (!DeviceIoControl(HandleOf(file), FSCTL_QUERY_ALLOCATED_RANGES, &asked, sizeof asked,
                             found, sizeof found, &size, nullptr)) {
            if (GetLastError() != ERROR_MORE_DATA)
                return LastFault();
            more = true;
        }
        for (DWORD i = 0; i < size / sizeof found[0]; ++i) {
            const auto from = static_cast<std::uint64_t>(found[i].FileOffset.QuadPart);
            const std::uint64_t to = from + static_cast<std::uint64_t>(found[i].Length.QuadPart);
            if (from < length && to > from)
                all.push_back({from, to < length ? to : length});
        }
        if (size < sizeof found[0])
            break;
        asked.FileOffset.QuadPart = static_cast<LONGLONG>(all.empty() ? length : all.back().To);
    }
    ranges = std::move(all);
    return Fault::None;
}

} // namespace platform
