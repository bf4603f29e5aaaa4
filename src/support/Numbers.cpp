// Numbers in the user's regional format, rounding, and random numbers.
#include "support/Numbers.h"

#include "platform/System.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

/// Groups digits from the right by a setting such as "3;2;0". A final 0 repeats the group before
/// it; without it, the remaining digits form one group.
std::string Grouped(const std::string& digits, const platform::NumberFormat& format) {
    std::vector<std::size_t> sizes;
    bool blnRepeat = false;
    for (std::size_t at = 0; at < format.Grouping.size();) {
        const std::size_t end = std::min(format.Grouping.find(';', at), format.Grouping.size());
        const long size = std::strtol(format.Grouping.c_str() + at, nullptr, 10);
        if (size <= 0) {
            blnRepeat = !sizes.empty();
            break;
        }
        sizes.push_back(static_cast<std::size_t>(size));
        at = end + 1;
    }
    std::string text;
    std::size_t left = digits.size(), group = 0;
    while (group < sizes.size() && left > sizes[group]) {
        text.insert(0, format.Thousands + digits.substr(left - sizes[group], sizes[group]));
        left -= sizes[group];
        if (group + 1 < sizes.size() || !blnRepeat)
            ++group;
    }
    return digits.substr(0, left) + text;
}

/// Decimal digits of a non-negative number, rounded half away from zero; the last `decimals` digits
/// are those after the decimal point.
std::string RoundedDigits(double value, int decimals) {
    const auto places = static_cast<std::size_t>(decimals);
    if (value == std::floor(value) && value < 1e18)
        return std::to_string(static_cast<std::int64_t>(value)) + std::string(places, '0');
    // A double is exact to 15 significant digits: 2.675 must round as 2.675, although the nearest
    // double is smaller.
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.14e", value);
    std::string digits = buffer.data();
    const int exponent = std::atoi(digits.c_str() + digits.find('e') + 1);
    digits = digits.substr(0, 1) + digits.substr(2, 14);
    const int keep = exponent + 1 + decimals; // number of digits to keep
    if (keep < 0)
        return std::string(places + 1, '0');
    const auto kept = static_cast<std::size_t>(keep);
    const bool blnUp = kept < digits.size() && digits[kept] >= '5';
    digits.resize(kept, '0');
    if (blnUp) {
        std::size_t i = kept;
        while (i > 0 && digits[i - 1] == '9')
            digits[--i] = '0';
        if (i > 0)
            ++digits[i - 1];
        else
            digits.insert(0, "1");
    }
    if (digits.size() < places + 1)
        digits.insert(0, places + 1 - digits.size(), '0');
    return digits;
}

/// The state of xoshiro256++, which is small, fast, and uniform in all bits. Each thread draws its
/// own numbers.
thread_local std::array<std::uint64_t, 4> lngRandomState = {1, 2, 3, 4};
/// Counts the seeds, so that two threads never have the same.
std::atomic<std::uint64_t> lngSeeds = 0;

std::uint64_t RotatedLeft(std::uint64_t value, int bits) {
    return value << bits | value >> (64 - bits);
}

std::uint64_t NextBits(std::array<std::uint64_t, 4>& s) {
    const std::uint64_t result = RotatedLeft(s[0] + s[3], 23) + s[0];
    const std::uint64_t shifted = s[1] << 17;
    s[2] ^= s[0];
    s[3] ^= s[1];
    s[1] ^= s[2];
    s[0] ^= s[3];
    s[2] ^= shifted;
    s[3] = RotatedLeft(s[3], 45);
    return result;
}

} // namespace

std::string FormatNumber(double value, int decimals, bool blnLeadingDigit, bool blnGroup) {
    const platform::NumberFormat format = platform::RegionalNumberFormat();
    if (!std::isfinite(value))
        value = 0;
    decimals = std::max(decimals, 0);
    const std::string digits = RoundedDigits(std::fabs(value), decimals);
    const std::size_t whole = digits.size() - static_cast<std::size_t>(decimals);
    std::string text = digits.substr(0, whole);
    if (blnGroup)
        text = Grouped(text, format);
    if (text == "0" && !blnLeadingDigit && decimals > 0)
        text.clear();
    if (decimals > 0)
        text += format.Decimal + digits.substr(whole);
    const bool blnZero = digits.find_first_not_of('0') == std::string::npos;
    return value < 0 && !blnZero ? "-" + text : text;
}

std::string GroupedDigits(std::int64_t value) {
    const std::string digits = std::to_string(value);
    const platform::NumberFormat format = platform::RegionalNumberFormat();
    return value < 0 ? "-" + Grouped(digits.substr(1), format) : Grouped(digits, format);
}

std::string SignedDigits(std::int64_t value) {
    return (value < 0 ? "" : " ") + std::to_string(value);
}

std::int64_t RoundHalfEven(double value) {
    if (std::isnan(value))
        return 0;
    constexpr double limit = 9223372036854774784.0; // the last double below 2^63
    double down = std::floor(std::clamp(value, -limit, limit));
    const double rest = value - down;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(down, 2) != 0))
        down += 1;
    return static_cast<std::int64_t>(std::clamp(down, -limit, limit));
}

void ReseedRandom() {
    // Mix the old state into the new one: two files purged within one clock tick must not get the
    // same bytes.
    std::uint64_t seed =
        NextBits(lngRandomState) ^
        static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
        RotatedLeft(platform::TickCount(), 40) ^ RotatedLeft(++lngSeeds, 52);
    for (std::uint64_t& word : lngRandomState) { // SplitMix64 fills every word with well-mixed bits
        seed += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = (seed ^ seed >> 30) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EBU;
        word = mixed ^ mixed >> 31;
    }
}

float NextRandom() {
    // 24 bits fit the mantissa exactly, so rounding can never yield 1.
    return static_cast<float>(NextBits(lngRandomState) >> 40) * 0x1p-24F;
}

std::int16_t RandomInteger(std::int16_t low, std::int16_t high) {
    const double span = static_cast<double>(high) - low + 1;
    return static_cast<std::int16_t>(static_cast<int>(span * NextRandom()) + low);
}

void FillWithRandomBytes(unsigned char* data, std::size_t count) {
    std::array<std::uint64_t, 4> state = lngRandomState; // a local copy stays in registers
    for (std::size_t i = 0; i < count; ++i)
        data[i] = static_cast<unsigned char>(NextBits(state) >> 56);
    lngRandomState = state;
}
