// Files: opening, reading, writing, attributes, deletion, and what the auxiliary library does.
#include "posix/Posix.h"

#include "platform/Files.h"
#include "platform/System.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace posix {

using namespace platform;

namespace {

std::optional<struct stat> held; ///< by another program

constexpr mode_t bitsWritable = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr std::pair<std::uint32_t, mode_t> bitsOfAttributes[] = {
    {AttributeArchive, S_IXUSR}, {AttributeSystem, S_IXGRP}, {AttributeHidden, S_IXOTH}};

int Descriptor(File file) {
    return static_cast<int>(file.Handle) - 1;
}

bool IsHeld(const struct stat& known) {
    return held && held->st_dev == known.st_dev && held->st_ino == known.st_ino;
}

bool IsReadOnly(const struct stat& known) {
    return !S_ISLNK(known.st_mode) && (known.st_mode & S_IWUSR) == 0;
}

int FlagsOf(Access access) {
    return access == Access::Read            ? O_RDONLY
           : access == Access::ReadPastCache ? O_RDONLY | O_DIRECT
           : access == Access::Change        ? O_RDWR
           : access == Access::CreateNew     ? O_RDWR | O_CREAT | O_EXCL
                                             : O_RDWR | O_CREAT;
}

Fault OpenAt(int folder, const char* name, Access access, File& file) {
    // Without waiting: a pipe would have us wait for its other end.
    const int flags = FlagsOf(access) | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    const int descriptor = openat(folder, name, flags, 0744);
    if (descriptor < 0)
        return LastFault();
    struct stat known;
    const bool writes = access != Access::Read && access != Access::ReadPastCache;
    Fault fault = fstat(descriptor, &known) != 0 ? LastFault() : Fault::None;
    if (!Failed(fault) && (!S_ISREG(known.st_mode) || (writes && IsReadOnly(known))))
        fault = Fault::AccessDenied;
    if (!Failed(fault) && IsHeld(known))
        fault = Fault::SharingViolation;
    if (!Failed(fault) && ((writes && flock(descriptor, LOCK_EX | LOCK_NB) != 0) ||
                           (access == Access::Replace && ftruncate(descriptor, 0) != 0)))
        fault = LastFault();
    if (Failed(fault)) {
        close(descriptor);
        return fault;
    }
    file.Handle = static_cast<std::uintptr_t>(descriptor) + 1;
    ++openHandles;
    return fault;
}

Fault Close(File& file) {
    const int descriptor = Descriptor(file);
    file.Handle = 0;
    --openHandles;
    return close(descriptor) == 0 ? Fault::None : LastFault();
}

/// What a call tells unless it is ordered to fail.
Fault Unless(const char* call, Fault told) {
    const Fault ordered = Start(call, "");
    return Failed(ordered) ? ordered : told;
}

/// A call that tells, done by `work`, 0 or negative, when no order is in the way.
template<typename Work>
Fault OnOpen(const char* call, Work work) {
    const Fault fault = Start(call, "");
    return Failed(fault) || work() >= 0 ? fault : LastFault();
}

} // namespace

std::uint32_t AttributesOf(const struct stat& known, int folder, const char* name) {
    std::uint32_t attributes = 0;
    struct stat target;
    if (S_ISLNK(known.st_mode))
        return AttributeReparsePoint |
               (fstatat(folder, name, &target, 0) == 0 && S_ISDIR(target.st_mode) ? AttributeFolder
                                                                                  : 0u);
    if (IsReadOnly(known))
        attributes |= AttributeReadOnly;
    if (S_ISDIR(known.st_mode))
        return attributes | AttributeFolder;
    for (const auto& [attribute, bit] : bitsOfAttributes)
        attributes |= (known.st_mode & bit) != 0 ? attribute : 0u;
    return attributes;
}

void Hold(const std::string& path) {
    (void)OnStat(nullptr, path, [](const struct stat& known, int, const char*) {
        held = known;
        return Fault::None;
    });
}

void LetGo() {
    held.reset();
}

} // namespace posix

namespace platform {

using namespace posix;

Fault OpenFile(const std::string& path, Access access, File& file) {
    return At(__func__, path,
              [&](int folder, const char* name) { return OpenAt(folder, name, access, file); });
}

Fault ReadBytes(File file, void* data, std::size_t size, std::size_t& read) {
    if (const Fault fault = Start(__func__, ""); Failed(fault))
        return fault;
    std::size_t total = 0;
    // Past the cache a short count is the end, and nothing could be read from there on.
    for (ssize_t count = 1; total < size && count > 0 && total % unbufferedUnit == 0;
         total += static_cast<std::size_t>(count))
        if (count = ::read(Descriptor(file), static_cast<char*>(data) + total, size - total);
            count < 0)
            return errno == EIO ? Fault::ReadFault : LastFault();
    read = total;
    return Fault::None;
}

Fault WriteBytes(File file, const void* data, std::size_t size) {
    const Fault ordered = Start(__func__, "");
    const auto* bytes = static_cast<const char*>(data);
    for (std::size_t left = Failed(ordered) ? size / 2 : size; left > 0;) {
        const ssize_t count = write(Descriptor(file), bytes, left);
        if (count < 0)
            return LastFault();
        bytes += count;
        left -= static_cast<std::size_t>(count);
    }
    return ordered;
}

Fault SeekTo(File file, std::uint64_t position) {
    return OnOpen(__func__, [&] {
        return lseek(Descriptor(file), static_cast<off_t>(position), SEEK_SET) < 0 ? -1 : 0;
    });
}

Fault ReadLength(File file, std::uint64_t& length) {
    OpenFileFacts known{length};
    const Fault fault = ReadOpenFileFacts(file, known);
    length = known.Length;
    return fault;
}

Fault ReadOpenFileFacts(File file, OpenFileFacts& facts) {
    struct stat known;
    const Fault fault = OnOpen(__func__, [&] { return fstat(Descriptor(file), &known); });
    if (!Failed(fault))
        facts = {static_cast<std::uint64_t>(known.st_size),
                 static_cast<std::uint64_t>(known.st_blocks) * 512,
                 static_cast<std::uint32_t>(known.st_nlink)};
    return fault;
}

Fault ReadFileNumber(File file, std::uint64_t& number) {
    struct stat known;
    const Fault fault = OnOpen(__func__, [&] { return fstat(Descriptor(file), &known); });
    number = Failed(fault) ? number : known.st_ino;
    return fault;
}

Fault HasClusters(File /*file*/, bool& /*hasClusters*/) {
    return Unless(__func__, Fault::NotSupported);
}

Fault ListAllocatedRanges(File /*file*/, std::uint64_t /*length*/, std::vector<Range>& /*ranges*/) {
    return Unless(__func__, Fault::NotSupported);
}

Fault ChangeLength(File file, std::uint64_t length) {
    return OnOpen(__func__,
                  [&] { return ftruncate(Descriptor(file), static_cast<off_t>(length)); });
}

Fault FlushBytes(File file) {
    return OnOpen(__func__, [&] { return fdatasync(Descriptor(file)); });
}

Fault CloseFile(File& file) {
    return Unless(__func__, Close(file));
}

Fault ReadAttributes(const std::string& path, std::uint32_t& attributes, std::uint64_t* length) {
    return OnStat(__func__, path, [&](const struct stat& known, int folder, const char* name) {
        attributes = AttributesOf(known, folder, name);
        if (length != nullptr)
            *length = static_cast<std::uint64_t>(known.st_size);
        return Fault::None;
    });
}

Fault WriteAttributes(const std::string& path, std::uint32_t attributes) {
    return OnStat(__func__, path, [&](const struct stat& known, int folder, const char* name) {
        if (S_ISLNK(known.st_mode))
            return Fault::NotSupported;
        mode_t mode = known.st_mode & 0777 & ~bitsWritable;
        mode |= (attributes & AttributeReadOnly) == 0 ? S_IWUSR : 0u;
        for (const auto& [attribute, bit] : bitsOfAttributes)
            if (S_ISREG(known.st_mode))
                mode = (mode & ~bit) | ((attributes & attribute) != 0 ? bit : 0u);
        return fchmodat(folder, name, mode, 0) != 0 ? LastFault() : Fault::None;
    });
}

Fault ReadFileLength(const std::string& path, std::uint64_t& length) {
    return OnStat(__func__, path, [&](const struct stat& known, int, const char*) {
        if (S_ISDIR(known.st_mode))
            return Fault{Fault::AccessDenied};
        length = static_cast<std::uint64_t>(known.st_size);
        return Fault{Fault::None};
    });
}

Fault ReadFileFacts(const std::string& path, FileFacts& facts) {
    return OnStat(__func__, path, [&](const struct stat& known, int folder, const char* name) {
        facts.Attributes = AttributesOf(known, folder, name);
        facts.Length = static_cast<std::uint64_t>(known.st_size);
        facts.HardLinks = static_cast<std::uint32_t>(known.st_nlink);
        facts.IsLink = S_ISLNK(known.st_mode);
        return Fault::None;
    });
}

Fault ListStreams(const std::string& path, std::vector<Stream>& streams) {
    const Fault fault = Start(__func__, path);
    if (!Failed(fault))
        streams.clear();
    return fault;
}

Fault ListNames(const std::string& /*path*/, std::vector<std::string>& /*names*/) {
    return Unless(__func__, Fault::NotSupported); // the disk knows their number only
}

namespace {
/// Of a link to a file only the link goes, or gets another name.
Fault MayRemove(const struct stat& known, int folder, const char* name) {
    const std::uint32_t kept = AttributeFolder | AttributeReadOnly;
    return (AttributesOf(known, folder, name) & kept) != 0 ? Fault::AccessDenied
           : IsHeld(known)                                 ? Fault::SharingViolation
           : S_ISLNK(known.st_mode)                        ? Fault::None
                                                           : Exclusively(folder, name, 0);
}
} // namespace

Fault RemoveFile(const std::string& path) {
    return OnStat(__func__, path, [](const struct stat& known, int folder, const char* name) {
        const Fault fault = MayRemove(known, folder, name);
        return Failed(fault) || unlinkat(folder, name, 0) == 0 ? fault : LastFault();
    });
}

Fault RenameReplacing(const std::string& from, const std::string& to) {
    return OnStat(__func__, from, [&](const struct stat& known, int folder, const char* name) {
        if (const Fault fault = MayRemove(known, folder, name); Failed(fault))
            return fault;
        return At(nullptr, to, [&](int newFolder, const char* newName) {
            struct stat replaced;
            const bool there = fstatat(newFolder, newName, &replaced, AT_SYMLINK_NOFOLLOW) == 0;
            const Fault fault = there ? MayRemove(replaced, newFolder, newName) : Fault::None;
            return Failed(fault) || renameat(folder, name, newFolder, newName) == 0 ? fault
                                                                                    : LastFault();
        });
    });
}

Fault RenameNew(const std::string& from, const std::string& to) {
    return OnStat(__func__, from, [&](const struct stat& known, int folder, const char* name) {
        const bool isFolder = S_ISDIR(known.st_mode);
        const Fault fault = IsHeld(known) ? Fault::SharingViolation
                            : S_ISLNK(known.st_mode)
                                ? Fault::None
                                : Exclusively(folder, name, isFolder ? O_DIRECTORY : 0);
        if (Failed(fault))
            return fault;
        return At(nullptr, to, [&](int newFolder, const char* newName) {
            return renameat2(folder, name, newFolder, newName, RENAME_NOREPLACE) != 0 ? LastFault()
                                                                                      : Fault::None;
        });
    });
}

Fault WriteDates(const std::string& path, std::int64_t seconds) {
    return OnStat(__func__, path, [&](const struct stat&, int folder, const char* name) {
        const timespec dates[] = {{seconds, 0}, {seconds, 0}};
        return utimensat(folder, name, dates, AT_SYMLINK_NOFOLLOW) != 0 ? LastFault() : Fault::None;
    });
}

bool FileExists(const std::string& path) {
    std::uint32_t attributes = 0;
    return !Failed(ReadAttributes(path, attributes)) && (attributes & AttributeFolder) == 0;
}

Fault LoadAuxiliaryLibrary() {
    return Start(__func__, "");
}

namespace {
/// 0, −1, or −4 of a file that is held, as the library answers.
std::int32_t OnChangeable(const char* call, const std::string& path,
                          const std::function<int(int descriptor)>& work) {
    File file;
    const auto open = [&](int folder, const char* name) {
        return OpenAt(folder, name, Access::Change, file);
    };
    if (const Fault fault = At(call, path, open); Failed(fault))
        return fault == Fault::SharingViolation ? -4 : -1;
    const int done = work(Descriptor(file));
    return Failed(Close(file)) || done != 0 ? -1 : 0;
}
} // namespace

std::int32_t AuxiliaryChangeFileSize(const std::string& path, std::int64_t newLength) {
    return OnChangeable(__func__, path, [=](int descriptor) {
        return newLength < -1 ? -1 : newLength < 0 ? 0 : ftruncate(descriptor, newLength);
    });
}

std::int32_t AuxiliaryFlushFile(const std::string& path) {
    return OnChangeable(__func__, path, fdatasync);
}

} // namespace platform
