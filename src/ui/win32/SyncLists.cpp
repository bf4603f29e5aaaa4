// Lists: items added at the end are appended; any other change refills the list.
#include "ui/win32/Native.h"

#include <algorithm>

namespace ui::win32 {

namespace {

struct Messages {
    UINT Reset, Add;
};

/// True when the list was refilled, so that its selection must be set again.
bool SyncItems(NativeControl& native, const std::vector<ListItem>& items, Messages messages) {
    const std::vector<ListItem>& sent = native.Items;
    const auto sameText = [](const ListItem& a, const ListItem& b) { return a.Text == b.Text; };
    const bool grown = items.size() >= sent.size() &&
                       std::equal(sent.begin(), sent.end(), items.begin(), sameText);
    if (grown && items.size() == sent.size())
        return false;
    SendMessageW(native.Window, WM_SETREDRAW, FALSE, 0);
    std::size_t from = sent.size();
    if (!grown) {
        SendMessageW(native.Window, messages.Reset, 0, 0);
        native.WidestItem = 0;
        from = 0;
    }
    const HDC context = GetDC(native.Window);
    const HGDIOBJ old = SelectObject(context, native.Font);
    for (std::size_t i = from; i < items.size(); ++i) {
        const std::wstring text = Widen(items[i].Text);
        SendMessageW(native.Window, messages.Add, 0, reinterpret_cast<LPARAM>(text.c_str()));
        SIZE size{};
        GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
        native.WidestItem = std::max(native.WidestItem, static_cast<int>(size.cx));
    }
    SelectObject(context, old);
    ReleaseDC(native.Window, context);
    SendMessageW(native.Window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(native.Window, nullptr, TRUE);
    native.Items = items;
    return !grown;
}

} // namespace

void SyncComboBox(NativeForm& form, NativeControl& native, ComboBox& box) {
    const bool filled = SyncItems(native, box.Items, {CB_RESETCONTENT, CB_ADDSTRING});
    if (filled)
        SendMessageW(native.Window, CB_SETDROPPEDWIDTH,
                     static_cast<WPARAM>(native.WidestItem + ToPixels(450, form.Scale)), 0);
    if (!filled && box.ListIndex == native.ListIndex)
        return;
    SendMessageW(native.Window, CB_SETCURSEL, static_cast<WPARAM>(box.ListIndex), 0);
    native.ListIndex = box.ListIndex;
}

void SyncListBox(NativeForm& form, NativeControl& native, ListBox& box) {
    const std::size_t known = native.Items.size();
    const bool filled = SyncItems(native, box.Items, {LB_RESETCONTENT, LB_ADDSTRING});
    if (filled || box.Items.size() != known)
        SendMessageW(native.Window, LB_SETHORIZONTALEXTENT,
                     static_cast<WPARAM>(native.WidestItem + ToPixels(120, form.Scale)), 0);
    if (!box.MultiSelect) {
        if (filled || box.ListIndex != native.ListIndex)
            SendMessageW(native.Window, LB_SETCURSEL, static_cast<WPARAM>(box.ListIndex), 0);
    } else {
        for (std::size_t i = 0; i < box.Items.size(); ++i) {
            const bool was = !filled && i < known && native.Items[i].Selected;
            if (box.Items[i].Selected != was)
                SendMessageW(native.Window, LB_SETSEL, box.Items[i].Selected,
                             static_cast<LPARAM>(i));
            native.Items[i].Selected = box.Items[i].Selected;
        }
        if (box.ListIndex >= 0 && (filled || box.ListIndex != native.ListIndex))
            SendMessageW(native.Window, LB_SETCARETINDEX, static_cast<WPARAM>(box.ListIndex), 0);
    }
    native.ListIndex = box.ListIndex;
}

} // namespace ui::win32
