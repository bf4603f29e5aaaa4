// The nature of a drive, as far as Windows tells it to all users: solid-state, TRIM, compression,
// BitLocker, system protection.
#include "platform/Drives.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <windows.h>
#include <winioctl.h>

#include <shlobj.h>
#include <shobjidl.h>

#include <vector>

namespace platform {
namespace {

/// Sends one query to the device; false when it does not answer.
template<typename Answer>
bool Query(HANDLE device, STORAGE_PROPERTY_ID property, Answer& answer) {
    STORAGE_PROPERTY_QUERY query = {};
    query.PropertyId = property;
    query.QueryType = PropertyStandardQuery;
    DWORD size = 0;
    return DeviceIoControl(device, IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, &answer,
                           sizeof answer, &size, nullptr) &&
           size >= sizeof answer;
}

/// Uses the state that Explorer shows; the system's own interface is for administrators only.
std::optional<bool> BitLockerIsOn(const std::wstring& root) {
    const HRESULT begun = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    int state = -1; // no value received
    using NameToKey = HRESULT(WINAPI*)(const wchar_t*, PROPERTYKEY*);
    HMODULE library = LoadLibraryExW(L"propsys.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    const auto keyOf = library ? reinterpret_cast<NameToKey>(reinterpret_cast<void (*)()>(
                                     GetProcAddress(library, "PSGetPropertyKeyFromName")))
                               : nullptr;
    PROPERTYKEY key;
    IShellItem2* item = nullptr;
    if (keyOf && SUCCEEDED(keyOf(L"System.Volume.BitLockerProtection", &key)) &&
        SUCCEEDED(SHCreateItemFromParsingName(root.c_str(), nullptr, IID_PPV_ARGS(&item)))) {
        if (FAILED(item->GetInt32(key, &state)))
            state = -1;
        item->Release();
    }
    if (library)
        FreeLibrary(library);
    if (SUCCEEDED(begun))
        CoUninitialize();
    constexpr int isOn = 1, isOff = 2, isLocked = 6; // 0: unavailable; others: in transition
    if (state == isOn || state == isLocked)
        return true;
    if (state == 0 || state == isOff)
        return false;
    return std::nullopt;
}

/// System protection keeps a list of the volumes of which it makes restore points.
std::optional<bool> ProtectionIsOn(const std::wstring& root) {
    constexpr const wchar_t* key = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\SPP\\Clients";
    constexpr const wchar_t* client = L"{09F7EDC5-294E-4180-AF6A-FB0E6A0E9513}";
    wchar_t volume[64] = {};
    DWORD size = 0;
    if (!GetVolumeNameForVolumeMountPointW(root.c_str(), volume, 64) ||
        RegGetValueW(HKEY_LOCAL_MACHINE, key, client, RRF_RT_REG_MULTI_SZ, nullptr, nullptr,
                     &size) != ERROR_SUCCESS)
        return std::nullopt;
    std::vector<wchar_t> list(size / sizeof(wchar_t) + 2);
    if (RegGetValueW(HKEY_LOCAL_MACHINE, key, client, RRF_RT_REG_MULTI_SZ, nullptr, list.data(),
                     &size) != ERROR_SUCCESS)
        return std::nullopt;
    const std::wstring name = volume;
    for (const wchar_t* entry = list.data(); *entry; entry += std::wcslen(entry) + 1)
        if (_wcsnicmp(entry, name.c_str(), name.size()) == 0)
            return true;
    return false;
}

} // namespace

Fault ReadDriveNature(const std::string& root, DriveNature& nature) {
    const std::wstring wide = Widen(root.substr(0, 2)) + L"\\";
    DWORD flags = 0;
    if (!GetVolumeInformationW(wide.c_str(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0))
        return LastFault();
    DriveNature known;
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    known.Compressed =
        (flags & FILE_VOLUME_IS_COMPRESSED) != 0 ||
        (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_COMPRESSED) != 0);
    // Open without read or write access: that needs no rights.
    HANDLE device =
        CreateFileW((L"\\\\.\\" + wide.substr(0, 2)).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (device != INVALID_HANDLE_VALUE) {
        DEVICE_SEEK_PENALTY_DESCRIPTOR seek = {};
        if (Query(device, StorageDeviceSeekPenaltyProperty, seek))
            known.SolidState = !seek.IncursSeekPenalty;
        DEVICE_TRIM_DESCRIPTOR trim = {};
        if (Query(device, StorageDeviceTrimProperty, trim))
            known.Trims = trim.TrimEnabled != FALSE;
        CloseHandle(device);
    }
    known.Encrypted = BitLockerIsOn(wide);
    known.Protected = ProtectionIsOn(wide);
    nature = known;
    return Fault::None;
}

} // namespace platform
