// The windows of controls: standard classes, direct children of the form in tab order.
#include "ui/win32/Native.h"

#include <commctrl.h>
#include <windowsx.h>

namespace ui::win32 {

namespace {

/// The identifiers 1 and 2 mean OK and Cancel to the system's keyboard handling.
constexpr int intFirstId = 100;
constexpr const wchar_t* strNameProperty = L"NullwrightName";

struct Window {
    const wchar_t* Class;
    DWORD Style;
    DWORD ExtendedStyle;
};

Window WindowFor(const Control& control) {
    switch (control.Kind) {
    case ControlKind::Button:
        return {WC_BUTTONW, BS_PUSHBUTTON | BS_NOTIFY, 0};
    case ControlKind::CheckBox:
        return {WC_BUTTONW, BS_CHECKBOX | BS_NOTIFY | BS_MULTILINE, 0};
    case ControlKind::OptionButton:
        return {WC_BUTTONW, BS_RADIOBUTTON | BS_NOTIFY | BS_MULTILINE, 0};
    case ControlKind::Frame:
        // Transparent, because the form does not paint over its children but must paint the inside.
        if (static_cast<const Frame&>(control).Border)
            return {WC_BUTTONW, BS_GROUPBOX, WS_EX_TRANSPARENT};
        return {WC_STATICW, SS_LEFT, WS_EX_TRANSPARENT};
    case ControlKind::ComboBox:
        return {WC_COMBOBOXW, CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL, 0};
    case ControlKind::ListBox: {
        DWORD style = LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS | WS_VSCROLL | WS_HSCROLL;
        // Each click or blank toggles one item: a careless click must not clear the other choices.
        if (static_cast<const ListBox&>(control).MultiSelect)
            style |= LBS_MULTIPLESEL;
        return {WC_LISTBOXW, style, WS_EX_CLIENTEDGE};
    }
    case ControlKind::TextBox: {
        const auto& box = static_cast<const TextBox&>(control);
        DWORD style = ES_NOHIDESEL;
        if (!box.MultiLine)
            style |= ES_AUTOHSCROLL;
        else // wrap long lines: a row of dots would run out of sight
            style |= ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;
        if (box.MultiLine && !box.Locked)
            style |= ES_WANTRETURN;
        return {WC_EDITW, style, WS_EX_CLIENTEDGE};
    }
    case ControlKind::ProgressBar:
        return {PROGRESS_CLASSW, PBS_SMOOTH, 0};
    case ControlKind::Label:
        break;
    }
    DWORD style = SS_NOTIFY;
    if (control.Mnemonic == 0)
        style |= SS_NOPREFIX;
    return {WC_STATICW, style, 0};
}

/// Whether a message reads the text of a box, or moves the view or caret in it.
bool LooksIntoText(UINT message) {
    switch (message) {
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
    case WM_COPY:
    case WM_KEYDOWN:
    case WM_SIZE: // more lines may become visible
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case EM_GETLINE:
    case EM_GETLINECOUNT:
        return true;
    default:
        return false;
    }
}

LRESULT CALLBACK ControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& native = *reinterpret_cast<NativeControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    Control& control = *native.Which;
    const auto asItsClass = [&, procedure = native.ClassProcedure] {
        return CallWindowProcW(procedure, window, message, wParam, lParam);
    };
    const bool label = control.Kind == ControlKind::Label;
    const bool link = label && static_cast<const Label&>(control).Link;
    const bool bareFrame =
        control.Kind == ControlKind::Frame && !static_cast<const Frame&>(control).Border;
    if (!native.Sending && LooksIntoText(message))
        FillInAll(native);
    switch (message) {
    case WM_PAINT:
        if (label) {
            PaintLabel(native);
            return 0;
        }
        if (bareFrame) {
            ValidateRect(window, nullptr);
            return 0;
        }
        break;
    case WM_ERASEBKGND:
        if (label || control.Kind == ControlKind::Frame)
            return 1;
        break;
    case WM_NCHITTEST:
        if (bareFrame)
            return HTTRANSPARENT;
        break;
    case WM_SETTEXT:
    case WM_UPDATEUISTATE:
    case WM_ENABLE:
        // The class would erase and draw at once, which flickers when a text changes often.
        if (label) {
            const LRESULT result = DefWindowProcW(window, message, wParam, lParam);
            InvalidateRect(window, nullptr, FALSE);
            return result;
        }
        break;
    case WM_KEYUP:
        // Some systems do not notify the parent when the blank key changes a multiple choice.
        if (wParam == VK_SPACE && control.Kind == ControlKind::ListBox &&
            static_cast<const ListBox&>(control).MultiSelect)
            PostMessageW(GetParent(window), WM_COMMAND,
                         MAKEWPARAM(GetDlgCtrlID(window), LBN_SELCHANGE),
                         reinterpret_cast<LPARAM>(window));
        // Text can be selected by keys as well.
        if (control.Kind == ControlKind::TextBox && Usable(control))
            Run(static_cast<TextBox&>(control).MouseUp);
        break;
    case WM_GETDLGCODE:
        if (link)
            return DLGC_BUTTON;
        // Tab would select the whole text of a long box and lose the user's position.
        if (control.Kind == ControlKind::TextBox && static_cast<const TextBox&>(control).MultiLine)
            return asItsClass() & ~DLGC_HASSETSEL;
        break;
    case WM_SETCURSOR:
        if (link) {
            ::SetCursor(LoadCursorW(nullptr, IDC_HAND));
            return TRUE;
        }
        break;
    case WM_KEYDOWN:
        if (link && wParam == VK_SPACE) {
            ClickControl(control);
            return 0;
        }
        break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        if (link)
            InvalidateRect(window, nullptr, FALSE);
        if (NativeForm* form = FormOfWindow(window); form && message == WM_SETFOCUS) {
            form->Focus = &control;
            ShowDefaultButton(*form);
            // A control must not move away while the mouse is about to click it or is clicking it.
            if (!FollowsMouse() && GetKeyState(VK_LBUTTON) >= 0)
                ScrollIntoView(*form, native);
        }
        if (control.Kind == ControlKind::OptionButton) {
            native.TakingFocus = true;
            const LRESULT result = asItsClass();
            native.TakingFocus = false;
            return result;
        }
        break;
    case WM_MOUSELEAVE:
        OnMouseLeft(window);
        break;
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
        if (control.Kind == ControlKind::TextBox) {
            const LRESULT result = asItsClass();
            NoteScrolling(native);
            return result;
        }
        break;
    case WM_LBUTTONUP:
        if (control.Kind == ControlKind::TextBox) {
            const LRESULT result = asItsClass();
            if (Usable(control))
                Run(static_cast<TextBox&>(control).MouseUp);
            return result;
        }
        break;
    case WM_NCDESTROY:
        UnnameWindow(window);
        native.Window = nullptr;
        control.Native = 0;
        break;
    default:
        break;
    }
    return asItsClass();
}

void CreateControl(NativeForm& form, Control& control, int id) {
    form.Controls.push_back(std::make_unique<NativeControl>());
    NativeControl& native = *form.Controls.back();
    native.Which = &control;
    native.Caption = control.Caption;
    native.Mnemonic = control.Mnemonic;
    native.Place = PlaceOf(control, form.Scale);
    const bool hasText = control.Kind == ControlKind::TextBox;
    const Window kind = WindowFor(control);
    const RECT& place = native.Place;
    int height = place.bottom - place.top;
    if (control.Kind == ControlKind::ComboBox)
        height += ToPixels(lngListHeight, form.Scale);
    native.Window = CreateWindowExW(
        kind.ExtendedStyle, kind.Class, hasText ? L"" : WindowCaption(control).c_str(),
        WS_CHILD | kind.Style, place.left, place.top, place.right - place.left, height, form.Window,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), Instance(), nullptr);
    if (!native.Window) {
        form.Controls.pop_back();
        return;
    }
    control.Native = reinterpret_cast<std::size_t>(&native);
    SetWindowLongPtrW(native.Window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&native));
    NameWindow(native.Window, control.Name);
    // Subclass directly, not by the common controls' helper. The helper looks up a window property
    // three times per message, which some systems take longer for than for the message itself.
    native.ClassProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(native.Window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ControlProc)));
    if (control.Kind == ControlKind::ProgressBar)
        SendMessageW(native.Window, PBM_SETRANGE32, 0, 10000);
    if (hasText)
        SendMessageW(native.Window, EM_SETLIMITTEXT, 0x7FFFFFFE, 0);
    if (control.Kind == ControlKind::OptionButton)
        SendMessageW(native.Window, BM_SETDONTCLICK, TRUE, 0);
    if (control.Kind == ControlKind::Label && static_cast<const Label&>(control).Link)
        RoleOfLink(native.Window);
}

} // namespace

void CreateControls(NativeForm& form) {
    int id = intFirstId;
    for (Control* control : form.Which->Controls)
        CreateControl(form, *control, id++);
}

RECT PlaceOf(const Control& control, int scale) {
    int left = control.Left, top = control.Top;
    for (const Control* c = control.Container; c; c = c->Container) {
        left += c->Left;
        top += c->Top;
    }
    return {ToPixels(left, scale), ToPixels(top, scale), ToPixels(left + control.Width, scale),
            ToPixels(top + control.Height, scale)};
}

// Global atoms outlive the program unless they are deleted; UnnameWindow does that.
void NameWindow(HWND window, const std::string& name) {
    if (const ATOM atom = name.empty() ? ATOM{0} : GlobalAddAtomW(Widen(name).c_str()))
        SetPropW(window, strNameProperty, reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(atom)));
}

void UnnameWindow(HWND window) {
    if (const HANDLE atom = RemovePropW(window, strNameProperty))
        GlobalDeleteAtom(static_cast<ATOM>(reinterpret_cast<UINT_PTR>(atom)));
}

/// The caption in the form that windows expect: ampersands doubled, and one before the mnemonic.
std::wstring WindowCaption(const Control& control) {
    if (control.Kind == ControlKind::Label && control.Mnemonic == 0)
        return Widen(control.Caption);
    std::string text;
    bool marked = control.Mnemonic == 0;
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; };
    for (const char c : control.Caption) {
        if (!marked && upper(c) == upper(control.Mnemonic)) {
            text += '&';
            marked = true;
        }
        if (c == '&')
            text += '&';
        text += c;
    }
    return Widen(text);
}

void AddToolTip(NativeForm& form, NativeControl& native, const std::string& text) {
    if (text == native.ToolTip)
        return;
    std::wstring wide = Widen(text);
    TTTOOLINFOW tool{};
    // Size without the last member, because older common controls refuse the full size.
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = form.Window;
    tool.uId = reinterpret_cast<UINT_PTR>(native.Window);
    tool.lpszText = wide.data();
    const UINT what = text.empty()             ? TTM_DELTOOLW
                      : native.ToolTip.empty() ? TTM_ADDTOOLW
                                               : TTM_UPDATETIPTEXTW;
    SendMessageW(form.ToolTips, what, 0, reinterpret_cast<LPARAM>(&tool));
    native.ToolTip = text;
}

} // namespace ui::win32
