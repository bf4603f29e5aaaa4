// The window of a long text that grows, as a report does. To lay out a line costs the window tens
// of microseconds, a thousand lines much more than the work that they tell of. So it gets what can
// be seen at once: the last screenful. The lines before that wait in a gap, which is filled while
// nothing else is to be done, and before anybody could look into it.
#include "ui/win32/Native.h"

#include <algorithm>

namespace ui::win32 {

namespace {

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

std::size_t LineStart(const std::string& text, std::size_t at) {
    const std::size_t before = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
    return before == std::string::npos ? 0 : before + 1;
}

LONG LineHeight(const NativeControl& native) {
    const HDC dc = GetDC(native.Window);
    const HGDIOBJ before = SelectObject(dc, native.Font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    SelectObject(dc, before);
    ReleaseDC(native.Window, dc);
    return std::max(metrics.tmHeight, LONG{1});
}

/// Where the last lines begin that fill the window.
std::size_t LastScreenful(const NativeControl& native, const std::string& text) {
    RECT client{};
    GetClientRect(native.Window, &client);
    std::size_t start = text.size();
    // Two more: one that is seen in part, and the empty one behind the last line end.
    for (LONG lines = client.bottom / LineHeight(native) + 2; lines > 0 && start > 0; --lines)
        start = LineStart(text, start - 1);
    return start;
}

/// Puts `added` in the place of a piece of the window's text, the rest of the view staying where it
/// is, unless `follow`: then the view moves to the place of the change.
void ReplaceInWindow(NativeControl& native, std::size_t from, std::size_t to,
                     const std::wstring& added, bool follow) {
    const HWND window = native.Window;
    const auto ask = [window](UINT message, WPARAM wParam) {
        return SendMessageW(window, message, wParam, 0);
    };
    const auto moved = [&](std::size_t place) -> WPARAM {
        return place >= to && place > from ? place - to + from + added.size() : place;
    };
    DWORD start = 0, end = 0;
    SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    const auto top = ask(EM_LINEINDEX, static_cast<WPARAM>(ask(EM_GETFIRSTVISIBLELINE, 0)));
    if (!follow)
        ask(WM_SETREDRAW, FALSE);
    SendMessageW(window, EM_SETSEL, from, static_cast<LPARAM>(to));
    SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(added.c_str()));
    native.Units = native.Units - (to - from) + added.size();
    if (follow)
        return;
    SendMessageW(window, EM_SETSEL, moved(start), static_cast<LPARAM>(moved(end)));
    const LRESULT wanted = ask(EM_LINEFROMCHAR, moved(static_cast<std::size_t>(top)));
    SendMessageW(window, EM_LINESCROLL, 0, wanted - ask(EM_GETFIRSTVISIBLELINE, 0));
    ask(WM_SETREDRAW, TRUE);
    InvalidateRect(window, nullptr, TRUE);
}

} // namespace

std::size_t UnitsOf(std::string_view text) {
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80)
            units += byte >= 0xF0 ? 2 : 1;
    }
    return units;
}

std::size_t WindowPlace(const NativeControl& native, std::size_t bytes) {
    const std::string_view text = native.Text;
    std::size_t units = UnitsOf(text.substr(0, std::min(bytes, native.GapStart)));
    if (bytes > native.GapEnd)
        units += UnitsOf(text.substr(native.GapEnd, bytes - native.GapEnd));
    return units;
}

std::size_t FieldPlace(const NativeControl& native, std::size_t units) {
    const std::string_view text = native.Text;
    std::size_t at = 0, seen = 0;
    if (const std::size_t before = UnitsOf(text.substr(0, native.GapStart)); units > before) {
        at = native.GapEnd;
        seen = before;
    }
    while (at < text.size() && seen < units) {
        seen += static_cast<unsigned char>(text[at]) >= 0xF0 ? 2 : 1;
        do
            ++at;
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80);
    }
    return at;
}

bool HasGap(const NativeControl& native) {
    return native.GapEnd > native.GapStart;
}

bool AnyGap() {
    for (const auto& form : AllForms())
        if (form->Window && form->Which->Visible)
            for (const auto& native : form->Controls)
                if (HasGap(*native))
                    return true;
    return false;
}

void FillGap(NativeControl& native, std::size_t bytes) {
    const std::size_t from = native.GapStart;
    const std::size_t lineEnd =
        native.GapEnd - from > bytes ? native.Text.find('\n', from + bytes) : std::string::npos;
    const std::size_t to = std::min(lineEnd, native.GapEnd - 1) + 1;
    const std::size_t place = WindowPlace(native, from);
    ReplaceInWindow(native, place, place,
                    Widen(std::string_view(native.Text).substr(from, to - from)), false);
    native.GapStart = to;
    if (!HasGap(native)) // the scroll bar, too
        RedrawWindow(native.Window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
}

void ChangeLongText(NativeControl& native, const std::string& text, bool follow) {
    std::size_t kept = CommonStart(native.Text, text);
    // Where most of the text goes, as at the start of a run, a new one is far cheaper.
    if (kept < native.Text.size() - kept)
        kept = 0;
    std::size_t gapStart = native.GapStart, gapEnd = native.GapEnd, sent = kept;
    const std::size_t screenful = LastScreenful(native, text);
    if ((HasGap(native) && kept < gapEnd) || kept < screenful) {
        gapStart = LineStart(text, HasGap(native) ? std::min(kept, gapStart) : kept);
        sent = gapEnd = std::max(gapStart, screenful);
        kept = gapStart;
    }
    const std::wstring added = Widen(std::string_view(text).substr(sent));
    if (kept > 0) {
        ReplaceInWindow(native, WindowPlace(native, kept), native.Units, added, follow);
    } else {
        SetWindowTextW(native.Window, added.c_str());
        native.Units = added.size();
    }
    native.Text = text;
    native.GapStart = gapStart;
    native.GapEnd = gapEnd;
}

} // namespace ui::win32
