// Texts for the result in a file's report line.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <string>

/// The text that follows the path in a file's line, for a purge result or a classification.
std::string ResultText(std::int16_t intResultCode, bool blnSlackOnly, const std::string& strPath);
/// " (error 32)" with the system's error number, "" without one.
std::string ErrorNumberText(platform::Fault fault);
/// " (encrypted: ...)" for OutOfReach bits, "" for none.
std::string OutOfReachText(std::uint32_t lngReach);
