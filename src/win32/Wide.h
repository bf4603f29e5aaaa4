// Text at the border to Windows: UTF-8 inside, UTF-16 in every call. A name on disk may contain
// half a surrogate pair. It becomes a three-byte UTF-8-style sequence, so that every name
// round-trips unchanged.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// Writes the UTF-16 units of `length` bytes of UTF-8 to `units`, which has room for `length`
/// units, and returns their number. An invalid byte becomes U+FFFD.
inline std::size_t WidenUnits(const char* text, std::size_t length, wchar_t* units) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < length;) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t tail = lead < 0x80   ? 0
                           : lead < 0xC2 ? 4 // a stray continuation byte, or an overlong form
                           : lead < 0xE0 ? 1
                           : lead < 0xF0 ? 2
                           : lead < 0xF5 ? 3
                                         : 4;
        unsigned long point = tail == 0 ? lead : lead & (0x3Fu >> tail);
        std::size_t seen = 0;
        while (tail < 4 && seen < tail && i + seen + 1 < length &&
               (static_cast<unsigned char>(text[i + seen + 1]) & 0xC0) == 0x80) {
            ++seen;
            point = point << 6 | (static_cast<unsigned char>(text[i + seen]) & 0x3Fu);
        }
        const bool whole = tail < 4 && seen == tail && !(tail == 2 && point < 0x800) &&
                           !(tail == 3 && (point < 0x10000 || point > 0x10FFFF));
        if (!whole) {
            units[count++] = 0xFFFD;
            ++i;
            continue;
        }
        if (point >= 0x10000) {
            units[count++] = static_cast<wchar_t>(0xD800 + ((point - 0x10000) >> 10));
            units[count++] = static_cast<wchar_t>(0xDC00 + (point & 0x3FF));
        } else {
            units[count++] = static_cast<wchar_t>(point);
        }
        i += tail + 1;
    }
    return count;
}

/// Writes to `form` the form of a path that the file system takes unchanged, and returns its
/// length; `form` has room for length + 4 units. A path that begins with a drive letter, a colon
/// and a backslash gets the prefix "\\?\", which lifts the limit of 260 characters and lets names
/// end with blanks and points. The system does not normalise a path after that prefix. So slashes,
/// doubled backslashes, "." and ".." are resolved here, and a trailing backslash is removed: after
/// the name of a link, it would mean the link's target. Any other path stays unchanged.
inline std::size_t ExtendPath(const wchar_t* path, std::size_t length, wchar_t* form) {
    const auto slash = [](wchar_t c) { return c == L'\\' || c == L'/'; };
    const wchar_t letter = length > 2 ? static_cast<wchar_t>(path[0] | 0x20) : L'\0';
    if (letter < L'a' || letter > L'z' || path[1] != L':' || !slash(path[2])) {
        for (std::size_t i = 0; i < length; ++i)
            form[i] = path[i];
        return length;
    }
    const wchar_t head[] = {L'\\', L'\\', L'?', L'\\', path[0], L':', L'\\'};
    std::size_t count = 0;
    for (const wchar_t c : head)
        form[count++] = c;
    const std::size_t root = count;
    for (std::size_t i = 3; i < length;) {
        std::size_t end = i;
        while (end < length && !slash(path[end]))
            ++end;
        const std::size_t size = end - i;
        if (size == 2 && path[i] == L'.' && path[i + 1] == L'.') {
            while (count > root && form[--count] != L'\\') {
            }
            count = count < root ? root : count;
        } else if (size != 0 && !(size == 1 && path[i] == L'.')) {
            if (count > root)
                form[count++] = L'\\';
            for (; i < end; ++i)
                form[count++] = path[i];
        }
        i = end + 1;
    }
    return count;
}

inline std::wstring Widen(std::string_view text) {
    std::wstring units(text.size(), L'\0');
    units.resize(WidenUnits(text.data(), text.size(), units.data()));
    return units;
}

inline std::string Narrow(std::wstring_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        unsigned long point = units[i];
        if (point >= 0xD800 && point < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 &&
            units[i + 1] < 0xE000)
            point = 0x10000 + ((point - 0xD800) << 10) + (units[++i] - 0xDC00u);
        const auto put = [&text](unsigned long byte) { text += static_cast<char>(byte); };
        if (point < 0x80) {
            put(point);
        } else if (point < 0x800) {
            put(0xC0 | point >> 6);
            put(0x80 | (point & 0x3F));
        } else if (point < 0x10000) {
            put(0xE0 | point >> 12);
            put(0x80 | (point >> 6 & 0x3F));
            put(0x80 | (point & 0x3F));
        } else {
            put(0xF0 | point >> 18);
            put(0x80 | (point >> 12 & 0x3F));
            put(0x80 | (point >> 6 & 0x3F));
            put(0x80 | (point & 0x3F));
        }
    }
    return text;
}

/// The form of a path for calls to Windows.
inline std::wstring WidePath(std::string_view path) {
    const std::wstring wide = Widen(path);
    std::wstring form(wide.size() + 4, L'\0');
    form.resize(ExtendPath(wide.data(), wide.size(), form.data()));
    return form;
}

/// Converts a path from Windows to the program's form: without "\\?\" before a drive letter.
inline std::string NarrowPath(std::wstring_view path) {
    const std::wstring_view prefix = L"\\\\?\\";
    const bool prefixed = path.substr(0, 4) == prefix && path.size() > 5 && path[5] == L':';
    return Narrow(prefixed ? path.substr(4) : path);
}

} // namespace platform
