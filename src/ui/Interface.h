// The program's interface to the window toolkit. All functions are called on the interface thread.
#pragma once

#include "ui/Controls.h"

#include <functional>
#include <string>
#include <vector>

namespace ui {

// ---- Forms -------------------------------------------------------------------------------------

/// Shows a form without waiting; a visible form comes to the front.
void Show(Form& form);
/// Shows a form over the active one, which is disabled meanwhile; returns when it is hidden.
void ShowModal(Form& form);
/// Hides a form; ends its ShowModal.
void Hide(Form& form);
/// Gives a control the keyboard focus, if it can take it.
void SetFocus(Control& control);
/// While held, Escape presses no Cancel button in forms and boxes: an accidental key must not end
/// work that cannot be undone.
void HoldEscape(bool hold);
/// True when the control has the keyboard focus.
bool HasFocus(const Control& control);
/// Brings a form's windows up to date with its fields and paints them at once.
void Repaint(Form& form);
/// Moves a form so that its title bar and most of its area lie on an existing monitor.
void KeepOnScreen(Form& form);
/// Shows the share of work done on the form's taskbar button; a negative fraction removes it.
void ShowTaskbarProgress(Form& form, double fraction, bool paused);

// ---- The message loop --------------------------------------------------------------------------

/// Runs until EndProgram; returns the program's exit code.
int RunMessageLoop();
void EndProgram();
/// True when the program or the user's session is ending. Then no box or modal form is shown,
/// MsgBox returns the answer that changes nothing, and no question should be asked.
bool Ending();
/// Pumps messages and updates the windows. Checks the clock first and does nothing when the last
/// pump was only milliseconds ago, so it may be called in a hot loop.
void DoEvents();
/// Waits while messages are pumped.
void Wait(int milliseconds);
/// `handler` receives the virtual-key code of every key released in any window of the program,
/// before the focused control does (F10 is 121); F1 only in the program's own forms.
void OnKeyReleased(std::function<void(int)> handler);

enum class Effort {
    Brief, ///< takes only milliseconds: runs at once on this thread
    Long   ///< runs on the I/O thread while this thread pumps messages
};

/// Calls `step` until it returns false. `poll` is called on the interface thread after messages
/// were pumped, every few milliseconds (in brief work: after every step). When it returns false, no
/// further step begins. `step` may run on another thread: it may share only atomics with `poll` and
/// handlers, and must not call ui:: functions. When RunSteps returns, no step is running.
void RunSteps(Effort effort, const std::function<bool()>& step, const std::function<bool()>& poll);

// ---- Boxes and dialogs -------------------------------------------------------------------------

enum class Buttons { OK, OKCancel, YesNo, YesNoCancel };
enum class Icon { None, Exclamation, Question, Information };

/// Answers of a message box.
enum Answer : int { AnswerOK = 1, AnswerCancel = 2, AnswerYes = 6, AnswerNo = 7 };

/// Shows a message box over the active form and returns the answer. `question` is the name by which
/// a back end without a person knows what is asked, as it knows a form by its own; "" with OK only.
/// `defaultButton` counts from 1.
int MsgBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title,
           const std::string& question = "", int defaultButton = 1);
/// Shows an error box with the exclamation icon and OK only.
inline void Complain(const std::string& text, const std::string& title = "Error") {
    MsgBox(text, Buttons::OK, Icon::Exclamation, title);
}

enum class Choose { File, Files, NewFile, Folder };
struct FileType {
    std::string Name, Pattern;
};
struct PathQuestion {
    Choose What;
    std::string Title, StartFolder;
    std::vector<FileType> Types{{"All files (*.*)", "*.*"}}; ///< of files only
};
/// The common dialogs for files of one folder, or for a folder. Returns the paths as the system
/// gives them; none when cancelled. The current folder stays. The dialog for a new file does not
/// ask about overwriting, because the program does. With one type, the system may add its extension
/// to a new name; with several, nothing changes the name. `type` receives the position of the type
/// that was chosen.
std::vector<std::string> ChoosePaths(const PathQuestion& question, std::size_t* type = nullptr);

/// False when it was not possible: another program holds the clipboard.
[[nodiscard]] bool PutOnClipboard(const std::string& text);
void Beep();

} // namespace ui
