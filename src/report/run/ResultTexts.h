// What a file's line in the report says of the result.
#pragma once

#include "platform/Fault.h"

#include <cstdint>
#include <string>

/// The text that a file purge's result, or the file's classification, appends to the file's line.
std::string ResultText(std::int16_t intResultCode, bool blnSlackOnly, const std::string& strPath);
/// " (error 32)" for what the system said, "" where it said nothing.
std::string ErrorNumberText(platform::Fault fault);
/// " (encrypted: ...)" for OutOfReach bits, "" for none.
std::string OutOfReachText(std::uint32_t lngReach);
