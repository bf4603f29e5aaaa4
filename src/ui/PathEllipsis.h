// Shortens a path that is too long for its place, but keeps the drive and the file's name.
#pragma once

#include <functional>
#include <string>

namespace ui {

/// Whether a text fits into the place.
using FitsPlace = std::function<bool(const std::string& text)>;

/// The longest beginning of `text` that fits together with `tail`, cut between two characters.
inline std::string LongestHead(const std::string& text, const std::string& tail,
                               const FitsPlace& fits) {
    std::size_t good = 0, bad = text.size();
    while (good + 1 < bad) {
        std::size_t middle = (good + bad) / 2;
        while (middle > good && (static_cast<unsigned char>(text[middle]) & 0xC0) == 0x80)
            --middle;
        if (middle == good) // a single multi-byte character is left between the bounds
            break;
        (fits(text.substr(0, middle) + tail) ? good : bad) = middle;
    }
    return text.substr(0, good);
}

/// "C:\Documents and...\letters\a.txt": keeps the last part of the path whole, and parts before it
/// while the end takes at most half of the place. If the last part alone is too long, its middle is
/// also cut, and its extension stays.
inline std::string ShortenPath(const std::string& path, const FitsPlace& fits) {
    if (path.size() < 2 || fits(path))
        return path;
    const auto partBefore = [&path](std::size_t end) {
        return end == 0 ? path.npos : path.rfind('\\', end - 1);
    };
    std::size_t cut = partBefore(path.size() - 1); // ignore the trailing backslash of a folder
    if (cut != path.npos && fits("..." + path.substr(cut))) {
        for (std::size_t next = partBefore(cut); next != path.npos && next > 0;
             next = partBefore(next)) {
            const std::string tail = "..." + path.substr(next);
            if (!fits(tail + path.substr(next)))
                break;
            cut = next;
        }
    } else {
        const std::size_t begin = cut == path.npos ? 0 : cut + 1;
        std::size_t end = path.rfind('.');
        if (end == path.npos || end <= begin || !fits("..." + path.substr(end)))
            end = path.size();
        const std::string name = path.substr(begin, end - begin), tail = "..." + path.substr(end);
        return LongestHead(name, tail, fits) + tail;
    }
    const std::string tail = "..." + path.substr(cut);
    return LongestHead(path.substr(0, cut), tail, fits) + tail;
}

} // namespace ui
