// "List files, estimate time" and "Purge files": the checks and questions before a run, and the
// state of the main window during it.
#pragma once

/// 0: "List files, estimate time", 1: "Purge files".
void cmdProcessFiles_Click(int intIndex);
