// Text boxes. The fields count bytes of UTF-8, the window units of UTF-16.
#include "ui/win32/Native.h"

#include <algorithm>
#include <utility>

namespace ui::win32 {

namespace {

/// During work a long text is updated only after this many times the cost of its last update, so
/// that updates take at most a two-hundredth of the time.
constexpr std::int64_t lngRestFactor = 200;
constexpr std::int64_t lngLongestRest = 2000; // ms, whatever the cost
/// A first change waits this long for further ones, so that they appear together.
constexpr std::int64_t lngWaitForMore = 200; // ms
/// A long text receives missing lines in portions of this size: some hundred lines, a few ms.
constexpr std::size_t lngFillBytes = 8192;

std::int64_t Now() {
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    return counter.QuadPart;
}

std::int64_t Ticks(std::int64_t milliseconds) {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    return milliseconds * frequency.QuadPart / 1000;
}

void RememberSelection(NativeControl& native) {
    SendMessageW(native.Window, EM_GETSEL, reinterpret_cast<WPARAM>(&native.WindowStart),
                 reinterpret_cast<LPARAM>(&native.WindowEnd));
}

void Select(NativeControl& native, const TextBox& box) {
    native.SelStart = box.SelStart;
    native.SelLength = box.SelLength;
    const bool atEnd = box.SelStart >= box.Text.size();
    if (atEnd && native.ScrolledUp) // some systems scroll to the caret when it is set
        return;
    if (box.SelStart < native.Missing)
        FillInAll(native);
    const std::size_t start = atEnd ? native.Units : WindowPlace(native, box.SelStart);
    const std::size_t end =
        box.SelLength == 0 ? start : WindowPlace(native, box.SelStart + box.SelLength);
    SendMessageW(native.Window, EM_SETSEL, start, static_cast<LPARAM>(end));
    SendMessageW(native.Window, EM_SCROLLCARET, 0, 0);
}

} // namespace

void FillInAll(NativeControl& native) {
    if (native.Missing == 0)
        return;
    // Otherwise a selection just made by another program would count as known. But a caret moved by
    // our own current change is no user selection.
    if (!native.Sending)
        CollectSelection(native, static_cast<TextBox&>(*native.Which));
    const bool sending = std::exchange(native.Sending, true);
    FillIn(native, native.Text.size());
    RememberSelection(native);
    native.Sending = sending;
}

void SyncText(NativeControl& native, TextBox& box, Thorough how) {
    if (box.Locked != native.Locked) {
        native.Locked = box.Locked;
        SendMessageW(native.Window, EM_SETREADONLY, box.Locked, 0);
    }
    const bool changed = box.Text.size() != native.Text.size() || box.Text != native.Text;
    const bool selected = box.SelStart != native.SelStart || box.SelLength != native.SelLength;
    const bool fillIn = native.Missing > 0 && how == Thorough::Yes;
    if (!changed && !selected && !fillIn)
        return;
    const bool isLong = box.MultiLine && box.Locked;
    const std::int64_t begun = Now();
    if (isLong && how == Thorough::No) {
        if (!native.Waiting)
            native.NextUpdate = std::max(native.NextUpdate, begun + Ticks(lngWaitForMore));
        native.Waiting = true;
        if (begun < native.NextUpdate)
            return;
    }
    native.Waiting = false;
    native.Sending = true;
    if (changed && isLong) {
        // A caret at the end stays at the end, and the view follows the text.
        const bool follow = box.SelStart >= box.Text.size() && !native.ScrolledUp;
        if (!follow)
            FillInAll(native);
        ChangeLongText(native, box.Text, follow);
    } else if (changed) {
        const std::wstring text = Widen(box.Text);
        SetWindowTextW(native.Window, text.c_str());
        native.Units = text.size();
        native.Text = box.Text;
    } else if (fillIn) {
        if (!selected)
            CollectSelection(native, box);
        FillIn(native, lngFillBytes);
    }
    if (changed || selected)
        Select(native, box);
    RememberSelection(native);
    native.Sending = false;
    if (isLong) {
        UpdateWindow(native.Window);
        const std::int64_t ended = Now();
        // Text shown outside work, such as an empty report before a run, needs no pause after it.
        native.NextUpdate = how == Thorough::Yes ? ended
                                                 : ended + std::min(lngRestFactor * (ended - begun),
                                                                    Ticks(lngLongestRest));
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
    // The field may be ahead of the window: the window shows native.Text.
    native.SelStart = box.SelStart = FieldPlace(native, start);
    native.SelLength = box.SelLength = FieldPlace(native, end) - box.SelStart;
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
