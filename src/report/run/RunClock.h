// The clock of a run: how long it takes, how much of it is done, what remains. Who shows it gives
// the function that does so.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// Starts the clock. `share` tells the share that is done, 0 to 1, negative when not known; `show`
/// shows what the clock tells.
void BeginClock(std::function<double()> share, std::function<void()> show);
/// Stops the clock; what it told last stays. Nothing when it does not run.
void EndClock();
bool ClockRuns();
/// The time of a pause, and of a question to the user, does not count.
void PauseClock(bool blnPaused);
bool ClockIsPaused();
/// Shows what is new, at most once for each second that the clock can tell.
void RefreshClock();
/// The same at once: something else has changed.
void ShowClock();

/// Milliseconds, pauses left out.
std::uint64_t ClockElapsed();
double ClockShare();
/// "Elapsed: 5 seconds."
std::string ElapsedText();
/// "Remaining: about 2 minutes." once something can be said of it, else "".
std::string RemainingText();
/// A duration of the clock's; whole minutes from an hour on.
std::string ClockText(double dblMilliseconds);

/// Files and bytes that the run is through with, of those that its request expects. The bytes of a
/// file that was not purged are no work any more, neither done nor to be done.
void NoteFileDone(double dblBytes, bool blnPurged);
std::int64_t FilesDone();
/// A file of so many bytes is at work; the engine tells how far it is.
void NoteFileBegun(std::int64_t lngBytes);
/// The share of the current run by the bytes of its files where it writes all of them, else by
/// their number; negative while neither is known.
double ShareOfRun();
