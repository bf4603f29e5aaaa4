// What the two halves of the fake platform share.
#pragma once

#include "fakes/FakePlatform.h"

namespace fake {

/// Where a path leads. Folder links on the way are followed.
struct Place {
    platform::Fault Trouble = platform::Fault::None; ///< why not even the folder could be reached
    char Letter = 0;
    Drive* Disk = nullptr;
    std::shared_ptr<Node> Folder; ///< that holds the item; null for the root
    std::shared_ptr<Node> Item;   ///< null: no such name in Folder
    std::string Name, Stream;
    std::string Path; ///< the real path
};
Place Find(const std::string& path, bool followLast);

Run MakeRun(const void* data, std::size_t size);
/// Joins a run to the one before it when that needs no more memory than both; else false.
bool Join(Run& run, const Run& next);
void Journal(Did what, const std::string& path, std::uint64_t offset = 0, const Run& run = {},
             const std::string& newPath = "");
std::shared_ptr<Node> Add(Node& folder, const std::string& name, bool isFolder);
void Drop(Node& folder, const Node& item);
/// Keeps the drive's account when a length changes.
void Account(Drive& drive, std::uint64_t oldLength, std::uint64_t newLength);

extern double tick; ///< milliseconds
extern bool libraryLoaded;
/// Counts a call, lets its time pass, and tells the fault it is to have.
platform::Fault Begin(Call kind, const std::string& path);
/// As Find, for what must be there; Ask after a call was counted that may have a fault ordered.
Place FindItem(const std::string& path, bool followLast);
Place Ask(Call kind, const std::string& path, bool followLast);
/// The bytes of a file or stream, and their path in the journal.
Content& DataOf(const Place& place);
std::string PathOf(const Place& place);
std::uint32_t AttributesOf(const Node& node);
bool IsReadOnly(const Node& node);
/// Whether a file that is there may be changed, or (exclusively) deleted.
platform::Fault MayChange(const Place& place, bool exclusively);
platform::Fault SetLength(Drive& drive, Content& data, const std::string& path,
                          std::uint64_t length);

} // namespace fake
