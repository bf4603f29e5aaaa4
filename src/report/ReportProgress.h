// What the report window and its taskbar button show of a run's progress: files and bytes done,
// elapsed and remaining time. Only what is known.
#pragma once

#include <cstdint>

/// Starts the clock; the totals are those that frmReport expects, 0 when not known.
void BeginReportProgress();
/// Looks at the clock, and shows the progress anew once a second.
void RefreshReportProgress();
/// The totals have become known.
void ShowReportProgress();
/// The time of a pause, and of a question to the user, does not count.
void PauseReportProgress(bool blnPaused);
/// A file was dealt with. The bytes of one that was not purged are no work any more, neither done
/// nor to be done.
void NoteFileDone(double dblBytes, bool blnPurged);
/// So many passes over the current file are done; the engine tells how far the next one is.
void NotePasses(int intDone, int intPasses, std::int64_t lngFileLength);
/// Shows what the whole run took. The bar of a run with files stays, to show how far it came.
void EndReportProgress();
