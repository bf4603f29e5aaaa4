// Purges the files in the folder "data" of the small drive, whose raw image tools/wiped-image.sh
// examines before and after.
#include "windows/Environment.h"
#include "windows/WindowTest.h"

using namespace driver;

struct PurgeFolder : WindowTest {
    void SetUp() override { StartIn(Environment(L"NW_SMALL_DRIVE").substr(0, 2)); }
    void ChooseType(const std::string& typeIndex) {
        HWND type = OpenTypeOfPurge();
        Click(type, "optPurgeType(" + typeIndex + ")");
        Choose(type, "cboNumberOfPasses(" + typeIndex + ")", "1");
        Click(type, "cmdAccept");
        AnswerBox("Nullwright", "", IDYES);
        SpecifyFolder("data", IDYES);
    }
    void Purge(std::initializer_list<const char*> options = {}) {
        StartPurge(options);
        HWND report = Window("Purge files");
        for (int i = 0; i < 4 && TextOf(Named(report, "lblPausedDone")).empty(); ++i) // many files
            (void)WaitUntil([&] { return !TextOf(Named(report, "lblPausedDone")).empty(); });
        Expect(report, "lblPausedDone", "Done");
    }
    void ChooseAllBelow() {
        ChooseType("0");
        Click(main, "cmdSubdirectories");
        Expect(main, "lblSubdirectories", "Yes");
    }
};

// With the folders below, which go, too.
TEST_F(PurgeFolder, AllBelow) {
    ChooseAllBelow();
    Purge({"chkDeleteEmptyFolders"});
}

TEST_F(PurgeFolder, AllBelowAndTheNames) {
    ChooseAllBelow();
    Purge({"chkDeleteEmptyFolders", "chkOverwriteNames"});
}

TEST_F(PurgeFolder, WithRandomBytes) {
    ChooseType("0");
    Purge();
}

TEST_F(PurgeFolder, WithPatternsAndRandomBytes) {
    ChooseType("2");
    Purge();
}

// Neither writing behind the files nor small blocks move a file out of a record unpurged.
TEST_F(PurgeFolder, SlackThenAllInBlocksOf512) {
    ChooseType("0");
    Click(main, "cmdProcessFiles(1)");
    HWND options = Window("Purge options");
    Click(options, "chkPurgeSlackOnly");
    Choose(options, "cboClusterSize", "512 bytes");
    Click(options, "cmdDoPurge");
    AnswerBox("Purge files", "", IDYES);
    HWND report = Window("Purge files");
    Expect(report, "lblPausedDone", "Done");
    Click(report, "cmdClose");
    Purge();
}
