// Setup files: what is written, what is read back, and what a fault leaves.
#include "settings/SetupFiles.h"
#include "fakes/ProgramTest.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/TextFiles.h"

const std::string strPath = "C:\\a.nws";

struct SetupFiles : StartedTest {
    static std::string Join(const std::vector<std::string>& lines,
                            const std::string& end = "\r\n") {
        std::string text;
        for (const std::string& line : lines)
            text += line + end;
        return text;
    }
    /// The lines with another value in one of them.
    std::string With(std::size_t line, const std::string& value) const {
        std::vector<std::string> changed = lines;
        changed[line] = value;
        return Join(changed);
    }
    std::vector<std::string> lines = {
        "1.0", "1", "1", "C:\\Bücher\\", "D:\\", "2", "5", "1", "0", "1", "0", "1", "0", "1"};
};

TEST_F(SetupFiles, WritesFourteenLines) {
    EXPECT_EQ("1.0\r\n0\r\n0\r\n\r\n\r\n0\r\n6\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n0\r\n",
              SetupText());
    ASSERT_TRUE(ApplySetupText(Join(lines)));
    EXPECT_EQ(0, blnOKToPurgeReadOnlyFiles) << "the boxes are set, the flags follow later";
    ASSERT_TRUE(WriteSetupFile(strPath));
    EXPECT_EQ(Join(lines), fake::ContentOf(strPath));
    // Every type and number of passes, and every box by itself.
    for (int t = 0; t < 3; ++t)
        for (int n = 0; n < (9 - 2 * t) * 9; ++n) {
            lines[5] = std::to_string(t);
            lines[6] = std::to_string(n / 9 + 1);
            const std::size_t boxes[] = {1, 2, 7, 8, 9, 10, 11, 12, 13};
            lines[boxes[n % 9]] = lines[boxes[n % 9]] == "0" ? "1" : "0";
            ASSERT_TRUE(ApplySetupText(Join(lines)));
            ASSERT_EQ(Join(lines), SetupText());
        }
}

TEST_F(SetupFiles, LaterOptionsFollowTheFourteenLines) {
    const std::string strHead = Join(lines);
    for (const char* more : {"names=1\r\n", "verify=1\r\nnames=1\r\n"}) {
        ASSERT_TRUE(ApplySetupText(strHead + more));
        EXPECT_EQ(strHead + more, SetupText());
    }
    for (const char* more : {"", "verify=0", "verify", "verify=1x", "xverify=1", "\"verify=1",
                             "verify=\r\n1"}) { // off, also what was on before
        ASSERT_TRUE(ApplySetupText(strHead + "names=1\r\nverify=1\r\n"));
        EXPECT_TRUE(ApplySetupText(strHead + more));
        EXPECT_EQ(strHead, SetupText()) << more;
    }
    EXPECT_TRUE(ApplySetupText(strHead + "new=1\r\n,,\nverify=1")); // one of later still
    EXPECT_EQ(strHead + "verify=1\r\n", SetupText());
}

TEST_F(SetupFiles, ReadsWhatOtherHandsMayHaveWritten) {
    const std::string strExpected = Join(lines);
    for (const std::string& text :
         {Join(lines, "\n"), Join(lines, "\r"), Join(lines, ","), With(1, "  1  "), With(5, "\t2 "),
          With(3, "  C:\\Bücher"), With(3, "\"C:\\Bücher\\\""), "\xEF\xBB\xBF" + Join(lines),
          Join(lines) + "more\r\n", Join(lines).substr(0, Join(lines).size() - 2)}) {
        ASSERT_TRUE(ApplySetupText("1.0,0,0,,,0,1,0,0,0,0,0,0,0"));
        fake::PutFile(strPath, text);
        EXPECT_TRUE(ReadSetupFile(strPath)) << text;
        EXPECT_EQ(strExpected, SetupText()) << text;
    }
}

TEST_F(SetupFiles, AFaultKeepsWhatWasReadBeforeIt) {
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
          With(1, "x"), With(1, ""), With(2, "1x"), With(5, "99999999999"), With(6, "2.5"),
          With(3, "C:\\a,b\\"), With(3, "\\\\server\\share\\"), With(3, "folder\\"),
          With(3, "C:\\a\tb\\"), With(3, "C:\\\xFF\\"), With(3, "\"C:\\"),
          std::string("1.0,1,1,C:\\") + std::string(10 << 20, 'a')})
        EXPECT_EQ(strStart, after(text));

    // The boxes before the missing or wrong line, and the seven lines at the head.
    const std::string strHead = Join({lines.begin(), lines.begin() + 7});
    for (std::size_t n = 7; n <= 13; ++n) {
        std::string strKept = strHead;
        for (std::size_t i = 7; i <= 13; ++i)
            strKept += i < n ? lines[i] + "\r\n" : "0\r\n";
        for (const char* value : {"2", "-1", "", "x"})
            EXPECT_EQ(strKept, after(With(n, value)));
        EXPECT_EQ(strKept,
                  after(Join({lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(n)})));
        EXPECT_EQ("", strFilespec) << "the folder is new";
    }
    const std::string strNone = "\r\n\r\n\r\n0\r\n6\r\n";
    const std::string strBoxes = "1\r\n0\r\n1\r\n0\r\n1\r\n0\r\n1\r\n";
    const std::string strFolders = "1.0\r\n1\r\n1\r\nC:\\Bücher\\\r\nD:\\\r\n";
    EXPECT_EQ("1.0\r\n1\r\n0" + strNone + strBoxes, after(With(2, "-1")));
    // Folders and type, but not the passes that the type does not offer.
    EXPECT_EQ(strFolders + "0\r\n6\r\n" + strBoxes, after(With(5, "3")));
    for (const char* passes : {"6", "0", "-32768"})
        EXPECT_EQ(strFolders + "2\r\n2\r\n" + strBoxes, after(With(6, passes)));
}

TEST_F(SetupFiles, RefusesFilesThatCannotBeSetups) {
    const std::string strStart = SetupText(), strText = Join(lines);
    const std::string strMost = strText + std::string(lngMaxTextFile - strText.size(), ' ');
    fake::PutFile("C:\\million.nws", strMost + " ");
    fake::PutFolder("C:\\folder.nws");
    for (const char* path : {"C:\\million.nws", "C:\\folder.nws", ""})
        EXPECT_FALSE(ReadSetupFile(path)) << path;
    EXPECT_EQ(strStart, SetupText());
    fake::PutFile(strPath, strMost);
    EXPECT_TRUE(ReadSetupFile(strPath));
}

TEST_F(SetupFiles, NoFaultWhileSavingHarmsTheOldFile) {
    fake::PutFile(strPath, "old");
    fake::PutFile("C:\\a.nws.new1", "somebody's");
    bool blnFailed = false;
    int n = 0;
    do {
        SCOPED_TRACE(++n);
        fake::TakeAway("C:\\a.nws.new2"); // left when the disk refuses even its removal
        fake::FailNth(n, platform::Fault::DiskFull);
        const bool blnSaved = WriteSetupFile(strPath);
        blnFailed = fake::HasFailed();
        EXPECT_NE(blnFailed, blnSaved);
        EXPECT_EQ("somebody's", fake::ContentOf("C:\\a.nws.new1"));
        EXPECT_EQ(blnFailed ? "old" : SetupText(), fake::ContentOf(strPath));
    } while (blnFailed);
    EXPECT_GT(n, 4) << "open, write, flush, close, rename";
    // Forced to the disk before it takes the old one's place.
    const std::string strDone = fake::JournalText("C:\\a.nws.new2");
    EXPECT_LT(strDone.rfind("flush"), strDone.rfind("rename C:\\a.nws")) << strDone;
}

TEST_F(SetupFiles, WithoutAFolderForApplicationDataTheNextRunFileLiesOnTheDrive) {
    for (const char* path : {"C:\\Nullwright\\nullwright.usr", ""}) {
        fake::FailNth(1, platform::Fault::Other, "ReadApplicationDataFolder");
        FindNextRunSetupPath();
        EXPECT_EQ(path, NextRunSetupPath());
        fake::drives.clear();
    }
    EXPECT_FALSE(MakeNextRunFolder());
}
