// The program for the benches of whole runs, on a real Linux disk: its drives are below NW_ROOT.
#include "bench/runs/Tools.h"
#include "posix/ScratchRoot.h"

#include <cstdlib>

void bench::BeginProgram() {
    const char* root = std::getenv("NW_ROOT");
    if (root == nullptr)
        Give("NW_ROOT does not name the folder of the drives");
    posix::UseRoot(root);
    posix::blnOrders = false;
    posix::BeginProgram(1);
}

double bench::StretchOf(const std::function<void()>& work) {
    work();
    return 0;
}
