#include "support/Paths.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

TEST(Paths, Parts) {
    EXPECT_EQ("C:\\a\\", FolderWithBackslash("C:\\a"));
    EXPECT_EQ("C:\\", FolderWithBackslash("C:"));
    EXPECT_EQ("", FolderWithBackslash(""));
    EXPECT_EQ("", FolderPartOf("b.txt"));
    EXPECT_EQ("b.txt", FileNameOf("b.txt"));
    EXPECT_EQ("txt", ExtensionOf("C:\\a.b\\c.d.txt"));
    EXPECT_EQ("", ExtensionOf("C:\\a.b\\c"));
    EXPECT_EQ("", ExtensionOf("c."));
    EXPECT_EQ('C', DriveLetterOf("c:\\a"));
    EXPECT_EQ(0, DriveLetterOf("\\\\server\\share"));
    EXPECT_EQ(0, DriveLetterOf("1:\\"));
    EXPECT_EQ(25, DriveIndexOf("z:"));
    EXPECT_EQ(-1, DriveIndexOf(""));
}

TEST(Paths, Wildcards) {
    const struct {
        const char *Name, *Pattern;
        bool Matches;
    } cases[] = {
        {"report.txt", "*.txt", true},
        {"REPORT.TXT", "*.txt", true},
        {"report.txt", "REP*.T?T", true},
        {"report.txt.bak", "*.txt", false},
        {"report.tx", "*.txt", false},
        {"report.txt", "report.tx", false},
        {"report.txt", "port.txt", false},
        {"a.txt.txt", "*.txt", false}, // the first ".txt" is taken, without coming back
        {"aab", "*ab", true},
        {"abab", "*ab", false},
        {"abab", "*ab*", true},
        {"abcd", "a*d?", false},
        {"ab", "a?b", false},
        {"axb", "a?b", true},
        {"abc", "*", true},
        {"", "*", true},
        {"abc", "", true},
        {"", "", false},
        {"", "?", false},
        {"abc", "*?", true}, // as "?*"
        {"", "*?", false},
        {"abc", "*?c", true},
        {"c", "*?c", false},
        {"\xC3\xA4.txt", "?.txt", true}, // one character of two bytes
        {"\xC3\x84PFEL", "*\xC3\xA4p*", true},
        {"[x].txt", "[x].*", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.Matches, MatchesWildcard(c.Name, c.Pattern)) << c.Name << " " << c.Pattern;
    EXPECT_FALSE(MatchesWildcard("A.TXT", "*.txt", true));
    EXPECT_TRUE(MatchesWildcard("A.txt", "*.txt", true));
    EXPECT_TRUE(MatchesFilespec("README", "*.*")); // no point is asked for
    EXPECT_FALSE(MatchesFilespec("README", "*.md"));
    EXPECT_TRUE(MatchesFilespec("read.MD", "*.md"));
}
