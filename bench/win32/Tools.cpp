#include "bench/win32/Tools.h"

#include "platform/Files.h"

#include <algorithm>
#include <chrono>
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

double Now() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
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
