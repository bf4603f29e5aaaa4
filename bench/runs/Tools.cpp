// What the benches of whole runs share.
#include "bench/runs/Tools.h"

#include "platform/Files.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {
// Behind a pointer: GCC 12 breaks on a call that it knows never to return, with stack-clash
// protection on.
void (*const volatile endProgram)(int) = std::exit;
} // namespace

void Give(const std::string& what) {
    std::printf("The bench cannot go on: %s\n", what.c_str());
    endProgram(2);
}

void Need(platform::Fault fault, const std::string& what) {
    if (Failed(fault) && fault != platform::Fault::AlreadyExists)
        Give(what + ": " + platform::FaultText(fault));
}

void MakeFile(const std::string& path, const std::string& content) {
    platform::File file;
    Need(platform::OpenFile(path, platform::Access::Replace, file), path);
    Need(platform::WriteBytes(file, content.data(), content.size()), path);
    Need(platform::CloseFile(file), path);
}

std::string Numbered(const std::string& stem, int number) {
    return stem + std::to_string(10000 + number);
}

} // namespace bench
