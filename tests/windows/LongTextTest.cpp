// A long text in its window: whoever looks gets all of it, whatever has reached the window so far.
#include "ui/Interface.h"
#include "win32/Wide.h"

#include <gtest/gtest.h>

#include <windows.h>

struct LongTextTest : testing::Test {
    static inline ui::Form form; // as the program's own: a form is never given up
    static inline ui::TextBox box;
    HWND edit = nullptr;

    static void SetUpTestSuite() {
        form.Caption = "Long text";
        form.Width = 9000;
        form.Height = 3000;
        box.MultiLine = box.Locked = box.FixedPitch = true;
        ui::Bind(form, {{&box, "box", 120, 120, 8760, 2760}});
    }
    void SetUp() override {
        box.Text.clear();
        box.SelStart = box.SelLength = 0;
        ui::Show(form);
        edit = FindWindowExW(FindWindowW(nullptr, L"Long text"), nullptr, L"Edit", nullptr);
        ASSERT_TRUE(edit);
    }
    void TearDown() override { ui::Hide(form); }

    void Grow(int lines, bool follow) {
        for (int i = 0; i < lines; ++i)
            box.Text += std::to_string(i) + " \xE6\x96\x87 \xF0\x9F\x98\x80 purged\r\n";
        if (follow)
            box.SelStart = box.Text.size();
        ui::Repaint(form);
    }
    bool HasLine(int line) const {
        return SendMessageW(edit, EM_LINEINDEX, static_cast<WPARAM>(line), 0) >= 0;
    }
    int Lines() const {
        int lines = 0;
        while (HasLine(lines))
            ++lines;
        return lines;
    }
    void ExpectWhole() {
        std::wstring text(box.Text.size() + 1, L'\0');
        text.resize(static_cast<std::size_t>(
            GetWindowTextW(edit, text.data(), static_cast<int>(text.size()))));
        EXPECT_EQ(box.Text, platform::Narrow(text));
    }
    // What the user selects, in units of UTF-16, is what the field says, in bytes.
    void SelectUnits(LONG from, LONG to) {
        SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(from), to);
        ui::Wait(0);
    }
    std::string Selected() const { return box.Text.substr(box.SelStart, box.SelLength); }
};

TEST_F(LongTextTest, IsWholeForWhoeverLooks) {
    Grow(400, true);
    EXPECT_FALSE(HasLine(399)) << "all lines at once: what is to be tested does not happen";
    DWORD end = 0;
    SendMessageW(edit, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
    const auto last = static_cast<LONG>(end);
    SelectUnits(last - 11, last - 2);
    EXPECT_EQ("\xF0\x9F\x98\x80 purged", Selected());
    ExpectWhole();
    EXPECT_TRUE(HasLine(400));
    EXPECT_EQ("\xF0\x9F\x98\x80 purged", Selected());

    // The user reads further up while the text grows, changes at its end, and is cut.
    SelectUnits(2, 4);
    EXPECT_EQ("\xE6\x96\x87 ", Selected());
    Grow(300, false);
    EXPECT_EQ("\xE6\x96\x87 ", Selected());
    box.Text.resize(box.Text.size() - 8);
    box.Text += "not purged\r\n";
    ui::Repaint(form);
    box.Text.resize(box.Text.find("250 ", box.Text.size() / 2));
    Grow(1, false);
    ExpectWhole();
    EXPECT_EQ("\xE6\x96\x87 ", Selected());
    EXPECT_EQ(0, SendMessageW(edit, EM_GETFIRSTVISIBLELINE, 0, 0));
}

TEST_F(LongTextTest, IsFilledInWhileNothingElseIsToBeDone) {
    Grow(600, true);
    EXPECT_FALSE(HasLine(600));
    for (int i = 0; i < 200 && !HasLine(600); ++i) // a busy machine takes its time
        ui::Wait(50);
    EXPECT_TRUE(HasLine(600));
    const LRESULT top = SendMessageW(edit, EM_GETFIRSTVISIBLELINE, 0, 0);
    EXPECT_GT(top, 550) << "the end stays in view";
    SendMessageW(edit, WM_VSCROLL, SB_PAGEUP, 0);
    Grow(100, true);
    EXPECT_LT(SendMessageW(edit, EM_GETFIRSTVISIBLELINE, 0, 0), top) << "the user reads there";
    SendMessageW(edit, WM_VSCROLL, SB_BOTTOM, 0);
    Grow(1, true);
    EXPECT_GT(SendMessageW(edit, EM_GETFIRSTVISIBLELINE, 0, 0), top + 50) << "follows again";
    box.Text = "short";
    ui::Repaint(form);
    ExpectWhole();
}

TEST_F(LongTextTest, ShowsInsideWorkWhatHasCome) {
    Grow(100, true);
    box.Text = "a new run\r\n";
    box.SelStart = box.Text.size();
    const ULONGLONG begun = GetTickCount64();
    wchar_t first[10] = {};
    while (std::wstring(first, 9) != L"a new run" && GetTickCount64() - begun < 5000) {
        ui::DoEvents(); // as work does between its steps
        first[0] = static_cast<wchar_t>(9);
        SendMessageW(edit, EM_GETLINE, 0, reinterpret_cast<LPARAM>(first));
    }
    EXPECT_LT(GetTickCount64() - begun, 2500U);
}

TEST_F(LongTextTest, FillsTheWindowAndNoMoreWhenItsLinesWrap) {
    Grow(400, true);
    const int shortLines = Lines();
    EXPECT_LT(shortLines, 100);
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "C:\\folder\\" + std::string(150, 'f') + " (4,096 bytes) " + std::string(150, 'x') +
                "\r\n";
    box.Text = text;
    box.SelStart = text.size();
    ui::Repaint(form);
    EXPECT_GE(Lines(), shortLines);
    EXPECT_LE(Lines(), shortLines + 6) << "one line more, and room that words leave at their ends";
    ExpectWhole();
    box.Text.clear();
    box.SelStart = 0;
    ui::Repaint(form);
    EXPECT_EQ(1, Lines());
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_ALL;
    GetScrollInfo(edit, SB_VERT, &bar);
    EXPECT_LT(bar.nMax, static_cast<int>(bar.nPage)) << "there is nothing to scroll";
}
