// Shortens a path that is too long for its place: the drive and the file's name stay.
#pragma once

#include <functional>
#include <string>

namespace ui {

/// Whether a text fits into the place.
using FitsPlace = std::function<bool(const std::string& text)>;

/// The longest beginning of `text` with which the whole fits, cut between two characters.
inline std::string LongestHead(const std::string& text, const std::string& tail,
                               const FitsPlace& fits) {
    std::size_t good = 0, bad = text.size();
    while (good + 1 < bad) {
        std::size_t middle = (good + bad) / 2;
        while (middle > good && (static_cast<unsigned char>(text[middle]) & 0xC0) == 0x80)
            --middle;
        if (middle == good) // one character of several bytes fills what is left
            break;
        (fits(text.substr(0, middle) + tail) ? good : bad) = middle;
    }
    return text.substr(0, good);
}

/// "C:\Documents and...\letters\a.txt": the last part of the path stays whole, and those before it
/// as long as the end takes no more than half of the place. A last part that is too long by itself
/// loses its middle, too, and keeps its extension.
inline std::string ShortenPath(const std::string& path, const FitsPlace& fits) {
    if (path.size() < 2 || fits(path))
        return path;
    const auto partBefore = [&path](std::size_t end) {
        return end == 0 ? path.npos : path.rfind('\\', end - 1);
    };
    std::size_t cut = partBefore(path.size() - 1); // a folder's own backslash is no part
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
