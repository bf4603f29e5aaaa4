// What paths lead to. Links on the way are not resolved.
#include "posix/Posix.h"

#include "platform/Places.h"

#include <algorithm>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <unistd.h>

namespace posix {

namespace {
std::mutex mutex;                             ///< guards what follows
std::map<int, platform::FolderIdentity> held; ///< by descriptor

platform::FolderIdentity IdentityOf(const struct stat& known) {
    return {known.st_dev, known.st_ino, 0};
}
} // namespace

int HeldFolders() {
    const std::scoped_lock lock(mutex);
    return static_cast<int>(held.size());
}

bool IsHeldFolder(const struct stat& known) {
    const std::scoped_lock lock(mutex);
    return std::any_of(held.begin(), held.end(),
                       [&](const auto& item) { return item.second == IdentityOf(known); });
}

} // namespace posix

namespace platform {

using namespace posix;

Fault HoldFolder(const std::string& path, FolderHold& hold) {
    return OnStat(__func__, path, [&](const struct stat& known, int folder, const char* name) {
        const bool isLink = S_ISLNK(known.st_mode);
        if (!isLink && !S_ISDIR(known.st_mode))
            return Fault::NotFound;
        const int opened =
            isLink ? 0 : openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (opened < 0)
            return LastFault();
        hold = {static_cast<std::uintptr_t>(opened), IdentityOf(known), isLink};
        const std::scoped_lock lock(mutex);
        if (!isLink)
            held[opened] = hold.Identity;
        return Fault::None;
    });
}

void LetGo(FolderHold& hold) {
    if (hold.Handle != 0) {
        const std::scoped_lock lock(mutex);
        held.erase(static_cast<int>(hold.Handle));
        close(static_cast<int>(hold.Handle));
    }
    hold.Handle = 0;
}

Fault ReadFolderIdentity(const std::string& path, FolderIdentity& identity) {
    return OnStat(__func__, path, [&](const struct stat& known, int, const char*) {
        identity = IdentityOf(known);
        return Fault::None;
    });
}

Fault ReadRealPath(const std::string& path, std::string& real) {
    return OnStat(__func__, path, [&](const struct stat&, int, const char* name) {
        std::string below = PathBelow(path);
        if (below.size() > 1)
            below.replace(below.rfind('/') + 1, std::string::npos, name);
        std::replace(below.begin(), below.end(), '/', '\\');
        real = below.insert(1, below.size() > 1 ? ":" : ":\\");
        return Fault::None;
    });
}

Fault ReadVolumeRoot(const std::string& path, std::string& root) {
    const Fault fault = Start(__func__, path);
    if (!Failed(fault))
        root = PathBelow(path).substr(0, 1) + ":\\";
    return fault;
}

bool FolderTellsCase(const std::string&) {
    return false;
}

} // namespace platform
