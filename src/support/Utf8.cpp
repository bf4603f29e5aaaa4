// UTF-8 validation and counting.
#include "support/Utf8.h"

#include <algorithm>
#include <cstdint>

bool IsUtf8(const std::string& text, bool blnAllowHalves) {
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80   ? 1
                                   : lead < 0xC2 ? 0
                                   : lead < 0xE0 ? 2
                                   : lead < 0xF0 ? 3
                                   : lead < 0xF5 ? 4
                                                 : 0;
        if (length == 0 || i + length > text.size())
            return false;
        std::uint32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80)
                return false;
            code = code << 6 | (next & 0x3F);
        }
        if ((length == 3 && code < 0x800) || (length == 4 && (code < 0x10000 || code > 0x10FFFF)) ||
            (!blnAllowHalves && code >= 0xD800 && code <= 0xDFFF))
            return false;
        i += length;
    }
    return true;
}

std::string WithoutMark(std::string text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3);
    return text;
}

std::size_t CharactersIn(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}
