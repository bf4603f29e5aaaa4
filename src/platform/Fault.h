// What can go wrong in a call into the system, and the text for it.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// The outcome of a platform call: the kind of fault and the system's error number. Unless the
/// outcome is None, the output arguments of the call are unchanged. Two faults are equal when they
/// are of the same kind.
struct [[nodiscard]] Fault {
    int Kind = 0;
    std::uint32_t Error = 0; ///< the system's error number; 0: the program itself found the fault

    static const Fault None;
    static const Fault NotFound; ///< the file, the folder or a folder on the path does not exist
    static const Fault
        AccessDenied; ///< no permission, read-only, or a folder where a file is expected
    static const Fault SharingViolation; ///< another program holds the file
    static const Fault DiskFull;         ///< not everything could be written: no room left
    static const Fault ReadFault;        ///< the device did not give the bytes
    static const Fault WriteFault;       ///< the device did not take the bytes
    static const Fault NotReady;         ///< no medium in the drive, or the drive is gone
    static const Fault WriteProtected;   ///< the medium or the whole volume is read-only
    static const Fault AlreadyExists;    ///< the thing to be created already exists
    static const Fault NotEmpty;         ///< a folder that is not empty cannot be removed
    static const Fault InvalidName;      ///< such a name cannot exist there
    static const Fault NotSupported;     ///< the file system does not offer this
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

/// A short English phrase without a full stop, for "Error: " messages ("The disk is full"). The
/// system's error number follows in parentheses when the words alone do not tell all ("(error
/// 1224)").
std::string FaultText(Fault fault);

} // namespace platform
