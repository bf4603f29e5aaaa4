// Sizes in bytes as readable text.
#pragma once

#include <cstdint>
#include <string>

constexpr double dblBytesPerMB = 1048576;
constexpr std::int64_t lngBytesPerMB = 1048576;

/// A size as "0 bytes", "812 bytes", "1.50 KB", "3.00 MB", "1,234.00 GB".
std::string ByteSizeText(double bytes, int decimals);
/// The same, but never in GB.
std::string ByteSizeTextUpToMB(double bytes, int decimals);
