// The blocks that the overwrites write. Module-level state of the engine, rebuilt for every pass.
#pragma once

#include <cstdint>
#include <string>

/// One cluster each of 0x0A, 0x55, 0xAA and 0xF5, and of pseudo-random bytes.
inline std::string strBlock0A, strBlock55, strBlockAA, strBlockF5, strBlockRandom;
/// What one slack overwrite writes.
inline std::string strSlackFill;

/// The overwrite value that means the random block.
constexpr std::int16_t intRandomValue = 256;

/// Builds the four pattern blocks and the random block; once per pass. Bytes.
void PrepareOverwriteBuffers(std::int32_t clusterSize);
/// Builds strSlackFill for a slack area of so many bytes.
void PrepareSlackBuffer(std::int16_t value, std::int64_t slackLength);
/// The block for an overwrite value: 10, 85, 170, 245, else the random one.
const std::string& BlockOfValue(std::int16_t value);
