// What paths lead to. Links on the way are not resolved.
#include "posix/Posix.h"

#include "platform/Places.h"
#include "platform/System.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace platform {

using namespace posix;

namespace {
FolderIdentity IdentityOf(const struct stat& known) {
    return {known.st_dev, known.st_ino, 0};
}
} // namespace

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
        openHandles += isLink ? 0 : 1;
        return isLink || flock(opened, LOCK_SH) == 0 ? Fault::None : LastFault();
    });
}

void LetGo(FolderHold& hold) {
    if (hold.Handle == 0)
        return;
    close(static_cast<int>(hold.Handle));
    --openHandles;
    hold.Handle = 0;
}

Fault ReadFolderIdentity(const std::string& path, FolderIdentity& identity) {
    return OnStat(__func__, path, [&](const struct stat& known, int, const char*) {
        identity = IdentityOf(known);
        return Fault::None;
    });
}

Fault ReadRealPath(const std::string& path, std::string& real) {
    return OnStat(__func__, path, [&](const struct stat&, int, const char*) {
        real = FullPath(path);
        return Fault::None;
    });
}

Fault ReadVolumeRoot(const std::string& path, std::string& root) {
    const Fault fault = Start(__func__, path);
    if (!Failed(fault))
        root = path.substr(0, 1) + ":\\";
    return fault;
}

bool FolderTellsCase(const std::string&) {
    return false;
}

} // namespace platform
