// Nullwright doing its main job without a person: its real windows are driven through choosing,
// listing, estimating and purging a prepared folder, and the reports are printed.
//
// NW_TEST_FOLDER is that folder, made by tools/demo.sh, which also takes the pictures that are
// asked for here, and compares what is left afterwards.
#include "disk/DiskPurgeQueries.h"
#include "support/StrProc.h"
#include "windows/Environment.h"
#include "windows/WindowTest.h"

#include <iostream>

using namespace driver;

/// The texts in "letters" and below it, as tools/demo.sh has made them.
const std::string files = "29";

struct Demo : WindowTest {
    void SetUp() override {
        StartIn(Environment(L"NW_TEST_FOLDER"));
        ASSERT_TRUE(Exists("letters")) << "NW_TEST_FOLDER names no prepared folder.";
    }
    /// Has a picture of the screen taken, if it has a name, and the window's place in it noted: the
    /// script sees the file and takes it away.
    static void Picture(const std::string& name, HWND window) {
        if (name.empty())
            return;
        RECT place{};
        GetWindowRect(window, &place);
        Put("picture", name + " " + std::to_string(place.right - place.left) + "x" +
                           std::to_string(place.bottom - place.top) + "+" +
                           std::to_string(place.left) + "+" + std::to_string(place.top) + "\n");
        EXPECT_TRUE(WaitUntil([] { return !Exists("picture"); })) << "no picture of " << name;
    }
    /// Waits for the run in a report window to end, and prints the text, which must hold
    /// `expected`.
    static std::string Report(const std::string& caption, const std::string& picture,
                              const std::string& expected) {
        HWND report = Window(caption);
        Expect(report, "lblPausedDone", "Done");
        Picture(picture, report);
        const std::string text = TextOf(Named(report, "txbText"));
        std::cout << "---- " << caption << " ----\n" << text << "\n" << std::flush;
        EXPECT_NE(std::string::npos, text.find(expected));
        Click(report, "cmdClose");
        ExpectGone(report);
        return text;
    }
    void MeasureSpeed() {
        Click(main, "cmdLargePurge(0)");
        AnswerBox("Test purge speed", "", IDYES);
        const DWORD drives = GetLogicalDrives();
        if ((drives & (drives - 1)) != 0) { // one alone is not asked for
            HWND chooser = Window("Test purge speed on which drive?");
            Choose(chooser, "lstDrives", scratch.substr(0, 2));
            Click(chooser, "cmdOK");
        }
        AnswerBox("Test purge speed", "", IDOK);
        ExpectUsable(main, "cmdQuit");
        const std::string speed = TextOf(Named(main, "lblPurgeSpeed"));
        EXPECT_TRUE(speed.ends_with(" MB/sec. (1 overwrite) for Drive C.")) << speed;
        std::cout << "---- Test purge speed ----\n" << speed << "\n" << std::flush;
    }
    void List(int displayNames) {
        Click(main, "cmdProcessFiles(0)");
        AnswerBox("List files", "Display folder names?", displayNames);
    }
    /// Up to the question.
    void Purge(const std::vector<const char*>& boxes, const std::string& picture) {
        Click(main, "cmdProcessFiles(1)");
        HWND options = Window("Purge options");
        for (const char* box : boxes) {
            if (!IsChecked(Named(options, box)))
                Click(options, box);
            EXPECT_TRUE(WaitUntil([&] { return IsChecked(Named(options, box)); })) << box;
        }
        Picture(picture, options);
        Click(options, "cmdDoPurge");
    }
    /// Of the file that is kept.
    void PurgeKept(const char* box, const std::string& picture, const std::string& what) {
        Purge({box}, picture);
        AnswerBox("Purge files",
                  "Are you sure that you want to purge the " + what + scratch +
                      "\\kept.dat ?\r\nThis will permanently destroy all data in this file.",
                  IDYES);
    }
};

TEST_F(Demo, ListsEstimatesAndPurges) {
    const std::string letters = scratch + "\\letters\\";
    Picture("1-main", main);

    // One pass of the bit patterns: its last byte can be recognised afterwards.
    HWND type = OpenTypeOfPurge();
    Click(type, "optPurgeType(1)");
    Choose(type, "cboNumberOfPasses(1)", "1");
    Picture("2-type", type);
    Click(type, "cmdAccept");
    AnswerBox(
        "Nullwright",
        "In the type of purge specified each file will be overwritten 4 times.\r\nIs this OK?",
        IDYES);
    Expect(main, "lblTypeOfPurge", "Alternate bit patterns, once (= 4 overwrites)");

    // Which files: all texts in a folder and below it.
    SpecifyFolder("letters", IDNO);
    Click(main, "cmdSpecifyFiles");
    HWND specify = Window("Specify files");
    Click(specify, "optSpecification(2)");
    Type(Named(specify, "txbExtension"), "txt");
    Expect(specify, "lblMatches", "Seventeen files in this folder match.");
    Picture("3-files", specify);
    Click(specify, "cmdOK");
    Expect(main, "lblFiles2", "(All files with extension txt.)");
    Click(main, "cmdSubdirectories");
    Expect(main, "lblSubdirectories", "Yes");
    Picture("4-specified", main);

    // Whole folders could be purged as well. Cancelled: these are for later.
    HWND chooser = OpenSubfolders("letters");
    Choose(chooser, "lstSubfolders", "2019  (4 files, 1 subfolder)");
    Expect(chooser, "lblChosen", "One subfolder is chosen.");
    Picture("5-subfolders", chooser);
    Click(chooser, "cmdCancel");
    AnswerBox("Purge folders", "No subolders were selected.", IDOK);

    List(IDYES);
    const std::string listing =
        Report("List files", "6-listing", "Number of files *.txt: " + files + "\r\n");
    EXPECT_EQ(std::stoi(files), CountOccurrences(listing, " bytes)"));
    EXPECT_TRUE(listing.ends_with("For an estimate of the purge time test the purge speed for "
                                  "Drive C\r\nthen relist the files."));
    MeasureSpeed();
    List(IDNO);
    Report("Estimate purge time", "7-estimate",
           "Purge type: alternate bit patterns once\r\nEstimated purge time: ");
    Purge({"chkOKToPurgeReadOnlyFiles", "chkDeleteEmptyFolders"}, "8-options");
    Picture("9-question", Window("Purge files"));
    AnswerBox("Purge files",
              "Are you sure that you want to purge the " + files + " files " + letters +
                  "*.txt\r\nand all files of the form \"*.txt\" in all subfolders?\r\n" +
                  "This will permanently destroy all data in these " + files + " files.",
              IDYES);
    const std::string purge =
        Report("Purge files", "10-purged", "Number of files purged: " + files + "\r\n");
    EXPECT_EQ(std::stoi(files), CountOccurrences(purge, " bytes) purged\r\n"));

    // A file that is kept shows what the last overwrite wrote. It is confirmed by itself.
    // Its slack alone is purged before.
    const std::string content = ContentOf("kept.dat");
    Click(main, "cmdSingleFile");
    AnswerDialog("Specify file to be purged.", scratch + "\\kept.dat");
    Expect(main, "lblFiles", "kept.dat");
    PurgeKept("chkPurgeSlackOnly", "", "slack area of the file ");
    Report("Purge files", "", "kept.dat (10,000 bytes) purging\r\n");
    EXPECT_TRUE(content == ContentOf("kept.dat")) << "more than the slack was purged";
    Click(main, "cmdConfirmFiles");
    Expect(main, "lblConfirmFiles", "Yes");
    PurgeKept("chkDoNotDeletePurgedFiles", "11-options-kept", "file ");
    HWND confirm = Window("Confirm purging of this file");
    Picture("12-confirm", confirm);
    Click(confirm, "cmdYes");
    Report("Purge files", "13-kept", "Purged files not deleted.");
    EXPECT_TRUE(ContentOf("kept.dat") == std::string(content.size(), '\xF5'))
        << "not the last pattern";
    std::cout << "kept.dat holds " << content.size() << " bytes, all F5: the last bit pattern.\n";

    Click(main, "cmdSetup");
    ExpectUsable(main, "cmdKeepSetup");
    Picture("14-setup", main);
    Click(main, "cmdKeepSetup");

    Sleep(1100); // the second in which "Quit" is deaf, after the file dialog
    Click(main, "cmdQuit");
    EXPECT_EQ(0, WaitForEnd());
}
