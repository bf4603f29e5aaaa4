// "Save report": the whole report in a file.
#pragma once

/// Asks for a file and writes the report of the last run into it: JSON lines when its name ends in
/// ".json" or ".jsonl", else text. The user is told when that fails; nothing is lost then.
void SaveReport();
