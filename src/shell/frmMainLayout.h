// The main window's look.
#pragma once

/// Lays the window out, writes its captions and binds every handler; once, at start-up.
void LoadMainForm();
/// Colours the three message labels white on black.
void ColourMessageLabels();
