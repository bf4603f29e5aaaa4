// The texts for faults of system calls, the same for every back end.
#include "platform/Fault.h"

namespace {

struct KindText {
    platform::Fault Fault;
    const char* Text;
    /// The system error that means exactly what the text says; others say more than the text.
    std::uint32_t PlainError;
};

constexpr KindText kindTexts[] = {
    {platform::Fault::None, "No error", 0},
    {platform::Fault::NotFound, "The file or folder was not found", 2},
    {platform::Fault::AccessDenied, "Access was denied", 5},
    {platform::Fault::SharingViolation, "Another program is using the file", 32},
    {platform::Fault::DiskFull, "The disk is full", 112},
    {platform::Fault::ReadFault, "The drive could not be read", 0},
    {platform::Fault::WriteFault, "The drive could not be written to", 0},
    {platform::Fault::NotReady, "The drive is not ready", 21},
    {platform::Fault::WriteProtected, "The drive is write-protected", 19},
    {platform::Fault::AlreadyExists, "A file or folder of that name exists already", 183},
    {platform::Fault::NotEmpty, "The folder is not empty", 145},
    {platform::Fault::InvalidName, "The name is not valid", 123},
    {platform::Fault::NotSupported, "The drive does not support this", 50},
    {platform::Fault::Other, "The system reported an unknown error", 0},
};

} // namespace

std::string platform::FaultText(Fault fault) {
    for (const KindText& row : kindTexts) {
        if (row.Fault != fault)
            continue;
        if (fault.Error == 0 || fault.Error == row.PlainError)
            return row.Text;
        return std::string(row.Text) + " (error " + std::to_string(fault.Error) + ")";
    }
    return {};
}
