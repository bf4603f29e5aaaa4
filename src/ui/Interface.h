// What the program asks of the window toolkit. All of it is called on the interface thread.
#pragma once

#include "ui/Controls.h"

#include <functional>
#include <string>
#include <vector>

namespace ui {

// ---- Forms -------------------------------------------------------------------------------------

/// Shows a form without waiting; a form that is shown already comes to the front.
void Show(Form& form);
/// Shows a form over the active one, which is disabled meanwhile; returns when it is hidden.
void ShowModal(Form& form);
/// Hides a form; ends its ShowModal.
void Hide(Form& form);
/// Gives a control the keyboard focus, if it can take it.
void SetFocus(Control& control);
/// While it is held, Escape presses no Cancel button, in forms and in boxes: no stray key ends work
/// that cannot be taken back.
void HoldEscape(bool hold);
/// True when the control has the keyboard focus.
bool HasFocus(const Control& control);
/// Brings a form's windows up to date with its fields and paints them at once.
void Repaint(Form& form);
/// Moves a form so that its title bar and most of it lie on a monitor that exists.
void KeepOnScreen(Form& form);
/// Shows a share of work on the form's taskbar button; a negative fraction takes it away.
void ShowTaskbarProgress(Form& form, double fraction, bool paused);

// ---- The message loop --------------------------------------------------------------------------

/// Runs until EndProgram; returns the program's exit code.
int RunMessageLoop();
void EndProgram();
/// The program or the user's session is ending: no box or modal form is shown any more, MsgBox
/// answers with what changes nothing, and nobody should be asked whether to go on.
bool Ending();
/// Yields: lets the user's clicks and keys through and brings the windows up to date. Looks at the
/// clock first and does nothing when the last pump was only some milliseconds ago, so that it may
/// stand in a hot loop.
void DoEvents();
/// Waits while the interface stays alive.
void Wait(int milliseconds);
/// `handler` gets the virtual-key code of every key released in any window of the program, before
/// the control that has the focus (F10 is 121); F1 only in the program's own forms.
void OnKeyReleased(std::function<void(int)> handler);

enum class Effort {
    Brief, ///< sure to be over in some milliseconds: done at once on this thread
    Long   ///< done on the I/O thread while this thread pumps messages
};

/// Calls `step` until it returns false. `poll` is called on the interface thread, after messages
/// were pumped, every few milliseconds (in brief work: after every step), and ends the work when
/// it returns false: no further step begins then. `step` may run on another thread: it must touch
/// nothing that `poll` or a handler touches but atomics, and must not call ui:: functions. No step
/// is under way any more when RunSteps returns.
void RunSteps(Effort effort, const std::function<bool()>& step, const std::function<bool()>& poll);

// ---- Boxes and dialogs -------------------------------------------------------------------------

enum class Buttons { OK, OKCancel, YesNo, YesNoCancel };
enum class Icon { None, Exclamation, Question, Information };

/// Answers of a message box.
enum Answer : int { AnswerOK = 1, AnswerCancel = 2, AnswerYes = 6, AnswerNo = 7 };

/// Shows a message box over the active form and returns the answer. `defaultButton` counts from 1.
int MsgBox(const std::string& text, Buttons buttons, Icon icon, const std::string& title,
           int defaultButton = 1);
/// The box that tells what is wrong: the exclamation icon, and OK alone.
inline void Complain(const std::string& text, const std::string& title = "Error") {
    MsgBox(text, Buttons::OK, Icon::Exclamation, title);
}

/// The common file dialogs, with one filter ("All files (*.*)", "*.*"). False: cancelled, and
/// `path` is untouched. The dialogs do not change the current folder, and the save dialog does not
/// ask about overwriting: that question is the program's own.
bool OpenFileDialog(const std::string& title, const std::string& filterName,
                    const std::string& filterPattern, const std::string& startFolder,
                    std::string& path);
/// The same for any number of files of one folder.
bool OpenFilesDialog(const std::string& title, const std::string& filterName,
                     const std::string& filterPattern, const std::string& startFolder,
                     std::vector<std::string>& paths);
bool SaveFileDialog(const std::string& title, const std::string& filterName,
                    const std::string& filterPattern, const std::string& startFolder,
                    std::string& path);
/// The folder browser; the path as the system gives it, "" when cancelled.
std::string BrowseFolderDialog(const std::string& title, const std::string& startFolder);

void PutOnClipboard(const std::string& text);
void Beep();

} // namespace ui
