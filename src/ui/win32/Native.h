// Shared by the modules of this back end: the windows of forms and controls, and what was last sent
// to them. All of it belongs to the interface thread.
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

/// A control's window and its last known state. Fields that differ from that state were changed by
/// the program since.
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
    bool Shortened = false; ///< labels: the text was shortened to fit
    std::string Caption, ToolTip, AccessibleName;
    char Mnemonic = 0;
    std::optional<std::uint32_t> BackColor, ForeColor;
    int Value = 0; ///< check boxes, option buttons, progress bars

    // Lists.
    std::vector<ListItem> Items;
    int ListIndex = -1;
    int WidestItem = 0;        ///< pixels
    int IndexAtDropDown = -1;  ///< combo boxes: the choice when the list was opened
    bool ChosenInList = false; ///< combo boxes: an item was chosen, not just the list closed

    // Text boxes. Window positions count UTF-16 units.
    std::string Text;
    bool Locked = false;
    bool ScrolledUp = false; ///< the user reads further up: the view must not follow the end
    bool Sending = false;    ///< the program itself makes the change that the window reports
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
    int Scale = 96; ///< pixels per 1440 twips: resolution times the user's text size
    bool ModalStyle = false;
    bool Placed = false;            ///< has been on the screen
    int Moving = 0;                 ///< above 0: the program itself changes sizes and places
    int Scrolled = 0;               ///< pixels of the inside above the window's upper edge
    std::array<int, 3> ScrollBar{}; ///< as it was set last: height, page, place
    Control* Focus = nullptr;       ///< has the focus when the form is active
    Control* DefaultShown = nullptr;
    std::vector<std::unique_ptr<NativeControl>> Controls;
    std::vector<NativeTimer> Timers;
    std::string Caption;
    int Left = 0, Top = 0, Width = 0, Height = 0;
};

/// How expensive a synchronisation may be.
enum class Thorough {
    No, ///< during work: long text boxes are updated only now and then
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
/// The form that owns or contains this window; nullptr for foreign windows.
NativeForm* FormOfWindow(HWND window);
Control* ControlOfWindow(HWND window);
void MoveToFields(NativeForm& form);
void SetModalStyle(NativeForm& form, bool modal, HWND owner);
void CentreOver(NativeForm& form, HWND owner);
/// The place that centres a window of this size over its owner, or on the main monitor without one;
/// all of it on one monitor.
POINT CentredPlace(HWND owner, SIZE size);
/// Puts a form on the screen for Show and ShowModal.
void BringUp(Form& form, bool modal, HWND owner);
void DestroyForms();
HINSTANCE Instance();

// ---- FormProc.cpp
/// The id of the program's system-menu item: below the system's own ids, a multiple of 16.
constexpr UINT lngMenuItem = 0x0100;
/// Copies a new place or size of the window, set by user or system, into the fields.
void TakeOverPlace(NativeForm& form);
void TakeOverSize(NativeForm& form, int width, int height);

// ---- Measures.cpp
int ToPixels(int twips, int scale);
int ToTwips(int pixels, int scale);
/// Screen positions use the system's resolution on every monitor.
int SystemScale();
int TextScale(int dpi);
SIZE OuterSize(const NativeForm& form, int width, int height, DWORD style, DWORD extended);
HFONT FontFor(int scale, bool bold, bool fixedPitch, bool underlined);
void ForgetFonts();

// ---- ControlWindows.cpp
constexpr int lngListHeight = 3600; ///< twips of a combo box's open list, a part of its height
void CreateControls(NativeForm& form);
RECT PlaceOf(const Control& control, int scale);
/// Stores a control's name as an atom in a window property, for programs that test this one.
void NameWindow(HWND window, const std::string& name);
void UnnameWindow(HWND window);
std::wstring WindowCaption(const Control& control);
void AddToolTip(NativeForm& form, NativeControl& native, const std::string& text);

// ---- Labels.cpp
/// The colours chosen by the program; none in a high-contrast theme.
std::optional<COLORREF> BackColorOf(const Control& control);
std::optional<COLORREF> ForeColorOf(const Control& control);
void PaintLabel(NativeControl& native);
COLORREF BackgroundBehind(const Control& control);

// ---- Appearance.cpp
/// Whether the user has chosen a high-contrast theme.
bool IsHighContrast();
/// Uses a dark title bar when Windows applications are set to dark.
void ColourTitleBar(HWND window);
/// Sets the program's icons in the sizes for this resolution.
void GiveIcons(HWND window, int dpi);

// ---- Sync.cpp
void SyncForm(NativeForm& form, Thorough how);
void SyncAll(Thorough how);
/// Draws the button that Enter presses as the default one.
void ShowDefaultButton(NativeForm& form);
/// Moves the focus to the right control after controls were disabled or hidden.
void SettleFocus(NativeForm& form);
bool CanTakeFocus(const Control& control);

// ---- Scrolling.cpp
bool Scrolls(const NativeForm& form);
void SyncScrollBar(NativeForm& form);
void OnScrollBar(NativeForm& form, WORD what);
void OnWheel(NativeForm& form, int delta);
void ScrollIntoView(NativeForm& form, const NativeControl& native);
/// Makes a resizable window no larger than its monitor.
void FitToMonitor(NativeForm& form);

// ---- SyncLists.cpp, SyncText.cpp
void SyncComboBox(NativeForm& form, NativeControl& native, ComboBox& box);
void SyncListBox(NativeForm& form, NativeControl& native, ListBox& box);
void SyncText(NativeControl& native, TextBox& box, Thorough how);
/// Copies the user's selection in text boxes into the fields.
void CollectSelection(NativeControl& native, TextBox& box);
void CollectText(NativeControl& native, TextBox& box);
/// Gives the window all of a long text, before the user looks into it.
void FillInAll(NativeControl& native);

// ---- LongText.cpp
/// Converts a place in the field's text (bytes) to one in the window's (units), and back.
std::size_t WindowPlace(const NativeControl& native, std::size_t bytes);
std::size_t FieldPlace(const NativeControl& native, std::size_t units);
/// Notes that the user has moved the view.
void NoteScrolling(NativeControl& native);
/// Whether a visible window still lacks lines that it should get in idle time.
bool AnyMissing();
/// Gives the window the last of those lines, some `bytes` of them.
void FillIn(NativeControl& native, std::size_t bytes);
/// Updates the visible part of the window.
void ChangeLongText(NativeControl& native, const std::string& text, bool follow);

// ---- Input.cpp
/// Copies user input that came without a notification into the fields of all forms.
void CollectInput();
/// Runs a handler: collects input before it and updates the windows after it.
void Run(const Handler& handler);
/// Handles a control's command; `code` is its notification.
void OnCommand(Control& control, WORD code);
void ClickControl(Control& control);
/// Whether the user can use the control: shown, enabled, and its form not under a modal one.
bool Usable(const Control& control);
void OnMouseMoved(HWND window);
void OnMouseLeft(HWND window);
/// Whether the current change of focus follows the mouse.
bool FollowsMouse();

// ---- Keys.cpp
/// Handles a key message of a form; true when it is done.
bool HandleKey(MSG& message);
/// Passes a released key to the program's handler. True: the message must go no further.
bool ReportKey(const MSG& message);
/// Whether the message is an Escape key that is to do nothing.
bool IsHeldEscape(const MSG& message);

// ---- MessageLoop.cpp
void Dispatch(MSG& message);
/// Dispatches the messages in the queue, for some milliseconds at most.
void PumpQueue();
/// Runs the message loop while `goOn` returns true and the program is not ending.
void Loop(const std::function<bool()>& goOn);
bool Quitting();

// ---- Modal.cpp
/// The window over which a box or a modal form appears; nullptr when none is visible.
HWND ActiveWindow();
void NoteActive(NativeForm& form);
/// Disables every form but the topmost modal one.
void UpdateEnabledForms();
/// Ends a form's ShowModal, if any, so that it can be hidden.
void EndModal(Form& form);
/// While such an object exists, a system box is open over `Owner`, and the other forms are
/// disabled.
struct BoxOpen {
    /// `safeAnswer` is the button that presses itself when the session ends.
    BoxOpen(bool swallowF10, int safeAnswer);
    ~BoxOpen();
    BoxOpen(const BoxOpen&) = delete;
    BoxOpen& operator=(const BoxOpen&) = delete;
    HWND Owner;
    HWND FocusBefore;
};

/// Presses the safe button of every open box.
void AnswerOpenBoxes();
/// Closes the modal forms as if the user had clicked the cross.
void CloseModalForms();

// ---- SessionEnd.cpp
/// From now on the end of the session waits for current work. Calling it once is enough.
void WatchSession();
/// This form's reason why Windows must not shut down now; "" if it may.
std::string ShutdownObjection(const NativeForm& native);
/// Starts to stop the current work and the program, because the session ends.
void BeginEnding();
/// Called after each pump while the session ends: asks the current work again to stop.
void PressOn();

// ---- FileDialogs.cpp
/// Initialises COM for the interface thread; false when that fails.
bool EnsureCom();

// ---- Accessibility.cpp
void NameForAccessibility(NativeForm& form, NativeControl& native);
void RoleOfLink(HWND window);

} // namespace ui::win32
