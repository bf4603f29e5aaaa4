// One listing run or one purge run over a folder, for one file specification.
#pragma once

/// Empties the report window for the operation that the request of currentRun describes: before it
/// is shown. Otherwise the last run's text would be seen under this one's caption.
void ResetReportWindow();
/// Runs the operation described by the request of currentRun; returns when it is done, stopped or
/// cancelled. The report window is shown by the caller before.
void ProcessFiles();
/// The run is over: the buttons and words of the window say so.
void ShowEndOfReport();
