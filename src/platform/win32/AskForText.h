// Texts that Windows writes into a buffer whose size is not known before.
#pragma once

#include <cstddef>
#include <string>
#include <windows.h>

namespace platform {

/// Reads a text by a call: `ask` takes buffer and size and returns the length, a number not below
/// the size when the buffer is too small, or 0 when there is no text.
template<typename Ask>
std::wstring AskForText(Ask ask) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const std::size_t length = ask(text.data(), static_cast<DWORD>(text.size()));
        if (length < text.size()) {
            text.resize(length);
            return text;
        }
        if (text.size() > 0x10000)
            return {};
        text.resize(text.size() * 2);
    }
}

} // namespace platform
