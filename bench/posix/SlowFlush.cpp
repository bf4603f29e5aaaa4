// nullwright_slowflush BACKING MOUNTPOINT MILLISECONDS: a FUSE file system for the benches. It
// shows the folder BACKING as it is, but a flush takes so long, whatever the disk does, and flushes
// of several files wait side by side, as on a disk with a queue. Runs until it is unmounted.
#define FUSE_USE_VERSION 312

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fuse3/fuse.h>
#include <string>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>

namespace {

int fdBacking = -1;
std::chrono::milliseconds flushTime;

/// A path below the backing folder.
const char* Below(const char* path) {
    return path[1] == '\0' ? "." : path + 1;
}

/// What FUSE wants: 0 or more, or the error's number, negative.
template<typename Number>
Number Told(Number outcome) {
    return outcome < 0 ? static_cast<Number>(-errno) : outcome;
}

int Descriptor(const fuse_file_info* file) {
    return static_cast<int>(file->fh);
}

int ReadFacts(const char* path, struct stat* facts, fuse_file_info*) {
    return Told(fstatat(fdBacking, Below(path), facts, AT_SYMLINK_NOFOLLOW));
}

int Open(const char* path, fuse_file_info* file) {
    const int opened = openat(fdBacking, Below(path), (file->flags & ~O_CREAT) | O_CLOEXEC);
    file->fh = static_cast<std::uint64_t>(opened);
    return opened < 0 ? -errno : 0;
}

int Create(const char* path, mode_t mode, fuse_file_info* file) {
    const int opened = openat(fdBacking, Below(path), file->flags | O_CREAT | O_CLOEXEC, mode);
    file->fh = static_cast<std::uint64_t>(opened);
    return opened < 0 ? -errno : 0;
}

int Read(const char*, char* bytes, std::size_t size, off_t at, fuse_file_info* file) {
    return static_cast<int>(Told(pread(Descriptor(file), bytes, size, at)));
}

int Write(const char*, const char* bytes, std::size_t size, off_t at, fuse_file_info* file) {
    return static_cast<int>(Told(pwrite(Descriptor(file), bytes, size, at)));
}

int Flush(const char*, int, fuse_file_info*) {
    std::this_thread::sleep_for(flushTime);
    return 0;
}

int Close(const char*, fuse_file_info* file) {
    return Told(close(Descriptor(file)));
}

int Remove(const char* path) {
    return Told(unlinkat(fdBacking, Below(path), 0));
}

int MakeFolder(const char* path, mode_t mode) {
    return Told(mkdirat(fdBacking, Below(path), mode));
}

int RemoveFolder(const char* path) {
    return Told(unlinkat(fdBacking, Below(path), AT_REMOVEDIR));
}

int Rename(const char* from, const char* to, unsigned flags) {
    return flags != 0 ? -EINVAL : Told(renameat(fdBacking, Below(from), fdBacking, Below(to)));
}

int Cut(const char* path, off_t length, fuse_file_info* file) {
    if (file != nullptr)
        return Told(ftruncate(Descriptor(file), length));
    const int opened = openat(fdBacking, Below(path), O_WRONLY | O_CLOEXEC);
    const int outcome = opened < 0 ? -errno : Told(ftruncate(opened, length));
    close(opened);
    return outcome;
}

int ChangeMode(const char* path, mode_t mode, fuse_file_info*) {
    return Told(fchmodat(fdBacking, Below(path), mode, 0));
}

int ReadSpace(const char*, struct statvfs* facts) {
    return Told(fstatvfs(fdBacking, facts));
}

int List(const char* path, void* buffer, fuse_fill_dir_t add, off_t, fuse_file_info*,
         fuse_readdir_flags) {
    const int opened = openat(fdBacking, Below(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* list = opened < 0 ? nullptr : fdopendir(opened);
    if (list == nullptr)
        return -errno;
    while (const dirent* entry = readdir(list))
        add(buffer, entry->d_name, nullptr, 0, fuse_fill_dir_flags{});
    closedir(list);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::printf("arguments: BACKING MOUNTPOINT MILLISECONDS\n");
        return 2;
    }
    fdBacking = open(argv[1], O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fdBacking < 0) {
        std::perror(argv[1]);
        return 2;
    }
    flushTime = std::chrono::milliseconds(std::atoi(argv[3]));
    fuse_operations operations = {};
    operations.getattr = ReadFacts;
    operations.open = Open;
    operations.create = Create;
    operations.read = Read;
    operations.write = Write;
    operations.fsync = Flush;
    operations.release = Close;
    operations.unlink = Remove;
    operations.mkdir = MakeFolder;
    operations.rmdir = RemoveFolder;
    operations.rename = Rename;
    operations.truncate = Cut;
    operations.chmod = ChangeMode;
    operations.statfs = ReadSpace;
    operations.readdir = List;
    // As many flushes at once as anybody may ask for.
    std::string arguments[] = {argv[0], "-f", "-o", "max_threads=64,max_idle_threads=64", argv[2]};
    char* pointers[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(),
                        arguments[3].data(), arguments[4].data(), nullptr};
    return fuse_main(5, pointers, &operations, nullptr);
}
