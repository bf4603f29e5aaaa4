// Opens paths below the scratch root, and nothing outside it.
#include "posix/ScratchRoot.h"

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace posix {

void MakeScratchRoot() {
    RemoveScratchRoot();
    const char* base = std::getenv("NW_TEST_FOLDER");
    strScratchRoot =
        (base != nullptr ? std::filesystem::path(base) : std::filesystem::temp_directory_path()) /
        ("nullwright-posix-" + std::to_string(getpid()));
    std::filesystem::create_directory(strScratchRoot);
    std::filesystem::create_directory(strScratchRoot + "/C");
    UseRoot(strScratchRoot);
}

void RemoveScratchRoot() {
    if (!strScratchRoot.empty())
        std::filesystem::remove_all(strScratchRoot);
    strScratchRoot.clear();
}

} // namespace posix
