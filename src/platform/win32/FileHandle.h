// The handle behind an open file.
#pragma once

#include "platform/Files.h"

#include <windows.h>

namespace platform {

inline HANDLE HandleOf(File file) {
    return reinterpret_cast<HANDLE>(file.Handle); // NOLINT: that is what the seam carries
}

} // namespace platform
