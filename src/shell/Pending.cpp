// Provisional definitions, replaced one by one by the modules of this room.
#include "shell/Startup.h"
#include "support/MainWindow.h"
void SetMainLine(MainLine, const std::string&) {}
void RepaintMain() {}
void EnableMenu(bool) {}
void ShowMainProgress(double) {}
void StartUp() {}
