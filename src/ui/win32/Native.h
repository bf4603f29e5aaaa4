// What the modules of this back end share: the windows behind forms and controls, and what was
// sent to them last. All of it belongs to the interface thread.
#pragma once

#include <windows.h>

#include "ui/Interface.h"
#include "win32/Wide.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ui::win32 {

using platform::Narrow;
using platform::Widen;

/// The window of a control and the state that the window has. Fields that differ from it were
/// changed by the program since.
struct NativeControl {
    Control* Which = nullptr;
    HWND Window = nullptr;
    WNDPROC ClassProcedure = nullptr; ///< the window's original procedure
    HFONT Font = nullptr;
    RECT Place{};
    bool Visible = false;
    bool Enabled = true;
    bool TabStop = false;
    bool Unthemed = false;
    bool TakingFocus = false;
    bool Shortened = false; ///< labels: the text was too long for its place
    std::string Caption, ToolTip, AccessibleName;
    char Mnemonic = 0;
    std::optional<std::uint32_t> BackColor, ForeColor;
    int Value = 0; ///< check boxes, option buttons, progress bars

    // Lists.
    std::vector<ListItem> Items;
    int ListIndex = -1;
    int WidestItem = 0;        ///< pixels
    int IndexAtDropDown = -1;  ///< combo boxes: the choice when the list was opened
    bool ChosenInList = false; ///< combo boxes: an item was chosen rather than the list closed

    // Text boxes. Window positions count UTF-16 units.
    std::string Text;
    bool Locked = false;
    bool ScrolledUp = false; ///< the user reads further up: the view must not follow the text's end
    bool Sending = false;    ///< a change that the window tells of now is the program's own
    std::size_t Units = 0;
    std::size_t SelStart = 0, SelLength = 0;
    DWORD WindowStart = 0, WindowEnd = 0;
    std::int64_t NextUpdate = 0; ///< performance counter; see SyncText
    bool Waiting = false;        ///< a change has been seen and waits for NextUpdate
    /// Bytes at the start of Text that the window lacks; see LongText.cpp.
    std::size_t Missing = 0;
};

struct NativeTimer {
    Timer* Which = nullptr;
    bool Running = false;
    int Interval = 0;
};

struct NativeForm {
    Form* Which = nullptr;
    HWND Window = nullptr;
    HWND ToolTips = nullptr;
    int Dpi = 96;
    int Scale = 96; ///< pixels of 1440 twips: the resolution, times the user's text size
    bool ModalStyle = false;
    bool Placed = false;            ///< has been on the screen
    int Moving = 0;                 ///< sizes and places that change are the program's own doing
    int Scrolled = 0;               ///< pixels of the inside above the window's upper edge
    std::array<int, 3> ScrollBar{}; ///< as it was set last: height, page, place
    Control* Focus = nullptr;       ///< has the focus when the form is active
    Control* DefaultShown = nullptr;
    std::vector<std::unique_ptr<NativeControl>> Controls;
    std::vector<NativeTimer> Timers;
    std::string Caption;
    int Left = 0, Top = 0, Width = 0, Height = 0;
};

/// How much a synchronisation may cost.
enum class Thorough {
    No, ///< a yield inside work: long text boxes only now and then
    Yes
};

// ---- Forms.cpp
inline NativeForm* NativeOf(const Form& form) {
    return reinterpret_cast<NativeForm*>(form.Native);
}
inline NativeControl* NativeOf(const Control& control) {
    return reinterpret_cast<NativeControl*>(control.Native);
}
NativeForm& EnsureForm(Form& form);
const std::vector<std::unique_ptr<NativeForm>>& AllForms();
/// The form whose window is this one or holds it, nullptr for foreign windows.
NativeForm* FormOfWindow(HWND window);
Control* ControlOfWindow(HWND window);
void MoveToFields(NativeForm& form);
void SetModalStyle(NativeForm& form, bool modal, HWND owner);
void CentreOver(NativeForm& form, HWND owner);
/// Where a window of this size stands centred over its owner (without one: on the main monitor),
/// all of it on the owner's monitor.
POINT CentredPlace(HWND owner, SIZE size);
/// Puts a form on the screen for Show and ShowModal.
void BringUp(Form& form, bool modal, HWND owner);
void DestroyForms();
HINSTANCE Instance();

// ---- FormProc.cpp
/// The program's own item of the system menu: below the system's own, a multiple of 16.
constexpr UINT lngMenuItem = 0x0100;
/// The window has another place or size now, by the user or the system: the fields follow.
void TakeOverPlace(NativeForm& form);
void TakeOverSize(NativeForm& form, int width, int height);

// ---- Measures.cpp
int ToPixels(int twips, int scale);
int ToTwips(int pixels, int scale);
/// Screen positions are measured at the system's resolution, whatever the monitor.
int SystemScale();
int TextScale(int dpi);
SIZE OuterSize(const NativeForm& form, int width, int height, DWORD style, DWORD extended);
HFONT FontFor(int scale, bool bold, bool fixedPitch, bool underlined);
void ForgetFonts();

// ---- ControlWindows.cpp
constexpr int lngListHeight = 3600; ///< twips of a combo box's open list, a part of its height
void CreateControls(NativeForm& form);
bool EffectivelyEnabled(const Control& control);
bool EffectivelyVisible(const Control& control);
RECT PlaceOf(const Control& control, int scale);
/// The name of a control, for programs that test this one, as an atom in a window property.
void NameWindow(HWND window, const std::string& name);
void UnnameWindow(HWND window);
std::wstring WindowCaption(const Control& control);
void AddToolTip(NativeForm& form, NativeControl& native, const std::string& text);

// ---- Labels.cpp
/// The colours that the program chose; none where the user has chosen a theme of high contrast.
std::optional<COLORREF> BackColorOf(const Control& control);
std::optional<COLORREF> ForeColorOf(const Control& control);
void PaintLabel(NativeControl& native);
COLORREF BackgroundBehind(const Control& control);

// ---- Appearance.cpp
/// The user has chosen a theme of high contrast.
bool IsHighContrast();
/// A dark title bar where Windows' applications are dark, and the usual one elsewhere.
void ColourTitleBar(HWND window);
/// The program's icons in the sizes of this resolution.
void GiveIcons(HWND window, int dpi);

// ---- Sync.cpp
void SyncForm(NativeForm& form, Thorough how);
void SyncAll(Thorough how);
/// Draws the button that Enter presses as the default one.
void ShowDefaultButton(NativeForm& form);
/// Where the focus belongs now that controls may have been disabled or hidden.
void SettleFocus(NativeForm& form);
bool CanTakeFocus(const Control& control);

// ---- Scrolling.cpp
bool Scrolls(const NativeForm& form);
void SyncScrollBar(NativeForm& form);
void OnScrollBar(NativeForm& form, WORD what);
void OnWheel(NativeForm& form, int delta);
void ScrollIntoView(NativeForm& form, const NativeControl& native);
/// Makes a window that can be sized no larger than its monitor.
void FitToMonitor(NativeForm& form);

// ---- SyncLists.cpp, SyncText.cpp
void SyncComboBox(NativeForm& form, NativeControl& native, ComboBox& box);
void SyncListBox(NativeForm& form, NativeControl& native, ListBox& box);
void SyncText(NativeControl& native, TextBox& box, Thorough how);
/// Copies the user's selection in text boxes into the fields.
void CollectSelection(NativeControl& native, TextBox& box);
void CollectText(NativeControl& native, TextBox& box);
/// Gives the window all of a long text, before somebody looks into it.
void FillInAll(NativeControl& native);

// ---- LongText.cpp
/// A place in the field's text, in bytes, as one in the window's, in units, and back.
std::size_t WindowPlace(const NativeControl& native, std::size_t bytes);
std::size_t FieldPlace(const NativeControl& native, std::size_t units);
/// The user has moved the view.
void NoteScrolling(NativeControl& native);
/// A window on the screen lacks lines that it is to get when nothing else is to be done.
bool AnyMissing();
/// Gives the window the last of those lines, some `bytes` of them.
void FillIn(NativeControl& native, std::size_t bytes);
/// Brings the window up to date as far as it can be seen at once.
void ChangeLongText(NativeControl& native, const std::string& text, bool follow);

// ---- Input.cpp
/// Copies what the user did without a notification into the fields of all forms.
void CollectInput();
/// Runs a handler: input collected before, windows brought up to date after.
void Run(const Handler& handler);
/// A command that a control sent; `code` is its notification.
void OnCommand(NativeForm& form, Control& control, WORD code);
void ClickControl(Control& control);
/// A person could use this control now: shown, enabled, and its form not under a modal one.
bool Usable(const Control& control);
void OnMouseMoved(HWND window);
void OnMouseLeft(HWND window);
/// The focus that changes now follows the mouse.
bool FollowsMouse();

// ---- Keys.cpp
/// True: the message was a key that the form has dealt with.
bool HandleKey(MSG& message);
/// Tells the program's handler about a released key. True: the message must go no further.
bool ReportKey(const MSG& message);
/// Escape, while it is to do nothing.
bool IsHeldEscape(const MSG& message);

// ---- MessageLoop.cpp
void Dispatch(MSG& message);
/// Dispatches what is in the queue, not longer than some milliseconds.
void PumpQueue();
/// Runs the message loop while `goOn` returns true and the program is not ending.
void Loop(const std::function<bool()>& goOn);
bool Quitting();

// ---- Modal.cpp
/// The window over which a box or a modal form appears; nullptr when none is on the screen.
HWND ActiveWindow();
void NoteActive(NativeForm& form);
/// Disables every form but the topmost modal one.
void UpdateEnabledForms();
/// Ends the ShowModal of a form, if it has one, so that it can be hidden.
void EndModal(Form& form);
/// While one lives, a box of the system is open over `Owner`, and the other forms are disabled.
struct BoxOpen {
    /// `safeAnswer` is the button that presses itself when the session ends.
    BoxOpen(bool swallowF10, int safeAnswer);
    ~BoxOpen();
    BoxOpen(const BoxOpen&) = delete;
    BoxOpen& operator=(const BoxOpen&) = delete;
    HWND Owner;
    HWND FocusBefore;
};

/// Presses the safe button of each box that is open.
void AnswerOpenBoxes();
/// Closes the modal forms as their user would by the cross.
void CloseModalForms();

// ---- SessionEnd.cpp
/// From now on the end of the session waits for what is under way. Once is enough.
void WatchSession();
/// Why Windows must not shut down now, by this form; "" if it may.
std::string ShutdownObjection(const NativeForm& native);
/// The session ends: what is under way is to stop, and the program with it.
void BeginEnding();
/// While the session ends, after each pump: asks what is under way again to stop.
void PressOn();

// ---- FileDialogs.cpp
/// COM for the interface thread; false when it cannot be had.
bool EnsureCom();

// ---- Accessibility.cpp
void NameForAccessibility(NativeForm& form, NativeControl& native);
void RoleOfLink(HWND window);

} // namespace ui::win32
