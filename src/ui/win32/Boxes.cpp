// Message boxes, the clipboard and the taskbar.
#include "ui/win32/Native.h"

#include <shobjidl.h>

#include <algorithm>

namespace ui {

using namespace win32;

namespace {

/// Another program may hold the clipboard for a moment, so try several times, but briefly: the
/// windows stand still meanwhile.
constexpr int intClipboardTries = 5;
constexpr DWORD lngClipboardPause = 10; ///< milliseconds

UINT ButtonFlags(Buttons buttons) {
    switch (buttons) {
    case Buttons::OKCancel:
        return MB_OKCANCEL;
    case Buttons::YesNo:
        return MB_YESNO;
    case Buttons::YesNoCancel:
        return MB_YESNOCANCEL;
    case Buttons::OK:
        break;
    }
    return MB_OK;
}

UINT IconFlags(Icon icon) {
    switch (icon) {
    case Icon::Exclamation:
        return MB_ICONEXCLAMATION;
    case Icon::Question:
        return MB_ICONQUESTION;
    case Icon::Information:
        return MB_ICONINFORMATION;
    case Icon::None:
        break;
    }
    return 0;
}

/// The answer that changes nothing, used while the program is ending.
int SafeAnswer(Buttons buttons) {
    return buttons == Buttons::OK ? AnswerOK : buttons == Buttons::YesNo ? AnswerNo : AnswerCancel;
}

/// Alerts a user who is looking elsewhere that the program waits for an answer.
void CallForAttention(HWND owner) {
    if (!owner || GetForegroundWindow() == owner)
        return;
    FLASHWINFO flash{sizeof flash, owner, FLASHW_TRAY | FLASHW_TIMERNOFG, 0, 0};
    FlashWindowEx(&flash);
}

HHOOK placingHook = nullptr;
HWND placingOwner = nullptr;

void EndPlacing() {
    if (placingHook)
        UnhookWindowsHookEx(placingHook);
    placingHook = nullptr;
}

/// Centres the next box over its owner, on the owner's monitor; Windows would centre it on the
/// screen.
LRESULT CALLBACK PlaceBox(int code, WPARAM wParam, LPARAM lParam) {
    const HWND box = reinterpret_cast<HWND>(wParam);
    RECT own{};
    if (code != HCBT_ACTIVATE || GetWindow(box, GW_OWNER) != placingOwner || FormOfWindow(box) ||
        !GetWindowRect(box, &own))
        return CallNextHookEx(nullptr, code, wParam, lParam);
    EndPlacing();
    const POINT place = CentredPlace(placingOwner, {own.right - own.left, own.bottom - own.top});
    SetWindowPos(box, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ColourTitleBar(box);
    return 0;
}

ITaskbarList3* Taskbar() {
    static ITaskbarList3* list = [] {
        ITaskbarList3* made = nullptr;
        if (EnsureCom() &&
            SUCCEEDED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER,
                                       IID_ITaskbarList3, reinterpret_cast<void**>(&made))) &&
            made && FAILED(made->HrInit())) {
            made->Release();
            made = nullptr;
        }
        return made;
    }();
    return list;
}

} // namespace

int MsgBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title,
           const std::string& /*question*/, int defaultButton) {
    if (Ending())
        return SafeAnswer(buttons);
    constexpr UINT defaults[] = {MB_DEFBUTTON1, MB_DEFBUTTON2, MB_DEFBUTTON3};
    const UINT flags = ButtonFlags(buttons) | IconFlags(icon) |
                       defaults[std::clamp(defaultButton, 1, 3) - 1] | MB_SETFOREGROUND;
    const BoxOpen box(true, SafeAnswer(buttons));
    CallForAttention(box.Owner);
    EndPlacing();
    placingOwner = box.Owner;
    placingHook = SetWindowsHookExW(WH_CBT, PlaceBox, nullptr, GetCurrentThreadId());
    const int answer = MessageBoxW(box.Owner, Widen(text).c_str(), Widen(title).c_str(), flags);
    EndPlacing();
    return answer == 0 ? SafeAnswer(buttons) : answer;
}

void Beep() {
    MessageBeep(MB_OK);
}

bool PutOnClipboard(const std::string& text) {
    const std::wstring wide = Widen(text);
    const std::size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (!memory)
        return false;
    if (void* place = GlobalLock(memory)) {
        std::copy_n(wide.c_str(), wide.size() + 1, static_cast<wchar_t*>(place));
        GlobalUnlock(memory);
    }
    BOOL opened = FALSE;
    for (int i = 0; i < intClipboardTries && !opened; ++i) {
        opened = OpenClipboard(ActiveWindow());
        if (!opened)
            Sleep(lngClipboardPause);
    }
    if (opened) {
        EmptyClipboard();
        if (SetClipboardData(CF_UNICODETEXT, memory)) {
            CloseClipboard();
            return true; // the system now owns the memory
        }
        CloseClipboard();
    }
    GlobalFree(memory);
    return false;
}

void ShowTaskbarProgress(Form& form, double fraction, bool paused) {
    const NativeForm* native = NativeOf(form);
    ITaskbarList3* taskbar = native && native->Window ? Taskbar() : nullptr;
    if (!taskbar)
        return;
    if (fraction < 0) {
        taskbar->SetProgressState(native->Window, TBPF_NOPROGRESS);
        return;
    }
    taskbar->SetProgressState(native->Window, paused ? TBPF_PAUSED : TBPF_NORMAL);
    taskbar->SetProgressValue(native->Window,
                              static_cast<ULONGLONG>(10000 * std::min(fraction, 1.0)), 10000);
}

} // namespace ui
