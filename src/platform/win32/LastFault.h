// Windows errors as faults.
#pragma once

#include "platform/Fault.h"

#include <cstdint>

namespace platform {

/// The fault that an error number of Windows stands for; None for 0.
Fault FaultOfError(std::uint32_t error);
/// The fault of the call that has just failed on this thread; never None.
Fault LastFault();

} // namespace platform
