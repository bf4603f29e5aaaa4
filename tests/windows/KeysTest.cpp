// The keyboard: the tab order, the keys of dialogs, and F10, which must be seen whichever control
// has the focus.
#include "windows/Driver.h"

#include <set>

using namespace driver;

struct KeysTest : WindowTest {
    /// Waits until the control with this name has the focus.
    static bool HasFocus(HWND form, const std::string& name) {
        HWND control = Named(form, name);
        return WaitUntil([&] { return Focused(form) == control; });
    }
};

TEST_F(KeysTest, TabGoesRoundAllButtons) {
    std::set<std::string> reached;
    EXPECT_TRUE(HasFocus(main, "cmdSpecifyDirectory(0)"));
    HWND first = Focused(main), now = first;
    do {
        reached.insert(CaptionOf(now));
        HWND before = now;
        PressKey(main, VK_TAB);
        ASSERT_TRUE(WaitUntil([&] { return (now = Focused(main)) != before; }))
            << CaptionOf(before);
    } while (now != first && reached.size() < 40);
    PressKey(main, VK_TAB, false, true);
    EXPECT_TRUE(HasFocus(main, "cmdSingleFile"));
    for (const char* caption :
         {"Single file", "Specify folder", "Specify files", "Subfolders?", "Clear", "Type of purge",
          "Confirm files?", "List files, estimate time", "Purge files", "Purge folders", "Report",
          "Test purge speed", "Purge free space", "Purge disk", "Setup", "Help", "Quit"})
        EXPECT_EQ(1u, reached.count(caption)) << caption;
}

TEST_F(KeysTest, AltLetterEnterAndEscape) {
    PressKey(main, 'Y', true);
    HWND dialog = Window("What type of purge should be used?");
    ASSERT_NE(nullptr, dialog);
    EXPECT_TRUE(HasFocus(dialog, "cmdAccept"));
    EXPECT_FALSE(IsUsable(Named(main, "cmdQuit")));
    PressKey(dialog, VK_ESCAPE);
    ExpectGone(dialog);
    // The focus is where it was before the dialog.
    EXPECT_TRUE(HasFocus(main, "cmdTypeOfPurge"));
    PressKey(main, VK_SPACE);
    ASSERT_TRUE(WaitUntil([&] { return IsWindowVisible(dialog); }));
    // The letter of a label leads to the list behind it, whichever list is shown.
    PressKey(dialog, 'N', true);
    EXPECT_TRUE(HasFocus(dialog, "cboNumberOfPasses(0)"));
    PressKey(dialog, '2', true);
    EXPECT_TRUE(HasFocus(dialog, "cmdAccept"));
    PressKey(dialog, 'N', true);
    EXPECT_TRUE(HasFocus(dialog, "cboNumberOfPasses(1)"));
    PressKey(dialog, '1', true);
    EXPECT_TRUE(HasFocus(dialog, "cmdAccept"));
    PressKey(dialog, VK_RETURN);
    AnswerBox("Nullwright",
              "In the type of purge specified each file will be overwritten 6 times.\r\n"
              "Is this OK?",
              IDYES);
    ExpectGone(dialog);
    CloseByCross(main);
    EXPECT_EQ(0, WaitForEnd());
}

/// F10 while a control of the subfolder chooser or a box has the focus: the purge that follows ends
/// before it has touched anything.
struct F10Test : KeysTest, testing::WithParamInterface<const char*> {};

TEST_P(F10Test, IsSeen) {
    Put("tree\\one\\a.txt", "a");
    Put("tree\\two\\b.txt", "b");
    const std::string title = "Purge folders";
    Click(main, "cmdSpecifyDirectory(1)");
    AnswerBox(title, "", IDYES);
    AnswerDialog("Specify folder containing subfolders to be purged", scratch + "\\tree");
    HWND chooser = Window("Select subfolders of " + scratch + "\\tree\\ to be purged.");
    ASSERT_NE(nullptr, chooser);
    const std::string place = GetParam();
    for (int i = 0; place != "box" && i < 6 && Focused(chooser) != Named(chooser, place); ++i) {
        HWND previous = Focused(chooser);
        PressKey(chooser, VK_TAB);
        WaitUntil([&] { return Focused(chooser) != previous; });
    }
    const auto pressF10 = [](HWND form) {
        HWND before = Focused(form);
        PressKey(form, VK_F10);
        PressKey(form, VK_TAB); // once this has been seen, F10 has
        EXPECT_TRUE(WaitUntil([&] { return Focused(form) != before; }));
    };
    if (place != "box") {
        ASSERT_TRUE(HasFocus(chooser, place));
        pressF10(chooser);
    }
    Click(chooser, "cmdChooseAll");
    Click(chooser, "cmdOK");
    if (place == "box")
        pressF10(Window(title));
    AnswerBox(title, "", IDOK);
    Expect(main, "lblLargePurgeMessage", "Purge of folders was stopped.");
    EXPECT_EQ("a", ContentOf("tree\\one\\a.txt"));
    EXPECT_EQ("b", ContentOf("tree\\two\\b.txt"));
}

INSTANTIATE_TEST_SUITE_P(Focus, F10Test,
                         testing::Values("lstSubfolders", "cmdOK", "cmdCancel", "box"));
