// The window of a long growing text, such as a report. Each line costs the window tens of
// microseconds of layout, and a thousand lines cost much more than the work they report. So the
// window first gets only the last screenful, which is visible. The earlier lines follow in idle
// time, or just before the user could look at them.
#include "ui/win32/Native.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>

namespace ui::win32 {

namespace {

/// The length in bytes of the common beginning of both texts, in whole characters and line ends.
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

/// The number of lines that fit into the window, and of characters per line; `Columns` is 0 for a
/// proportional font.
struct Room {
    LONG Lines, Columns;
};

Room RoomIn(const NativeControl& native) {
    RECT client{}, inside{};
    GetClientRect(native.Window, &client);
    SendMessageW(native.Window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inside));
    const HDC dc = GetDC(native.Window);
    const HGDIOBJ before = SelectObject(dc, native.Font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    SelectObject(dc, before);
    ReleaseDC(native.Window, dc);
    const bool fixedPitch =
        (metrics.tmPitchAndFamily & TMPF_FIXED_PITCH) == 0; // the flag's meaning is inverted
    return {client.bottom / std::max(metrics.tmHeight, LONG{1}),
            fixedPitch ? (inside.right - inside.left) / std::max(metrics.tmAveCharWidth, LONG{1})
                       : 0};
}

/// A lower bound for the number of window lines of this text line, so that the view is never partly
/// empty. Blanks at a line break or line end hang over the edge and take no room.
std::size_t LinesShown(std::string_view line, std::size_t columns) {
    const auto isPlain = [](char c) { return c >= ' ' && c <= '~'; };
    if (columns == 0 || !std::all_of(line.begin(), line.end(), isPlain))
        return 1;
    std::size_t lines = 1;
    for (std::size_t at = columns; at < line.size(); at += columns, ++lines) {
        at = line.find_first_not_of(' ', at);
        if (at == std::string_view::npos)
            break;
    }
    return lines;
}

/// The position where the last screenful of lines begins.
std::size_t LastScreenful(const NativeControl& native, const std::string& text) {
    const Room room = RoomIn(native);
    // Two extra lines: a partly visible one, and one to scroll to. The empty line after the last
    // line end counts, so that the number, and with it the scroll bar, stays constant.
    const auto wanted = static_cast<std::size_t>(room.Lines) + 2;
    std::size_t start = text.size(), lines = !text.empty() && text.back() == '\n' ? 1 : 0;
    while (lines < wanted && start > 0) {
        const std::size_t end = start;
        start = LineStart(text, start - 1);
        std::string_view line(text.data() + start, end - start);
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
            line.remove_suffix(1);
        lines += LinesShown(line, static_cast<std::size_t>(std::max(room.Columns, LONG{0})));
    }
    return start;
}

/// What the scroll bar shows.
std::array<int, 4> ThumbOf(HWND window) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window, SB_VERT, &info);
    return {info.nMin, info.nMax, static_cast<int>(info.nPage), info.nPos};
}

/// Changes the window's text without showing intermediate states, then redraws it. Sending
/// WM_SETREDRAW would not work: some systems' text boxes do not pass it to the default procedure.
void ChangeUnseen(HWND window, const std::function<void()>& change) {
    if ((GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) == 0) { // would show it at the end
        change();
        return;
    }
    const auto thumb = ThumbOf(window);
    const bool wasDrawn = !GetUpdateRect(window, nullptr, FALSE);
    DefWindowProcW(window, WM_SETREDRAW, FALSE, 0);
    change();
    DefWindowProcW(window, WM_SETREDRAW, TRUE, 0);
    // Some systems take longer to draw the frame with its scroll bar than for everything else. They
    // redraw it after the window was hidden, even if it is unchanged.
    const bool sameFrame = wasDrawn && ThumbOf(window) == thumb;
    if (sameFrame)
        RedrawWindow(window, nullptr, nullptr, RDW_VALIDATE | RDW_NOFRAME);
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | (sameFrame ? 0 : RDW_FRAME));
}

/// Gives the window another text as a new buffer, seen from its end. Replacing or setting the text
/// would first select the old one and draw all its lines. The buffer must not be empty: some
/// systems would then keep the old lines.
bool SetBuffer(NativeControl& native, const std::wstring& text) {
    if (text.empty())
        return false;
    const HLOCAL buffer = LocalAlloc(LMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    void* const place = buffer ? LocalLock(buffer) : nullptr;
    if (!place) {
        LocalFree(buffer);
        return false;
    }
    std::memcpy(place, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    LocalUnlock(buffer);
    ChangeUnseen(native.Window, [&] {
        const auto before =
            reinterpret_cast<HLOCAL>(SendMessageW(native.Window, EM_GETHANDLE, 0, 0));
        SendMessageW(native.Window, EM_SETHANDLE, reinterpret_cast<WPARAM>(buffer), 0);
        LocalFree(before); // only now: the window may still have read it before
        SendMessageW(native.Window, EM_SETSEL, text.size(), static_cast<LPARAM>(text.size()));
        SendMessageW(native.Window, EM_SCROLLCARET, 0, 0);
    });
    // Screen readers notice text changes themselves, but perhaps not a new buffer.
    NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, native.Window, OBJID_CLIENT, CHILDID_SELF);
    native.Units = text.size();
    return true;
}

/// Replaces a piece of the window's text by `added`. The view keeps its place, unless `follow`:
/// then it moves to the change.
void ReplaceInWindow(NativeControl& native, std::size_t from, std::size_t to,
                     const std::wstring& added, bool follow) {
    const HWND window = native.Window;
    const auto ask = [window](UINT message, WPARAM wParam) {
        return SendMessageW(window, message, wParam, 0);
    };
    const auto replace = [&] {
        SendMessageW(window, EM_SETSEL, from, static_cast<LPARAM>(to));
        SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(added.c_str()));
        native.Units = native.Units - (to - from) + added.size();
    };
    if (follow) {
        // Hide the selection of the whole old text.
        if (from == 0)
            ChangeUnseen(window, replace);
        else
            replace();
        return;
    }
    const auto moved = [&](std::size_t place) -> WPARAM {
        // A place at the end of the old piece stays with the text before it, except at the very
        // start.
        return place >= to && (place > from || to == 0) ? place - to + from + added.size() : place;
    };
    DWORD start = 0, end = 0;
    SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    const auto top = ask(EM_LINEINDEX, static_cast<WPARAM>(ask(EM_GETFIRSTVISIBLELINE, 0)));
    ChangeUnseen(window, [&] {
        replace();
        SendMessageW(window, EM_SETSEL, moved(start), static_cast<LPARAM>(moved(end)));
        const LRESULT wanted = ask(EM_LINEFROMCHAR, moved(static_cast<std::size_t>(top)));
        SendMessageW(window, EM_LINESCROLL, 0, wanted - ask(EM_GETFIRSTVISIBLELINE, 0));
    });
}

} // namespace

std::size_t WindowPlace(const NativeControl& native, std::size_t bytes) {
    const std::string_view text = native.Text;
    return bytes <= native.Missing ? 0
                                   : UnitsOf(text.substr(native.Missing, bytes - native.Missing));
}

std::size_t FieldPlace(const NativeControl& native, std::size_t units) {
    const std::string& text = native.Text;
    std::size_t at = native.Missing, seen = 0;
    while (at < text.size() && seen < units) {
        seen += static_cast<unsigned char>(text[at]) >= 0xF0 ? 2 : 1;
        do
            ++at;
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80);
    }
    return at;
}

void NoteScrolling(NativeControl& native) {
    const LRESULT top = SendMessageW(native.Window, EM_GETFIRSTVISIBLELINE, 0, 0);
    const LRESULT lines = SendMessageW(native.Window, EM_GETLINECOUNT, 0, 0);
    native.ScrolledUp = top + RoomIn(native).Lines + 1 < lines;
}

bool AnyMissing() {
    for (const auto& form : AllForms())
        if (form->Window && form->Which->Visible)
            for (const auto& native : form->Controls)
                if (native->Missing > 0)
                    return true;
    return false;
}

void FillIn(NativeControl& native, std::size_t bytes) {
    const std::size_t from =
        native.Missing > bytes ? LineStart(native.Text, native.Missing - bytes) : 0;
    ReplaceInWindow(native, 0, 0,
                    Widen(std::string_view(native.Text).substr(from, native.Missing - from)),
                    false);
    native.Missing = from;
}

void ChangeLongText(NativeControl& native, const std::string& text, bool follow) {
    std::size_t kept = CommonStart(native.Text, text);
    const std::size_t screenful = LastScreenful(native, text);
    // A new buffer is much cheaper when most of the text goes (as at the start of a run), when the
    // window has only the last screenful, or when the added text fills the window. But a user who
    // reads further up has all lines and keeps the place.
    if (kept < native.Text.size() - kept || kept <= native.Missing ||
        (follow && (native.Missing > 0 || kept < screenful)))
        kept = 0;
    const std::size_t from = WindowPlace(native, kept);
    if (kept == 0) {
        native.Missing = screenful;
        native.ScrolledUp = false;
        follow = true;
    }
    const std::wstring added = Widen(std::string_view(text).substr(std::max(kept, native.Missing)));
    if (kept > 0 || !SetBuffer(native, added))
        ReplaceInWindow(native, from, native.Units, added, follow);
    native.Text = text;
}

} // namespace ui::win32
