// The blocks that the overwrites write.
#pragma once

#include <cstdint>
#include <string>

/// What the overwrites of one pass write: blocks of one cluster, of 0x0A, 0x55, 0xAA, 0xF5, or of
/// pseudo-random bytes.
struct OverwriteBlocks {
    std::size_t Size = 0;
    std::string Random;
};

/// The overwrite value that means the random block.
constexpr std::int16_t intRandomValue = 256;

/// Draws the random block; once per pass. Bytes.
OverwriteBlocks PrepareOverwriteBlocks(std::int32_t clusterSize);
/// So many blocks in a row for an overwrite value: 10, 85, 170, 245, else random ones.
std::string RunOfBlocks(const OverwriteBlocks& blocks, std::int16_t value, std::int64_t count);
/// What one slack overwrite writes into a slack area of so many bytes.
std::string SlackFill(std::int16_t value, std::int64_t slackLength);
