// Where a path leads below the root folder, and what the system's error numbers mean.
#include "posix/Posix.h"

#include "fakes/FakePlatform.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace posix {

using platform::Fault;

bool blnOrders = true;

namespace {

int fdRoot = -1;

/// Nothing above the root folder can be reached by what is opened so.
int OpenBelow(const std::string& path, int flags) {
    open_how how = {};
    how.flags = static_cast<std::uint64_t>(flags | O_DIRECTORY | O_CLOEXEC);
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    return static_cast<int>(syscall(SYS_openat2, fdRoot, path.c_str(), &how, sizeof how));
}

} // namespace

std::string PathBelow(const std::string& path) {
    const char letter = path.empty() ? '\0' : static_cast<char>(path[0] & ~0x20);
    if (letter < 'A' || letter > 'Z' || (path.size() > 1 && path[1] != ':') ||
        path.find_first_of(std::string("/*?:<>|\"\0", 9), 2) != std::string::npos)
        return {};
    std::string below(1, letter);
    for (std::size_t at = 2; at < path.size();) {
        const std::size_t end = std::min(path.find('\\', at), path.size());
        const std::string part = path.substr(at, end - at);
        if (part == ".." && below.size() == 1)
            return {};
        if (part == "..")
            below.resize(below.rfind('/'));
        else if (!part.empty() && part != ".")
            below += "/" + part;
        at = end + 1;
    }
    return below;
}

namespace {

/// The name in a folder that differs in case only; "" when there is none.
std::string OtherCase(int folder, const std::string& name) {
    std::string found;
    const int listed = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* list = listed < 0 ? nullptr : fdopendir(listed);
    if (list == nullptr)
        return found;
    const std::string wanted = platform::LowerCase(name);
    while (const dirent* entry = readdir(list))
        if (platform::LowerCase(entry->d_name) == wanted)
            found = entry->d_name;
    closedir(list);
    return found;
}

} // namespace

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
        {ENOENT, Fault::NotFound},        {ENOTDIR, Fault::NotFound},
        {EACCES, Fault::AccessDenied},    {EPERM, Fault::AccessDenied},
        {EISDIR, Fault::AccessDenied},    {ELOOP, Fault::AccessDenied},
        {EXDEV, Fault::AccessDenied}, // a link that leads out of the root folder
        {EBUSY, Fault::SharingViolation}, {ETXTBSY, Fault::SharingViolation},
        {ENOSPC, Fault::DiskFull},        {EDQUOT, Fault::DiskFull},
        {EFBIG, Fault::DiskFull},         {EIO, Fault::WriteFault},
        {ENXIO, Fault::NotReady},         {ENODEV, Fault::NotReady},
        {EROFS, Fault::WriteProtected},   {EEXIST, Fault::AlreadyExists},
        {ENOTEMPTY, Fault::NotEmpty},     {ENAMETOOLONG, Fault::InvalidName},
        {EILSEQ, Fault::InvalidName},     {EOPNOTSUPP, Fault::NotSupported},
        {ENOSYS, Fault::NotSupported}};
    for (const auto& [error, fault] : faults)
        if (error == errno)
            return fault;
    return Fault::Other;
}

int OpenFolder(const std::string& path, int flags) {
    const std::string below = PathBelow(path);
    if (!below.empty())
        return OpenBelow(below, flags);
    errno = EILSEQ;
    return -1;
}

Fault At(const char* call, const std::string& path, bool blnMakes, const Work& work) {
    if (const Fault ordered = Start(call, path); Failed(ordered))
        return ordered;
    const std::string below = PathBelow(path);
    if (below.empty())
        return Fault::InvalidName;
    const std::size_t end = below.rfind('/');
    const int folder = OpenBelow(below.substr(0, end), O_PATH);
    if (folder < 0)
        return LastFault();
    std::string name = end == std::string::npos ? "." : below.substr(end + 1);
    Fault fault = Fault::NotFound;
    if (!blnMakes)
        fault = work(folder, name.c_str());
    if (fault == Fault::NotFound) {
        struct stat known;
        const bool there = fstatat(folder, name.c_str(), &known, AT_SYMLINK_NOFOLLOW) == 0;
        const std::string other = there ? "" : OtherCase(folder, name);
        if (!other.empty())
            name = other;
        if (blnMakes || !other.empty())
            fault = work(folder, name.c_str());
    }
    close(folder);
    return fault;
}

Fault OnStat(const char* call, const std::string& path, const StatWork& work) {
    return At(call, path, false, [&](int folder, const char* name) {
        struct stat known;
        if (fstatat(folder, name, &known, AT_SYMLINK_NOFOLLOW) != 0)
            return LastFault();
        return work(known, folder, name);
    });
}

} // namespace posix
