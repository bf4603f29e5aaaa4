// "Purge disk": a drive's free space first, then every file on it that was not excluded.
#pragma once

/// The command, from the choice of the drive to its end.
void PurgeDiskCommand();
