// Numbers as text by the user's regional settings, rounding, and random draws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// A number with the given decimals and the user's separators. Rounds half away from zero, like the
/// system's own formatting.
std::string FormatNumber(double value, int decimals, bool blnLeadingDigit = true,
                         bool blnGroup = true);
/// A whole number with thousands separators ("1,234,567").
std::string GroupedDigits(std::int64_t value);
/// Decimal digits of a number with a sign place: a leading blank when it is not negative (" 3",
/// "-3").
std::string SignedDigits(std::int64_t value);
/// Nearest integer, halves to even.
std::int64_t RoundHalfEven(double value);

/// Reseeds this thread's random numbers from the clock.
void ReseedRandom();
/// The next uniform number in [0, 1), single precision.
float NextRandom();
/// The integer part of (high − low + 1) × r, plus low, with r the next uniform number.
std::int16_t RandomInteger(std::int16_t low, std::int16_t high);
/// `count` draws of RandomInteger(0, 255) at once, faster than one by one.
void FillWithRandomBytes(unsigned char* data, std::size_t count);
