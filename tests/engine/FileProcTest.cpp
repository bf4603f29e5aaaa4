// Procedures on single files.
#include "engine/FileProc.h"
#include "engine/FileOps.h"
#include "fakes/ProgramTest.h"

using FileProcTest = ProgramTest;

TEST_F(FileProcTest, Sizes) {
    const struct {
        double Bytes;
        int Decimals;
        const char *Text, *UpToMB;
    } cases[] = {{1023, 2, "1,023 bytes", "1,023 bytes"},
                 {1048575, 2, "1,024.00 KB", "1,024.00 KB"},
                 {1048576, 2, "1.00 MB", "1.00 MB"},
                 {1073741824, 2, "1.00 GB", "1,024.00 MB"},
                 {1073741824.0 * 1234.5, 1, "1,234.5 GB", "1,264,128.0 MB"}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.Text, ByteSizeText(c.Bytes, c.Decimals));
        EXPECT_EQ(c.UpToMB, ByteSizeTextUpToMB(c.Bytes, c.Decimals));
    }
}

TEST_F(FileProcTest, SensitiveFiles) {
    for (const char* name : {"BOOK.XLS", "data.xlw", "a.xl\xC3\xA4", "a.386", "a.b.dll"}) {
        EXPECT_TRUE(IsSensitiveFile(name, false)) << name;
        EXPECT_TRUE(IsSensitiveFile(name, true)) << name;
    }
    for (const char* name : {"a.rtf", "C:\\x\\a.SHS", "a.adt"}) {
        EXPECT_TRUE(IsSensitiveFile(name, false)) << name;
        EXPECT_FALSE(IsSensitiveFile(name, true)) << name;
    }
    for (const char* name : {"report.xlsx", "a.txt", "dll", "a.", "a.do", "C:\\x.dll\\a", ""})
        EXPECT_FALSE(IsSensitiveFile(name, false)) << name;
}

TEST_F(FileProcTest, Classification) {
    InitSystemExtensions(0);
    EXPECT_EQ(ClassProgramFolder, ClassifyFileForPurge("c:\\PROGRAM files\\nullwright\\x.dll"));
    EXPECT_EQ(ClassSystemUndecided,
              ClassifyFileForPurge("C:\\Program Files\\Nullwright\\sub\\x.dll"));
    EXPECT_EQ(ClassSwapFile, ClassifyFileForPurge("pagefile.sys"));
    EXPECT_EQ(ClassSystemUndecided, ClassifyFileForPurge("C:\\pagefile.sys"));
    for (const char* name : {"readme", "a.txt", "a.", "C:\\x.dll\\a", "a.dll.txt"})
        EXPECT_EQ(ClassNoObjection, ClassifyFileForPurge(name)) << name;
    const std::string path = "C:\\x\\ARCHIVE.tar.EXE";
    EXPECT_EQ(ClassSystemUndecided, ClassifyFileForPurge(path));
    SetExtensionVerdict("exe", 1);
    SetExtensionVerdict("EXE", -1); // no row of the table, nor this
    SetExtensionVerdict("txt", -1);
    EXPECT_EQ(ClassNoObjection, ClassifyFileForPurge(path));
    SetExtensionVerdict("exe", -1);
    EXPECT_EQ(ClassSystemRefused, ClassifyFileForPurge(path));
    EXPECT_EQ(ClassNoObjection, ClassifyFileForPurge("a.txt"));
}
