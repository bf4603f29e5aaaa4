// Drives on Windows: letters, types, clusters, space, volumes, and flushing of their records.
#include "platform/Drives.h"
#include "platform/Folders.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <windows.h>
#include <winioctl.h>

#include <algorithm>

namespace platform {
namespace {

/// Without this, a query about a drive without a medium would open a box of the system and wait.
/// Initialised before any call can be made.
[[maybe_unused]] const UINT uintErrorMode =
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);

/// "C:\" for any text that begins with a drive letter, else "".
std::wstring RootOf(const std::string& text) {
    const char letter = text.empty() ? '\0' : static_cast<char>(text[0] & ~0x20);
    if (letter < 'A' || letter > 'Z' || (text.size() > 1 && text[1] != ':'))
        return {};
    return {static_cast<wchar_t>(letter), L':', L'\\'};
}

/// Opens a folder or a drive and flushes the data that the system still buffers for it.
Fault FlushOpened(const std::wstring& path) {
    HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return LastFault();
    const Fault fault = FlushFileBuffers(handle) ? Fault::None : LastFault();
    CloseHandle(handle);
    return fault;
}

/// The result of GetDiskSpaceInformationW: eleven counts of clusters and the cluster's size.
struct SpaceInformation {
    std::uint64_t ActualTotal, ActualAvailable, ActualPoolUnavailable;
    std::uint64_t CallerTotal, CallerAvailable, CallerPoolUnavailable;
    std::uint64_t Used, TotalReserved, StorageReserve, AvailableCommitted, PoolAvailable;
    DWORD SectorsPerCluster, BytesPerSector;
};

/// Unused bytes that the system reserves for itself, in addition to those it reports as free; 0
/// when it does not tell (before Windows 10, version 2004).
std::uint64_t ReservedBytes(const std::wstring& root) {
    using Ask = HRESULT(WINAPI*)(const wchar_t*, SpaceInformation*);
    static const auto ask = reinterpret_cast<Ask>(reinterpret_cast<void (*)()>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetDiskSpaceInformationW")));
    SpaceInformation facts{};
    if (!ask || FAILED(ask(root.c_str(), &facts)))
        return 0;
    return facts.TotalReserved * facts.SectorsPerCluster * facts.BytesPerSector;
}

} // namespace

std::string DriveLetters() {
    std::string letters;
    const DWORD drives = GetLogicalDrives();
    for (unsigned i = 0; i < 26; ++i)
        if ((drives >> i & 1u) != 0)
            letters += static_cast<char>('A' + i);
    return letters;
}

DriveType TypeOfDrive(const std::string& root) {
    const std::wstring wide = RootOf(root);
    if (wide.empty())
        return DriveType::NoRoot;
    const UINT type = GetDriveTypeW(wide.c_str());
    return type <= DRIVE_RAMDISK ? static_cast<DriveType>(type) : DriveType::Unknown;
}

Fault ReadDriveSpace(const std::string& root, std::uint64_t& freeBytes, std::uint64_t& totalBytes,
                     std::uint64_t* freeOnVolume) {
    const std::wstring wide = RootOf(root);
    if (wide.empty())
        return Fault::InvalidName;
    ULARGE_INTEGER usable;
    ULARGE_INTEGER total;
    ULARGE_INTEGER unused;
    if (!GetDiskFreeSpaceExW(wide.c_str(), &usable, &total, &unused))
        return LastFault();
    if (freeOnVolume)
        *freeOnVolume = std::max(unused.QuadPart, usable.QuadPart) + ReservedBytes(wide);
    freeBytes = usable.QuadPart;
    totalBytes = total.QuadPart;
    return Fault::None;
}

Fault ReadClusterFacts(const std::string& root, ClusterFacts& facts) {
    std::wstring wide = RootOf(root);
    if (wide.empty())
        return Fault::InvalidName;
    const bool isMounted = root.size() > 3;
    if (isMounted)
        wide = WidePath(root) + L'\\';
    DWORD sectors = 0;
    DWORD bytes = 0;
    DWORD freeClusters = 0;
    DWORD totalClusters = 0;
    if (!GetDiskFreeSpaceW(wide.c_str(), &sectors, &bytes, &freeClusters, &totalClusters))
        return LastFault();
    facts = {bytes, sectors, freeClusters, totalClusters};
    // These counts are 32 bits wide (16 TiB in clusters of 4 KiB); byte counts are not limited so.
    const std::uint64_t cluster = std::uint64_t{bytes} * sectors;
    std::uint64_t freeBytes = 0;
    std::uint64_t totalBytes = 0;
    if (cluster > 0 && !isMounted && !Failed(ReadDriveSpace(root, freeBytes, totalBytes))) {
        facts.FreeClusters = freeBytes / cluster;
        facts.TotalClusters = totalBytes / cluster;
    }
    return Fault::None;
}

Fault ReadVolumeFacts(const std::string& root, VolumeFacts& facts) {
    const std::wstring wide = RootOf(root);
    if (wide.empty())
        return Fault::InvalidName;
    wchar_t label[MAX_PATH + 1] = {};
    wchar_t system[MAX_PATH + 1] = {};
    DWORD flags = 0;
    if (!GetVolumeInformationW(wide.c_str(), label, MAX_PATH + 1, nullptr, nullptr, &flags, system,
                               MAX_PATH + 1))
        return LastFault();
    facts = {Narrow(label), Narrow(system), (flags & FILE_READ_ONLY_VOLUME) != 0};
    return Fault::None;
}

Fault ReadRecordCount(const std::string& root, std::uint64_t& records) {
    const std::wstring wide = RootOf(root);
    if (wide.empty())
        return Fault::InvalidName;
    Fault fault = Fault::NotSupported;
    // Try the root folder, which every user may open, then the device.
    for (const std::wstring& path : {wide, L"\\\\.\\" + wide.substr(0, 2)}) {
        HANDLE handle = CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES | FILE_TRAVERSE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (handle == INVALID_HANDLE_VALUE) {
            fault = LastFault();
            continue;
        }
        NTFS_VOLUME_DATA_BUFFER known = {};
        DWORD size = 0;
        const BOOL done = DeviceIoControl(handle, FSCTL_GET_NTFS_VOLUME_DATA, nullptr, 0, &known,
                                          sizeof known, &size, nullptr);
        fault = done ? Fault::NotSupported : LastFault();
        CloseHandle(handle);
        if (done && known.BytesPerFileRecordSegment > 0) {
            records = static_cast<std::uint64_t>(known.MftValidDataLength.QuadPart) /
                      known.BytesPerFileRecordSegment;
            return Fault::None;
        }
    }
    return fault;
}

Fault FlushFolder(const std::string& path) {
    return FlushOpened(WidePath(path));
}

Fault FlushRecords(const std::string& folder) {
    const std::wstring root = RootOf(folder);
    if (root.empty())
        return Fault::InvalidName;
    const Fault fault = FlushFolder(folder);
    // Only an administrator may open the drive itself; nothing is written through the handle.
    const bool blnDrive = !Failed(FlushOpened(L"\\\\.\\" + root.substr(0, 2)));
    return blnDrive ? Fault::None : fault;
}

} // namespace platform
