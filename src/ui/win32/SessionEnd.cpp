// The end of the user's session. Windows ends the program as soon as all its windows have returned
// from WM_ENDSESSION. But the interface thread must return from it before it can continue its work.
// So a window on its own thread keeps Windows waiting, while the interface thread stops its work in
// the ordinary ways.
#include "ui/win32/Native.h"

namespace ui::win32 {

namespace {

/// The longest wait, milliseconds. Windows has a limit of its own.
constexpr DWORD lngLongestWait = 10'000;
constexpr SIZE_T lngStackSize = 256 << 10;
constexpr UINT messageEnding = WM_APP + 1;

bool ending = false;
HANDLE over = nullptr;       ///< set when no work is left
HWND insideWindow = nullptr; ///< the interface thread's, for messageEnding

/// The procedure of the window that delays the system, on its own thread.
LRESULT CALLBACK WatchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENDSESSION) {
        // The form's windows may not have been told yet.
        if (wParam && PostMessageW(insideWindow, messageEnding, 0, 0))
            WaitForSingleObject(over, lngLongestWait);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK InsideProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != messageEnding)
        return DefWindowProcW(window, message, wParam, lParam);
    BeginEnding();
    return 0;
}

HWND MakeWindow(const wchar_t* name, WNDPROC procedure, HWND parent) {
    WNDCLASSW made{};
    made.lpfnWndProc = procedure;
    made.hInstance = Instance();
    made.lpszClassName = name;
    RegisterClassW(&made);
    return CreateWindowExW(0, name, L"", WS_POPUP, 0, 0, 0, 0, parent, nullptr, Instance(),
                           nullptr);
}

DWORD WINAPI WatchMain(void*) {
    // A top-level window, not below HWND_MESSAGE: only those are told of the session's end.
    if (!MakeWindow(L"NullwrightSession", WatchProc, nullptr))
        return 1;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}

} // namespace

void WatchSession() {
    if (over)
        return;
    over = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    insideWindow = MakeWindow(L"NullwrightInside", InsideProc, HWND_MESSAGE);
    if (!over || !insideWindow)
        return;
    const HANDLE thread = CreateThread(nullptr, lngStackSize, WatchMain, nullptr,
                                       STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread)
        CloseHandle(thread);
}

std::string ShutdownObjection(const NativeForm& native) {
    const auto& why = native.Which->HoldsShutdown;
    return why && native.Which->Visible ? why() : "";
}

void BeginEnding() {
    if (ending)
        return;
    ending = true;
    AnswerOpenBoxes();
    PressOn();
}

void PressOn() {
    static bool pressing = false; // a handler may pump messages
    if (!ending || pressing || Quitting())
        return;
    pressing = true;
    bool atWork = false;
    for (const auto& form : AllForms())
        if (form->Window && !ShutdownObjection(*form).empty()) {
            atWork = true;
            Run(form->Which->Close);
        }
    if (atWork) {
        CloseModalForms();
    } else {
        EndProgram();
        SetEvent(over);
    }
    pressing = false;
}

} // namespace ui::win32

namespace ui {

bool Ending() {
    return win32::ending || win32::Quitting();
}

} // namespace ui
