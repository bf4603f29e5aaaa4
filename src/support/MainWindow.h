// What the rooms below the shell may show in the main window. Declared here, where every room can
// include it; defined in shell/, which owns the window.
#pragma once

#include <string>

enum class MainLine {
    Status,              ///< the line at the foot of the window: "37% of purge done."
    LargePurgeMessage,   ///< lblLargePurgeMessage
    PurgeFoldersMessage, ///< lblPurgeFoldersMessage
    Subdirectories2,     ///< lblSubdirectories2
    PurgeSpeed,          ///< lblPurgeSpeed, bold when a speed has been measured
    EstimatedTime        ///< lblEstimatedTime
};

/// Writes one of the main window's status lines.
void SetMainLine(MainLine line, const std::string& text);
/// Empties the status line and paints it at once. Costs nothing when it is empty already, so it may
/// be called after every file.
void ClearStatus();
/// Paints the main window at once.
void RepaintMain();
/// Enables or disables the frame of command buttons. Every long operation disables it first and
/// enables it again on every exit path.
void EnableMenu(bool blnEnabled);
/// Which commands the user can give: of the menu, of the setup panel, and "Save report".
struct CommandsInReach {
    bool blnMenu = true, blnSetup = true, blnSave = true;
};
/// Disables all of them. Returns what was enabled, for GiveCommandsBack.
CommandsInReach TakeCommandsAway();
/// Enables what was enabled before, and no more: a command may be under way around this one.
void GiveCommandsBack(const CommandsInReach& before);
/// Shows the share done of a long operation, 0 to 1, on the main window's taskbar button; a
/// negative share removes it.
void ShowMainProgress(double dblFraction);
