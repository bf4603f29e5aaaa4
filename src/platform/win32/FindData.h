// Facts that Windows returns with a name: its length, and whether it is a link.
#pragma once

#include <windows.h>

namespace platform {

/// Whether attributes and reparse tag mean a link: another name for data or a folder elsewhere. The
/// tags of cloud files, deduplicated files and files compressed by the system are no links: the
/// data belong to the file. Wine shows a link as a folder with a reparse point without a tag.
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
