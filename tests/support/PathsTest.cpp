// File specifications.
#include "support/Paths.h"
#include "fakes/ProgramTest.h"

TEST(Paths, Wildcards) {
    // A name, a blank, and the pattern.
    const auto matches = [](const std::string& both) {
        const std::size_t blank = both.find(' ');
        return MatchesWildcard(both.substr(0, blank), both.substr(blank + 1));
    };
    for (const char* both :
         {"report.txt *.txt", "REPORT.TXT *.txt", "report.txt REP*.T?T", "aab *ab", "abab *ab*",
          "axb a?b", "abc *", " *", "abc ", "abc *?", "abc *?c", "[x].txt [x].*",
          "\xC3\xA4.txt ?.txt", "\xC3\x84PFEL *\xC3\xA4p*"}) // characters of two bytes
        EXPECT_TRUE(matches(both)) << both;
    for (const char* both :
         {"report.txt.bak *.txt", "report.tx *.txt", "report.txt report.tx", "report.txt port.txt",
          "abcd a*d?", "ab a?b", " ", " ?", " *?", "c *?c",
          // The first ".txt", or "ab", is taken, without coming back.
          "a.txt.txt *.txt", "abab *ab"})
        EXPECT_FALSE(matches(both)) << both;
    EXPECT_FALSE(MatchesWildcard("A.TXT", "*.txt", true));
    EXPECT_TRUE(MatchesWildcard("A.txt", "*.txt", true));
    EXPECT_TRUE(MatchesFilespec("README", "*.*")); // no point is asked for
    EXPECT_FALSE(MatchesFilespec("README", "*.md"));
}
