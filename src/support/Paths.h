// Paths, file names, extensions and file specifications.
#pragma once

#include <cstddef>
#include <string>

/// The folder path with exactly one trailing backslash; "" stays "".
std::string FolderWithBackslash(const std::string& folder);
std::string FolderWithoutBackslash(const std::string& folder);
/// The part of a path up to and with the last backslash, and the part behind it.
std::string FolderPartOf(const std::string& path);
std::string FileNameOf(const std::string& path);
/// The text after the last point of the file name, without the point; "" when there is none.
std::string ExtensionOf(const std::string& path);
/// The upper-cased letter of a path that begins with "X:", else 0.
char DriveLetterOf(const std::string& path);
/// Index 0 to 25 in the tables per drive letter, −1 when the path has no letter A to Z.
int DriveIndexOf(const std::string& path);
/// Two full paths are the same, letter by letter; the drive's letter in either case.
bool IsSamePath(const std::string& path, const std::string& other);
/// A full path lies in a folder, which ends with a backslash, or below it; compared the same way.
bool IsBelow(const std::string& path, const std::string& folder);

/// Whether a name matches a pattern of "?" (one character) and "*". An empty pattern matches any
/// name that is not empty. "*" jumps to the first occurrence of the literal text behind it and
/// does not backtrack: deliberately so.
bool MatchesWildcard(const std::string& name, const std::string& pattern, bool matchCase = false);
/// Whether a file name belongs to a file specification; "*.*" stands for all files. Of the names
/// that differ only in case it takes all.
bool MatchesFilespec(const std::string& name, const std::string& filespec);

/// A pattern, not a name: no file name holds "?" or "*".
bool IsWildcard(const std::string& text);
/// How a file name belongs to a file specification. One without "?" and "*" is a name: it means the
/// file that is called so letter by letter.
enum class NameMatch { None, OtherCase, Exact };
NameMatch MatchName(const std::string& name, const std::string& filespec);
/// Whether a name that no file of the folder has letter by letter means the one that has it in
/// another case; `candidates` is the number of those.
bool OtherCaseIsMeant(const std::string& folder, std::size_t candidates);
