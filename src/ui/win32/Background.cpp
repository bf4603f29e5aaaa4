// Keeps the windows alive while work goes on on the I/O thread.
#include "ui/win32/Native.h"
#include "ui/win32/shared/Shared.h"

namespace ui::win32 {

bool AwaitSteps(HANDLE done, DWORD milliseconds) {
    // A quitting program no longer reads its message queue: only wait for the end of the step.
    if (Quitting())
        return WaitForSingleObject(done, milliseconds) == WAIT_OBJECT_0;
    if (MsgWaitForMultipleObjectsEx(1, &done, milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE) ==
        WAIT_OBJECT_0)
        return true;
    SyncAll(Thorough::No);
    PumpQueue();
    return false;
}

} // namespace ui::win32
