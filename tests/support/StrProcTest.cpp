// Counts, durations and faults as texts.
#include "support/StrProc.h"
#include "fakes/ProgramTest.h"
#include "support/Numbers.h"

using StrProcTest = ProgramTest;

TEST_F(StrProcTest, Durations) {
    EXPECT_EQ("0 minutes", MinutesText(0, true));
    const std::tuple<std::int64_t, const char*, const char*, const char*> cases[] = {
        {0, "0 seconds", "0s", "0 seconds"},
        {61, "1 minute and 1 second", "1m 1s", "1 minute"},
        {86460, "1 day and 1 minute", "1d 1m", "1 day and 1 minute"},
        {86400LL * 13391, "13391 days", "13391d", "13391 days"},
        {90, "1 minute and 30 seconds", "1m 30s", "2 minutes"},
        {3570, "59 minutes and 30 seconds", "59m 30s", "1 hour"},
        {3725, "1 hour and 2 minutes", "1h 2m 5s", "1 hour and 2 minutes"},
        {93784, "1 day and 2 hours", "1d 2h 3m 4s", "1 day and 2 hours"}};
    for (const auto& [seconds, inFull, brief, rounded] : cases) {
        EXPECT_EQ(inFull, SecondsText(seconds, true));
        EXPECT_EQ(brief, SecondsText(seconds, false));
        EXPECT_EQ(rounded, SecondsText(seconds, true, true));
    }
}

TEST_F(StrProcTest, NumbersInTheUsersSeparators) {
    EXPECT_EQ(".70", FormatNumber(0.7, 2, false));
    EXPECT_EQ("1234567", FormatNumber(1234567, 0, true, false));
    EXPECT_EQ("9,007,199,254,740,993,000", GroupedDigits(9007199254740993000));
    EXPECT_EQ("-1,234", GroupedDigits(-1234));
    EXPECT_EQ("100,000,000,000,000,000,000", FormatNumber(1e20, 0));
    EXPECT_EQ("Twenty 21", NumberInWords(20) + " " + NumberInWords(21));
    const std::pair<const char*, std::string> groupings[] = {
        {"3;0", "1.234.567.890"}, {"3;2;0", "1.23.45.67.890"}, {"3", "1234567.890"},
        {"3;2", "12345.67.890"},  {"0", "1234567890"},         {"", "1234567890"},
        {"4;0", "12.3456.7890"},  {"x;;9", "1234567890"}};
    for (const auto& [grouping, text] : groupings) {
        fake::numberFormat = {",", ".", grouping, true};
        EXPECT_EQ(text, NumberInWords(1234567890)) << grouping;
        EXPECT_EQ(text + ",50", FormatNumber(1234567890.5, 2)) << grouping;
    }
}

TEST_F(StrProcTest, Rounding) {
    // Away from zero.
    const std::tuple<double, int, const char*> texts[] = {
        {2.5, 0, "3"},      {-2.5, 0, "-3"},   {2.675, 2, "2.68"},
        {1.005, 2, "1.01"}, {9.95, 1, "10.0"}, {0.05, 1, "0.1"},
        {0.0499, 1, "0.0"}, {99.5, 0, "100"},  {1023.999, 2, "1,024.00"},
        {-0.001, 2, "0.00"}};
    for (const auto& [value, decimals, text] : texts)
        EXPECT_EQ(text, FormatNumber(value, decimals));
    EXPECT_GT(RoundHalfEven(1e300), 0);
}

TEST_F(StrProcTest, RandomNumbersAreUniformAndNeverTheSameAgain) {
    unsigned char bytes[262144];
    FillWithRandomBytes(bytes, sizeof bytes);
    double chiSquare = 0;
    for (int value = 0; value < 256; ++value) {
        const auto count = static_cast<double>(std::count(bytes, std::end(bytes), value));
        chiSquare += (count - 1024) * (count - 1024) / 1024;
    }
    EXPECT_LT(chiSquare, 400); // 255 degrees of freedom: beyond this once in 10^7
    int draws[9] = {};
    for (int i = 0; i < 1000; ++i)
        ++draws[RandomInteger(3, 5)];
    EXPECT_TRUE(draws[3] > 0 && draws[5] > 0);
    EXPECT_EQ(1000, draws[3] + draws[4] + draws[5]);
    ReseedRandom(); // the fake clock stands still
    const float first = NextRandom(), second = NextRandom();
    ReseedRandom();
    EXPECT_FALSE(first == NextRandom() && second == NextRandom());
}

TEST(FaultText, ShowsTheSystemsNumberWhereItTellsMore) {
    using platform::Fault;
    EXPECT_EQ("Access was denied", FaultText(Fault{Fault::AccessDenied.Kind, 5}));
    EXPECT_EQ("Another program is using the file (error 1224)",
              FaultText(Fault{Fault::SharingViolation.Kind, 1224}));
    EXPECT_EQ("The system reported an unknown error (error 1117)",
              FaultText(Fault{Fault::Other.Kind, 1117}));
    EXPECT_EQ("The disk is full", FaultText(Fault::DiskFull));
}
