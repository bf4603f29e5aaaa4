// Setup files: what is written, what is read back, and what a fault leaves.
#include "settings/SetupFiles.h"
#include "fakes/ProgramTest.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/TextFiles.h"
#include "shell/Session.h"

#include <vector>

namespace {

const std::string strPath = "C:\\a.nws";

struct SetupFiles : ProgramTest {
    void SetUp() override {
        ProgramTest::SetUp();
        StartProgram();
    }
    static std::string Join(const std::vector<std::string>& lines,
                            const std::string& end = "\r\n") {
        std::string text;
        for (const std::string& line : lines)
            text += line + end;
        return text;
    }
    std::vector<std::string> lines = {
        "1.0", "1", "1", "C:\\Bücher\\", "D:\\", "2", "5", "1", "0", "1", "0", "1", "0", "1"};
};

TEST_F(SetupFiles, WritesFourteenLines) {
    EXPECT_EQ("1.0\r\n0\r\n0\r\n\r\n\r\n0\r\n6\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n",
              SetupText());
    ASSERT_TRUE(ApplySetupText(Join(lines)));
    EXPECT_TRUE(blnSubdirectories && blnConfirmFiles);
    EXPECT_EQ("C:\\Bücher\\", strDirPath);
    EXPECT_EQ("D:\\", strBrowsePath);
    EXPECT_EQ(2, GetPurgeType());
    EXPECT_EQ(4, frmTypeOfPurge.cboNumberOfPasses[2].ListIndex);
    EXPECT_EQ(0, blnOKToPurgeReadOnlyFiles) << "the boxes are set, the flags follow later";
    ASSERT_TRUE(WriteSetupFile(strPath));
    EXPECT_EQ(Join(lines), fake::ContentOf(strPath));
}

TEST_F(SetupFiles, RoundTripOfEveryTypePassAndBox) {
    const int intPasses[] = {9, 7, 5};
    int intBits = 0;
    for (int t = 0; t < 3; ++t)
        for (int p = 1; p <= intPasses[t]; ++p)
            for (int k = 0; k < 7; ++k, intBits = (intBits + 37) % 512) {
                lines[1] = std::to_string(intBits >> 7 & 1);
                lines[2] = std::to_string(intBits >> 8 & 1);
                lines[5] = std::to_string(t);
                lines[6] = std::to_string(p);
                for (int b = 0; b < 7; ++b)
                    lines[static_cast<std::size_t>(7 + b)] = std::to_string(intBits >> b & 1);
                ASSERT_TRUE(ApplySetupText(Join(lines)));
                ASSERT_EQ(Join(lines), SetupText());
            }
}

TEST_F(SetupFiles, ReadsWhatOtherHandsMayHaveWritten) {
    const std::string strExpected = Join(lines);
    std::vector<std::string> blanks = lines;
    blanks[1] = "  1  ";
    blanks[5] = "\t2 ";
    blanks[3] = "  C:\\Bücher"; // the backslash at the end is added
    std::vector<std::string> quoted = lines;
    quoted[3] = "\"C:\\Bücher\\\"";
    for (const std::string& text :
         {Join(lines, "\n"), Join(lines, "\r"), Join(lines, ","), Join(blanks), Join(quoted),
          "\xEF\xBB\xBF" + Join(lines), Join(lines) + "more\r\n",
          Join(lines).substr(0, Join(lines).size() - 2)}) {
        ASSERT_TRUE(ApplySetupText("1.0,0,0,,,0,1,0,0,0,0,0,0,0"));
        fake::PutFile(strPath, text);
        EXPECT_TRUE(ReadSetupFile(strPath)) << text;
        EXPECT_EQ(strExpected, SetupText()) << text;
    }
}

TEST_F(SetupFiles, KeepsEveryFolderNameButThoseWithAComma) {
    for (const char* folder :
         {"C:\\ a . b \\", "C:\\'%20&#;=~\x7F\\", "C:\\\xED\xA0\x80\xF0\x9F\x92\xBE\\"}) {
        strDirPath = strBrowsePath = folder;
        const std::string strText = SetupText();
        strDirPath.clear();
        EXPECT_TRUE(ApplySetupText(strText)) << folder;
        EXPECT_EQ(folder, strDirPath);
    }
    strDirPath = "C:\\a,b\\";
    EXPECT_FALSE(ApplySetupText(SetupText()));
}

TEST_F(SetupFiles, AFaultKeepsWhatWasReadBeforeIt) {
    const auto with = [this](std::size_t line, const std::string& value) {
        std::vector<std::string> changed = lines;
        changed[line] = value;
        return Join(changed);
    };
    const std::string strStart = SetupText();
    const auto after = [&](const std::string& text) {
        Initialization();
        EXPECT_TRUE(ApplySetupText(strStart));
        strFilespec = "*.txt";
        EXPECT_FALSE(ApplySetupText(text)) << text;
        return SetupText();
    };
    // Nothing takes effect before the seven lines at the head are read.
    for (const std::string& text :
         {std::string(), std::string("\r\n"), std::string(100, '\0'), std::string("1.0"),
          with(1, "x"), with(1, ""), with(2, "1x"), with(5, "99999999999"), with(6, "2.5"),
          with(3, "C:\\a,b\\"), with(3, "\\\\server\\share\\"), with(3, "folder\\"),
          with(3, "C:\\a\tb\\"), with(3, "C:\\\xFF\\"), with(3, "\"C:\\"),
          std::string("1.0,1,1,C:\\") + std::string(10 << 20, 'a')})
        EXPECT_EQ(strStart, after(text));

    // The boxes before the missing or wrong line, and the seven lines at the head.
    const std::string strHead = Join({lines.begin(), lines.begin() + 7});
    for (std::size_t n = 7; n <= 13; ++n) {
        std::string strKept = strHead;
        for (std::size_t i = 7; i <= 13; ++i)
            strKept += i < n ? lines[i] + "\r\n" : "0\r\n";
        for (const char* value : {"2", "-1", "", "x"})
            EXPECT_EQ(strKept, after(with(n, value)));
        EXPECT_EQ(strKept,
                  after(Join({lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(n)})));
        EXPECT_EQ("", strFilespec) << "the folder is new";
    }
    // With a fault on both sides nothing behind the first wrong one at the head.
    lines[13] = "x";
    EXPECT_EQ("1.0\r\n1\r\n0\r\n\r\n\r\n0\r\n6\r\n1\r\n0\r\n1\r\n0\r\n1\r\n0\r\n0\r\n",
              after(with(2, "2")));
    EXPECT_EQ("*.txt", strFilespec);
    lines[13] = "1";

    const std::string strBoxes = "1\r\n0\r\n1\r\n0\r\n1\r\n0\r\n1\r\n";
    EXPECT_EQ("1.0\r\n0\r\n0\r\n\r\n\r\n0\r\n6\r\n" + strBoxes, after(with(1, "2")));
    EXPECT_EQ("1.0\r\n1\r\n0\r\n\r\n\r\n0\r\n6\r\n" + strBoxes, after(with(2, "-1")));
    // Folders and type, but not the passes that the type does not offer.
    EXPECT_EQ("1.0\r\n1\r\n1\r\nC:\\Bücher\\\r\nD:\\\r\n0\r\n6\r\n" + strBoxes,
              after(with(5, "3")));
    EXPECT_EQ("", strFilespec) << "the folder is new";
    for (const char* passes : {"6", "0", "-32768"})
        EXPECT_EQ("1.0\r\n1\r\n1\r\nC:\\Bücher\\\r\nD:\\\r\n2\r\n2\r\n" + strBoxes,
                  after(with(6, passes)));
}

TEST_F(SetupFiles, RefusesFilesThatCannotBeSetups) {
    const std::string strStart = SetupText();
    fake::PutBigFile("C:\\big.nws", 5ULL << 30, '1');
    fake::PutFile("C:\\million.nws", Join(lines) + std::string(lngMaxTextFile, ' '));
    fake::PutFolder("C:\\folder.nws");
    fake::PutFile("C:\\locked.nws", Join(lines)).Denied = true;
    for (const char* path : {"C:\\big.nws", "C:\\million.nws", "C:\\folder.nws", "C:\\locked.nws",
                             "C:\\missing.nws", ""})
        EXPECT_FALSE(ReadSetupFile(path)) << path;
    fake::PutFile(strPath, Join(lines));
    fake::FailNth(1, platform::Fault::ReadFault, "ReadBytes");
    EXPECT_FALSE(ReadSetupFile(strPath));
    EXPECT_EQ(strStart, SetupText());
    fake::PutFile("C:\\most.nws",
                  Join(lines) + std::string(lngMaxTextFile - Join(lines).size(), ' '));
    EXPECT_TRUE(ReadSetupFile("C:\\most.nws"));
}

TEST_F(SetupFiles, NoFaultWhileSavingHarmsTheOldFile) {
    fake::PutFile(strPath, "old");
    fake::PutFile("C:\\a.nws.new1", "somebody's");
    for (int n = 1;; ++n) {
        fake::FailNth(n, platform::Fault::DiskFull);
        const bool blnSaved = WriteSetupFile(strPath);
        const bool blnFailed = fake::HasFailed();
        fake::FailNth(0, platform::Fault::None);
        EXPECT_EQ(0, fake::OpenHandles());
        EXPECT_EQ("somebody's", fake::ContentOf("C:\\a.nws.new1"));
        if (!blnFailed) {
            EXPECT_TRUE(blnSaved);
            EXPECT_GE(n, 5) << "open, write, flush, close, rename";
            break;
        }
        EXPECT_FALSE(blnSaved) << n;
        EXPECT_EQ("old", fake::ContentOf(strPath)) << n;
        fake::TakeAway("C:\\a.nws.new2"); // left when the disk refuses even its removal
    }
    EXPECT_EQ(SetupText(), fake::ContentOf(strPath));
    EXPECT_EQ(nullptr, fake::At("C:\\a.nws.new2"));
    // Forced to the disk before it takes the old one's place.
    const std::string strDone = fake::JournalText("C:\\a.nws.new2");
    EXPECT_LT(strDone.rfind("flush"), strDone.rfind("rename C:\\a.nws")) << strDone;
}

TEST_F(SetupFiles, TheNextRunFileHasItsPlace) {
    EXPECT_EQ("C:\\Users\\me\\AppData\\Roaming\\Nullwright\\nullwright.usr", NextRunSetupPath());
    EXPECT_EQ(nullptr, fake::At("C:\\Users\\me\\AppData\\Roaming\\Nullwright"));
    EXPECT_TRUE(MakeNextRunFolder());
    EXPECT_TRUE(MakeNextRunFolder()) << "there already";
    EXPECT_NE(nullptr, fake::At("C:\\Users\\me\\AppData\\Roaming\\Nullwright"));

    fake::FailNth(1, platform::Fault::Other, "ReadApplicationDataFolder");
    FindNextRunSetupPath();
    EXPECT_EQ("C:\\Nullwright\\nullwright.usr", NextRunSetupPath());
    fake::drives.clear();
    fake::FailNth(1, platform::Fault::Other, "ReadApplicationDataFolder");
    FindNextRunSetupPath();
    EXPECT_EQ("", NextRunSetupPath());
    EXPECT_FALSE(MakeNextRunFolder());
}

} // namespace
