// What can go wrong in a call into the system, and how to say it to a person.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// The outcome of a platform call: the kind of fault and the system's own number for it. On
/// anything but None the call's output arguments are untouched. Two faults are equal when they are
/// of the same kind.
struct [[nodiscard]] Fault {
    int Kind = 0;
    std::uint32_t Error = 0; ///< the system's error number; 0: the program found the fault itself

    static const Fault None;
    static const Fault NotFound; ///< the file, the folder or one on the way does not exist
    static const Fault
        AccessDenied; ///< no permission, read-only, or a folder where a file was meant
    static const Fault SharingViolation; ///< another program holds the file
    static const Fault DiskFull;         ///< not everything could be written: there is no room left
    static const Fault ReadFault;        ///< the device did not give the bytes
    static const Fault WriteFault;       ///< the device did not take the bytes
    static const Fault NotReady;         ///< no medium in the drive, or the drive is gone
    static const Fault WriteProtected;   ///< the medium or the whole volume is read-only
    static const Fault AlreadyExists;    ///< what was to be made is there already
    static const Fault NotEmpty;         ///< a folder that still holds something cannot be removed
    static const Fault InvalidName;      ///< no such name can exist there
    static const Fault NotSupported;     ///< the file system has nothing of the kind
    static const Fault Other;

    friend constexpr bool operator==(Fault a, Fault b) { return a.Kind == b.Kind; }
};

inline constexpr Fault Fault::None{0};
inline constexpr Fault Fault::NotFound{1};
inline constexpr Fault Fault::AccessDenied{2};
inline constexpr Fault Fault::SharingViolation{3};
inline constexpr Fault Fault::DiskFull{4};
inline constexpr Fault Fault::ReadFault{5};
inline constexpr Fault Fault::WriteFault{6};
inline constexpr Fault Fault::NotReady{7};
inline constexpr Fault Fault::WriteProtected{8};
inline constexpr Fault Fault::AlreadyExists{9};
inline constexpr Fault Fault::NotEmpty{10};
inline constexpr Fault Fault::InvalidName{11};
inline constexpr Fault Fault::NotSupported{12};
inline constexpr Fault Fault::Other{13};

inline bool Failed(Fault fault) {
    return fault != Fault::None;
}

/// A short English sentence without a full stop, for "Error: " messages ("The disk is full"). The
/// system's number follows in parentheses where the words alone do not tell all ("(error 1224)").
std::string FaultText(Fault fault);

} // namespace platform
