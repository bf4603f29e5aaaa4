// User input: copied into the fields first, then the handler runs.
#include "ui/win32/Native.h"

#include <commctrl.h>

namespace ui::win32 {

namespace {

HWND hovered = nullptr;
bool followsMouse = false;
POINT lastPointer{-1, -1};

Control* SelectedOption(Control& control) {
    for (Control* other : control.Parent->Controls)
        if (other->Kind == ControlKind::OptionButton && other->Container == control.Container)
            static_cast<OptionButton*>(other)->Value = other == &control;
    return &control;
}

void CollectListBox(NativeControl& native, ListBox& box) {
    if (!box.MultiSelect) {
        box.ListIndex = static_cast<int>(SendMessageW(native.Window, LB_GETCURSEL, 0, 0));
    } else {
        box.ListIndex = static_cast<int>(SendMessageW(native.Window, LB_GETCARETINDEX, 0, 0));
        for (std::size_t i = 0; i < box.Items.size() && i < native.Items.size(); ++i)
            box.Items[i].Selected = native.Items[i].Selected =
                SendMessageW(native.Window, LB_GETSEL, i, 0) > 0;
    }
    native.ListIndex = box.ListIndex;
}

/// While the list is open, the arrow keys only highlight items; the choice is made when the list
/// closes.
void OnComboBox(NativeControl& native, ComboBox& box, WORD code) {
    const auto current = [&] {
        return static_cast<int>(SendMessageW(native.Window, CB_GETCURSEL, 0, 0));
    };
    switch (code) {
    case CBN_DROPDOWN:
        native.IndexAtDropDown = current();
        native.ChosenInList = false;
        return;
    case CBN_SELENDOK:
        native.ChosenInList = true;
        return;
    case CBN_SELCHANGE:
        if (SendMessageW(native.Window, CB_GETDROPPEDSTATE, 0, 0) || current() == box.ListIndex)
            return;
        break;
    case CBN_CLOSEUP:
        if (!native.ChosenInList && current() == native.IndexAtDropDown)
            return;
        break;
    default:
        return;
    }
    native.ChosenInList = false;
    box.ListIndex = native.ListIndex = current();
    Run(box.Click);
}

} // namespace

bool Usable(const Control& control) {
    const NativeForm* form = control.Parent ? NativeOf(*control.Parent) : nullptr;
    return form && form->Window && form->Which->Visible && IsWindowEnabled(form->Window) &&
           EffectivelyEnabled(control) && EffectivelyVisible(control) && !Quitting();
}

void CollectInput() {
    for (const auto& form : AllForms()) {
        if (!form->Window || !form->Which->Visible)
            continue;
        for (const auto& native : form->Controls)
            if (native->Which->Kind == ControlKind::TextBox)
                CollectSelection(*native, static_cast<TextBox&>(*native->Which));
    }
}

void Run(const Handler& handler) {
    if (!handler || Quitting())
        return;
    static int depth = 0;
    CollectInput();
    ++depth;
    handler();
    --depth;
    // During another handler's work long texts may wait; after the outermost handler everything is
    // shown.
    SyncAll(depth == 0 ? Thorough::Yes : Thorough::No);
}

void ClickControl(Control& control) {
    if (!Usable(control)) {
        SyncForm(*NativeOf(*control.Parent), Thorough::No);
        return;
    }
    if (control.Kind == ControlKind::CheckBox)
        static_cast<CheckBox&>(control).Value = static_cast<CheckBox&>(control).Value == 0;
    else if (control.Kind == ControlKind::OptionButton)
        SelectedOption(control);
    SyncForm(*NativeOf(*control.Parent), Thorough::No);
    Run(control.Click);
}

void OnCommand(Control& control, WORD code) {
    NativeControl& native = *NativeOf(control);
    switch (control.Kind) {
    case ControlKind::Button:
    case ControlKind::CheckBox:
        if (code == BN_CLICKED)
            ClickControl(control);
        break;
    case ControlKind::OptionButton:
        // Some systems click an option button when it gets the focus.
        if (code == BN_CLICKED && !native.TakingFocus)
            ClickControl(control);
        break;
    case ControlKind::Label:
        if (code == STN_CLICKED && control.Click) {
            if (static_cast<const Label&>(control).Link)
                SetFocus(control);
            ClickControl(control);
        }
        break;
    case ControlKind::ComboBox:
        if (Usable(control))
            OnComboBox(native, static_cast<ComboBox&>(control), code);
        break;
    case ControlKind::ListBox: {
        auto& box = static_cast<ListBox&>(control);
        if (!Usable(control) || (code != LBN_SELCHANGE && code != LBN_DBLCLK))
            break;
        CollectListBox(native, box);
        Run(code == LBN_DBLCLK ? box.DoubleClick : box.Click);
        break;
    }
    case ControlKind::TextBox:
        if (code == EN_CHANGE && !native.Locked && !native.Sending) {
            auto& box = static_cast<TextBox&>(control);
            const std::string before = native.Text;
            CollectText(native, box);
            if (native.Text != before && Usable(control))
                Run(box.Change);
        }
        break;
    case ControlKind::Frame:
    case ControlKind::ProgressBar:
        break;
    }
}

/// Windows also reports a mouse that did not move, when a window appears or vanishes under it. Such
/// a message must not move the focus.
void OnMouseMoved(HWND window) {
    POINT pointer{};
    GetCursorPos(&pointer);
    const bool moved = pointer.x != lastPointer.x || pointer.y != lastPointer.y;
    lastPointer = pointer;
    if (!moved || window == hovered)
        return;
    hovered = window;
    Control* control = ControlOfWindow(window);
    if (!control || !control->MouseOver)
        return;
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, window, 0};
    TrackMouseEvent(&track);
    const NativeForm* form = FormOfWindow(window);
    if (Usable(*control) && form && GetActiveWindow() == form->Window)
        Run([control] {
            followsMouse = true;
            control->MouseOver();
            followsMouse = false;
        });
    else
        hovered = nullptr;
}

bool FollowsMouse() {
    return followsMouse;
}

void OnMouseLeft(HWND window) {
    if (hovered == window)
        hovered = nullptr;
}

} // namespace ui::win32
