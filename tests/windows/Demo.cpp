// Nullwright doing its main job without a person: its real windows are driven through choosing,
// listing, estimating and purging a prepared folder, and the reports are printed.
//
// NW_TEST_FOLDER is that folder, made by tools/demo.sh, which also takes the pictures that are
// asked for here, and compares what is left afterwards.
#include "windows/Driver.h"

#include "support/StrProc.h"

#include <filesystem>
#include <iostream>

using namespace driver;

namespace {

struct Demo : testing::Test {
    HWND main = nullptr;

    void SetUp() override {
        char folder[1024];
        const DWORD length = GetEnvironmentVariableA("NW_TEST_FOLDER", folder, sizeof folder);
        if (length == 0 || length >= sizeof folder)
            GTEST_SKIP() << "NW_TEST_FOLDER names no prepared folder.";
        scratch = folder;
        ASSERT_TRUE(Exists("letters")) << scratch;
        main = StartProgram();
        ASSERT_NE(nullptr, main);
    }
    void TearDown() override { KillProgram(); }

    /// Has a picture of the screen taken, and the window's place in it noted: the script sees the
    /// file and takes it away.
    static void Picture(const std::string& name, HWND window) {
        RECT place{};
        GetWindowRect(window, &place);
        Put("picture", name + " " + std::to_string(place.right - place.left) + "x" +
                           std::to_string(place.bottom - place.top) + "+" +
                           std::to_string(place.left) + "+" + std::to_string(place.top) + "\n");
        EXPECT_TRUE(WaitUntil([] { return !Exists("picture"); })) << "no picture of " << name;
    }
    /// Waits for the run in a report window to end, and gives and prints the text.
    static std::string Report(const std::string& caption, const std::string& picture) {
        HWND report = Window(caption);
        if (report == nullptr)
            return {};
        Expect(report, "lblPausedDone", "Done");
        Picture(picture, report);
        const std::string text = TextOf(Named(report, "txbText"));
        std::cout << "---- " << caption << " ----\n" << text << "\n" << std::flush;
        Click(report, "cmdClose");
        ExpectGone(report);
        return text;
    }
    void AcceptOptions(const std::vector<const char*>& boxes, const std::string& picture) const {
        HWND options = Window("Purge options");
        ASSERT_NE(nullptr, options);
        for (const char* box : boxes) {
            if (!IsChecked(Named(options, box)))
                Click(options, box);
            EXPECT_TRUE(WaitUntil([&] { return IsChecked(Named(options, box)); })) << box;
        }
        Picture(picture, options);
        Click(options, "cmdDoPurge");
    }
};

TEST_F(Demo, ListsEstimatesAndPurges) {
    const std::string letters = scratch + "\\letters\\";
    int files = 0;
    std::filesystem::recursive_directory_iterator walk(letters);
    for (; walk != std::filesystem::recursive_directory_iterator(); ++walk) {
        const DWORD attributes = GetFileAttributesW(walk->path().c_str());
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
            walk.disable_recursion_pending(); // what is behind a link is not meant
        else if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && walk->path().extension() == ".txt")
            ++files;
    }
    ASSERT_GT(files, 20); // the question then has digits
    Picture("1-main", main);

    // One pass of the bit patterns: its last byte can be recognised afterwards.
    Click(main, "cmdTypeOfPurge");
    HWND type = Window("What type of purge should be used?");
    ASSERT_NE(nullptr, type);
    Click(type, "optPurgeType(1)");
    ASSERT_TRUE(WaitUntil([&] { return IsUsable(Named(type, "cboNumberOfPasses(1)")); }));
    Choose(Named(type, "cboNumberOfPasses(1)"), "1");
    Picture("2-type", type);
    Click(type, "cmdAccept");
    AnswerBox(
        "Nullwright",
        "In the type of purge specified each file will be overwritten 4 times.\r\nIs this OK?",
        IDYES);
    Expect(main, "lblTypeOfPurge", "Alternate bit patterns, once (= 4 overwrites)");

    // Which files: all texts in a folder and below it.
    Click(main, "cmdSpecifyDirectory(0)");
    AnswerDialog("Specify folder containing files to be purged", scratch + "\\letters");
    AnswerBox("Specify folder", "Do you wish to purge ALL files in " + letters + "?", IDNO);
    Expect(main, "lblDirectory", letters);
    Click(main, "cmdSpecifyFiles");
    HWND specify = Window("Specify files");
    ASSERT_NE(nullptr, specify);
    Click(specify, "optSpecification(2)");
    Type(Named(specify, "txbExtension"), "txt");
    EXPECT_TRUE(WaitUntil([&] {
        return TextOf(Named(specify, "lblMatches")).find(" files in this folder match.") !=
               std::string::npos;
    })) << TextOf(Named(specify, "lblMatches"));
    Picture("3-files", specify);
    Click(specify, "cmdOK");
    Expect(main, "lblFiles2", "(All files with extension txt.)");
    Click(main, "cmdSubdirectories");
    Expect(main, "lblSubdirectories", "Yes");
    Picture("4-specified", main);

    // Whole folders could be purged as well. Cancelled: these are for later.
    Click(main, "cmdSpecifyDirectory(1)");
    AnswerBox("Purge folders", "", IDYES);
    AnswerDialog("Specify folder containing subfolders to be purged", scratch + "\\letters");
    HWND chooser = Window("Select subfolders of " + letters + " to be purged.");
    ASSERT_NE(nullptr, chooser);
    Choose(Named(chooser, "lstSubfolders"), "2019  (4 files, 1 subfolder)");
    EXPECT_TRUE(WaitUntil(
        [&] { return TextOf(Named(chooser, "lblChosen")) == "One subfolder is chosen."; }));
    Picture("5-subfolders", chooser);
    Click(chooser, "cmdCancel");
    AnswerBox("Purge folders", "No subolders were selected.", IDOK);

    Click(main, "cmdProcessFiles(0)");
    AnswerBox("List files", "Display folder names?", IDYES);
    const std::string listing = Report("List files", "6-listing");
    EXPECT_EQ(files, CountOccurrences(listing, " bytes)"));
    EXPECT_NE(std::string::npos,
              listing.find("Number of files *.txt: " + std::to_string(files) + "\r\n"));
    Click(main, "cmdProcessFiles(0)");
    AnswerBox("List files", "Display folder names?", IDNO);
    const std::string estimate = Report("Estimate purge time", "7-estimate");
    EXPECT_NE(std::string::npos, estimate.find("For an estimate of the purge time test the purge "
                                               "speed for Drive C\r\nthen relist the files."));

    Click(main, "cmdProcessFiles(1)");
    AcceptOptions({"chkOKToPurgeReadOnlyFiles", "chkDeleteEmptyFolders"}, "8-options");
    Picture("9-question", Window("Purge files"));
    AnswerBox("Purge files",
              "Are you sure that you want to purge the " + std::to_string(files) + " files " +
                  letters + "*.txt\r\nand all files of the form \"*.txt\" in all subfolders?\r\n" +
                  "This will permanently destroy all data in these " + std::to_string(files) +
                  " files.",
              IDYES);
    const std::string purge = Report("Purge files", "10-purged");
    EXPECT_EQ(files, CountOccurrences(purge, " bytes) purged\r\n"));
    EXPECT_NE(std::string::npos,
              purge.find("Number of files purged: " + std::to_string(files) + "\r\n"));

    // A file that is kept shows what the last overwrite wrote. It is confirmed by itself.
    const std::string before = ContentOf("kept.dat");
    Click(main, "cmdSingleFile");
    AnswerDialog("Specify file to be purged.", scratch + "\\kept.dat");
    Expect(main, "lblFiles", "kept.dat");
    Click(main, "cmdConfirmFiles");
    Expect(main, "lblConfirmFiles", "Yes");
    Click(main, "cmdProcessFiles(1)");
    AcceptOptions({"chkDoNotDeletePurgedFiles"}, "11-options-kept");
    AnswerBox("Purge files",
              "Are you sure that you want to purge the file " + scratch +
                  "\\kept.dat ?\r\nThis will permanently destroy all data in this file.",
              IDYES);
    HWND confirm = Window("Confirm purging of this file");
    ASSERT_NE(nullptr, confirm);
    Picture("12-confirm", confirm);
    Click(confirm, "cmdYes");
    EXPECT_NE(std::string::npos,
              Report("Purge files", "13-kept").find("Purged files not deleted."));
    const std::string after = ContentOf("kept.dat");
    EXPECT_EQ(before.size(), after.size());
    EXPECT_EQ(std::string::npos, after.find_first_not_of('\xF5')) << "not the last pattern";
    std::cout << "kept.dat holds " << after.size() << " bytes, all F5: the last bit pattern.\n";

    Click(main, "cmdSetup");
    EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdKeepSetup")); }));
    Picture("14-setup", main);
    Click(main, "cmdKeepSetup");
    EXPECT_TRUE(WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); }));

    Sleep(1100); // the second in which "Quit" is deaf, after the file dialog
    Click(main, "cmdQuit");
    EXPECT_EQ(0, WaitForEnd());
}

} // namespace
