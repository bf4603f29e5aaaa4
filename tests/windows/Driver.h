// Drives the real program through its real windows: finds windows and controls by caption or name,
// clicks, types, reads, answers boxes and dialogs, and waits for conditions, never for a time.
//
// Nothing outside the scratch folder is ever chosen in a dialog, and no drive but NW_SMALL_DRIVE
// ("T:\"), where that is set, and to measure its speed that of the scratch folder: all else is
// refused here, whatever a test asks for.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>
#include <windows.h>

namespace driver {

constexpr int patience = 15000; ///< milliseconds until a condition is given up

/// Waits until the condition holds; false when it never did.
bool WaitUntil(const std::function<bool()>& condition);

/// The only folder whose files may be touched, without a trailing backslash.
extern std::string scratch;

/// Starts the program (NW_PROGRAM), with paths of the scratch folder or of NW_SMALL_DRIVE as items,
/// and waits for its main window.
HWND StartProgram(const std::vector<std::string>& items = {});
/// What Explorer does with a file: the usual, or the program's verb of a class of items; with a
/// link in "Send to" and the files that are sent. Waits for the main window of the program that
/// comes of it.
HWND StartByShell(const std::string& file, const wchar_t* itemClass = nullptr,
                  const std::string& parameters = "");
/// Waits for the program to end by itself; STILL_ACTIVE when it does not.
int WaitForEnd();
/// Ends the program by force if it still runs.
void KillProgram();
/// Ends it as Windows does at the end of a session: asks all its windows, tells them, and takes the
/// process away when the last one has returned.
void EndSession();

/// A visible top-level window of the program with this caption; waits for it. nullptr: none came,
/// and the test has failed.
HWND Window(const std::string& caption);
/// A control by the name that it has in the code ("cmdQuit", "cmdLargePurge(1)"), visible or not.
HWND Named(HWND form, const std::string& name);
std::string NameOf(HWND control);
std::string TextOf(HWND window);
/// Visible and enabled, as are all windows around it.
bool IsUsable(HWND control);
bool IsChecked(HWND button);
/// Waits for a control to have this text, to be usable, to have the focus; for a window to go.
void Expect(HWND form, const std::string& name, const std::string& text);
void ExpectUsable(HWND form, const std::string& name);
void ExpectFocus(HWND form, const std::string& name);
void ExpectGone(HWND form);
/// All windows of the program with their texts, for failure messages.
std::string Describe();

// What a person does. Each fails the test when a person could not do it.

/// Presses a button, check box or option button; does not wait for what comes of it.
void Click(HWND form, const std::string& name);
/// Drops paths of the scratch folder or of NW_SMALL_DRIVE onto a window, as a file manager does.
/// NW_DROP: the command line that does so, given the window's title and the paths; without one, the
/// program is started anew with the paths as items. Returns the window, which takes them later.
HWND Drop(HWND form, const std::vector<std::string>& paths);
void Type(HWND edit, const std::string& text);
/// Chooses the item that begins so; in a list of multiple choice lets it go if it was chosen.
void Choose(HWND form, const std::string& comboOrList, const std::string& item);
/// Key strokes into the window that has the focus, which is the form's or that of a child of it.
void PressKey(HWND form, BYTE virtualKey, BYTE held = 0);
/// The control with the focus, nullptr for none.
HWND Focused(HWND form);
/// The cross in the title bar.
void CloseByCross(HWND form);

/// Waits for a message box with this title, checks its text (unless empty) and presses a button
/// (IDOK, IDCANCEL, IDYES, IDNO). Returns when the box is gone.
void AnswerBox(const std::string& title, const std::string& text, int button);
/// Waits for a common dialog (open, save, folder), names the path in it, goes down in the box of
/// types to this one (unless empty) and accepts.
void AnswerDialog(const std::string& title, const std::string& path, const std::string& type = "");

} // namespace driver
