// Handlers of the main window that belong to the shell itself; bound in frmMainLayout.cpp.
#pragma once

#include "ui/Controls.h"

void cmdTypeOfPurge_Click();
void cmdHelp_Click();
void cmdQuit_Click();
/// Why Windows must not shut down now, "" when it may.
std::string ShutdownObjection();
void lblOnlineDocumentation_Click();
void lblCorvaneSystems_Click();
void Clock2_Tick();
/// The focus follows the mouse.
void Button_MouseOver(ui::Control& control);
/// F10 asks for a stop, whichever window has the focus.
void KeyReleased(int intKeyCode);
/// Colours the three message labels white on black.
void ColourMessageLabels();
