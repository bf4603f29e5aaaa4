// The console program's entry point: nothing but wiring.
#include "cli/RunCommand.h"
#include "platform/System.h"
#include "ui/console/Console.h"

// The arguments are read from the system. MinGW's start-up code would put the names of files in the
// place of patterns.
extern "C" int _CRT_glob;
int _CRT_glob = 0;

int main() {
    ui::console::OpenTerminal();
    return RunCommand(platform::CommandLineArguments());
}
