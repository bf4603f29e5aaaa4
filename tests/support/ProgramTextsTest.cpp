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

namespace {
const std::string whole = "2\tStem\n23\tT\xC3\xAFtle\n310\tMaker\n320\tNote\n321\tOther\n"
                          "330\thttps://a.example/\n331\thttps://b.example/\n";
} // namespace

TEST_F(ProgramTextsTest, WholeFile) {
    std::string windows = "\xEF\xBB\xBF# a note\r\n\r\n9999\tof a later version\r\n";
    for (const char c : whole)
        windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ("", Load(windows));
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
    EXPECT_EQ("The file with the program texts, \"none.dat\", is missing, so the built-in English "
              "texts are used.",
              LoadProgramTexts("C:\\p\\none.dat"));
    for (const std::string& content :
         {std::string(), std::string("\xEF\xBB"), std::string(5, '\0'), std::string(100000, '\n')})
        EXPECT_EQ("The file with the program texts, \"nullwright.dat\", holds no texts, so the "
                  "built-in English texts are used.",
                  Load(content));
    fake::PutBigFile(file, 3 << 20, '7');
    EXPECT_EQ("The file with the program texts, \"nullwright.dat\", cannot be read, so the "
              "built-in English texts are used.",
              LoadProgramTexts(file));
    bool failed = true;
    for (int n = 1; failed; ++n) { // whichever call fails
        fake::PutFile(file, whole);
        fake::FailNth(n, platform::Fault::ReadFault);
        const std::string said = LoadProgramTexts(file);
        failed = fake::HasFailed();
        EXPECT_EQ(failed, !said.empty());
        EXPECT_EQ(failed ? "Nullwright" : "Maker", ProgramText(TextNumber::SettingsFolder));
    }
}
