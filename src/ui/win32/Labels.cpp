// Labels draw themselves, buffered: no flicker when a text changes often, wrapping that never loses
// the end of a long path, and links.
#include "ui/PathEllipsis.h"
#include "ui/win32/Native.h"

#include <algorithm>
#include <cstdlib>

namespace ui::win32 {

namespace {

int Brightness(COLORREF colour) {
    return (299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour)) / 1000;
}

/// The system's link colour, unless its contrast with this background is too low.
COLORREF LinkColour(COLORREF back) {
    constexpr int intLeastContrast = 70; // of 255
    const COLORREF link = GetSysColor(COLOR_HOTLIGHT);
    if (IsHighContrast() || std::abs(Brightness(link) - Brightness(back)) >= intLeastContrast)
        return link;
    return Brightness(back) >= 128 ? RGB(0, 84, 166) : GetSysColor(COLOR_BTNTEXT);
}

void Fill(HDC context, const RECT& box, COLORREF colour) {
    const HBRUSH brush = CreateSolidBrush(colour);
    FillRect(context, &box, brush);
    DeleteObject(brush);
}

void DrawLabel(NativeControl& native, HDC context, const RECT& box) {
    const auto& label = static_cast<const Label&>(*native.Which);
    Fill(context, box, BackgroundBehind(label));
    const bool coloured = BackColorOf(label).has_value();
    std::wstring text = WindowCaption(label);
    native.Shortened = false;
    if (text.empty())
        return;

    COLORREF colour = label.Link ? LinkColour(BackgroundBehind(label)) : GetSysColor(COLOR_BTNTEXT);
    if (!native.Enabled)
        colour = GetSysColor(COLOR_GRAYTEXT);
    else if (const auto own = ForeColorOf(label))
        colour = *own;
    SetTextColor(context, colour);
    SetBkMode(context, TRANSPARENT);
    const HGDIOBJ old = SelectObject(context, native.Font);

    UINT format = DT_LEFT | DT_EXPANDTABS;
    if (label.Mnemonic == 0)
        format |= DT_NOPREFIX;
    else if (SendMessageW(native.Window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL)
        format |= DT_HIDEPREFIX;
    RECT place = box;
    const int margin = ToPixels(60, FormOfWindow(native.Window)->Scale);
    if (coloured) { // keep the text away from the edge of the coloured area
        place.left += margin;
        place.right -= margin;
    }
    RECT needed = place;
    if (label.Ellipsis) {
        const auto width = [context](const std::wstring& what) {
            SIZE size{};
            GetTextExtentPoint32W(context, what.c_str(), static_cast<int>(what.size()), &size);
            return size.cx;
        };
        const LONG room = place.right - place.left;
        native.Shortened = width(text) > room;
        if (native.Shortened) // some systems draw a text a little wider than they measure it
            text = Widen(ShortenPath(label.Caption, [&](const std::string& shorter) {
                return width(Widen(shorter)) <= room - margin;
            }));
        format |= DT_SINGLELINE | DT_NOPREFIX;
        needed.right = needed.left + width(text);
    } else {
        format |= DT_WORDBREAK;
        DrawTextW(context, text.c_str(), -1, &needed, format | DT_CALCRECT);
        if (needed.right > place.right) // a single word, such as a path, is too long for the line
            format |= DT_EDITCONTROL;
    }
    if (coloured) {
        // Here too, the text may be drawn a little wider than it was measured.
        const LONG right = std::min(needed.right + margin + margin / 2, box.right);
        Fill(context, {box.left, box.top, right, box.bottom}, *BackColorOf(label));
        place.top += std::max(0L, (place.bottom - needed.bottom) / 2);
    }
    DrawTextW(context, text.c_str(), -1, &place, format);
    SelectObject(context, old);
    if (label.Link && ::GetFocus() == native.Window) {
        RECT focus{box.left, box.top, std::min(needed.right + 1, box.right),
                   std::min(needed.bottom, box.bottom)};
        SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
        DrawFocusRect(context, &focus);
    }
}

} // namespace

std::optional<COLORREF> BackColorOf(const Control& control) {
    return control.BackColor && !IsHighContrast() ? control.BackColor : std::nullopt;
}

std::optional<COLORREF> ForeColorOf(const Control& control) {
    return control.ForeColor && !IsHighContrast() ? control.ForeColor : std::nullopt;
}

COLORREF BackgroundBehind(const Control& control) {
    for (const Control* c = control.Container; c; c = c->Container)
        if (const auto own = BackColorOf(*c))
            return *own;
    return GetSysColor(COLOR_BTNFACE);
}

void PaintLabel(NativeControl& native) {
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(native.Window, &paint);
    RECT box{};
    GetClientRect(native.Window, &box);
    const HDC memory = CreateCompatibleDC(context);
    const HBITMAP bitmap = CreateCompatibleBitmap(context, box.right, box.bottom);
    if (memory && bitmap) {
        const HGDIOBJ old = SelectObject(memory, bitmap);
        DrawLabel(native, memory, box);
        BitBlt(context, 0, 0, box.right, box.bottom, memory, 0, 0, SRCCOPY);
        SelectObject(memory, old);
    } else {
        DrawLabel(native, context, box);
    }
    if (bitmap)
        DeleteObject(bitmap);
    if (memory)
        DeleteDC(memory);
    EndPaint(native.Window, &paint);
}

} // namespace ui::win32
