// The contract's world over the fake platform.
#include "contract/ContractWorld.h"

#include "fakes/FakePlatform.h"

namespace contract {
namespace {
fake::Node* held;
} // namespace

std::string MakeScratchFolder() {
    fake::Reset();
    fake::AddDrive('T', 4 << 20);
    fake::PutFolder("C:\\scratch");
    return "C:\\scratch";
}

void RemoveScratchFolder() {
    EXPECT_EQ(fake::OpenHandles(), 0);
    fake::Reset();
}

std::string SmallDrive() {
    return "T:\\";
}

void HoldFile(const std::string& path) {
    held = fake::At(path);
    held->Locked = true;
}

void LetGoOfFile() {
    held->Locked = false;
}

bool MakeFolderLink(const std::string& path, const std::string& target) {
    fake::PutFolder(path).LinkTarget = target;
    return true;
}

bool MakeHardLink(const std::string& path, const std::string& other) {
    fake::PutName(other, path);
    return true;
}

std::int64_t LastWritten(const std::string& path) {
    return fake::At(path)->Dates;
}

bool KeepsStreams() {
    return true;
}

} // namespace contract
