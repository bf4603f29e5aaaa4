// Controls and forms as plain data.
//
// The program's logic writes these fields and calls the functions of Interface.h. The back end
// compares the fields with what it last sent and updates the windows. Before it calls a handler, it
// copies the user's input into the fields. Controls and forms live for the whole program.
//
// Measures are twips (1/1440 inch), independent of the resolution. Colours are 0xBBGGRR.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ui {

using Handler = std::function<void()>;

enum class ControlKind {
    Button,
    Label,
    CheckBox,
    OptionButton,
    ComboBox,
    ListBox,
    TextBox,
    Frame,
    ProgressBar
};

struct Form;

struct Control {
    explicit Control(ControlKind kind) : Kind(kind) {}
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const ControlKind Kind;
    std::string Name;    ///< as in the code: "cmdQuit", "cmdLargePurge(1)"
    std::string Caption; ///< as shown to the user; an ampersand is an ordinary character
    char Mnemonic = 0;   ///< the letter that selects the control with Alt, 0 for none
    std::string ToolTip;
    bool Visible = true;
    bool Enabled = true;
    bool Bold = false;
    int Left = 0, Top = 0, Width = 0, Height = 0; ///< twips, inside Container or else the form
    Control* Container = nullptr;                 ///< the frame that holds it, nullptr: the form
    Form* Parent = nullptr;                       ///< set when the form is bound
    std::optional<std::uint32_t> BackColor, ForeColor;
    Handler Click;          ///< pressed and released, or chosen by key
    Handler MouseOver;      ///< the mouse moved onto it
    std::size_t Native = 0; ///< used by the back end only
};

/// Whether the control and the frames around it are enabled.
inline bool EffectivelyEnabled(const Control& control) {
    return control.Enabled && (!control.Container || EffectivelyEnabled(*control.Container));
}

/// Whether they are visible.
inline bool EffectivelyVisible(const Control& control) {
    return control.Visible && (!control.Container || EffectivelyVisible(*control.Container));
}

struct Button : Control {
    Button() : Control(ControlKind::Button) {}
    bool Default = false; ///< Enter presses this button when no other button has the focus
    bool Cancel = false;  ///< Escape presses it
    char Shortcut = 0;    ///< Ctrl and this capital letter press it, 0 for none
};

struct Label : Control {
    Label() : Control(ControlKind::Label) {}
    bool Link = false;     ///< drawn and reachable as a link; Click opens it
    bool Ellipsis = false; ///< shortens a path that is too long for the place: see PathEllipsis.h
};

struct CheckBox : Control {
    CheckBox() : Control(ControlKind::CheckBox) {}
    int Value = 0; ///< 0 unchecked, 1 checked
};

/// Setting Value in code does not clear the other buttons of the group: see SelectOption.
struct OptionButton : Control {
    OptionButton() : Control(ControlKind::OptionButton) {}
    bool Value = false;
};

struct ListItem {
    std::string Text;
    std::int64_t Data = 0;
    bool Selected = false; ///< in a multiple-choice list
};

/// A drop-down list without a text field. Click is called when the user chooses an item.
struct ComboBox : Control {
    ComboBox() : Control(ControlKind::ComboBox) {}
    std::vector<ListItem> Items;
    int ListIndex = -1; ///< −1: nothing selected
};

/// Click is called when the selection changes, DoubleClick on a double click.
struct ListBox : Control {
    ListBox() : Control(ControlKind::ListBox) {}
    std::vector<ListItem> Items;
    int ListIndex = -1; ///< the item with the caret; in single choice the selected one
    bool MultiSelect = false;
    Handler DoubleClick;
};

/// The number of UTF-16 units of a text, as counted by text boxes on the screen.
inline std::size_t UnitsOf(std::string_view text) {
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80)
            units += byte >= 0xF0 ? 2 : 1; // outside the basic plane: a surrogate pair
    }
    return units;
}

/// Positions count bytes of Text.
struct TextBox : Control {
    TextBox() : Control(ControlKind::TextBox) {}
    std::string Text; ///< lines end in CR LF
    std::size_t SelStart = 0, SelLength = 0;
    bool MultiLine = false;
    bool Locked = false;     ///< the user may select and copy but not change
    bool FixedPitch = false; ///< Courier New instead of the dialog font
    Handler MouseUp; ///< left button or a key released in the box; the fields hold the selection
    Handler Change;
};

struct Frame : Control {
    Frame() : Control(ControlKind::Frame) {}
    bool Border = true; ///< false: only groups controls, without caption and line
};

struct ProgressBar : Control {
    ProgressBar() : Control(ControlKind::ProgressBar) {}
    double Fraction = 0; ///< 0 to 1
};

/// Started by Enabled = true; like every field, this takes effect at the next ui:: call.
struct Timer {
    int Interval = 0; ///< milliseconds
    bool Enabled = false;
    Handler Tick;
};

enum class StartPosition { CenterScreen, CenterOwner, Manual };

struct Form {
    Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    std::string Name;          ///< "frmMain"
    std::string Caption;       ///< the title bar
    int Left = 0, Top = 0;     ///< twips on the screen; updated when the user moves the window
    int Width = 0, Height = 0; ///< twips of the inside, without title bar and borders
    int MinWidth = 0, MinHeight = 0;
    int ContentHeight = 0;  ///< above Height: the window scrolls; 0: it never does
    bool Resizable = false; ///< by the user; the window is never larger than its monitor
    StartPosition Position = StartPosition::CenterOwner;
    bool Visible = false;           ///< read only for the logic: Show, ShowModal and Hide change it
    std::vector<Control*> Controls; ///< in tab order; containers before what they hold
    std::vector<Timer*> Timers;
    Control* MenuItem = nullptr; ///< stands in the window's system menu, too
    Handler Activate;            ///< called each time the form is shown
    Handler Close;  ///< the user asks to close the window; the handler hides it or does not
    Handler Resize; ///< Width and Height have changed
    std::function<std::string()>
        HoldsShutdown; ///< why Windows must not shut down now, "" if it may
    std::function<void(const std::vector<std::string>&)> FilesDropped;
    std::size_t Native = 0; ///< used by the back end only
};

/// One line of a form's layout table: a control, its name in the code, and its place in twips.
struct Placed {
    Control* Which;
    std::string Name;
    int Left, Top, Width, Height;
};

/// Puts controls in their places.
inline void Place(const std::vector<Placed>& table) {
    for (const Placed& line : table) {
        line.Which->Left = line.Left;
        line.Which->Top = line.Top;
        line.Which->Width = line.Width;
        line.Which->Height = line.Height;
    }
}

/// Fills the form's controls from its layout table, in tab order. Container is set beforehand.
inline void Bind(Form& form, const std::vector<Placed>& table) {
    Place(table);
    form.Controls.clear();
    for (const Placed& line : table) {
        line.Which->Name = line.Name;
        line.Which->Parent = &form;
        form.Controls.push_back(line.Which);
    }
}

/// One line of a form's text table: the caption of a control, its mnemonic (0 for none), and
/// optionally its click handler.
struct Worded {
    Control* Which;
    const char* Caption;
    char Mnemonic = 0;
    Handler Click = nullptr;
};

/// Sets captions, mnemonics and handlers of controls.
inline void PutWords(std::initializer_list<Worded> table) {
    for (const Worded& line : table) {
        line.Which->Caption = line.Caption;
        line.Which->Mnemonic = line.Mnemonic;
        if (line.Click)
            line.Which->Click = line.Click;
    }
}

/// Puts controls inside a frame; call it before Bind.
inline void PutInto(Frame& frame, std::initializer_list<Control*> controls) {
    for (Control* control : controls)
        control->Container = &frame;
}

/// Sets one option button of a group and clears the others.
template<std::size_t N>
void SelectOption(OptionButton (&group)[N], std::size_t index) {
    for (std::size_t i = 0; i < N; ++i)
        group[i].Value = i == index;
}

/// Selects the item of a list with this Text or these Data. False, and nothing changes, when there
/// is none.
template<class List, class Field, class Value>
bool SelectItem(List& list, Field ListItem::*field, const Value& value) {
    const auto found = std::ranges::find(list.Items, value, field);
    if (found != list.Items.end())
        list.ListIndex = static_cast<int>(found - list.Items.begin());
    return found != list.Items.end();
}

} // namespace ui
