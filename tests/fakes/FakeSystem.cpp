// Clock, settings, letters and well-known folders of the fakes. Independent of the fake drives,
// because it is also linked with other file back ends.
#include "fakes/FakePlatform.h"

#include "engine/GroupPace.h"
#include "support/Workers.h"

#include <chrono>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <cwctype>

namespace fake {

double tick, secondsSinceMidnight;
std::string programFolder, applicationData, currentFolder;
platform::NumberFormat numberFormat;
std::vector<std::string> commandLine, linksOpened, holders;

bool blnRealClock;

void ResetMachine() {
    ResetOrders();
    blnRealClock = false;
    intMostWorkers = 1;                                       // the fake drives are for one thread
    const char* const groups = std::getenv("NW_TEST_GROUPS"); // ./test sets it for a second round
    intGroupThreads = groups ? std::atoi(groups) : 0;
    commandLine.clear();
    linksOpened.clear();
    holders.clear();
    tick = 1'000'000;
    secondsSinceMidnight = 43200;
    numberFormat = {};
    programFolder = currentFolder = "C:\\Program Files\\Nullwright";
    applicationData = "C:\\Users\\me\\AppData\\Roaming";
}

void Advance(double milliseconds) {
    tick += milliseconds;
    secondsSinceMidnight = std::fmod(secondsSinceMidnight + milliseconds / 1000, 86400);
}

} // namespace fake

namespace platform {

using namespace fake;

namespace {
std::string CaseOf(const std::string& text, wint_t (*change)(wint_t)) {
    [[maybe_unused]] static const char* const unicode = std::setlocale(LC_CTYPE, "C.UTF-8");
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        wchar_t point = 0;
        char bytes[MB_LEN_MAX];
        std::mbstate_t read = {}, written = {}; // local, so not shared with other threads
        const std::size_t size = std::mbrtowc(&point, &text[i], text.size() - i, &read);
        if (size == 0 || size > MB_LEN_MAX) // a zero, or not UTF-8: as it is
            result += text[i++];
        else {
            const auto changed = static_cast<wchar_t>(change(static_cast<wint_t>(point)));
            result.append(bytes, std::wcrtomb(bytes, changed, &written));
            i += size;
        }
    }
    return result;
}
} // namespace

Fault ReadApplicationDataFolder(std::string& folder) {
    const Fault fault = Begin(__func__, "");
    if (!Failed(fault))
        folder = applicationData;
    return fault;
}

std::string ProgramFolder() {
    return programFolder;
}

std::string SystemFolder() {
    return "C:\\WINDOWS";
}

std::vector<std::string> CommandLineArguments() {
    return commandLine;
}

std::string FullPath(const std::string& path) {
    if (path.starts_with("\\\\"))
        return path;
    const bool isFull = path.size() > 1 && path[1] == ':';
    std::string rest = isFull ? path : currentFolder + "\\" + path, full = rest.substr(0, 2);
    for (std::size_t at = 2; at < rest.size();) {
        const std::size_t end = std::min(rest.find('\\', at), rest.size());
        const std::string part = rest.substr(at, end - at);
        if (part == "..")
            full.resize(std::max<std::size_t>(full.rfind('\\') + 1, 3) - 1);
        else if (!part.empty() && part != ".")
            full += "\\" + part;
        at = end + 1;
    }
    return full.size() > 2 ? full : full + "\\";
}

bool SameButForCase(const std::string& name, const std::string& other) {
    return UpperCase(name) == UpperCase(other);
}

std::uint64_t TickCount() {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const Milliseconds real = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(blnRealClock ? real.count() : tick);
}

double SecondsSinceMidnight() {
    return blnRealClock ? std::fmod(static_cast<double>(TickCount()) / 1000, 86400)
                        : secondsSinceMidnight;
}

std::string DateText() {
    return "11/21/2026";
}

std::string TimeText() {
    char text[40];
    const int seconds = static_cast<int>(secondsSinceMidnight);
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60,
                  seconds % 60);
    return text;
}

std::string IsoTimeText() {
    return "2026-11-21T" + TimeText();
}

NumberFormat RegionalNumberFormat() {
    return numberFormat;
}

std::string LowerCase(const std::string& text) {
    return CaseOf(text, std::towlower);
}

std::string UpperCase(const std::string& text) {
    return CaseOf(text, std::towupper);
}

void EndForMistake(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::abort();
}

Fault ListHolders(const std::string& path, std::vector<std::string>& programs) {
    const Fault fault = Begin(__func__, path);
    if (!Failed(fault))
        programs = holders;
    return fault;
}

Fault OpenLink(const std::string& target) {
    const Fault fault = Begin(__func__, target);
    if (!Failed(fault))
        linksOpened.push_back(target);
    return fault;
}

} // namespace platform
