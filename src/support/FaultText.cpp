// What can go wrong in a call into the system, as a person reads it. The same for every back end.
#include "platform/Fault.h"

std::string platform::FaultText(Fault fault) {
    switch (fault) {
    case Fault::None:
        return "No error";
    case Fault::NotFound:
        return "The file or folder was not found";
    case Fault::AccessDenied:
        return "Access was denied";
    case Fault::SharingViolation:
        return "Another program is using the file";
    case Fault::DiskFull:
        return "The disk is full";
    case Fault::ReadFault:
        return "The drive could not be read";
    case Fault::WriteFault:
        return "The drive could not be written to";
    case Fault::NotReady:
        return "The drive is not ready";
    case Fault::WriteProtected:
        return "The drive is write-protected";
    case Fault::AlreadyExists:
        return "A file or folder of that name exists already";
    case Fault::NotEmpty:
        return "The folder is not empty";
    case Fault::InvalidName:
        return "The name is not valid";
    case Fault::NotSupported:
        return "The drive does not support this";
    case Fault::Other:
        break;
    }
    return "The system reported an unknown error";
}
