// The end of the user's session, as the windows see it. The interface thread must return from
// WM_ENDSESSION before it can continue its work; it stops that in the ordinary ways, while the
// window of WatchSessionEnd keeps Windows waiting.
#include "ui/win32/Native.h"
#include "ui/win32/shared/Shared.h"

namespace ui::win32 {

namespace {

constexpr UINT messageEnding = WM_APP + 1;

bool ending = false;
HWND insideWindow = nullptr; ///< the interface thread's, for messageEnding

LRESULT CALLBACK InsideProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != messageEnding)
        return DefWindowProcW(window, message, wParam, lParam);
    BeginEnding();
    return 0;
}

/// The form's windows may not have been told yet.
bool TellInside() {
    return PostMessageW(insideWindow, messageEnding, 0, 0) != FALSE;
}

} // namespace

void WatchSession() {
    if (insideWindow)
        return;
    insideWindow = MakeHiddenWindow(L"NullwrightInside", InsideProc, HWND_MESSAGE);
    if (insideWindow)
        WatchSessionEnd(TellInside);
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
        LetSessionEnd();
    }
    pressing = false;
}

} // namespace ui::win32

namespace ui {

bool Ending() {
    return win32::ending || win32::Quitting();
}

} // namespace ui
