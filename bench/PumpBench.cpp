// How long the interface stands still: a visible window is sent a message every other millisecond
// by another thread, and the longest time between two that it handles is taken.
#include "bench/Bench.h"

#include "engine/FilePurge.h"
#include "platform/Files.h"
#include "ui/Interface.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <windows.h>

namespace {

constexpr UINT messageBeat = WM_APP + 77;

std::atomic<bool> blnBeatUnderWay = false;
std::atomic<bool> blnBeating = false;
double dblLastBeat = 0;
double dblLongest = 0;

void NoteBeat() {
    const double now = bench::Seconds();
    dblLongest = std::max(dblLongest, now - dblLastBeat);
    dblLastBeat = now;
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM details) {
    if (message != messageBeat)
        return DefWindowProcW(window, message, wide, details);
    NoteBeat();
    blnBeatUnderWay = false;
    return 0;
}

HWND MakeWindow() {
    WNDCLASSW kind = {};
    kind.lpfnWndProc = OnMessage;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = L"NullwrightBench";
    RegisterClassW(&kind);
    HWND window = CreateWindowExW(0, kind.lpszClassName, L"Nullwright bench", WS_OVERLAPPEDWINDOW,
                                  100, 100, 400, 200, nullptr, nullptr, kind.hInstance, nullptr);
    bench::Require(window != nullptr, "no window could be made: is there a display?");
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    return window;
}

/// The longest stretch, in seconds, while one file is purged; its deletion included or not.
double LongestStretch(HWND window, bool deleteAfter) {
    using namespace bench;
    const std::string path = InFolder("bench-large");
    Require(MakeFile(path, settings.Bytes), "the large file could not be made");
    blnBeatUnderWay = false;
    blnBeating = true;
    std::thread beat([window] {
        while (blnBeating) {
            if (!blnBeatUnderWay.exchange(true))
                PostMessageW(window, messageBeat, 0, 0);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    dblLastBeat = Seconds();
    dblLongest = 0;
    std::int16_t result = 0;
    const bool done = PurgeFileWithChecks(path, 0, 1, deleteAfter, false, false, false, 0, result);
    NoteBeat(); // whatever stood still at the end counts, too
    blnBeating = false;
    beat.join();
    Require(done, "PurgeFileWithChecks failed");
    return dblLongest;
}

} // namespace

void bench::BenchPumping() {
    HWND window = MakeWindow();
    for (const bool deleteAfter : {false, true}) {
        double worst = 0;
        for (int i = 0; i < settings.Runs; ++i)
            worst = std::max(worst, LongestStretch(window, deleteAfter));
        Row("longest stretch without messages while " + std::to_string(settings.Bytes >> 20) +
                " MiB are overwritten and flushed" + (deleteAfter ? ", and deleted" : "") +
                ", worst of " + std::to_string(settings.Runs),
            Text(worst * 1000, 1) + " ms", "under 100 ms", worst < 0.1);
    }
    DestroyWindow(window);
}
