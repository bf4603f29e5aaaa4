// Well-formed UTF-8.
#pragma once

#include <string>

/// True when the text is well-formed UTF-8: no overlong forms, no halves of surrogate pairs.
bool IsUtf8(const std::string& text);
