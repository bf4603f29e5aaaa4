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
    std::string Path; ///< the real path, without the stream
    /// The bytes of the item, or of its stream.
    Content& Data() const { return Stream.empty() ? Item->Data : Item->Streams[Stream]; }
    std::string FullPath() const { return Stream.empty() ? Path : Path + ":" + Stream; }
};
Place Find(const std::string& path, bool followLast);

Run MakeRun(const void* data, std::size_t size);
/// Joins a run to the one before it when that needs no more memory than both; else false.
bool Join(Run& run, const Run& next);
void Journal(const char* what, const std::string& path, std::uint64_t offset = 0,
             const Run& run = {}, const std::string& newPath = "");
std::shared_ptr<Node> Add(Node& folder, const std::string& name, bool isFolder);
void Drop(Node& folder, const Node& item);
/// Keeps the drive's account when a length changes.
void Account(Drive& drive, std::uint64_t oldLength, std::uint64_t newLength);

extern double tick; ///< milliseconds
extern bool libraryLoaded;
/// Counts a call, lets its time pass, and tells the fault it is to have.
platform::Fault Begin(Call kind, const std::string& path);
/// As Find, for what must be there; with the beginning of a call.
Place FindItem(const std::string& path, bool followLast);
Place BeginAt(Call kind, const std::string& path, bool followLast);
std::uint32_t AttributesOf(const Node& node);
bool IsReadOnly(const Node& node);
/// Whether a file that is there may be changed, or (exclusively) deleted.
platform::Fault MayChange(const Place& place, bool exclusively);
platform::Fault SetLength(const Place& place, std::uint64_t length);

} // namespace fake
