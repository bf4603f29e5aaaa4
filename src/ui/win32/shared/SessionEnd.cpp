// A window on a thread of its own that keeps Windows waiting at the end of the session.
#include "ui/win32/shared/Shared.h"

namespace ui::win32 {

namespace {

/// The longest wait, milliseconds.
constexpr DWORD lngLongestWait = 10'000;
constexpr SIZE_T lngStackSize = 256 << 10;

bool (*tellEnd)() = nullptr;
HANDLE over = nullptr;  ///< set when no work is left
HANDLE watch = nullptr; ///< the thread

LRESULT CALLBACK WatchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENDSESSION) {
        if (wParam && tellEnd())
            HoldSessionEnd();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

DWORD WINAPI WatchMain(void*) {
    // A top-level window, not below HWND_MESSAGE: only those are told of the session's end.
    if (!MakeHiddenWindow(L"NullwrightSession", WatchProc, nullptr))
        return 1;
    MSG message;
    while (MsgWaitForMultipleObjects(1, &over, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0)
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    return 0;
}

} // namespace

void WatchSessionEnd(bool (*tell)()) {
    tellEnd = tell;
    over = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (over)
        watch = CreateThread(nullptr, lngStackSize, WatchMain, nullptr,
                             STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
}

void HoldSessionEnd() {
    WaitForSingleObject(over, lngLongestWait);
}

void LetSessionEnd() {
    SetEvent(over);
    // A program that ends while its window is being made can be left hanging: under Wine one of a
    // hundred was, whose work had taken no time.
    WaitForSingleObject(watch, lngLongestWait);
}

HWND MakeHiddenWindow(const wchar_t* name, WNDPROC procedure, HWND parent) {
    WNDCLASSW made{};
    made.lpfnWndProc = procedure;
    made.hInstance = GetModuleHandleW(nullptr);
    made.lpszClassName = name;
    RegisterClassW(&made);
    return CreateWindowExW(0, name, L"", WS_POPUP, 0, 0, 0, 0, parent, nullptr, made.hInstance,
                           nullptr);
}

} // namespace ui::win32
