// How far a long operation on a drive is: elapsed and remaining time beside the commands, and the
// share done on the taskbar button.
#pragma once

void BeginRunProgress();
/// The share that is done, 0 to 1. The time line changes at most once a second.
void ShowRunProgress(double dblFraction);
/// Takes line and share away.
void EndRunProgress();
