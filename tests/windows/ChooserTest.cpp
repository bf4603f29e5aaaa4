// The dialogs in which files and folders are chosen, in real windows, by keys.
#include "windows/WindowTest.h"

using namespace driver;

struct ChooserTest : WindowTest {};

TEST_F(ChooserTest, SubfoldersComeWithTheirCounts) {
    Put("data\\Program Files (x86)\\a.txt", "a");
    Put("data\\Program Files (x86)\\b.txt", "b");
    Put("data\\c (1)\\inner\\d.txt", "d");
    HWND chooser = OpenSubfolders("data");
    ExpectFocus(chooser, "lstSubfolders");
    PressKey(chooser, VK_SPACE);
    Expect(chooser, "lblChosen", "One subfolder is chosen.");
    PressKey(chooser, VK_DOWN);
    PressKey(chooser, VK_SPACE);
    Expect(chooser, "lblChosen", "Two subfolders are chosen.");
    // By name: both are let go.
    Choose(chooser, "lstSubfolders", "Program Files (x86)  (2 files, no subfolders)");
    Expect(chooser, "lblChosen", "One subfolder is chosen.");
    Choose(chooser, "lstSubfolders", "c (1)  (no files, 1 subfolder)");
    Expect(chooser, "lblChosen", "No subfolders are chosen.");
    PressKey(chooser, VK_ESCAPE);
    AnswerBox("Purge folders", "No subolders were selected.", IDOK);
    EXPECT_TRUE(Exists("data\\Program Files (x86)\\a.txt"));
}

// The dialog opens with the focus where one types, Enter and Escape answer.
TEST_F(ChooserTest, FilesAreSpecified) {
    Put("data\\a.txt", "a");
    Put("data\\b.doc", "b");
    SpecifyFolder("data", IDNO);
    Click(main, "cmdSpecifyFiles");
    HWND specify = Window("Specify files"), extension = Named(specify, "txbExtension");
    PressKey(specify, 'E', VK_MENU);
    ExpectFocus(specify, "txbExtension");
    EXPECT_TRUE(IsChecked(Named(specify, "optSpecification(2)")));
    Type(extension, "tar.gz");
    PressKey(specify, VK_RETURN);
    AnswerBox("Error", "Extension must not contain \".\"", IDOK);
    Type(extension, "*.txt");
    Expect(specify, "lblMatches", "One file in this folder matches.");
    PressKey(specify, VK_RETURN);
    Expect(main, "lblFiles", "*.txt");
    Click(main, "cmdSpecifyFiles");
    Expect(specify, "txbExtension", "txt");
    PressKey(specify, VK_ESCAPE);
    ExpectUsable(main, "cmdQuit");
    Expect(main, "lblFiles", "*.txt");
}
