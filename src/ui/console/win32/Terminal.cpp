// The console of Windows: its streams, and the signals that ask the program to stop.
#include "ui/console/Console.h"
#include "ui/win32/shared/Shared.h"
#include "win32/Wide.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>

namespace ui::console {

namespace {

constexpr std::size_t lngPiece = 16384; ///< a console takes no long texts at once

constexpr DWORD lngPatience = 50; ///< milliseconds

std::atomic<int> interrupts{0};

/// On a thread of the system's. It ends the program as soon as this returns, but for Ctrl+C; when
/// its console is closed after five seconds in any case. A log-off comes by a window, see
/// WatchSessionEnd: Windows signals it to those programs only that never load user32.dll.
BOOL WINAPI OnSignal(DWORD signal) {
    const bool isKey = signal == CTRL_C_EVENT || signal == CTRL_BREAK_EVENT;
    interrupts += isKey ? 1 : 2;
    if (!isKey)
        win32::HoldSessionEnd();
    return TRUE;
}

HANDLE HandleOf(Stream stream) {
    constexpr DWORD handles[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    return GetStdHandle(handles[static_cast<int>(stream)]);
}

} // namespace

void OpenTerminal() {
    // Whatever is loaded from here on comes from the system's folder, not from beside the program.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    // Nobody may be there to answer the system's own boxes.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    win32::WatchSessionEnd([] {
        interrupts += 2;
        return true;
    });
    SetConsoleCtrlHandler(nullptr, FALSE); // it may have been started with Ctrl+C switched off
    SetConsoleCtrlHandler(OnSignal, TRUE);
    std::atexit(win32::LetSessionEnd);
}

int Interrupts() {
    return interrupts;
}

bool IsTerminal(Stream stream) {
    DWORD mode = 0;
    return GetConsoleMode(HandleOf(stream), &mode) != FALSE;
}

void Write(Stream stream, const std::string& text) {
    const HANDLE handle = HandleOf(stream);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
        return; // it was started without: nobody ever wanted it
    const bool console = IsTerminal(stream);
    const std::wstring wide = console ? platform::Widen(text) : L"";
    const std::size_t size = console ? wide.size() : text.size();
    DWORD done = 0;
    for (std::size_t from = 0; from < size; from += done) {
        const auto piece = static_cast<DWORD>(std::min(size - from, lngPiece));
        if (!(console ? WriteConsoleW(handle, wide.data() + from, piece, &done, nullptr)
                      : WriteFile(handle, text.data() + from, piece, &done, nullptr)) ||
            done == 0) {
            int none = 0; // of the second stop, which waits for nothing, only a person decides
            if (stream == Stream::Out)
                interrupts.compare_exchange_strong(none, 1);
            return;
        }
    }
}

bool ReadLine(std::string& line) {
    const HANDLE input = HandleOf(Stream::In);
    const int before = interrupts;
    FlushConsoleInputBuffer(input); // what was typed before this was asked is no answer to it
    // A stop may not end the reading.
    while (WaitForSingleObject(input, lngPatience) == WAIT_TIMEOUT)
        if (interrupts > before)
            return false;
    wchar_t units[1024]; // what is longer is no answer
    DWORD read = 0;
    if (!ReadConsoleW(input, units, 1024, &read, nullptr) || read == 0 || units[0] == L'\x1A' ||
        interrupts > before)
        return false;
    line = platform::Narrow({units, read});
    line.erase(std::min(line.find_first_of("\r\n"), line.size()));
    return true;
}

bool ReadInput(std::string& text, std::size_t most) {
    std::string piece(65536, '\0');
    const auto size = static_cast<DWORD>(piece.size());
    DWORD read = 1;
    for (text.clear(); read > 0 && text.size() <= most; text.append(piece, 0, read))
        if (!ReadFile(HandleOf(Stream::In), piece.data(), size, &read, nullptr))
            return GetLastError() == ERROR_BROKEN_PIPE; // the end of a pipe
    return text.size() <= most;
}

std::uint64_t Clock() {
    return GetTickCount64();
}

void Sleep(int milliseconds) {
    ::Sleep(static_cast<DWORD>(milliseconds));
}

} // namespace ui::console

namespace ui::win32 {

bool AwaitSteps(HANDLE done, DWORD milliseconds) {
    DoEvents();
    return WaitForSingleObject(done, milliseconds) == WAIT_OBJECT_0;
}

} // namespace ui::win32
