// The main window on the screen there is, and in less room than it needs. Run at 96 dpi on a large
// screen, and at 144 dpi on one of 1366 x 768.
#include "windows/Environment.h"
#include "windows/WindowTest.h"

using namespace driver;

struct LayoutTest : WindowTest {
    bool InView(const char* name) { return InView(Named(main, name)); }
    bool InView(HWND control) const {
        RECT place = PlaceOf(control), inside{};
        GetClientRect(main, &inside);
        MapWindowPoints(nullptr, main, reinterpret_cast<POINT*>(&place), 2);
        return place.top >= 0 && place.bottom <= inside.bottom && place.right <= inside.right;
    }
    static RECT PlaceOf(HWND window) {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }
    void Size(LONG width, LONG height) const {
        SetWindowPos(main, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    }
    bool Scrolls() const { return (GetWindowLongPtrW(main, GWL_STYLE) & WS_VSCROLL) != 0; }
};

TEST_F(LayoutTest, FitsTheScreenAndScrollsWithLessRoom) {
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const RECT start = PlaceOf(main);
    EXPECT_TRUE(start.left >= work.left && start.top >= work.top && start.right <= work.right &&
                start.bottom <= work.bottom)
        << start.right << ", " << start.bottom;
    EXPECT_TRUE(InView("cmdSingleFile") && InView("cmdQuit") && InView("lblStatus") && !Scrolls());

    const LONG width = start.right - start.left,
               longer = PlaceOf(Named(main, "lblDirectory")).right;
    Size(width + 100, (start.bottom - start.top) / 2);
    EXPECT_TRUE(WaitUntil([this] { return Scrolls() && !InView("cmdQuit"); }));
    EXPECT_NE(longer, PlaceOf(Named(main, "lblDirectory")).right);
    std::string names;
    while (names.find("cmdSingleFile") == names.npos && !HasFailure()) {
        HWND before = Focused(main);
        PressKey(main, VK_TAB);
        EXPECT_TRUE(WaitUntil([&] { return Focused(main) != before && InView(Focused(main)); }))
            << NameOf(Focused(main));
        names += NameOf(Focused(main)) + " ";
    }
    EXPECT_NE(names.npos, names.find("cmdQuit lblOnlineDocumentation lblAbout")) << names;
    PostMessageW(main, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-20 * WHEEL_DELTA)), 0);
    EXPECT_TRUE(WaitUntil([this] { return InView("lblStatus"); }));
    PressKey(main, VK_PRIOR);
    EXPECT_TRUE(WaitUntil([this] { return !InView("lblStatus"); }));
    Size(width, start.bottom - start.top);
    EXPECT_TRUE(WaitUntil([this] { return !Scrolls() && InView("cmdQuit"); }));

    constexpr WPARAM aboutInSystemMenu = 0x0100;
    PostMessageW(main, WM_SYSCOMMAND, aboutInSystemMenu, 0);
    AnswerBox("About Nullwright", "", IDOK);
}

TEST_F(LayoutTest, ASecondInstanceDoesNotHideTheFirst) {
    const PROCESS_INFORMATION second =
        Execute(L"\"" + platform::Widen(Environment(L"NW_PROGRAM")) + L"\"");
    HWND other = nullptr;
    EXPECT_TRUE(WaitUntil([&] {
        DWORD process = 0;
        other = FindWindowExW(nullptr, other, L"NullwrightForm", L"Nullwright");
        GetWindowThreadProcessId(other, &process);
        return process == second.dwProcessId && IsWindowVisible(other);
    }));
    EXPECT_TRUE(WaitUntil([&] { return PlaceOf(other).top >= PlaceOf(main).top + 15; }))
        << PlaceOf(other).top << ", " << PlaceOf(main).top;
    TerminateProcess(second.hProcess, 99);
    CloseHandle(second.hThread);
    CloseHandle(second.hProcess);
}
