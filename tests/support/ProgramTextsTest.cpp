// The file of program texts, whole, broken and missing.
#include "support/ProgramTexts.h"
#include "fakes/ProgramTest.h"

struct ProgramTextsTest : ProgramTest {
    const std::string file = "C:\\p\\nullwright.dat";
    std::string Load(const std::string& content) {
        fake::PutFile(file, content);
        return LoadProgramTexts(file);
    }
    void TearDown() override {
        fake::TakeAway(file);
        (void)LoadProgramTexts(file); // the built-in texts for whoever comes next
        ProgramTest::TearDown();
    }
};

TEST_F(ProgramTextsTest, WholeFile) {
    EXPECT_EQ(
        "", Load("\xEF\xBB\xBF# a note\r\n\r\n9999\tof a later version\r\n2\tStem\r\n23\tT\xC3\xAF"
                 "tle\r\n310\tMaker\r\n320\tNote\r\n321\tOther\r\n"
                 "330\thttps://a.example/\r\n331\thttps://b.example/\r\n"));
    EXPECT_EQ("Stem", ProgramText(TextNumber::NextRunStem));
    EXPECT_EQ("T\xC3\xAFtle", ProgramText(TextNumber::AcceptTypeTitle));
    EXPECT_EQ("https://b.example/", ProgramText(TextNumber::DocumentationLink));
}

TEST_F(ProgramTextsTest, BrokenEntriesFallBackOneByOne) {
    // No tab, no number, no text, huge, not UTF-8, overlong, half a surrogate pair, a
    // control character, too long.
    for (const std::string& line :
         {std::string("23 Title"), std::string("x\tTitle"), std::string("23\t"),
          std::string("99999999999\tx"), std::string("23\t\xC3(\n"), std::string("23\t\xC0\xAF"),
          std::string("23\t\xED\xA0\x80"), std::string("23\ta\x01z"),
          "23\t" + std::string(5000, 'x')}) {
        SCOPED_TRACE(line.substr(0, 20));
        EXPECT_EQ("The file with the program texts, \"nullwright.dat\", is damaged, so some texts "
                  "are the built-in English ones.",
                  Load("2\tStem\n" + line + "\n"));
        EXPECT_EQ("Stem", ProgramText(TextNumber::NextRunStem));
        EXPECT_EQ("Nullwright", ProgramText(TextNumber::AcceptTypeTitle));
    }
    // What becomes a file name or is opened as a link is looked at more closely.
    for (const char* line :
         {"2\t..\\x", "2\ta/b", "2\tC:", "2\tx?", "2\tdots..", "2\t x", "2\tCON\x7F",
          "330\tcalc.exe", "330\tfile:///c:/x.exe", "330\thttps://a\" b", "330\tjavascript:x"}) {
        (void)Load(line);
        EXPECT_EQ("Nullwright", ProgramText(TextNumber::NextRunStem)) << line;
        EXPECT_EQ("https://nullwright.example/", ProgramText(TextNumber::MakerLink)) << line;
    }
}

TEST_F(ProgramTextsTest, NoFileOrNoTexts) {
    const std::string start = "The file with the program texts, \"nullwright.dat\", ";
    const std::string end = ", so the built-in English texts are used.";
    EXPECT_EQ(start + "is missing" + end, LoadProgramTexts(file));
    for (const std::string& content : {std::string(), std::string(5, '\0')})
        EXPECT_EQ(start + "holds no texts" + end, Load(content));
    EXPECT_EQ(start + "cannot be read" + end, Load(std::string(3 << 20, '7')));
    bool failed = true;
    for (int n = 1; failed; ++n) { // whichever call fails
        fake::FailNth(n, platform::Fault::ReadFault);
        (void)Load("310\tMaker\n");
        failed = fake::HasFailed();
        EXPECT_EQ(failed ? "Nullwright" : "Maker", ProgramText(TextNumber::SettingsFolder));
    }
}
