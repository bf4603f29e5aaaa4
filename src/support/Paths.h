// Paths, file names, extensions and file specifications.
#pragma once

#include <cstddef>
#include <string>

/// The folder path with exactly one trailing backslash; "" stays "".
std::string FolderWithBackslash(const std::string& folder);
std::string FolderWithoutBackslash(const std::string& folder);
/// The part of a path up to and including the last backslash, and the part after it.
std::string FolderPartOf(const std::string& path);
std::string FileNameOf(const std::string& path);
/// The text after the last point of the file name; "" when there is no point.
std::string ExtensionOf(const std::string& path);
/// The upper-cased letter of a path that begins with "X:", else 0.
char DriveLetterOf(const std::string& path);
/// Index 0 to 25 in the tables per drive letter; −1 when the path has no letter A to Z.
int DriveIndexOf(const std::string& path);
/// Whether two full paths are equal; only the drive letter is compared without case.
bool IsSamePath(const std::string& path, const std::string& other);
/// Whether a full path lies below a folder, which ends with a backslash; compared the same way.
bool IsBelow(const std::string& path, const std::string& folder);

/// Whether a name matches a pattern of "?" (one character) and "*". An empty pattern matches any
/// non-empty name. Deliberate oddity: "*" jumps to the first occurrence of the literal text after
/// it and does not backtrack.
bool MatchesWildcard(const std::string& name, const std::string& pattern, bool matchCase = false);
/// Whether a file name matches a file specification; "*.*" stands for all files. Ignores case.
bool MatchesFilespec(const std::string& name, const std::string& filespec);

/// Whether the text is a pattern: file names never contain "?" or "*".
bool IsWildcard(const std::string& text);
/// How a file name matches a file specification. A specification without "?" and "*" is a name and
/// means the file with exactly that name.
enum class NameMatch { None, OtherCase, Exact };
NameMatch MatchName(const std::string& name, const std::string& filespec);
