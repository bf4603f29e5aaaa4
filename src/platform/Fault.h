// What can go wrong in a call into the system, and how to say it to a person.
#pragma once

#include <string>

namespace platform {

/// The outcome of a platform call. On anything but None the call's output arguments are untouched.
enum class [[nodiscard]] Fault{
    None,
    NotFound,         ///< the file, the folder or a folder on the way does not exist
    AccessDenied,     ///< no permission, read-only file, or a folder where a file was meant
    SharingViolation, ///< another program holds the file
    DiskFull,         ///< not everything could be written: there is no room left
    ReadFault,        ///< the device did not give the bytes
    WriteFault,       ///< the device did not take the bytes
    NotReady,         ///< no medium in the drive, or the drive is gone
    WriteProtected,   ///< the medium or the whole volume is read-only
    AlreadyExists,    ///< what was to be made is there already
    NotEmpty,         ///< a folder that still holds something cannot be removed
    InvalidName,      ///< no such name can exist there
    NotSupported,     ///< the file system has nothing of the kind
    Other};

inline bool Failed(Fault fault) {
    return fault != Fault::None;
}

/// A short English sentence without a full stop, for "Error: " messages ("The disk is full").
std::string FaultText(Fault fault);

} // namespace platform
