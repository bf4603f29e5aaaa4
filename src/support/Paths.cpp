// Parts of paths, and matching of file names against file specifications.
#include "support/Paths.h"

#include "platform/Places.h"
#include "platform/System.h"

#include <algorithm>

namespace {

/// The index of the character after the one at `at` in UTF-8 text.
std::size_t NextCharacter(const std::string& text, std::size_t at) {
    do
        ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80);
    return at;
}

bool Matches(const std::string& name, const std::string& pattern) {
    if (pattern.empty())
        return !name.empty();
    std::size_t n = 0, p = 0;
    while (p < pattern.size()) {
        if (pattern[p] == '?') {
            if (n >= name.size())
                return false;
            n = NextCharacter(name, n);
            ++p;
        } else if (pattern[p] == '*') {
            // "*?" means the same as "?*": skip the single characters first, then jump.
            for (; p < pattern.size() && (pattern[p] == '*' || pattern[p] == '?'); ++p) {
                if (pattern[p] == '*')
                    continue;
                if (n >= name.size())
                    return false;
                n = NextCharacter(name, n);
            }
            if (p == pattern.size())
                return true;
            const std::size_t end = std::min(pattern.find_first_of("*?", p), pattern.size());
            // Deliberate oddity: take the first occurrence and never backtrack to a later one.
            n = name.find(pattern.data() + p, n, end - p);
            if (n == std::string::npos)
                return false;
            n += end - p;
            p = end;
        } else {
            if (n >= name.size() || name[n] != pattern[p])
                return false;
            ++n;
            ++p;
        }
    }
    return n == name.size();
}

} // namespace

std::string FolderWithBackslash(const std::string& folder) {
    return folder.empty() ? folder : FolderWithoutBackslash(folder) + "\\";
}

std::string FolderWithoutBackslash(const std::string& folder) {
    const std::size_t last = folder.find_last_not_of('\\');
    return last == std::string::npos ? std::string() : folder.substr(0, last + 1);
}

std::string FolderPartOf(const std::string& path) {
    return path.substr(0, path.rfind('\\') + 1); // without a backslash npos + 1 is 0
}

std::string FileNameOf(const std::string& path) {
    return path.substr(path.rfind('\\') + 1);
}

std::string ExtensionOf(const std::string& path) {
    const std::size_t point = path.find_last_of(".\\");
    return point == std::string::npos || path[point] == '\\' ? std::string()
                                                             : path.substr(point + 1);
}

char DriveLetterOf(const std::string& path) {
    if (path.size() < 2 || path[1] != ':')
        return 0;
    const char letter =
        path[0] >= 'a' && path[0] <= 'z' ? static_cast<char>(path[0] - 'a' + 'A') : path[0];
    return letter >= 'A' && letter <= 'Z' ? letter : '\0';
}

int DriveIndexOf(const std::string& path) {
    const char letter = DriveLetterOf(path);
    return letter == 0 ? -1 : letter - 'A';
}

bool IsBelow(const std::string& path, const std::string& folder) {
    return !folder.empty() && path.size() >= folder.size() &&
           DriveLetterOf(path) == DriveLetterOf(folder) &&
           path.compare(1, folder.size() - 1, folder, 1, folder.size() - 1) == 0;
}

bool IsSamePath(const std::string& path, const std::string& other) {
    return path.size() == other.size() && IsBelow(path, other);
}

bool MatchesWildcard(const std::string& name, const std::string& pattern, bool matchCase) {
    if (matchCase)
        return Matches(name, pattern);
    // One pattern is matched against very many names, so lower-case it only when it changes.
    static std::string strPattern, strLowerPattern, strLowerName;
    if (pattern != strPattern) {
        strPattern = pattern;
        strLowerPattern = platform::LowerCase(pattern);
    }
    strLowerName = platform::LowerCase(name);
    return Matches(strLowerName, strLowerPattern);
}

bool MatchesFilespec(const std::string& name, const std::string& filespec) {
    return filespec == "*.*" ? !name.empty() : MatchesWildcard(name, filespec);
}

bool IsWildcard(const std::string& text) {
    return text.find_first_of("?*") != std::string::npos;
}

NameMatch MatchName(const std::string& name, const std::string& filespec) {
    if (IsWildcard(filespec))
        return MatchesFilespec(name, filespec) ? NameMatch::Exact : NameMatch::None;
    if (name == filespec)
        return NameMatch::Exact;
    return platform::SameButForCase(name, filespec) ? NameMatch::OtherCase : NameMatch::None;
}
