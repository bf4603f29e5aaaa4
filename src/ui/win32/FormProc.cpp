// The window procedure of forms.
#include "ui/win32/Native.h"

#include <shellapi.h>

#include <algorithm>

namespace ui::win32 {

namespace {

void SetMinimum(const NativeForm& native, MINMAXINFO& info) {
    const Form& form = *native.Which;
    if (!form.Resizable || (form.MinWidth <= 0 && form.MinHeight <= 0))
        return;
    const SIZE size = OuterSize(native, form.MinWidth, form.MinHeight,
                                static_cast<DWORD>(GetWindowLongPtrW(native.Window, GWL_STYLE)),
                                static_cast<DWORD>(GetWindowLongPtrW(native.Window, GWL_EXSTYLE)));
    info.ptMinTrackSize = {std::max(info.ptMinTrackSize.x, size.cx),
                           std::max(info.ptMinTrackSize.y, size.cy)};
}

void ChangeResolution(NativeForm& native, int dpi, const RECT& place) {
    native.Dpi = dpi;
    native.Scale = TextScale(dpi);
    GiveIcons(native.Window, dpi);
    SIZE size{place.right - place.left, place.bottom - place.top};
    // Windows suggests a size that scales the frame like the inside, which is not exact.
    if (!IsZoomed(native.Window) && !IsIconic(native.Window))
        size = OuterSize(native, native.Which->Width, native.Which->Height,
                         static_cast<DWORD>(GetWindowLongPtrW(native.Window, GWL_STYLE)),
                         static_cast<DWORD>(GetWindowLongPtrW(native.Window, GWL_EXSTYLE)));
    ++native.Moving;
    SetWindowPos(native.Window, nullptr, place.left, place.top, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    --native.Moving;
    TakeOverPlace(native);
    FitToMonitor(native);
    SyncForm(native, Thorough::No);
    RedrawWindow(native.Window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

/// Handles a change of the user's fonts, colours or theme.
void ChangeSettings() {
    ForgetFonts();
    for (const auto& form : AllForms()) {
        if (!form->Window)
            continue;
        form->Scale = TextScale(form->Dpi);
        ColourTitleBar(form->Window);
        for (const auto& control : form->Controls)
            control->Font = nullptr;
        if (form->Which->Visible && !IsIconic(form->Window) && !IsZoomed(form->Window))
            MoveToFields(*form);
        if (form->Which->Visible)
            FitToMonitor(*form);
        SyncForm(*form, Thorough::No);
        RedrawWindow(form->Window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
}

void TakeDroppedFiles(NativeForm& native, HDROP drop) {
    std::vector<std::string> files;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring name(DragQueryFileW(drop, i, nullptr, 0) + 1u, L'\0');
        name.resize(DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size())));
        files.push_back(platform::NarrowPath(name));
    }
    DragFinish(drop);
    if (native.Which->FilesDropped && !files.empty() && IsWindowEnabled(native.Window))
        Run([&] { native.Which->FilesDropped(files); });
}

/// Coloured frames have no window that could fill them, so the form fills their area.
void PaintBackground(const NativeForm& native, HDC context) {
    RECT box{};
    GetClientRect(native.Window, &box);
    FillRect(context, &box, GetSysColorBrush(COLOR_BTNFACE));
    for (const auto& control : native.Controls) {
        const auto colour = BackColorOf(*control->Which);
        if (control->Which->Kind != ControlKind::Frame || !control->Visible || !colour)
            continue;
        const HBRUSH brush = CreateSolidBrush(*colour);
        FillRect(context, &control->Place, brush);
        DeleteObject(brush);
    }
}

/// Sets the colours of standard controls. Each thread needs only one brush at a time.
HBRUSH ColourControl(HDC context, HWND window) {
    static HBRUSH brush = nullptr;
    const Control* control = ControlOfWindow(window);
    if (!control)
        return nullptr;
    COLORREF back = BackColorOf(*control).value_or(BackgroundBehind(*control));
    if (control->Kind == ControlKind::TextBox && !BackColorOf(*control) &&
        EffectivelyEnabled(*control))
        back = GetSysColor(COLOR_WINDOW);
    const COLORREF fore =
        GetSysColor(control->Kind == ControlKind::TextBox ? COLOR_WINDOWTEXT : COLOR_BTNTEXT);
    SetTextColor(context, ForeColorOf(*control).value_or(fore));
    SetBkColor(context, back);
    if (brush)
        DeleteObject(brush);
    return brush = CreateSolidBrush(back);
}

void RunTimer(NativeForm& native, std::size_t id) {
    if (id == 0 || id > native.Timers.size())
        return;
    Timer* timer = native.Timers[id - 1].Which;
    if (timer->Enabled)
        Run(timer->Tick);
}

} // namespace

void TakeOverPlace(NativeForm& native) {
    if (native.Moving || IsIconic(native.Window) || IsZoomed(native.Window))
        return;
    RECT place{};
    GetWindowRect(native.Window, &place);
    native.Which->Left = native.Left = ToTwips(place.left, SystemScale());
    native.Which->Top = native.Top = ToTwips(place.top, SystemScale());
}

void TakeOverSize(NativeForm& native, int width, int height) {
    Form& form = *native.Which;
    // Pixels are coarser than twips: sizes that give the same pixels count as equal.
    if (width == ToPixels(form.Width, native.Scale) &&
        height == ToPixels(form.Height, native.Scale))
        return;
    form.Width = native.Width = ToTwips(width, native.Scale);
    form.Height = native.Height = ToTwips(height, native.Scale);
    Run(form.Resize);
    SyncForm(native, Thorough::No);
}

LRESULT CALLBACK FormProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* native = reinterpret_cast<NativeForm*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!native || !native->Window)
        return DefWindowProcW(window, message, wParam, lParam);

    switch (message) {
    case WM_COMMAND:
        if (Control* control = lParam ? ControlOfWindow(reinterpret_cast<HWND>(lParam)) : nullptr)
            OnCommand(*control, HIWORD(wParam));
        return 0;
    case WM_CLOSE:
        if (IsWindowEnabled(window) && native->Which->Visible)
            Run(native->Which->Close);
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            return 0;
        NoteActive(*native);
        SettleFocus(*native);
        return 0;
    case WM_SETFOCUS:
        SettleFocus(*native);
        return 0;
    case WM_MOVE:
        TakeOverPlace(*native);
        return 0;
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED) {
            TakeOverPlace(*native);
            if (!native->Moving)
                TakeOverSize(*native, LOWORD(lParam), HIWORD(lParam));
        }
        return 0;
    case WM_DISPLAYCHANGE:
        if (native->Which->Visible)
            FitToMonitor(*native);
        return 0;
    case WM_VSCROLL:
        OnScrollBar(*native, LOWORD(wParam));
        return 0;
    case WM_MOUSEWHEEL:
        if (!Scrolls(*native))
            break;
        OnWheel(*native, GET_WHEEL_DELTA_WPARAM(wParam));
        return 0;
    case WM_GETMINMAXINFO:
        SetMinimum(*native, *reinterpret_cast<MINMAXINFO*>(lParam));
        return 0;
    case WM_DPICHANGED:
        ChangeResolution(*native, LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return 0;
    case WM_SETTINGCHANGE:
    case WM_THEMECHANGED:
    case WM_SYSCOLORCHANGE:
        // Every form receives this message; the first one with a window handles it for all.
        for (const auto& form : AllForms())
            if (form->Window) {
                if (form.get() == native)
                    ChangeSettings();
                break;
            }
        return 0;
    case WM_DROPFILES:
        TakeDroppedFiles(*native, reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_TIMER:
        RunTimer(*native, wParam);
        return 0;
    case WM_ERASEBKGND:
        PaintBackground(*native, reinterpret_cast<HDC>(wParam));
        return 1;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX: {
        const Control* control = ControlOfWindow(reinterpret_cast<HWND>(lParam));
        const bool plain = control && !control->BackColor && !control->ForeColor &&
                           message != WM_CTLCOLORSTATIC && message != WM_CTLCOLORBTN;
        if (control && !plain)
            return reinterpret_cast<LRESULT>(
                ColourControl(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
        break;
    }
    case WM_NEXTDLGCTL: {
        // Some systems use this to move from a label with a mnemonic to the next control.
        const HWND next = LOWORD(lParam) ? reinterpret_cast<HWND>(wParam)
                                         : GetNextDlgTabItem(window, ::GetFocus(), wParam != 0);
        if (next)
            ::SetFocus(next);
        return 0;
    }
    case DM_GETDEFID:
        if (native->DefaultShown)
            return MAKELONG(GetDlgCtrlID(NativeOf(*native->DefaultShown)->Window), DC_HASDEFID);
        return 0;
    case WM_SYSCOMMAND:
        // Alt or F10 alone would open a menu that does not exist, and block the work meanwhile.
        if ((wParam & 0xFFF0) == SC_KEYMENU && lParam == 0)
            return 0;
        if ((wParam & 0xFFF0) == lngMenuItem && native->Which->MenuItem) {
            ClickControl(*native->Which->MenuItem);
            return 0;
        }
        break;
    case WM_INITMENUPOPUP:
        if (HIWORD(lParam) && native->Which->MenuItem)
            EnableMenuItem(reinterpret_cast<HMENU>(wParam), lngMenuItem,
                           Usable(*native->Which->MenuItem) ? MF_ENABLED : MF_GRAYED);
        break;
    case WM_QUERYENDSESSION:
        // Windows would end the program during its work, so tell the user why it must not.
        if (const std::string reason = ShutdownObjection(*native); !reason.empty()) {
            ShutdownBlockReasonCreate(window, Widen(reason).c_str());
            return FALSE;
        }
        return TRUE;
    case WM_ENDSESSION:
        ShutdownBlockReasonDestroy(window);
        // The user insists: use the remaining time to stop the work.
        if (wParam)
            BeginEnding();
        return 0;
    case WM_NCDESTROY:
        UnnameWindow(window);
        native->Window = nullptr;
        return 0;
    default:
        break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace ui::win32
