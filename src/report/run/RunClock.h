// The clock of a run: elapsed time, share done, remaining time. The caller supplies the function
// that displays them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// Starts the clock. `share` returns the share that is done, 0 to 1, or a negative number when
/// unknown; `show` displays the clock's texts.
void BeginClock(std::function<double()> share, std::function<void()> show);
/// Stops the clock; its last texts stay. Does nothing when it is not running.
void EndClock();
bool ClockRuns();
/// Pauses the clock; the time of pauses and of questions to the user does not count.
void PauseClock(bool blnPaused);
bool ClockIsPaused();
/// Updates the display, at most once per second of elapsed time.
void RefreshClock();
/// Updates the display at once, because something else has changed.
void ShowClock();

/// Elapsed milliseconds without pauses.
std::uint64_t ClockElapsed();
double ClockShare();
/// "Elapsed: 5 seconds."
std::string ElapsedText();
/// "Remaining: about 2 minutes."; "" until an estimate is possible.
std::string RemainingText();
/// A duration as text; in whole minutes from one hour on.
std::string ClockText(double dblMilliseconds);

/// Adds a processed file to the files and bytes done. The bytes of a file that was not purged count
/// neither as done nor as remaining.
void NoteFileDone(double dblBytes, bool blnPurged);
std::int64_t FilesDone();
/// Tells that work on a file of this length begins; the engine reports its progress.
void NoteFileBegun(std::int64_t lngBytes);
/// The same for several files that are purged side by side ...
void NoteFilesBegun(double dblBytes, std::int64_t lngFiles);
/// ... and that this is over: each of them is still to be begun on its own, or to be noted as done.
void NoteFilesOverwritten();
/// The share of the current run that is done: by bytes if the run writes whole files, else by
/// number of files; negative while the totals are unknown.
double ShareOfRun();
