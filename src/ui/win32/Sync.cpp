// Updates the windows from the fields: sends only what differs from what was sent last.
#include "ui/win32/Native.h"

#include <commctrl.h>

#include <algorithm>
#include <cmath>

namespace ui::win32 {

namespace {

HFONT FontOf(const NativeForm& form, const Control& control) {
    const bool fixedPitch =
        control.Kind == ControlKind::TextBox && static_cast<const TextBox&>(control).FixedPitch;
    const bool link = control.Kind == ControlKind::Label && static_cast<const Label&>(control).Link;
    return FontFor(form.Scale, control.Bold, fixedPitch, link);
}

void SyncPlace(NativeForm& form, NativeControl& native) {
    RECT place = PlaceOf(*native.Which, form.Scale);
    OffsetRect(&place, 0, -form.Scrolled);
    if (EqualRect(&place, &native.Place))
        return;
    const bool frame = native.Which->Kind == ControlKind::Frame;
    if (frame && native.Visible)
        InvalidateRect(form.Window, &native.Place, TRUE);
    native.Place = place;
    int height = place.bottom - place.top;
    if (native.Which->Kind == ControlKind::ComboBox)
        height += ToPixels(lngListHeight, form.Scale);
    // Repaint and do not copy: a neighbour that grew first may already cover the old place.
    SetWindowPos(native.Window, nullptr, place.left, place.top, place.right - place.left, height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    if (frame)
        InvalidateRect(native.Window, nullptr, TRUE);
    if (frame && native.Visible)
        InvalidateRect(form.Window, &native.Place, TRUE);
}

void SyncFont(NativeForm& form, NativeControl& native) {
    const HFONT font = FontOf(form, *native.Which);
    if (font == native.Font)
        return;
    native.Font = font;
    SendMessageW(native.Window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    if (native.Which->Kind == ControlKind::ComboBox) {
        // The combo box sets its height by the font; the fields have the wanted height.
        const int wanted = native.Place.bottom - native.Place.top;
        RECT now{};
        GetWindowRect(native.Window, &now);
        const LRESULT field =
            SendMessageW(native.Window, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
        const int border = static_cast<int>(now.bottom - now.top) - static_cast<int>(field);
        if (wanted > border + 4)
            SendMessageW(native.Window, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), wanted - border);
    }
    if (native.Which->Kind == ControlKind::TextBox)
        SendMessageW(native.Window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN,
                     MAKELPARAM(3, 3));
}

void SyncCaption(NativeForm& form, NativeControl& native) {
    const Control& control = *native.Which;
    if (control.Kind == ControlKind::TextBox ||
        (control.Caption == native.Caption && control.Mnemonic == native.Mnemonic))
        return;
    native.Caption = control.Caption;
    native.Mnemonic = control.Mnemonic;
    SetWindowTextW(native.Window, WindowCaption(control).c_str());
    if (control.Kind == ControlKind::Frame) // a shorter text leaves the longer one's end behind
        RedrawWindow(form.Window, &native.Place, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void SyncToolTip(NativeForm& form, NativeControl& native) {
    const Control& control = *native.Which;
    // The tip shows the full text that the ellipsis has shortened.
    const bool shortened = control.ToolTip.empty() && native.Shortened;
    AddToolTip(form, native, shortened ? control.Caption : control.ToolTip);
}

/// SetWindowTheme from the system folder. A linked library would be searched beside the program
/// first.
void ChangeTheme(HWND window, const wchar_t* name, const wchar_t* list) {
    using Change = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
    static const auto change = [] {
        const HMODULE library =
            LoadLibraryExW(L"uxtheme.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
        return library ? reinterpret_cast<Change>(reinterpret_cast<void (*)()>(
                             GetProcAddress(library, "SetWindowTheme")))
                       : nullptr;
    }();
    if (change)
        change(window, name, list);
}

void SyncColours(NativeForm& form, NativeControl& native) {
    const Control& control = *native.Which;
    if (control.BackColor == native.BackColor && control.ForeColor == native.ForeColor)
        return;
    native.BackColor = control.BackColor;
    native.ForeColor = control.ForeColor;
    // The theme draws these two kinds in its own colours.
    const bool themed =
        control.Kind == ControlKind::CheckBox || control.Kind == ControlKind::OptionButton;
    const bool plain = control.BackColor || control.ForeColor;
    if (themed && plain != native.Unthemed) {
        native.Unthemed = plain;
        ChangeTheme(native.Window, plain ? L"" : nullptr, plain ? L"" : nullptr);
    }
    if (control.Kind == ControlKind::Frame)
        RedrawWindow(form.Window, &native.Place, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    else
        InvalidateRect(native.Window, nullptr, TRUE);
}

/// Whether a change affects which control can have the focus.
bool SyncState(NativeControl& native) {
    const bool enabled = EffectivelyEnabled(*native.Which);
    const bool visible = EffectivelyVisible(*native.Which);
    const bool changed = enabled != native.Enabled || visible != native.Visible;
    if (enabled != native.Enabled) {
        native.Enabled = enabled;
        EnableWindow(native.Window, enabled);
    }
    if (visible != native.Visible) {
        native.Visible = visible;
        ShowWindow(native.Window, visible ? SW_SHOWNA : SW_HIDE);
    }
    return changed;
}

/// The option button through which Tab enters its group: the chosen one, else the first.
bool EntersGroup(const NativeForm& form, const Control& control) {
    const Control* entry = nullptr;
    for (const auto& other : form.Controls) {
        const Control& c = *other->Which;
        if (c.Kind != ControlKind::OptionButton || c.Container != control.Container ||
            !other->Visible || !other->Enabled)
            continue;
        if (static_cast<const OptionButton&>(c).Value)
            return &c == &control;
        if (!entry)
            entry = &c;
    }
    return entry == &control;
}

void SyncTabStop(const NativeForm& form, NativeControl& native) {
    const Control& control = *native.Which;
    bool stop = false;
    switch (control.Kind) {
    case ControlKind::Label:
        stop = static_cast<const Label&>(control).Link;
        break;
    case ControlKind::OptionButton:
        stop = EntersGroup(form, control);
        break;
    case ControlKind::Frame:
    case ControlKind::ProgressBar:
        break;
    default:
        stop = true;
    }
    // An option button changes this style itself when it is checked.
    if (stop == native.TabStop && control.Kind != ControlKind::OptionButton)
        return;
    native.TabStop = stop;
    const LONG_PTR style = GetWindowLongPtrW(native.Window, GWL_STYLE);
    const LONG_PTR wanted = stop ? style | WS_TABSTOP : style & ~static_cast<LONG_PTR>(WS_TABSTOP);
    if (wanted != style)
        SetWindowLongPtrW(native.Window, GWL_STYLE, wanted);
}

void SyncValue(NativeForm& form, NativeControl& native, Thorough how) {
    Control& control = *native.Which;
    int value = 0;
    switch (control.Kind) {
    case ControlKind::CheckBox:
        value = static_cast<const CheckBox&>(control).Value != 0;
        break;
    case ControlKind::OptionButton:
        value = static_cast<const OptionButton&>(control).Value;
        break;
    case ControlKind::ProgressBar: {
        const double fraction = static_cast<const ProgressBar&>(control).Fraction;
        value = static_cast<int>(std::lround(10000 * std::clamp(fraction, 0.0, 1.0)));
        break;
    }
    case ControlKind::ComboBox:
        SyncComboBox(form, native, static_cast<ComboBox&>(control));
        return;
    case ControlKind::ListBox:
        SyncListBox(form, native, static_cast<ListBox&>(control));
        return;
    case ControlKind::TextBox:
        SyncText(native, static_cast<TextBox&>(control), how);
        return;
    default:
        return;
    }
    if (value == native.Value)
        return;
    native.Value = value;
    SendMessageW(native.Window, control.Kind == ControlKind::ProgressBar ? PBM_SETPOS : BM_SETCHECK,
                 static_cast<WPARAM>(value), 0);
}

void SyncTimers(NativeForm& form) {
    for (std::size_t i = 0; i < form.Timers.size(); ++i) {
        NativeTimer& native = form.Timers[i];
        const bool running = native.Which->Enabled && native.Which->Interval > 0;
        if (running == native.Running && (!running || native.Interval == native.Which->Interval))
            continue;
        if (running)
            SetTimer(form.Window, i + 1, static_cast<UINT>(native.Which->Interval), nullptr);
        else
            KillTimer(form.Window, i + 1);
        native.Running = running;
        native.Interval = native.Which->Interval;
    }
}

} // namespace

void SyncForm(NativeForm& form, Thorough how) {
    if (!form.Window)
        return;
    SyncTimers(form);
    Form& fields = *form.Which;
    if (!fields.Visible)
        return;
    if (fields.Caption != form.Caption) {
        form.Caption = fields.Caption;
        SetWindowTextW(form.Window, Widen(form.Caption).c_str());
    }
    if (IsWindowVisible(form.Window) &&
        (fields.Left != form.Left || fields.Top != form.Top || fields.Width != form.Width ||
         fields.Height != form.Height))
        MoveToFields(form);
    SyncScrollBar(form);
    // Places and fonts first: lists and text boxes measure their contents by them.
    bool settle = how == Thorough::Yes; // finding the focus takes too long during work
    for (const auto& native : form.Controls) {
        SyncPlace(form, *native);
        SyncFont(form, *native);
        SyncCaption(form, *native);
        SyncColours(form, *native);
        SyncToolTip(form, *native);
        SyncValue(form, *native, how);
        settle = SyncState(*native) || settle;
        NameForAccessibility(form, *native);
    }
    for (const auto& native : form.Controls)
        SyncTabStop(form, *native);
    if (!settle)
        return;
    SettleFocus(form);
    ShowDefaultButton(form);
}

void SyncAll(Thorough how) {
    // The main form, the oldest, comes last: when it becomes usable, all others are up to date.
    for (std::size_t i = AllForms().size(); i-- > 0;)
        SyncForm(*AllForms()[i], how);
}

void ShowDefaultButton(NativeForm& form) {
    Control* shown = nullptr;
    if (form.Focus && form.Focus->Kind == ControlKind::Button && HasFocus(*form.Focus))
        shown = form.Focus;
    for (const auto& native : form.Controls) {
        if (shown)
            break;
        Control& control = *native->Which;
        if (control.Kind == ControlKind::Button && static_cast<const Button&>(control).Default &&
            native->Visible && native->Enabled)
            shown = &control;
    }
    if (shown == form.DefaultShown)
        return;
    const auto draw = [](const Control* control, WPARAM style) {
        if (control && NativeOf(*control))
            SendMessageW(NativeOf(*control)->Window, BM_SETSTYLE, style, TRUE);
    };
    draw(form.DefaultShown, BS_PUSHBUTTON);
    draw(shown, BS_DEFPUSHBUTTON);
    form.DefaultShown = shown;
}

bool CanTakeFocus(const Control& control) {
    const NativeControl* native = NativeOf(control);
    const bool link = control.Kind == ControlKind::Label && static_cast<const Label&>(control).Link;
    return native && native->Window && control.Kind != ControlKind::Frame &&
           control.Kind != ControlKind::ProgressBar &&
           (control.Kind != ControlKind::Label || link) && EffectivelyEnabled(control) &&
           EffectivelyVisible(control);
}

void SettleFocus(NativeForm& form) {
    if (!form.Window || !form.Which->Visible || GetActiveWindow() != form.Window ||
        !IsWindowEnabled(form.Window))
        return;
    const HWND now = ::GetFocus();
    const Control* focused = now && now != form.Window ? ControlOfWindow(now) : nullptr;
    if (focused && CanTakeFocus(*focused))
        return;
    // The control that lost the focus gets it back when possible; meanwhile the next one has it.
    Control* target = form.Focus && CanTakeFocus(*form.Focus) ? form.Focus : nullptr;
    if (!target) {
        const auto& controls = form.Controls;
        std::size_t start = 0;
        for (std::size_t i = 0; i < controls.size(); ++i)
            if (controls[i]->Which == form.Focus)
                start = i;
        for (std::size_t i = 0; i < controls.size() && !target; ++i) {
            NativeControl& candidate = *controls[(start + i) % controls.size()];
            if (candidate.TabStop && CanTakeFocus(*candidate.Which))
                target = candidate.Which;
        }
    }
    if (target)
        ::SetFocus(NativeOf(*target)->Window);
    else if (now != form.Window)
        ::SetFocus(form.Window);
}

} // namespace ui::win32
