// The dialogs in which files and folders are chosen, in real windows.
#include "windows/Driver.h"

using namespace driver;

struct ChooserTest : WindowTest {};

TEST_F(ChooserTest, SubfoldersComeWithTheirCounts) {
    Put("data\\Program Files (x86)\\a.txt", "a");
    Put("data\\Program Files (x86)\\b.txt", "b");
    Put("data\\c (1)\\inner\\d.txt", "d");
    Click(main, "cmdSpecifyDirectory(1)");
    AnswerBox("Purge folders", "", IDYES);
    AnswerDialog("Specify folder containing subfolders to be purged", scratch + "\\data");
    HWND chooser = Window("Select subfolders of " + scratch + "\\data\\ to be purged.");
    ASSERT_NE(nullptr, chooser);
    HWND list = Named(chooser, "lstSubfolders");
    EXPECT_EQ((std::vector<std::string>{"c (1)  (no files, 1 subfolder)",
                                        "Program Files (x86)  (2 files, no subfolders)"}),
              ItemsOf(list));
    EXPECT_TRUE(WaitUntil([&] { return Focused(chooser) == list; })) << Describe();
    PressKey(chooser, VK_SPACE);
    Expect(chooser, "lblChosen", "One subfolder is chosen.");
    PressKey(chooser, VK_DOWN);
    PressKey(chooser, VK_SPACE);
    Expect(chooser, "lblChosen", "Two subfolders are chosen.");
    Choose(list, "Program Files (x86)  (2 files, no subfolders)"); // lets it go
    Expect(chooser, "lblChosen", "One subfolder is chosen.");
    PressKey(chooser, VK_ESCAPE);
    AnswerBox("Purge folders", "No subolders were selected.", IDOK);
    EXPECT_EQ("a", ContentOf("data\\Program Files (x86)\\a.txt"));
}

// By keys alone: the dialog opens with the focus where one types, Enter and Escape answer.
TEST_F(ChooserTest, FilesAreSpecifiedByKeys) {
    Put("data\\a.txt", "a");
    Put("data\\b.doc", "b");
    SpecifyData(IDNO);
    const auto open = [&] {
        Click(main, "cmdSpecifyFiles");
        return Window("Specify files");
    };
    HWND specify = open();
    ASSERT_NE(nullptr, specify);
    PressKey(specify, 'E', true);
    EXPECT_TRUE(WaitUntil([&] { return Focused(specify) == Named(specify, "txbExtension"); }));
    EXPECT_TRUE(IsChecked(Named(specify, "optSpecification(2)")));
    Type(Named(specify, "txbExtension"), "tar.gz");
    PressKey(specify, VK_RETURN);
    AnswerBox("Error", "Extension must not contain \".\"", IDOK);
    Type(Named(specify, "txbExtension"), "*.txt");
    Expect(specify, "lblMatches", "One file in this folder matches.");
    PressKey(specify, VK_RETURN);
    Expect(main, "lblFiles", "*.txt");
    specify = open();
    EXPECT_EQ("txt", TextOf(Named(specify, "txbExtension")));
    PressKey(specify, VK_ESCAPE);
    ExpectReady();
    Expect(main, "lblFiles", "*.txt");
}
