// The message loop, and message pumping during work.
#include "ui/win32/Native.h"

#include <algorithm>

namespace ui::win32 {

namespace {

/// Milliseconds between two pumps of DoEvents, two ticks of the Windows clock. The delay is not
/// noticeable, and a pump costs some ten microseconds.
constexpr ULONGLONG lngPumpInterval = 30;
/// Milliseconds after which a pump returns although the queue is not empty.
constexpr ULONGLONG lngLongestPump = 50;

ULONGLONG lastPump = 0;
bool quitting = false;

} // namespace

bool Quitting() {
    return quitting;
}

void Dispatch(MSG& message) {
    if (message.message == WM_QUIT) {
        quitting = true;
        return;
    }
    if (message.message == WM_MOUSEMOVE)
        OnMouseMoved(message.hwnd);
    if (ReportKey(message) || HandleKey(message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void PumpQueue() {
    const ULONGLONG begun = GetTickCount64();
    MSG message;
    bool any = false;
    while (!quitting && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        any = true;
        Dispatch(message);
        if (GetTickCount64() - begun > lngLongestPump)
            break;
    }
    if (any)
        CollectInput();
    PressOn();
    lastPump = GetTickCount64();
}

void Loop(const std::function<bool()>& goOn) {
    while (!quitting && goOn()) {
        PumpQueue();
        if (quitting || !goOn())
            break;
        SyncAll(Thorough::Yes);
        MsgWaitForMultipleObjectsEx(0, nullptr, AnyMissing() ? 0 : INFINITE, QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
    }
}

} // namespace ui::win32

namespace ui {

using namespace win32;

int RunMessageLoop() {
    if (!ActiveWindow()) // no window could be created, so nothing could end the loop
        return 1;
    Loop([] { return true; });
    DestroyForms();
    return 0;
}

void EndProgram() {
    quitting = true;
    for (const auto& form : AllForms())
        if (form->Window) {
            form->Which->Visible = false;
            ShowWindow(form->Window, SW_HIDE);
        }
    PostQuitMessage(0);
}

void DoEvents() {
    if (GetTickCount64() - lastPump < lngPumpInterval)
        return;
    SyncAll(Thorough::No);
    PumpQueue();
}

void Wait(int milliseconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(std::max(milliseconds, 0));
    SyncAll(Thorough::No);
    while (!quitting) {
        PumpQueue();
        const ULONGLONG now = GetTickCount64();
        if (now >= end)
            return;
        SyncAll(Thorough::Yes);
        MsgWaitForMultipleObjectsEx(0, nullptr, AnyMissing() ? 0 : static_cast<DWORD>(end - now),
                                    QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

} // namespace ui
