// The clock of a command on a drive: elapsed and remaining time beside the commands, and the share
// done on the taskbar button.
#pragma once

#include "ui/Controls.h"
#include "ui/Interface.h"

#include <functional>
#include <string>

/// Shows the time that passes while one file is at work. Belongs to the main window.
extern ui::Timer tmrRunProgress;

/// shareDone tells the share that is done, 0 to 1; it is asked until EndRunProgress.
void BeginRunProgress(std::function<double()> shareDone);
/// Takes line and share away.
void EndRunProgress();
/// A box in the middle of the work: the time that the user takes for the answer does not count.
int AskInRun(const std::string& strText, ui::Buttons buttons, ui::Icon icon,
             const std::string& strTitle);
