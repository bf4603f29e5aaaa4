// The progress of a command on a drive: current action, elapsed and remaining time, and a bar, in
// the main window and on its taskbar button. One progress covers all phases of the command.
#pragma once

#include "ui/Controls.h"
#include "ui/Interface.h"

#include <functional>
#include <string>

/// Updates the time while one file takes long. Belongs to the main window.
extern ui::Timer tmrRunProgress;

/// Announces the total bytes that the coming phases will write, in all overwrites. Without this,
/// each phase has its own progress.
void PlanRunProgress(double dblBytes);
/// Starts a phase that will write `dblBytes`. `doing` returns the current action ("Filling the free
/// space."), and shareDone the share of the phase that is done, 0 to 1.
void BeginRunProgress(double dblBytes, std::function<std::string()> doing,
                      std::function<double()> shareDone);
/// Ends the phase: hides line and bar, and stops the clock until the next phase.
void EndRunProgress();
/// Ends the command's progress.
void ForgetRunProgress();
/// Shows a box during the work; the time until the answer does not count.
int AskInRun(const std::string& strText, ui::Buttons buttons, ui::Icon icon,
             const std::string& strTitle, const std::string& strQuestion = "");
