// Declarations shared by the files of the fake disk.
#pragma once

#include "fakes/FakePlatform.h"

namespace fake {

/// The drive whose letter begins the text, or nullptr.
Drive* DriveOf(const std::string& root);
/// The target of a full path. Folder links on the way are followed.
struct Place {
    platform::Fault Trouble = platform::Fault::None; ///< why not even the folder was found
    Drive* Disk = nullptr;
    std::shared_ptr<Node> Folder{}; ///< for a stream, the file; null for the root
    std::shared_ptr<Node> Item{};   ///< null: no such name in Folder
    std::string Name{}, Path{};     ///< the real path
};
Place Find(const std::string& path, bool followLast);

Run MakeRun(const void* data, std::size_t size);
void Journal(const std::string& what, const std::string& path, std::uint64_t offset = 0,
             const Run& run = {});
/// A write as it is on the disk, which may have been ordered to be spoilt.
void PutOnDisk(Node& node, std::uint64_t offset, const Run& run);
/// What a file takes on its drive, without its streams.
std::uint64_t SpaceOfFile(const Drive& drive, const Node& file);
/// Gives a new file its record and the room for its name.
platform::Fault TakeRecord(Drive& drive, Node& folder, Node& file);
/// The content left in a file's record: its bytes, followed by remaining bytes of the file before
/// it.
std::string LeftBy(const Node& file);
void FreeRecord(Drive& drive, const Node& folder, const Node& file);
void Add(Node& folder, const std::shared_ptr<Node>& node);
std::shared_ptr<Node> Add(Node& folder, const std::string& name, bool isFolder);
std::uint32_t HardLinksOf(const Node& node);
void Drop(Node& folder, const Node& item);

/// Like Find, for items that must exist.
Place FindItem(const std::string& path, bool followLast);
/// A call on an item that must exist; `work` is done if nothing prevents it.
platform::Fault OnItem(const char* call, const std::string& path, bool followLast,
                       const std::function<platform::Fault(const Place&)>& work);
std::uint32_t AttributesOf(const Node& node);
bool IsLinkAt(const Place& place);
platform::FolderIdentity IdentityOf(const Place& place);
/// Whether an existing file may be changed, or (exclusively) deleted.
platform::Fault MayChange(const Place& place, bool exclusively);
/// Whether names may be created or attributes changed on the drive of this item.
platform::Fault MayWrite(const Drive& drive, const Node& node);
platform::Fault SetLength(const Place& place, std::uint64_t length);

} // namespace fake
