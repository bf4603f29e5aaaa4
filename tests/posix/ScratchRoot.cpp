// Opens paths below the scratch root, and nothing outside it.
#include "posix/ScratchRoot.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace posix {

namespace {
std::string strMounted;
} // namespace

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
    if (!strMounted.empty() && umount2(strMounted.c_str(), MNT_DETACH) != 0)
        std::perror(strMounted.c_str());
    strMounted.clear();
    if (!strScratchRoot.empty())
        std::filesystem::remove_all(strScratchRoot);
    strScratchRoot.clear();
}

bool MountSmallDrive(char letter) {
    // Mounts of this process alone: whatever ends it, none stays behind.
    static const bool blnOwnMounts =
        unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    const std::string place = strScratchRoot + "/" + letter;
    if (!blnOwnMounts || !std::filesystem::create_directory(place) ||
        mount("nullwright", place.c_str(), "tmpfs", 0, "size=16m") != 0)
        return false;
    strMounted = place;
    UseRoot(strScratchRoot); // what was opened before does not see it
    return true;
}

} // namespace posix
