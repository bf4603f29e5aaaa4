// User actions on the windows.
#include "fakes/ScriptedUser.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace fake {

namespace {
bool IsOnTop(const ui::Form& form) {
    return form.Visible && (user.Modals.empty() || user.Modals.back() == &form);
}

/// Moves the focus to the control.
void Reach(ui::Control& control, const char* what) {
    if (!CanReach(control))
        throw std::runtime_error(std::string("A person could not ") + what + " " + control.Name +
                                 " (\"" + control.Caption + "\").");
    user.Focus = &control;
}

void Invoke(const ui::Handler& handler) {
    if (handler)
        handler();
}

/// Selects the item with this text.
template<typename List>
ui::ListItem& GoTo(List& list, const std::string& text) {
    Reach(list, "choose in");
    if (!ui::SelectItem(list, &ui::ListItem::Text, text))
        throw std::runtime_error(list.Name + " has no item \"" + text + "\".");
    return list.Items[static_cast<std::size_t>(list.ListIndex)];
}

void PressFirst(ui::Form& form, bool ui::Button::*which) {
    for (ui::Control* control : form.Controls)
        if (control->Kind == ui::ControlKind::Button && static_cast<ui::Button*>(control)->*which &&
            CanReach(*control))
            return Click(*control);
    ADD_FAILURE() << form.Name << " has no such button that could be pressed.";
}
} // namespace

bool CanReach(const ui::Control& control) {
    return ui::EffectivelyVisible(control) && ui::EffectivelyEnabled(control) &&
           control.Parent != nullptr && IsOnTop(*control.Parent);
}

void Click(ui::Control& control) {
    Reach(control, "click");
    if (control.Kind == ui::ControlKind::CheckBox) {
        auto& box = static_cast<ui::CheckBox&>(control);
        box.Value = box.Value == 0 ? 1 : 0;
    } else if (control.Kind == ui::ControlKind::OptionButton) {
        for (ui::Control* other : control.Parent->Controls)
            if (other->Kind == control.Kind && other->Container == control.Container)
                static_cast<ui::OptionButton*>(other)->Value = other == &control;
    }
    Invoke(control.Click);
}

void Choose(ui::ComboBox& combo, const std::string& item) {
    GoTo(combo, item);
    Invoke(combo.Click);
}

void Choose(ui::ListBox& list, const std::string& item) {
    ui::ListItem& chosen = GoTo(list, item);
    chosen.Selected = list.MultiSelect && !chosen.Selected;
    Invoke(list.Click);
}

void Type(ui::TextBox& textBox, const std::string& text) {
    Reach(textBox, "type into");
    EXPECT_FALSE(textBox.Locked) << textBox.Name;
    textBox.Text = text;
    textBox.SelStart = text.size();
    textBox.SelLength = 0;
    Invoke(textBox.Change);
}

void PressF10() {
    if (user.KeyHandler)
        user.KeyHandler(121);
}

void PressEnter(ui::Form& form) {
    if (user.Focus && user.Focus->Parent == &form && user.Focus->Kind == ui::ControlKind::Button)
        Click(*user.Focus);
    else
        PressFirst(form, &ui::Button::Default);
}

void PressEscape(ui::Form& form) {
    if (user.EscapeHeld)
        return;
    PressFirst(form, &ui::Button::Cancel);
}

void CloseForm(ui::Form& form) {
    ASSERT_TRUE(IsOnTop(form)) << "A person could not close " << form.Name << ".";
    form.Close();
}

void DropFiles(ui::Form& form, const std::vector<std::string>& paths) {
    ASSERT_TRUE(IsOnTop(form)) << "A person could not drop files on " << form.Name << ".";
    form.FilesDropped(paths);
}

} // namespace fake
