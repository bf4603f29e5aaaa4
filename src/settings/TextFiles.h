// Small text files, read whole and replaced whole.
#pragma once

#include "platform/Fault.h"
#include "ui/Interface.h"

#include <cstddef>
#include <functional>
#include <string>

/// Longer files than this are none of ours.
constexpr std::size_t lngMaxTextFile = 1024 * 1024;

/// Reads a whole file of at most `lngMax` bytes, without the mark of UTF-8 at its beginning. False
/// on any error; `text` is untouched then.
[[nodiscard]] bool ReadTextFile(const std::string& path, std::string& text,
                                std::size_t lngMax = lngMaxTextFile);
/// Writes a new file beside the old one, forces it to the disk and lets it take the old one's
/// place. False on any error: the old file is then as it was, and no other file is left.
[[nodiscard]] bool WriteTextFile(const std::string& path, const std::string& text);
/// The same for a text of any length: `write` hands it over piece by piece, and ends early when it
/// is told false. `flush`: Long pumps messages while the disk takes the text.
platform::Fault
WriteLongTextFile(const std::string& path,
                  const std::function<bool(const std::function<bool(const std::string&)>&)>& write,
                  ui::Effort flush = ui::Effort::Brief);
