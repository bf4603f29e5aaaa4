// Text boxes. The fields count bytes of UTF-8, the window units of UTF-16.
#include "ui/win32/Native.h"

#include <algorithm>

namespace ui::win32 {

namespace {

/// A report grows by lines, and a visible text box takes milliseconds for each: inside work it is
/// brought up to date only when this many times the cost of the last update has passed, so that
/// it takes no more than a fiftieth of the time.
constexpr std::int64_t lngRestFactor = 50;

std::int64_t Now() {
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    return counter.QuadPart;
}

std::size_t UnitsBefore(const std::string& text, std::size_t bytes) {
    std::size_t units = 0;
    for (std::size_t i = 0; i < bytes && i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) != 0x80)
            units += byte >= 0xF0 ? 2 : 1;
    }
    return units;
}

std::size_t BytesBefore(const std::string& text, std::size_t units) {
    std::size_t i = 0, seen = 0;
    while (i < text.size() && seen < units) {
        seen += static_cast<unsigned char>(text[i]) >= 0xF0 ? 2 : 1;
        do
            ++i;
        while (i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80);
    }
    return i;
}

/// How many bytes both texts begin with, whole characters and whole line ends only.
std::size_t CommonStart(const std::string& a, const std::string& b) {
    const auto differ = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    auto common = static_cast<std::size_t>(differ.first - a.begin());
    const auto isInside = [](const std::string& text, std::size_t at) {
        return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
    };
    while (common > 0 && (isInside(a, common) || isInside(b, common) || a[common - 1] == '\r'))
        --common;
    return common;
}

/// What stands behind the first `kept` bytes gives way to what the field has there: the line of the
/// file in hand changes at its end, and to set the whole text anew costs tens of milliseconds.
void ReplaceTail(NativeControl& native, const TextBox& box, std::size_t kept, bool follow) {
    const HWND window = native.Window;
    const std::wstring added = Widen(std::string_view(box.Text).substr(kept));
    const std::size_t keptUnits =
        native.Units - UnitsBefore(native.Text.substr(kept), native.Text.size() - kept);
    DWORD start = 0, end = 0;
    SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    const LRESULT top = SendMessageW(window, EM_GETFIRSTVISIBLELINE, 0, 0);
    if (!follow)
        SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    SendMessageW(window, EM_SETSEL, keptUnits, static_cast<LPARAM>(native.Units));
    SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(added.c_str()));
    native.Units = keptUnits + added.size();
    if (follow)
        return;
    // The user reads further up: the view stays where it is.
    SendMessageW(window, EM_SETSEL, start, static_cast<LPARAM>(end));
    const LRESULT moved = SendMessageW(window, EM_GETFIRSTVISIBLELINE, 0, 0);
    SendMessageW(window, EM_LINESCROLL, 0, top - moved);
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window, nullptr, TRUE);
}

void Select(NativeControl& native, const TextBox& box) {
    const std::size_t start =
        box.SelStart >= box.Text.size() ? native.Units : UnitsBefore(box.Text, box.SelStart);
    const std::size_t end =
        box.SelLength == 0 ? start : UnitsBefore(box.Text, box.SelStart + box.SelLength);
    SendMessageW(native.Window, EM_SETSEL, start, static_cast<LPARAM>(end));
    SendMessageW(native.Window, EM_SCROLLCARET, 0, 0);
    native.SelStart = box.SelStart;
    native.SelLength = box.SelLength;
}

void RememberSelection(NativeControl& native) {
    SendMessageW(native.Window, EM_GETSEL, reinterpret_cast<WPARAM>(&native.WindowStart),
                 reinterpret_cast<LPARAM>(&native.WindowEnd));
}

} // namespace

void SyncText(NativeControl& native, TextBox& box, Thorough how) {
    if (box.Locked != native.Locked) {
        native.Locked = box.Locked;
        SendMessageW(native.Window, EM_SETREADONLY, box.Locked, 0);
    }
    const bool changed = box.Text.size() != native.Text.size() || box.Text != native.Text;
    const bool selected = box.SelStart != native.SelStart || box.SelLength != native.SelLength;
    if (!changed && !selected)
        return;
    const bool costly = box.MultiLine && box.Locked;
    const std::int64_t begun = Now();
    if (costly && how == Thorough::No && begun < native.NextUpdate)
        return;
    native.Sending = true;
    if (changed) {
        // At its end the caret stays at the end, and the view follows the text.
        const bool follow = box.SelStart >= box.Text.size();
        const std::size_t kept = costly ? CommonStart(native.Text, box.Text) : 0;
        // Where most of the text goes, as at the start of a run, a new one is far cheaper.
        if (kept > 0 && kept >= native.Text.size() - kept) {
            ReplaceTail(native, box, kept, follow);
        } else {
            const std::wstring text = Widen(box.Text);
            SetWindowTextW(native.Window, text.c_str());
            native.Units = text.size();
        }
        native.Text = box.Text;
    }
    if (changed || selected)
        Select(native, box);
    RememberSelection(native);
    native.Sending = false;
    if (costly) {
        UpdateWindow(native.Window);
        const std::int64_t ended = Now();
        native.NextUpdate = ended + lngRestFactor * (ended - begun);
    }
}

void CollectSelection(NativeControl& native, TextBox& box) {
    DWORD start = 0, end = 0;
    SendMessageW(native.Window, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    if (start == native.WindowStart && end == native.WindowEnd)
        return;
    native.WindowStart = start;
    native.WindowEnd = end;
    // The window may lag behind a text that grew: what it shows is native.Text.
    native.SelStart = box.SelStart = BytesBefore(native.Text, start);
    native.SelLength = box.SelLength = BytesBefore(native.Text, end) - box.SelStart;
}

void CollectText(NativeControl& native, TextBox& box) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(native.Window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(native.Window, text.data(), static_cast<int>(text.size()))));
    native.Units = text.size();
    native.Text = box.Text = Narrow(text);
    CollectSelection(native, box);
}

} // namespace ui::win32
