// Windows smaller than their contents. No window is larger than its monitor. A form with a content
// height scrolls by its bar, the wheel, the page keys and the focus.
#include "ui/win32/Native.h"

#include <algorithm>

namespace ui::win32 {

namespace {

constexpr int lngLineHeight = 480; ///< twips that an arrow of the scroll bar moves

int PageOf(const NativeForm& form) {
    RECT box{};
    GetClientRect(form.Window, &box);
    return static_cast<int>(box.bottom);
}

void ScrollTo(NativeForm& form, int top) {
    const int before = form.Scrolled;
    form.Scrolled = top;
    SyncScrollBar(form);
    if (form.Scrolled == before)
        return;
    SyncForm(form, Thorough::No);
    RedrawWindow(form.Window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

} // namespace

bool Scrolls(const NativeForm& form) {
    return (GetWindowLongPtrW(form.Window, GWL_STYLE) & WS_VSCROLL) != 0;
}

void SyncScrollBar(NativeForm& form) {
    if (form.Which->ContentHeight <= 0 || !form.Placed || IsIconic(form.Window))
        return;
    const int height = ToPixels(form.Which->ContentHeight, form.Scale), page = PageOf(form);
    form.Scrolled = std::clamp(form.Scrolled, 0, std::max(0, height - page));
    const std::array<int, 3> bar{height, page, form.Scrolled};
    if (bar == form.ScrollBar)
        return;
    form.ScrollBar = bar;
    const bool needed = height > page;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = needed ? height - 1 : 0;
    info.nPage = needed ? static_cast<UINT>(page) : 1;
    info.nPos = form.Scrolled;
    SetScrollInfo(form.Window, SB_VERT, &info, TRUE);
    // The bar reduces the inside; WM_SIZE tells the form.
    if (needed != Scrolls(form))
        ShowScrollBar(form.Window, SB_VERT, needed);
}

void OnScrollBar(NativeForm& form, WORD what) {
    const int line = ToPixels(lngLineHeight, form.Scale), page = std::max(PageOf(form) - line, 1);
    switch (what) {
    case SB_LINEUP:
        return ScrollTo(form, form.Scrolled - line);
    case SB_LINEDOWN:
        return ScrollTo(form, form.Scrolled + line);
    case SB_PAGEUP:
        return ScrollTo(form, form.Scrolled - page);
    case SB_PAGEDOWN:
        return ScrollTo(form, form.Scrolled + page);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_TRACKPOS;
        if (GetScrollInfo(form.Window, SB_VERT, &info))
            ScrollTo(form, info.nTrackPos);
        return;
    }
    default:
        return;
    }
}

void OnWheel(NativeForm& form, int delta) {
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int page = PageOf(form), line = ToPixels(lngLineHeight / 2, form.Scale);
    const int notch = lines == WHEEL_PAGESCROLL ? page : static_cast<int>(lines) * line;
    ScrollTo(form, form.Scrolled - MulDiv(std::min(notch, page), delta, WHEEL_DELTA));
}

void ScrollIntoView(NativeForm& form, const NativeControl& native) {
    if (!Scrolls(form))
        return;
    const int margin = ToPixels(lngLineHeight / 2, form.Scale);
    const int above = static_cast<int>(native.Place.top) - margin;
    const int below = static_cast<int>(native.Place.bottom) + margin - PageOf(form);
    if (above < 0)
        ScrollTo(form, form.Scrolled + above);
    else if (below > 0)
        ScrollTo(form, form.Scrolled + std::min(above, below));
}

void FitToMonitor(NativeForm& form) {
    if (!form.Which->Resizable || IsIconic(form.Window))
        return;
    RECT place{};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!IsZoomed(form.Window) && GetWindowRect(form.Window, &place) &&
        GetMonitorInfoW(MonitorFromWindow(form.Window, MONITOR_DEFAULTTONEAREST), &monitor)) {
        const RECT& work = monitor.rcWork;
        const LONG width = std::min(place.right - place.left, work.right - work.left);
        const LONG height = std::min(place.bottom - place.top, work.bottom - work.top);
        if (width != place.right - place.left || height != place.bottom - place.top) {
            ++form.Moving;
            SetWindowPos(form.Window, nullptr,
                         std::clamp(place.left, work.left, work.right - width),
                         std::clamp(place.top, work.top, work.bottom - height), width, height,
                         SWP_NOZORDER | SWP_NOACTIVATE);
            --form.Moving;
            TakeOverPlace(form);
        }
    }
    RECT inside{};
    GetClientRect(form.Window, &inside);
    TakeOverSize(form, static_cast<int>(inside.right), static_cast<int>(inside.bottom));
}

} // namespace ui::win32
