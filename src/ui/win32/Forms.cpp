// The windows of forms: created when first shown, and only hidden afterwards.
#include "ui/win32/Native.h"

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdlib>

namespace ui::win32 {

LRESULT CALLBACK FormProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

namespace {

constexpr const wchar_t* strFormClass = L"NullwrightForm";

/// Whether a window of another instance lies at the place of this one.
bool IsCovered(const NativeForm& native, const RECT& own, int reach) {
    HWND other = nullptr;
    while ((other = FindWindowExW(nullptr, other, strFormClass, nullptr)) != nullptr) {
        DWORD process = 0;
        RECT place{};
        GetWindowThreadProcessId(other, &process);
        if (other != native.Window && process != GetCurrentProcessId() && IsWindowVisible(other) &&
            !IsIconic(other) && GetWindowRect(other, &place) &&
            std::abs(place.left - own.left) < reach && std::abs(place.top - own.top) < reach)
            return true;
    }
    return false;
}

/// Keeps two instances distinguishable: moves the second window down by the height of a title bar,
/// and to the right if there is room.
void StepAside(const NativeForm& native) {
    const auto dpi = static_cast<UINT>(native.Dpi);
    const int step =
        GetSystemMetricsForDpi(SM_CYCAPTION, dpi) + GetSystemMetricsForDpi(SM_CYSIZEFRAME, dpi);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    RECT own{};
    constexpr int intMostInstances = 20;
    for (int i = 0; i < intMostInstances; ++i) {
        if (!GetWindowRect(native.Window, &own) || !IsCovered(native, own, step / 2) ||
            !GetMonitorInfoW(MonitorFromWindow(native.Window, MONITOR_DEFAULTTONEAREST), &monitor))
            return;
        const RECT& work = monitor.rcWork;
        const LONG width = own.right - own.left;
        LONG height = own.bottom - own.top, top = own.top + step;
        if (work.bottom - top < (work.bottom - work.top) / 2)
            top = work.top;
        else if (native.Which->Resizable)
            height = std::min(height, work.bottom - top);
        SetWindowPos(native.Window, nullptr,
                     own.right + step <= work.right ? own.left + step : own.left, top, width,
                     height, SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

std::vector<std::unique_ptr<NativeForm>> forms;

void RegisterFormClass() {
    static bool registered = false;
    if (registered)
        return;
    registered = true;
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS |
                                                     ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = FormProc;
    description.hInstance = Instance();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    description.lpszClassName = strFormClass;
    RegisterClassExW(&description);
}

DWORD StyleOf(const Form& form, bool modal) {
    DWORD style = WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    if (form.Resizable)
        style |= WS_THICKFRAME | WS_MAXIMIZEBOX;
    return modal ? style | WS_POPUP : style | WS_OVERLAPPED | WS_MINIMIZEBOX;
}

DWORD ExtendedStyleOf(bool modal) {
    return modal ? WS_EX_DLGMODALFRAME : 0;
}

void AddMenuItem(const NativeForm& native) {
    const HMENU menu = native.Which->MenuItem ? GetSystemMenu(native.Window, FALSE) : nullptr;
    if (!menu)
        return;
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, lngMenuItem, WindowCaption(*native.Which->MenuItem).c_str());
}

void CreateFormWindow(NativeForm& native) {
    Form& form = *native.Which;
    RegisterFormClass();
    native.Dpi = static_cast<int>(GetDpiForSystem());
    native.Scale = TextScale(native.Dpi);
    native.Caption = form.Caption;
    ++native.Moving;
    native.Window = CreateWindowExW(
        ExtendedStyleOf(false), strFormClass, Widen(form.Caption).c_str(), StyleOf(form, false),
        ToPixels(form.Left, SystemScale()), ToPixels(form.Top, SystemScale()), 100, 100, nullptr,
        nullptr, Instance(), &native);
    --native.Moving;
    if (!native.Window)
        return;
    NameWindow(native.Window, form.Name);
    native.Dpi = static_cast<int>(GetDpiForWindow(native.Window));
    native.Scale = TextScale(native.Dpi);
    GiveIcons(native.Window, native.Dpi);
    ColourTitleBar(native.Window);
    SendMessageW(native.Window, WM_CHANGEUISTATE, UIS_INITIALIZE, 0);
    native.ToolTips =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                        WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, native.Window, nullptr, Instance(), nullptr);
    SendMessageW(native.ToolTips, TTM_SETMAXTIPWIDTH, 0, ToPixels(6000, native.Scale));
    CreateControls(native);
    AddMenuItem(native);
    for (Timer* timer : form.Timers)
        native.Timers.push_back({timer, false, 0});
    // An elevated program receives no drops from the desktop. Windows' message filter stays as it
    // is: a program with fewer rights must not choose what is destroyed.
    DragAcceptFiles(native.Window, form.FilesDropped ? TRUE : FALSE);
}

} // namespace

HINSTANCE Instance() {
    return GetModuleHandleW(nullptr);
}

const std::vector<std::unique_ptr<NativeForm>>& AllForms() {
    return forms;
}

NativeForm& EnsureForm(Form& form) {
    if (NativeForm* known = NativeOf(form))
        return *known;
    forms.push_back(std::make_unique<NativeForm>());
    NativeForm& native = *forms.back();
    native.Which = &form;
    form.Native = reinterpret_cast<std::size_t>(&native);
    return native;
}

NativeForm* FormOfWindow(HWND window) {
    const HWND root = window ? GetAncestor(window, GA_ROOT) : nullptr;
    for (const auto& form : forms)
        if (root && form->Window == root)
            return form.get();
    return nullptr;
}

Control* ControlOfWindow(HWND window) {
    const NativeForm* form = FormOfWindow(window);
    if (!form || window == form->Window || GetParent(window) != form->Window)
        return nullptr;
    const auto* native =
        reinterpret_cast<const NativeControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return native ? native->Which : nullptr;
}

/// Gives the window the size and place in the fields.
void MoveToFields(NativeForm& native) {
    Form& form = *native.Which;
    if (IsIconic(native.Window) || IsZoomed(native.Window))
        ShowWindow(native.Window, SW_SHOWNOACTIVATE);
    const SIZE size = OuterSize(native, form.Width, form.Height,
                                static_cast<DWORD>(GetWindowLongPtrW(native.Window, GWL_STYLE)),
                                static_cast<DWORD>(GetWindowLongPtrW(native.Window, GWL_EXSTYLE)));
    ++native.Moving;
    SetWindowPos(native.Window, nullptr, ToPixels(form.Left, SystemScale()),
                 ToPixels(form.Top, SystemScale()), size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    --native.Moving;
    native.Left = form.Left;
    native.Top = form.Top;
    native.Width = form.Width;
    native.Height = form.Height;
}

void SetModalStyle(NativeForm& native, bool modal, HWND owner) {
    const DWORD style = StyleOf(*native.Which, modal);
    const auto now = static_cast<DWORD>(GetWindowLongPtrW(native.Window, GWL_STYLE));
    const DWORD kept = now & (WS_VISIBLE | WS_DISABLED | WS_MINIMIZE | WS_MAXIMIZE | WS_VSCROLL);
    SetWindowLongPtrW(native.Window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    if (now == (style | kept) && native.ModalStyle == modal)
        return;
    native.ModalStyle = modal;
    SetWindowLongPtrW(native.Window, GWL_STYLE, static_cast<LONG_PTR>(style | kept));
    SetWindowLongPtrW(
        native.Window, GWL_EXSTYLE,
        static_cast<LONG_PTR>((static_cast<DWORD>(GetWindowLongPtrW(native.Window, GWL_EXSTYLE)) &
                               ~static_cast<DWORD>(WS_EX_DLGMODALFRAME)) |
                              ExtendedStyleOf(modal)));
    ++native.Moving;
    SetWindowPos(native.Window, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    --native.Moving;
}

POINT CentredPlace(HWND owner, SIZE size) {
    RECT over{};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(
        MonitorFromWindow(owner, owner ? MONITOR_DEFAULTTONEAREST : MONITOR_DEFAULTTOPRIMARY),
        &monitor);
    if (!owner || IsIconic(owner) || !GetWindowRect(owner, &over))
        over = monitor.rcWork;
    const RECT& work = monitor.rcWork;
    return {
        std::max(work.left, std::min((over.left + over.right - size.cx) / 2, work.right - size.cx)),
        std::max(work.top,
                 std::min((over.top + over.bottom - size.cy) / 2, work.bottom - size.cy))};
}

void CentreOver(NativeForm& native, HWND owner) {
    const int dpi = native.Dpi;
    RECT own{};
    GetWindowRect(native.Window, &own);
    const POINT place = CentredPlace(owner, {own.right - own.left, own.bottom - own.top});
    native.Which->Left = native.Left = ToTwips(place.x, SystemScale());
    native.Which->Top = native.Top = ToTwips(place.y, SystemScale());
    ++native.Moving;
    SetWindowPos(native.Window, nullptr, place.x, place.y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    --native.Moving;
    // The size changes on a monitor with another resolution.
    if (native.Dpi != dpi)
        CentreOver(native, owner);
}

void BringUp(Form& form, bool modal, HWND owner) {
    NativeForm& native = EnsureForm(form);
    if (!native.Window)
        CreateFormWindow(native);
    if (!native.Window)
        return;
    const bool shown = form.Visible;
    if (!shown)
        SetModalStyle(native, modal, owner);
    form.Visible = true;
    SyncForm(native, Thorough::Yes);
    if (!shown) {
        MoveToFields(native);
        FitToMonitor(native);
        if (form.Position == StartPosition::CenterOwner)
            CentreOver(native, owner ? owner : ActiveWindow());
        else if (form.Position == StartPosition::CenterScreen && !native.Placed)
            CentreOver(native, nullptr);
        if (!modal && !native.Placed)
            StepAside(native);
        native.Placed = true;
        SyncScrollBar(native);
    }
    UpdateEnabledForms();
    ShowWindow(native.Window, IsIconic(native.Window) ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow(native.Window);
    NoteActive(native);
    SettleFocus(native);
    // Paint now: the code that opened the form may work for a while before it pumps messages.
    RedrawWindow(native.Window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void DestroyForms() {
    for (const auto& form : forms)
        if (form->Window)
            DestroyWindow(form->Window);
}

} // namespace ui::win32

namespace ui {

using namespace win32;

void Show(Form& form) {
    if (Quitting())
        return;
    WatchSession();
    SyncAll(Thorough::Yes);
    BringUp(form, false, nullptr);
    Run(form.Activate);
}

void Hide(Form& form) {
    EndModal(form);
    NativeForm* native = NativeOf(form);
    form.Visible = false;
    if (!native || !native->Window)
        return;
    CollectInput();
    ShowWindow(native->Window, SW_HIDE);
    SyncAll(Thorough::Yes);
}

void SetFocus(Control& control) {
    if (!control.Parent)
        return;
    NativeForm& form = EnsureForm(*control.Parent);
    if (!form.Window || !control.Parent->Visible) {
        form.Focus = &control;
        return;
    }
    SyncForm(form, Thorough::No);
    if (!CanTakeFocus(control))
        return;
    form.Focus = &control;
    // A background form must not come to the front; it takes the focus on activation.
    if (GetActiveWindow() == form.Window)
        ::SetFocus(NativeOf(control)->Window);
}

bool HasFocus(const Control& control) {
    const NativeControl* native = NativeOf(control);
    return native && native->Window && ::GetFocus() == native->Window;
}

void Repaint(Form& form) {
    NativeForm* native = NativeOf(form);
    if (!native || !native->Window || !form.Visible)
        return;
    SyncForm(*native, Thorough::Yes);
    RedrawWindow(native->Window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void KeepOnScreen(Form& form) {
    NativeForm& native = EnsureForm(form);
    if (!native.Window) {
        native.Dpi = static_cast<int>(GetDpiForSystem());
        native.Scale = TextScale(native.Dpi);
    }
    const SIZE size =
        OuterSize(native, form.Width, form.Height, StyleOf(form, false), ExtendedStyleOf(false));
    RECT place{ToPixels(form.Left, SystemScale()), ToPixels(form.Top, SystemScale()), 0, 0};
    place.right = place.left + size.cx;
    place.bottom = place.top + size.cy;
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor))
        return;
    const RECT& work = monitor.rcWork;
    const LONG left = std::max(work.left, std::min(place.left, work.right - size.cx));
    const LONG top = std::max(work.top, std::min(place.top, work.bottom - size.cy));
    if (left != place.left)
        form.Left = ToTwips(left, SystemScale());
    if (top != place.top)
        form.Top = ToTwips(top, SystemScale());
    if (native.Window && form.Visible)
        SyncForm(native, Thorough::No);
}

} // namespace ui
