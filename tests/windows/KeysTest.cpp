// The keyboard: the tab order, the keys of dialogs, and F10, which must be seen whichever control
// has the focus.
#include "windows/WindowTest.h"

using namespace driver;

struct KeysTest : WindowTest {
    /// Presses a key that moves the focus, and waits until it has; gives its name.
    static std::string MoveFocus(HWND form, BYTE key) {
        HWND before = Focused(form);
        PressKey(form, key);
        EXPECT_TRUE(WaitUntil([&] { return Focused(form) != before; })) << NameOf(before);
        return NameOf(Focused(form));
    }
    /// A window has its middle where its owner has it.
    static void ExpectOverOwner(HWND window) {
        RECT own{}, over{};
        EXPECT_TRUE(WaitUntil([&] {
            GetWindowRect(window, &own);
            GetWindowRect(GetWindow(window, GW_OWNER), &over);
            return std::abs(own.left + own.right - over.left - over.right) < 8 &&
                   std::abs(own.top + own.bottom - over.top - over.bottom) < 8;
        })) << TextOf(window)
            << " at " << own.left << ", " << own.top;
    }
};

TEST_F(KeysTest, TabGoesRoundAllButtons) {
    ExpectFocus(main, "cmdSpecifyDirectory(0)");
    int stops = 1;
    while (MoveFocus(main, VK_TAB) != "cmdSingleFile" && !HasFailure())
        ++stops;
    EXPECT_LT(15, stops) << "not every button";
    PressKey(main, VK_TAB);
    ExpectFocus(main, "cmdSpecifyDirectory(0)");
    PressKey(main, VK_TAB, VK_SHIFT);
    ExpectFocus(main, "cmdSingleFile");
}

TEST_F(KeysTest, AltLetterEnterAndEscape) {
    SetWindowPos(main, nullptr, 40, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER); // not in the middle
    PressKey(main, 'Y', VK_MENU);
    HWND dialog = Window("What type of purge should be used?");
    ExpectOverOwner(dialog);
    ExpectFocus(dialog, "cmdAccept");
    EXPECT_FALSE(IsUsable(Named(main, "cmdQuit")));
    PressKey(dialog, VK_ESCAPE);
    ExpectGone(dialog);
    // The focus is where it was before the dialog.
    ExpectFocus(main, "cmdTypeOfPurge");
    PressKey(main, VK_SPACE);
    ExpectUsable(dialog, "cmdAccept");
    // The letter of a label leads to the list behind it, whichever list is shown.
    for (const BYTE type : {BYTE{'2'}, BYTE{'1'}}) {
        PressKey(dialog, 'N', VK_MENU);
        ExpectFocus(dialog, type == '2' ? "cboNumberOfPasses(0)" : "cboNumberOfPasses(1)");
        PressKey(dialog, type, VK_MENU);
        ExpectFocus(dialog, "cmdAccept");
    }
    PressKey(dialog, VK_RETURN);
    HWND box = nullptr;
    EXPECT_TRUE(
        WaitUntil([&box] { return (box = FindWindowW(L"#32770", L"Nullwright")) != nullptr; }));
    ExpectOverOwner(box);
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
    HWND chooser = OpenSubfolders("tree");
    const std::string place = GetParam();
    const auto pressF10 = [](HWND form) {
        PressKey(form, VK_F10);
        MoveFocus(form, VK_TAB); // once this has been seen, F10 has
    };
    if (place != "box") {
        for (int i = 0; i < 6 && NameOf(Focused(chooser)) != place; ++i)
            MoveFocus(chooser, VK_TAB);
        ExpectFocus(chooser, place);
        pressF10(chooser);
    }
    Click(chooser, "cmdChooseAll");
    Click(chooser, "cmdOK");
    if (place == "box")
        pressF10(Window("Purge folders"));
    AnswerBox("Purge folders", "", IDOK);
    Expect(main, "lblLargePurgeMessage", "Purge of folders was stopped.");
    EXPECT_EQ("ab", ContentOf("tree\\one\\a.txt") + ContentOf("tree\\two\\b.txt"));
}

INSTANTIATE_TEST_SUITE_P(Focus, F10Test,
                         testing::Values("lstSubfolders", "cmdOK", "cmdCancel", "box"));
