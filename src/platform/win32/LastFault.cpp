// The table from Windows error numbers to faults.
#include "platform/win32/LastFault.h"

#include <windows.h>

namespace platform {
namespace {

// Some compilers' headers lack it.
constexpr DWORD errorVirusInfected = 225;
constexpr DWORD errorNoSuchDevice = 433;
constexpr DWORD errorDiskQuotaExceeded = 1295;

Fault KindOfError(std::uint32_t error) {
    switch (error) {
    case ERROR_SUCCESS:
        return Fault::None;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_DIRECTORY: // a file instead of a folder
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DELETE_PENDING:
        return Fault::NotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_INVALID_ACCESS:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_PRIVILEGE_NOT_HELD:
    case ERROR_CANT_ACCESS_FILE:
    case errorVirusInfected:
    case ERROR_CURRENT_DIRECTORY: // the current folder cannot be removed
        return Fault::AccessDenied;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_BUSY:
        return Fault::SharingViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case errorDiskQuotaExceeded:
    case ERROR_FILE_TOO_LARGE: // more than 4 GiB on FAT: not everything could be written
        return Fault::DiskFull;
    case ERROR_READ_FAULT:
    case ERROR_CRC:
    case ERROR_SEEK:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_FILE_CORRUPT:
    case ERROR_DISK_CORRUPT:
    case ERROR_UNRECOGNIZED_VOLUME:
        return Fault::ReadFault;
    case ERROR_WRITE_FAULT:
    case ERROR_IO_DEVICE:
    case ERROR_GEN_FAILURE:
        return Fault::WriteFault;
    case ERROR_NOT_READY:
    case ERROR_BAD_UNIT:
    case ERROR_WRONG_DISK:
    case ERROR_NO_MEDIA_IN_DRIVE:
    case ERROR_MEDIA_CHANGED:
    case ERROR_DEVICE_NOT_CONNECTED:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_DEVICE_REMOVED:
    case errorNoSuchDevice:
    case ERROR_FILE_INVALID: // the volume was changed under the open file
        return Fault::NotReady;
    case ERROR_WRITE_PROTECT:
        return Fault::WriteProtected;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return Fault::AlreadyExists;
    case ERROR_DIR_NOT_EMPTY:
        return Fault::NotEmpty;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_BUFFER_OVERFLOW:
    case ERROR_NO_UNICODE_TRANSLATION:
        return Fault::InvalidName;
    case ERROR_NOT_SUPPORTED:
    case ERROR_INVALID_FUNCTION:
    case ERROR_CALL_NOT_IMPLEMENTED:
        return Fault::NotSupported;
    default:
        return Fault::Other;
    }
}

} // namespace

Fault FaultOfError(std::uint32_t error) {
    return {KindOfError(error).Kind, error};
}

Fault LastFault() {
    const Fault fault = FaultOfError(GetLastError());
    return Failed(fault) ? fault : Fault::Other;
}

} // namespace platform
