// The progress of a command on a drive: what is done, elapsed and remaining time, and a bar, in the
// main window and on its taskbar button. One for all phases of the command.
#pragma once

#include "ui/Controls.h"
#include "ui/Interface.h"

#include <functional>
#include <string>

/// Shows the time that passes while one file is at work. Belongs to the main window.
extern ui::Timer tmrRunProgress;

/// The phases that come will write so many bytes together, all overwrites counted. Without it a
/// phase stands for itself.
void PlanRunProgress(double dblBytes);
/// A phase begins. It will write so many bytes; `doing` says what is done just now ("Filling the
/// free space."), and shareDone which part of the phase is done, 0 to 1.
void BeginRunProgress(double dblBytes, std::function<std::string()> doing,
                      std::function<double()> shareDone);
/// The phase ends: line and bar go, the clock stands until the next one begins.
void EndRunProgress();
/// The command ends.
void ForgetRunProgress();
/// A box in the middle of the work: the time that the user takes for the answer does not count.
int AskInRun(const std::string& strText, ui::Buttons buttons, ui::Icon icon,
             const std::string& strTitle);
