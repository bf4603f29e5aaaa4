// Tells how long the interface thread went without looking for messages.
#include "bench/Heartbeat.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <windows.h>

namespace {

constexpr UINT messageBeat = WM_APP + 77;

HWND window = nullptr;
std::atomic<bool> blnBeatUnderWay = false;
std::atomic<bool> blnBeating = false;
std::chrono::steady_clock::time_point lastBeat;
double dblLongest = 0;

void NoteBeat() {
    const auto now = std::chrono::steady_clock::now();
    dblLongest = std::max(dblLongest, std::chrono::duration<double>(now - lastBeat).count());
    lastBeat = now;
}

LRESULT CALLBACK OnMessage(HWND which, UINT message, WPARAM wide, LPARAM details) {
    if (message != messageBeat)
        return DefWindowProcW(which, message, wide, details);
    NoteBeat();
    blnBeatUnderWay = false;
    return 0;
}

void MakeWindow() {
    WNDCLASSW kind = {};
    kind.lpfnWndProc = OnMessage;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = L"NullwrightBench";
    RegisterClassW(&kind);
    window = CreateWindowExW(0, kind.lpszClassName, L"Nullwright bench", WS_OVERLAPPEDWINDOW, 100,
                             100, 400, 200, nullptr, nullptr, kind.hInstance, nullptr);
    if (window == nullptr) {
        std::fprintf(stderr, "no window could be made: is there a display?\n");
        std::exit(2);
    }
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
}

} // namespace

double bench::LongestStretch(const std::function<void()>& work) {
    if (window == nullptr)
        MakeWindow();
    blnBeatUnderWay = false;
    blnBeating = true;
    std::thread beat([] {
        while (blnBeating) {
            if (!blnBeatUnderWay.exchange(true))
                PostMessageW(window, messageBeat, 0, 0);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    lastBeat = std::chrono::steady_clock::now();
    dblLongest = 0;
    work();
    NoteBeat(); // whatever stood still at the end counts, too
    blnBeating = false;
    beat.join();
    return dblLongest;
}

void bench::EndHeartbeat() {
    DestroyWindow(window);
    window = nullptr;
}
