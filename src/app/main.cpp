// The program's entry point: nothing but wiring.
#include <windows.h>

#include "shell/Startup.h"
#include "ui/Interface.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    StartUp();
    return ui::RunMessageLoop();
}
