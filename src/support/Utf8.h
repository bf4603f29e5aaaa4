// UTF-8: whether it is well-formed, and how many characters it holds.
#pragma once

#include <cstddef>
#include <string>

/// True when the text is well-formed UTF-8: no overlong forms, and halves of surrogate pairs only
/// where they are asked for (the file system allows them in names).
bool IsUtf8(const std::string& text, bool blnAllowHalves = false);
std::size_t CharactersIn(const std::string& text);
