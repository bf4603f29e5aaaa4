// "Save report": the whole report in a file.
#pragma once

/// Asks for a file and writes the report of the last run into it: as JSON lines when its name ends
/// in ".json" or ".jsonl", else as text. A failure is shown to the user and loses no data.
void SaveReport();
