// Where everything stands in the main window, by the window's size.
#pragma once

/// Binds the controls, in tab order, and sets the window's size; once, at start-up.
void PlaceControls();
/// Puts everything into its place in a window of the present size: the rows come closer in a low
/// one, and the labels are as long as it is wide.
void LayOutMain();
/// Hides the labels that an open panel or a long message lies upon.
void HideCovered();
