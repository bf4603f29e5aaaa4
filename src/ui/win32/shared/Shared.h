// What both back ends for Windows, the windows and the console, have in common: work on the I/O
// thread (ui::RunSteps), and the end of the user's session.
#pragma once

#include <windows.h>

namespace ui::win32 {

/// Waits until `done` is set, at most so long, and keeps alive meanwhile what the user sees. True:
/// it is set. Called on the interface thread, by RunSteps; each back end defines it.
bool AwaitSteps(HANDLE done, DWORD milliseconds);

/// Windows ends a program as soon as all its windows have returned from WM_ENDSESSION. This makes a
/// window on a thread of its own, which calls `tell` then and, if that is true, HoldSessionEnd.
/// Without a desktop there is no window, and none is needed: such a program is ended by a signal.
void WatchSessionEnd(bool (*tell)());
/// Returns when LetSessionEnd was called, or after ten seconds; Windows has limits of its own.
void HoldSessionEnd();
/// No work is left. The thread and its window go.
void LetSessionEnd();
/// A window that is never shown.
HWND MakeHiddenWindow(const wchar_t* name, WNDPROC procedure, HWND parent);

} // namespace ui::win32
