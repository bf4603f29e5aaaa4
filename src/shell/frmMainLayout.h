// The main window's captions, colours and handlers.
#pragma once

/// Lays out the window, writes its captions and binds every handler; called once, at start-up.
void LoadMainForm();
/// Colours the three message labels white on black.
void ColourMessageLabels();
