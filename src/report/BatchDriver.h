// One listing run or one purge run over a folder, for one file specification.
#pragma once

/// Empties the report window for the operation in the request of currentRun. Call it before the
/// window is shown; otherwise the last run's text would appear under the new caption.
void ResetReportWindow();
/// Runs the operation in the request of currentRun; returns when it is done, stopped or cancelled.
/// The caller shows the report window first.
void ProcessFiles();
/// Switches the window's buttons and texts to the state after a run.
void ShowEndOfReport();
