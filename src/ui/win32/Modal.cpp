// Modal forms and boxes: the topmost one is usable, every other form is disabled.
#include "ui/win32/Native.h"

#include <algorithm>

namespace ui::win32 {

namespace {

struct Modal {
    Form* Which;
    bool Ended;
};

std::vector<Modal> modals;
NativeForm* lastActive = nullptr;

struct Box {
    HWND Owner;
    HHOOK Hook;
    int SafeAnswer;
};
std::vector<Box> boxes;

bool swallowInBox = false;

/// Keys in the system's own boxes bypass our message loop.
LRESULT CALLBACK BoxFilter(int code, WPARAM wParam, LPARAM lParam) {
    if (code == MSGF_DIALOGBOX && !boxes.empty()) {
        const MSG& message = *reinterpret_cast<const MSG*>(lParam);
        if (!FormOfWindow(message.hwnd) && message.wParam != VK_F1 && // F1 may open a box
            ((ReportKey(message) && swallowInBox) || IsHeldEscape(message)))
            return TRUE;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

Form* TopModal() {
    for (auto modal = modals.rbegin(); modal != modals.rend(); ++modal)
        if (!modal->Ended)
            return modal->Which;
    return nullptr;
}

} // namespace

void NoteActive(NativeForm& form) {
    lastActive = &form;
}

HWND ActiveWindow() {
    if (const Form* top = TopModal(); top && NativeOf(*top))
        return NativeOf(*top)->Window;
    if (const NativeForm* form = FormOfWindow(GetActiveWindow()); form && form->Which->Visible)
        return form->Window;
    if (lastActive && lastActive->Window && lastActive->Which->Visible)
        return lastActive->Window;
    for (const auto& form : AllForms())
        if (form->Window && form->Which->Visible)
            return form->Window;
    return nullptr;
}

void UpdateEnabledForms() {
    const Form* top = TopModal();
    for (const auto& form : AllForms()) {
        // A box disables its owner itself, and enables it before it closes.
        if (!form->Window || (!boxes.empty() && boxes.back().Owner == form->Window))
            continue;
        const bool enabled = boxes.empty() && (!top || top == form->Which);
        if ((IsWindowEnabled(form->Window) != FALSE) != enabled)
            EnableWindow(form->Window, enabled);
    }
}

void EndModal(Form& form) {
    for (auto modal = modals.rbegin(); modal != modals.rend(); ++modal) {
        if (modal->Which != &form || modal->Ended)
            continue;
        modal->Ended = true;
        // Enable the owner first: else the system would activate another program's window.
        UpdateEnabledForms();
        const HWND owner = GetWindow(NativeOf(form)->Window, GW_OWNER);
        if (owner && GetActiveWindow() == NativeOf(form)->Window && IsWindowEnabled(owner))
            SetActiveWindow(owner);
        return;
    }
}

BoxOpen::BoxOpen(bool swallowF10, int safeAnswer) : Owner(nullptr), FocusBefore(nullptr) {
    SyncAll(Thorough::Yes);
    Owner = ActiveWindow();
    FocusBefore = ::GetFocus();
    boxes.push_back({Owner, nullptr, safeAnswer});
    UpdateEnabledForms();
    swallowInBox = swallowF10;
    if (boxes.size() == 1)
        boxes.back().Hook =
            SetWindowsHookExW(WH_MSGFILTER, BoxFilter, nullptr, GetCurrentThreadId());
}

BoxOpen::~BoxOpen() {
    if (boxes.back().Hook)
        UnhookWindowsHookEx(boxes.back().Hook);
    boxes.pop_back();
    UpdateEnabledForms();
    CollectInput();
    if (NativeForm* form = FormOfWindow(Owner); form && GetActiveWindow() == Owner) {
        if (const Control* control = ControlOfWindow(FocusBefore);
            control && CanTakeFocus(*control) && GetAncestor(FocusBefore, GA_ROOT) == Owner)
            ::SetFocus(FocusBefore);
        SettleFocus(*form);
    }
}

void AnswerOpenBoxes() {
    // The system's boxes and dialogs are windows of this thread that belong to no form.
    const auto answer = [](HWND window, LPARAM) -> BOOL {
        const HWND owner = GetWindow(window, GW_OWNER);
        for (const Box& box : boxes)
            if (box.Owner == owner && !FormOfWindow(window) && IsWindowVisible(window))
                PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(box.SafeAnswer), 0);
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), answer, 0);
}

void CloseModalForms() {
    while (Form* top = TopModal()) {
        Run(top->Close);
        if (TopModal() == top) // it did not close: try again at the next pump
            return;
    }
}

} // namespace ui::win32

namespace ui {

using namespace win32;

void ShowModal(Form& form) {
    if (Quitting() || form.Visible)
        return;
    if (Ending()) { // the fields must not be taken for an answer
        Run(form.Close);
        return;
    }
    SyncAll(Thorough::Yes);
    const HWND owner = ActiveWindow();
    NativeForm* ownerForm = owner ? FormOfWindow(owner) : nullptr;
    Control* focus = ownerForm ? ownerForm->Focus : nullptr;
    modals.push_back({&form, false});
    const std::size_t depth = modals.size();
    BringUp(form, true, owner);
    Run(form.Activate);
    // Do not wait for a form that could not be shown (the system has no more windows).
    Loop([&] { return !modals[depth - 1].Ended && form.Visible; });
    modals.resize(depth - 1);
    form.Visible = false;
    UpdateEnabledForms();
    if (Quitting() || !ownerForm || !ownerForm->Which->Visible)
        return;
    // Keep the focus if a handler set it to another control meanwhile.
    if (!ownerForm->Focus)
        ownerForm->Focus = focus;
    SettleFocus(*ownerForm);
}

} // namespace ui
