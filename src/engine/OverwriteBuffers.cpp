// Builds the blocks of bit patterns and pseudo-random bytes, and the fill of a slack area.
#include "engine/OverwriteBuffers.h"

#include "support/Numbers.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::size_t intFreshDraws = 2048;

bool IsPattern(std::int16_t value) {
    return value == 0x0A || value == 0x55 || value == 0xAA || value == 0xF5;
}

void PrepareRandomBlock(std::size_t clusterSize) {
    strBlockRandom.resize(intFreshDraws);
    FillWithRandomBytes(reinterpret_cast<unsigned char*>(strBlockRandom.data()), intFreshDraws);
    // The rest is copied from what is there already, so that a block costs the same number of draws
    // whatever the cluster size.
    while (strBlockRandom.size() < clusterSize) {
        const auto half = static_cast<std::int16_t>(
            std::min<std::int64_t>(RoundHalfEven(static_cast<double>(strBlockRandom.size()) / 2),
                                   std::numeric_limits<std::int16_t>::max()));
        const auto start = static_cast<std::size_t>(RandomInteger(1, half));
        const auto count = static_cast<std::size_t>(RandomInteger(1, half));
        strBlockRandom.append(strBlockRandom, start - 1, count);
    }
    strBlockRandom.resize(clusterSize);
}

} // namespace

void PrepareOverwriteBuffers(std::int32_t clusterSize) {
    const auto size = static_cast<std::size_t>(clusterSize);
    strBlock0A.assign(size, '\x0A');
    strBlock55.assign(size, '\x55');
    strBlockAA.assign(size, '\xAA');
    strBlockF5.assign(size, '\xF5');
    PrepareRandomBlock(size);
}

void PrepareSlackBuffer(std::int16_t value, std::int64_t slackLength) {
    const auto length = static_cast<std::size_t>(slackLength);
    if (IsPattern(value)) {
        strSlackFill.assign(length, static_cast<char>(value));
        return;
    }
    // Decimal digits of the draws instead of the bytes, one to three for each byte of slack:
    // deliberately so. What reaches past the cluster goes when the length is restored.
    strSlackFill.clear();
    for (std::size_t i = 0; i < length; ++i)
        strSlackFill += std::to_string(RandomInteger(0, 255));
}

const std::string& BlockOfValue(std::int16_t value) {
    switch (value) {
    case 0x0A:
        return strBlock0A;
    case 0x55:
        return strBlock55;
    case 0xAA:
        return strBlockAA;
    case 0xF5:
        return strBlockF5;
    default:
        return strBlockRandom;
    }
}
