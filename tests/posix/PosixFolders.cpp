// Folders and drives.
#include "posix/Posix.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace platform {

using namespace posix;

Fault EnumerateFolder(const std::string& folder,
                      const std::function<bool(const FolderEntry&)>& visit) {
    if (const Fault fault = Start(__func__, folder); Failed(fault))
        return fault;
    const int opened = OpenFolder(folder, O_RDONLY);
    DIR* list = opened < 0 ? nullptr : fdopendir(opened);
    if (list == nullptr)
        return LastFault();
    const dirent* found = nullptr;
    while (errno = 0, (found = readdir(list)) != nullptr) {
        FolderEntry entry;
        entry.Name = found->d_name;
        struct stat known;
        if (entry.Name == "." || entry.Name == ".." ||
            fstatat(opened, found->d_name, &known, AT_SYMLINK_NOFOLLOW) != 0) // gone meanwhile
            continue;
        entry.Attributes = AttributesOf(known, opened, found->d_name);
        entry.IsFolder = (entry.Attributes & AttributeFolder) != 0;
        entry.IsLink = S_ISLNK(known.st_mode);
        entry.Length = entry.IsFolder ? 0 : static_cast<std::uint64_t>(known.st_size);
        if (!visit(entry))
            break;
    }
    const Fault fault = found == nullptr && errno != 0 ? LastFault() : Fault::None;
    closedir(list);
    return fault;
}

Fault MakeFolder(const std::string& path) {
    return At(__func__, path, [](int folder, const char* name) {
        return mkdirat(folder, name, 0755) != 0 ? LastFault() : Fault::None;
    });
}

Fault RemoveFolder(const std::string& path) {
    return OnStat(__func__, path, [](const struct stat& known, int folder, const char* name) {
        const bool isLink = S_ISLNK(known.st_mode);
        const Fault fault = isLink ? Fault::None
                            : (known.st_mode & S_IWUSR) == 0
                                ? Fault::AccessDenied
                                : Exclusively(folder, name, O_DIRECTORY);
        const int how = isLink ? 0 : AT_REMOVEDIR;
        return Failed(fault) || unlinkat(folder, name, how) == 0 ? fault : LastFault();
    });
}

bool FolderExists(const std::string& path) {
    const int folder = OpenFolder(path, O_PATH);
    return folder >= 0 && close(folder) == 0;
}

namespace {
/// A call that tells, done on the open folder by `work`, 0 or negative.
template<typename Work>
Fault OnFolder(const char* call, const std::string& path, int flags, Work work) {
    if (const Fault fault = Start(call, path); Failed(fault))
        return fault;
    const int opened = OpenFolder(path, flags);
    if (opened < 0)
        return LastFault();
    const Fault fault = work(opened) != 0 ? LastFault() : Fault::None;
    close(opened);
    return fault;
}
} // namespace

Fault FlushFolder(const std::string& path) {
    return OnFolder(__func__, path, O_RDONLY, fsync);
}

Fault ChangeCurrentFolder(const std::string& folder) {
    return Start(__func__, folder); // bare names mean nothing here
}

// ---- Drives ------------------------------------------------------------------------------------

namespace {
std::string RootOf(const std::string& text) {
    return text.substr(0, 1) + ":\\";
}

template<typename Work>
Fault OnDrive(const char* call, const std::string& root, Work work) {
    return OnFolder(call, RootOf(root), O_PATH, [&](int folder) {
        struct statvfs known;
        const int failed = fstatvfs(folder, &known);
        if (failed == 0)
            work(known);
        return failed;
    });
}
} // namespace

std::string DriveLetters() {
    std::string letters;
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        if (FolderExists(RootOf(std::string(1, letter))))
            letters += letter;
    return letters;
}

DriveType TypeOfDrive(const std::string& root) {
    return FolderExists(RootOf(root)) ? DriveType::Fixed : DriveType::NoRoot;
}

Fault ReadClusterFacts(const std::string& root, ClusterFacts& facts) {
    return OnDrive(__func__, root, [&](const struct statvfs& known) {
        const auto sectors = static_cast<std::uint32_t>(known.f_frsize / 512);
        facts = {512, sectors, known.f_bavail, known.f_blocks};
    });
}

Fault ReadDriveSpace(const std::string& root, std::uint64_t& freeBytes, std::uint64_t& totalBytes,
                     std::uint64_t* freeOnVolume) {
    return OnDrive(__func__, root, [&](const struct statvfs& known) {
        freeBytes = known.f_bavail * known.f_frsize;
        totalBytes = known.f_blocks * known.f_frsize;
        if (freeOnVolume)
            *freeOnVolume = known.f_bfree * known.f_frsize;
    });
}

Fault ReadVolumeFacts(const std::string& root, VolumeFacts& facts) {
    return OnDrive(__func__, root, [&](const struct statvfs& known) {
        facts = {"", "POSIX", (known.f_flag & ST_RDONLY) != 0};
    });
}

Fault ReadDriveNature(const std::string&, DriveNature&) {
    return Fault::NotSupported;
}

Fault ReadRecordCount(const std::string&, std::uint64_t&) {
    return Fault::NotSupported;
}

Fault FlushRecords(const std::string& folder) {
    return OnFolder(__func__, folder, O_RDONLY, syncfs);
}

} // namespace platform
