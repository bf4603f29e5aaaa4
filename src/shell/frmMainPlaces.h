// The places of all controls in the main window, by the window's size.
#pragma once

/// Binds the controls in tab order and sets the window's size; called once, at start-up.
void PlaceControls();
/// Places all controls for the current window size: a low window has smaller row distances, and a
/// wide window has longer labels.
void LayOutMain();
/// Hides the labels that are covered by an open panel or a long message.
void HideCovered();
