// What the programs of this folder are told by environment variables.
#pragma once

#include "win32/Wide.h"

#include <cstdlib>
#include <string>

/// "" when it is not set.
inline std::string Environment(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value != nullptr ? platform::Narrow(value) : std::string();
}
