// The keyboard: Enter and Escape, arrow keys in option groups, mnemonics, Tab, and the keys that
// the program handles whatever control has the focus.
#include "ui/win32/Native.h"

namespace ui {

namespace {
std::function<void(int)> keyHandler;
bool escapeHeld = false;
} // namespace

void HoldEscape(bool hold) {
    escapeHeld = hold;
}

void OnKeyReleased(std::function<void(int)> handler) {
    keyHandler = std::move(handler);
}

} // namespace ui

namespace ui::win32 {

namespace {

constexpr LPARAM lngRepeated = 1 << 30;

Button* FindButton(const NativeForm& form, bool Button::*role) {
    for (const auto& native : form.Controls) {
        if (native->Which->Kind != ControlKind::Button)
            continue;
        auto& button = static_cast<Button&>(*native->Which);
        if (button.*role && Usable(button))
            return &button;
    }
    return nullptr;
}

bool HandleEnter(NativeForm& form, Control* focused, bool repeated) {
    const bool writesLines = focused && focused->Kind == ControlKind::TextBox &&
                             static_cast<const TextBox&>(*focused).MultiLine &&
                             !static_cast<const TextBox&>(*focused).Locked;
    if (writesLines)
        return false;
    // A key held down must not answer several questions.
    if (repeated)
        return true;
    const bool presses =
        focused && (focused->Kind == ControlKind::Button || focused->Kind == ControlKind::Label);
    if (presses)
        ClickControl(*focused);
    else if (Button* button = FindButton(form, &Button::Default))
        ClickControl(*button);
    return true;
}

bool HandleEscape(NativeForm& form, bool repeated) {
    if (Button* button = repeated || escapeHeld ? nullptr : FindButton(form, &Button::Cancel))
        ClickControl(*button);
    return true;
}

/// Selects the next or previous available option button, cyclically in the group.
bool HandleArrow(NativeForm& form, Control* focused, WPARAM key) {
    if (!focused || focused->Kind != ControlKind::OptionButton)
        return false;
    std::vector<Control*> group;
    std::size_t at = 0;
    for (const auto& native : form.Controls) {
        Control& control = *native->Which;
        if (control.Kind != ControlKind::OptionButton || control.Container != focused->Container ||
            !Usable(control))
            continue;
        if (&control == focused)
            at = group.size();
        group.push_back(&control);
    }
    if (group.size() < 2)
        return true;
    const bool forward = key == VK_DOWN || key == VK_RIGHT;
    Control& next = *group[(at + (forward ? 1 : group.size() - 1)) % group.size()];
    SetFocus(next);
    ClickControl(next);
    return true;
}

bool HandleShortcut(NativeForm& form, const MSG& message, bool repeated) {
    if (GetKeyState(VK_CONTROL) >= 0 || GetKeyState(VK_MENU) < 0)
        return false;
    for (const auto& native : form.Controls) {
        if (native->Which->Kind != ControlKind::Button || !Usable(*native->Which))
            continue;
        const char shortcut = static_cast<const Button&>(*native->Which).Shortcut;
        if (shortcut == 0 || message.wParam != static_cast<WPARAM>(shortcut))
            continue;
        if (!repeated)
            ClickControl(*native->Which);
        return true;
    }
    return false;
}

bool HandleKeyDown(NativeForm& form, const MSG& message) {
    Control* focused = ControlOfWindow(::GetFocus());
    const bool repeated = (message.lParam & lngRepeated) != 0;
    const bool listOpen = focused && focused->Kind == ControlKind::ComboBox &&
                          SendMessageW(NativeOf(*focused)->Window, CB_GETDROPPEDSTATE, 0, 0);
    switch (message.wParam) {
    case VK_RETURN:
        return !listOpen && HandleEnter(form, focused, repeated);
    case VK_ESCAPE:
        return !listOpen && HandleEscape(form, repeated);
    case VK_UP:
    case VK_DOWN:
        // In a closed list, each arrow key would already choose the next item. In an open list,
        // Enter makes the choice.
        if (focused && focused->Kind == ControlKind::ComboBox && !listOpen) {
            SendMessageW(NativeOf(*focused)->Window, CB_SHOWDROPDOWN, TRUE, 0);
            return true;
        }
        [[fallthrough]];
    case VK_LEFT:
    case VK_RIGHT:
        return HandleArrow(form, focused, message.wParam);
    case VK_PRIOR:
    case VK_NEXT:
        if (!Scrolls(form) || (focused && focused->Kind != ControlKind::Button &&
                               focused->Kind != ControlKind::Label))
            return false;
        OnScrollBar(form, message.wParam == VK_PRIOR ? SB_PAGEUP : SB_PAGEDOWN);
        return true;
    case 'A':
        // Select all: older multi-line text boxes do not support this key themselves.
        if (GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0 && focused &&
            focused->Kind == ControlKind::TextBox) {
            SendMessageW(NativeOf(*focused)->Window, EM_SETSEL, 0, -1);
            return true;
        }
        return false;
    default:
        return HandleShortcut(form, message, repeated);
    }
}

} // namespace

bool IsHeldEscape(const MSG& message) {
    return escapeHeld && message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
}

bool ReportKey(const MSG& message) {
    const bool down = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    const bool up = message.message == WM_KEYUP || message.message == WM_SYSKEYUP;
    if (!down && !up)
        return false;
    if (up && keyHandler && !Quitting())
        Run([&message] { keyHandler(static_cast<int>(message.wParam)); });
    // F10 would open a menu that does not exist. Shift+F10 opens the context menu.
    return message.wParam == VK_F10 && GetKeyState(VK_SHIFT) >= 0;
}

bool HandleKey(MSG& message) {
    NativeForm* form = FormOfWindow(message.hwnd);
    if (!form || !IsWindowEnabled(form->Window))
        return false;
    if (message.message == WM_KEYDOWN && HandleKeyDown(*form, message))
        return true;
    // A letter without Alt is no command: an accidental key must not start a purge.
    if (message.message == WM_CHAR)
        return false;
    if (message.message == WM_KEYDOWN &&
        (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE))
        return false; // only for the open list or the text box
    return IsDialogMessageW(form->Window, &message) != FALSE;
}

} // namespace ui::win32
