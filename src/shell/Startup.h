// Start-up of the program, in its fixed order, up to the main window on the screen.
#pragma once

/// What every program made of these rooms begins with: forms, texts and defaults. Shows nothing.
void PrepareProgram();
/// Creates the forms, loads texts, defaults and the saved setup, and shows the main window. The
/// caller then runs the message loop.
void StartUp();

/// Sets the shared state (Session.h) to its start-up values.
void ResetSession();
