// A run from its header to its closing lines.
#pragma once

/// Performs the current run, which has begun: header, walk, summary. Returns when it is done,
/// stopped or cancelled.
void PerformRun();
