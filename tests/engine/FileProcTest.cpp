// Procedures on single files.
#include "engine/FileProc.h"
#include "engine/FileOps.h"
#include "fakes/ProgramTest.h"

using FileProcTest = ProgramTest;

TEST_F(FileProcTest, Sizes) {
    for (const auto& [bytes, text] : {std::pair{1023.0, "1,023 bytes"},
                                      {1048575.0, "1,024.00 KB"},
                                      {1048576.0, "1.00 MB"},
                                      {1073741824.0, "1.00 GB"}})
        EXPECT_EQ(text, ByteSizeText(bytes, 2));
    EXPECT_EQ("1,264,128.0 MB", ByteSizeTextUpToMB(1073741824.0 * 1234.5, 1));
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
    EXPECT_EQ(ClassSwapFile, ClassifyFileForPurge("pagefile.sys"));
    for (const char* name : {"readme", "a.txt", "a.", "C:\\x.dll\\a", "a.dll.txt"})
        EXPECT_EQ(ClassNoObjection, ClassifyFileForPurge(name)) << name;
    const std::string path = "C:\\x\\a.tar.EXE";
    for (const std::string& name : std::vector<std::string>{
             path, "C:\\Program Files\\Nullwright\\sub\\x.dll", "C:\\pagefile.sys"})
        EXPECT_EQ(ClassSystemUndecided, ClassifyFileForPurge(name)) << name;
    SetExtensionVerdict("exe", 1);
    SetExtensionVerdict("EXE", -1); // no row of the table, nor this
    SetExtensionVerdict("txt", -1);
    EXPECT_EQ(ClassNoObjection, ClassifyFileForPurge(path));
    SetExtensionVerdict("exe", -1);
    EXPECT_EQ(ClassSystemRefused, ClassifyFileForPurge(path));
    EXPECT_EQ(ClassNoObjection, ClassifyFileForPurge("a.txt"));
}
