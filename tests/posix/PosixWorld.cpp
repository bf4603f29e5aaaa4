// The contract's world over the POSIX back end.
#include "contract/ContractWorld.h"

#include "posix/ScratchRoot.h"

#include <algorithm>
#include <filesystem>

namespace contract {

namespace {
/// Where the scratch folder's files are to the host.
std::filesystem::path HostPath(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return posix::strScratchRoot + "/" + path.erase(1, 1);
}
} // namespace

std::string MakeScratchFolder() {
    posix::MakeScratchRoot();
    std::filesystem::create_directory(HostPath("C:\\scratch"));
    return "C:\\scratch";
}

void RemoveScratchFolder() {
    EXPECT_EQ(posix::openHandles, 0);
    posix::RemoveScratchRoot();
}

std::string SmallDrive() {
    return {};
}

void HoldFile(const std::string& path) {
    posix::Hold(path);
}

void LetGoOfFile() {
    posix::LetGo();
}

bool MakeFolderLink(const std::string& path, const std::string& target) {
    const std::filesystem::path link = HostPath(path);
    std::error_code error;
    std::filesystem::create_directory_symlink(
        std::filesystem::relative(HostPath(target), link.parent_path()), link, error);
    return !error;
}

bool MakeHardLink(const std::string& path, const std::string& other) {
    std::error_code error;
    std::filesystem::create_hard_link(HostPath(path), HostPath(other), error);
    return !error;
}

std::int64_t LastWritten(const std::string& path) {
    struct stat known;
    return stat(HostPath(path).c_str(), &known) == 0 ? known.st_mtime : -1;
}

bool KeepsStreams() {
    return false;
}

} // namespace contract
