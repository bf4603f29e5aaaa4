// What the programs of this folder are told by environment variables, and how they start others.
#pragma once

#include "win32/Wide.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

/// "" when it is not set.
inline std::string Environment(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value != nullptr ? platform::Narrow(value) : std::string();
}

/// Runs a command line. All zero when it cannot be started, and the test has failed.
inline PROCESS_INFORMATION Execute(std::wstring line) {
    PROCESS_INFORMATION process = {};
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &start, &process))
        << platform::Narrow(line) << " cannot be started: " << GetLastError();
    return process;
}
