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

std::string RandomBlock(std::size_t clusterSize) {
    std::string block;
    block.resize(intFreshDraws);
    FillWithRandomBytes(reinterpret_cast<unsigned char*>(block.data()), intFreshDraws);
    // The rest is copied from what is there already, so that a block costs the same number of draws
    // whatever the cluster size.
    while (block.size() < clusterSize) {
        const auto half = static_cast<std::int16_t>(
            std::min<std::int64_t>(RoundHalfEven(static_cast<double>(block.size()) / 2),
                                   std::numeric_limits<std::int16_t>::max()));
        const auto start = static_cast<std::size_t>(RandomInteger(1, half));
        const auto count = static_cast<std::size_t>(RandomInteger(1, half));
        block.append(block, start - 1, count);
    }
    block.resize(clusterSize);
    return block;
}

} // namespace

OverwriteBlocks PrepareOverwriteBlocks(std::int32_t clusterSize) {
    const auto size = static_cast<std::size_t>(clusterSize);
    return {size, RandomBlock(size)};
}

std::string RunOfBlocks(const OverwriteBlocks& blocks, std::int16_t value, std::int64_t count) {
    const auto size = blocks.Size * static_cast<std::size_t>(count);
    if (IsPattern(value))
        return std::string(size, static_cast<char>(value));
    std::string run;
    run.reserve(size);
    for (std::int64_t i = 0; i < count; ++i)
        run += blocks.Random;
    return run;
}

std::string SlackFill(std::int16_t value, std::int64_t slackLength) {
    const auto length = static_cast<std::size_t>(slackLength);
    if (IsPattern(value))
        return std::string(length, static_cast<char>(value));
    // Decimal digits of the draws instead of the bytes, one to three for each byte of slack:
    // deliberately so. What reaches past the cluster goes when the length is restored.
    std::string fill;
    for (std::size_t i = 0; i < length; ++i)
        fill += std::to_string(RandomInteger(0, 255));
    return fill;
}
