// Runs work that may block on the single I/O thread, while this thread keeps the interface alive.
#include "ui/Interface.h"
#include "ui/win32/shared/Shared.h"

#include <atomic>

namespace ui {

using namespace win32;

namespace {

constexpr DWORD lngPollInterval = 15; ///< milliseconds
/// Reserved, not committed. The thread only runs small functions of ours and file-system calls.
constexpr SIZE_T lngStackSize = 1 << 20;
/// How often Windows is told that the computer is not idle.
constexpr ULONGLONG lngStayAwakeInterval = 30'000;

struct Worker {
    HANDLE Thread = nullptr;
    HANDLE Begin = nullptr; ///< auto-reset events
    HANDLE Done = nullptr;
    const std::function<bool()>* Step = nullptr;
    std::atomic<bool> Cancelled{false};
    bool Busy = false;
};
Worker worker;

// The steps run in sequence without asking the interface thread in between: a hand-over for each
// would cost more than most of the steps.
DWORD WINAPI WorkerMain(void*) {
    while (WaitForSingleObject(worker.Begin, INFINITE) == WAIT_OBJECT_0) {
        while (!worker.Cancelled.load(std::memory_order_relaxed) && (*worker.Step)()) {
        }
        SetEvent(worker.Done);
    }
    return 0;
}

bool EnsureWorker() {
    if (worker.Thread)
        return true;
    if (!worker.Begin)
        worker.Begin = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (!worker.Done)
        worker.Done = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (worker.Begin && worker.Done)
        worker.Thread = CreateThread(nullptr, lngStackSize, WorkerMain, nullptr,
                                     STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    return worker.Thread != nullptr;
}

void RunHere(const std::function<bool()>& step, const std::function<bool()>& poll) {
    while (step()) {
        DoEvents();
        if (poll && !poll())
            return;
    }
}

void StayAwake() {
    static ULONGLONG last = 0;
    const ULONGLONG now = GetTickCount64();
    if (last != 0 && now - last < lngStayAwakeInterval)
        return;
    last = now;
    SetThreadExecutionState(ES_SYSTEM_REQUIRED);
}

} // namespace

void RunSteps(Effort effort, const std::function<bool()>& step, const std::function<bool()>& poll) {
    StayAwake();
    // The thread is busy when a handler starts work during other work; run that work here.
    if (effort == Effort::Brief || worker.Busy || !EnsureWorker()) {
        RunHere(step, poll);
        return;
    }
    worker.Busy = true;
    worker.Step = &step;
    worker.Cancelled = false;
    SetEvent(worker.Begin);
    bool cancelled = false;
    while (!AwaitSteps(worker.Done, lngPollInterval)) {
        StayAwake();
        if (!cancelled && poll && !poll()) {
            cancelled = true;
            worker.Cancelled = true;
        }
    }
    worker.Step = nullptr;
    worker.Busy = false;
}

} // namespace ui
