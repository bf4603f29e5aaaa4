// Well-formed UTF-8.
#pragma once

#include <string>

/// True when the text is well-formed UTF-8: no overlong forms, and halves of surrogate pairs only
/// where they are asked for (the file system allows them in names).
bool IsUtf8(const std::string& text, bool blnAllowHalves = false);
