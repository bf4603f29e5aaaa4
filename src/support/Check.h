// Checks for mistakes in the program itself.
#pragma once

/// Ends the program with a clear box when `holds` is false, also in a release build: going on could
/// destroy data that nobody chose, or report data as purged that are not. `what` is the violated
/// rule, in words. May be called on any thread.
void Check(bool holds, const char* what);
