// What Windows tells with a name: its length, and whether it is a link.
#pragma once

#include <windows.h>

namespace platform {

/// Whether attributes and reparse tag tell a link: another name for data or a folder elsewhere.
/// The tags of cloud, deduplicated and compressed-for-the-system files do not: their data are
/// their own. A folder with a reparse point that has no tag is how Wine shows a link.
inline bool TellsLink(DWORD attributes, DWORD tag) {
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return false;
    return IsReparseTagNameSurrogate(tag) ||
           (tag == 0 && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
}

inline unsigned long long Joined(DWORD high, DWORD low) {
    return static_cast<unsigned long long>(high) << 32 | low;
}

} // namespace platform
