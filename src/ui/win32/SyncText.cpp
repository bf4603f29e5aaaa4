// Text boxes. The fields count bytes of UTF-8, the window units of UTF-16.
#include "ui/win32/Native.h"

#include <algorithm>
#include <utility>

namespace ui::win32 {

namespace {

/// Inside work a long text is brought up to date only when this many times the cost of the last
/// update has passed, so that it takes no more than a two-hundredth of the time.
constexpr std::int64_t lngRestFactor = 200;
constexpr std::int64_t lngLongestRest = 2000; // ms, whatever the cost
/// What comes at once is shown at once: a first change waits this long for the next ones.
constexpr std::int64_t lngWaitForMore = 200; // ms
/// What a long text gets at once of what it lacks: some hundred lines, a few milliseconds.
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
    if (atEnd && native.ScrolledUp) // some systems scroll to a caret that is set
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
    // Else what another program has just selected would pass for known. But a caret that a change
    // under way has moved is nobody's selection.
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
        // At its end the caret stays at the end, and the view follows the text.
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
        // What was shown outside work, such as an empty report before a run, asks for no rest.
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
    // The window may lag behind a text that grew: what it shows is native.Text.
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
