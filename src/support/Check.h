// What can only be a mistake in the program itself.
#pragma once

/// Ends the program with one clear box when something does not hold that must, also in a release
/// build: to go on could destroy what nobody chose, or call purged what is not. `what` is the rule,
/// in words. May be called on any thread.
void Check(bool holds, const char* what);
