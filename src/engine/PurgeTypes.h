// The purge types: what one pass of each writes, and how the dialogs and the report name it. A new
// type is one more row here; setup files store its index.
#pragma once

#include "engine/OverwriteBuffers.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>

struct PurgeType {
    const char* strCaption;     ///< in the dialog and the main window; the dialog numbers it
    const char* strName;        ///< in the report
    const char* strWord;        ///< on a command line
    const char* strDescription; ///< under the caption in the dialog
    std::int16_t intMostPasses;
    std::int16_t intStandardPasses;
    /// The overwrites of one pass in their order: a bit pattern or intRandomValue; 0 ends them.
    std::int16_t intOverwrites[8];
};

inline constexpr PurgeType purgeTypes[] = {
    {"Random bytes",
     "random bytes",
     "random",
     "Overwrite the data once with random bytes.",
     9,
     6,
     {intRandomValue}},
    {"Alternate bit patterns",
     "alternate bit patterns",
     "patterns",
     "Overwrite the data four times with bit patterns 10101010, 01010101, 00001010 and 11110101.",
     7,
     3,
     {0xAA, 0x55, 0x0A, 0xF5}},
    {"Alternate bit patterns plus random bytes",
     "alternate bit patterns plus random bytes",
     "both",
     "Overwrite the data twice with bit patterns 10101010 and 01010101, then with random bytes, "
     "then twice with bit patterns 00001010 and 11110101, then again with random bytes.",
     5,
     2,
     {0xAA, 0x55, intRandomValue, 0x0A, 0xF5, intRandomValue}}};

inline constexpr std::int16_t intNumPurgeTypes = std::size(purgeTypes);

/// A file is never overwritten more often than this, whatever the lists may come to offer.
inline constexpr std::int16_t intMaxOverwrites = 32;

constexpr bool IsPurgeType(std::int32_t type) {
    return type >= 0 && type < intNumPurgeTypes;
}

/// The overwrites of one pass of a type (0 to intNumPurgeTypes - 1), in their order.
constexpr std::span<const std::int16_t> OverwritesOfType(std::int16_t type) {
    const auto& all = purgeTypes[type].intOverwrites;
    std::size_t count = 0;
    while (count < std::size(all) && all[count] != 0)
        ++count;
    return {all, count};
}
