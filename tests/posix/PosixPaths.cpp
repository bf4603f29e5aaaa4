// Where a path leads below the root folder, and what the system's error numbers mean.
#include "posix/Posix.h"

#include "fakes/FakePlatform.h"
#include "support/Paths.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace posix {

using platform::Fault;

bool blnOrders = true;

namespace {

int fdRoot = -1;

/// Nothing above the root folder can be reached by what is opened so, and nothing by "".
int OpenBelow(const std::string& path, int flags) {
    open_how how = {};
    how.flags = static_cast<std::uint64_t>(flags | O_DIRECTORY | O_CLOEXEC);
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    return static_cast<int>(syscall(SYS_openat2, fdRoot, path.c_str(), &how, sizeof how));
}

} // namespace

std::string PathBelow(const std::string& path) {
    if (DriveIndexOf(path) < 0 ||
        path.find_first_of(std::string("/*?:<>|\"\0", 9), 2) != std::string::npos)
        return {};
    std::string below = platform::FullPath(path).erase(1, 1); // the colon
    below[0] = static_cast<char>(below[0] & ~0x20);
    std::replace(below.begin(), below.end(), '\\', '/');
    return below.size() == 2 ? below.substr(0, 1) : below;
}

void UseRoot(const std::string& folder) {
    if (fdRoot >= 0)
        close(fdRoot);
    fdRoot = open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (fdRoot < 0) {
        std::perror(folder.c_str());
        std::abort();
    }
    fake::blnRealClock = true;
}

Fault Start(const char* call, const std::string& path) {
    return blnOrders && call != nullptr ? fake::Begin(call, path) : Fault::None;
}

Fault LastFault() {
    static constexpr std::pair<int, Fault> faults[] = {
        {ENOENT, Fault::NotFound},         {ENOTDIR, Fault::NotFound},
        {EACCES, Fault::AccessDenied},     {EPERM, Fault::AccessDenied},
        {EISDIR, Fault::AccessDenied},     {ELOOP, Fault::AccessDenied},
        {EXDEV, Fault::AccessDenied}, // a link that leads out of the root folder
        {EAGAIN, Fault::SharingViolation}, {EBUSY, Fault::SharingViolation},
        {ENOSPC, Fault::DiskFull},         {EIO, Fault::WriteFault},
        {EINVAL, Fault::NotSupported},     {EEXIST, Fault::AlreadyExists},
        {ENOTEMPTY, Fault::NotEmpty},      {ENAMETOOLONG, Fault::InvalidName},
        {EILSEQ, Fault::InvalidName}};
    for (const auto& [error, fault] : faults)
        if (error == errno)
            return fault;
    return Fault::Other;
}

int OpenFolder(const std::string& path, int flags) {
    return OpenBelow(PathBelow(path), flags);
}

Fault At(const char* call, const std::string& path, const Work& work) {
    if (const Fault ordered = Start(call, path); Failed(ordered))
        return ordered;
    const std::string below = PathBelow(path);
    const std::size_t end = below.rfind('/');
    const int folder = OpenBelow(below.substr(0, end), O_PATH);
    if (folder < 0)
        return LastFault();
    const Fault fault = work(folder, end == std::string::npos ? "." : below.c_str() + end + 1);
    close(folder);
    return fault;
}

Fault Exclusively(int folder, const char* name, int flags) {
    const int opened = openat(folder, name, flags | O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (opened < 0)
        return LastFault();
    const Fault fault = flock(opened, LOCK_EX | LOCK_NB) != 0 ? LastFault() : Fault::None;
    close(opened);
    return fault;
}

Fault OnStat(const char* call, const std::string& path, const StatWork& work) {
    return At(call, path, [&](int folder, const char* name) {
        struct stat known;
        if (fstatat(folder, name, &known, AT_SYMLINK_NOFOLLOW) != 0)
            return LastFault();
        return work(known, folder, name);
    });
}

} // namespace posix
