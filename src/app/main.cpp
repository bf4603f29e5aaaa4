// The program's entry point: nothing but wiring.
#include <windows.h>

#include "shell/Startup.h"
#include "ui/Interface.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    // Whatever is loaded from here on comes from the system's folder, not from beside the program.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    StartUp();
    return ui::RunMessageLoop();
}
