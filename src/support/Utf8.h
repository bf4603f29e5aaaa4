// UTF-8 validation and counting.
#pragma once

#include <cstddef>
#include <string>

/// Whether the text is well-formed UTF-8: no overlong forms. Halves of surrogate pairs are accepted
/// only with blnAllowHalves (the file system allows them in names).
bool IsUtf8(const std::string& text, bool blnAllowHalves = false);
/// Without the mark of UTF-8 with which some programs begin a text.
std::string WithoutMark(std::string text);
std::size_t CharactersIn(const std::string& text);
