// The platform calls over the fake drives, and the faults that tests order.
#include "fakes/FakePlatform.h"

#include "fakes/FakeDisk.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <locale.h>
#include <utility>
#include <wctype.h>

namespace fake {

using platform::Fault;

double millisecondsPerCall, secondsSinceMidnight;
std::string programFolder, applicationData, currentFolder;
platform::NumberFormat numberFormat;
std::vector<std::string> commandLine, linksOpened;
Fault auxiliaryLibrary;

namespace {

struct Handle {
    std::shared_ptr<Node> Item;
    Content* Data = nullptr;
    std::string Path;
    char Letter = 0;
    std::uint64_t Position = 0;
    platform::Access Mode = platform::Access::Read;
};

constexpr std::size_t numCalls = static_cast<std::size_t>(Call::AuxiliaryFlush) + 1;
std::map<std::uintptr_t, Handle> handles;
std::uintptr_t nextHandle;
std::array<std::int64_t, numCalls> made;
struct {
    std::int64_t Left = 0; ///< calls until it is time
    Fault What = Fault::None;
    Call Kind = Call::Any;
    bool ForEver = false, Done = false;
} order;
std::vector<std::pair<Call, std::function<Fault(const std::string&)>>> hooks;

Handle* HandleOf(platform::File file) {
    const auto found = handles.find(file.Handle);
    if (found == handles.end()) {
        std::fprintf(stderr, "A file was used that is not open.\n");
        std::abort();
    }
    return &found->second;
}

/// NotReady when the medium under an open file is gone.
Fault Ready(const Handle& handle) {
    const auto drive = drives.find(handle.Letter);
    return drive == drives.end() || !drive->second.MediaPresent ? Fault::NotReady : Fault::None;
}

Fault Ask(Call kind, const Handle& handle) {
    const Fault fault = Begin(kind, handle.Path);
    return Failed(fault) ? fault : Ready(handle);
}

void Spend(const Drive& drive, std::uint64_t bytes) {
    if (drive.BytesPerSecond > 0)
        Advance(static_cast<double>(bytes) * 1000 / drive.BytesPerSecond);
}

} // namespace

double tick;
bool libraryLoaded;

/// Counts a call, lets its time pass, and tells the fault it is to have.
Fault Begin(Call kind, const std::string& path) {
    ++made[0];
    ++made[static_cast<std::size_t>(kind)];
    Advance(millisecondsPerCall);
    for (std::size_t i = 0; i < hooks.size(); ++i)
        if (hooks[i].first == kind || hooks[i].first == Call::Any) {
            const auto hook = hooks[i].second;
            const Fault fault = hook(path);
            if (Failed(fault))
                return fault;
        }
    if (order.Left > 0 && (order.Kind == Call::Any || order.Kind == kind) && --order.Left == 0) {
        order.Done = true;
        if (order.ForEver)
            order.Left = 1;
        return order.What;
    }
    return Fault::None;
}

bool IsReadOnly(const Node& node) {
    return (node.Attributes & platform::AttributeReadOnly) != 0;
}

std::uint32_t AttributesOf(const Node& node) {
    return node.Attributes | (node.Folder ? platform::AttributeFolder : 0u) |
           (node.LinkTarget.empty() ? 0u : platform::AttributeReparsePoint);
}

Fault MayChange(const Place& place, bool exclusively) {
    if (place.Disk->ReadOnly)
        return Fault::WriteProtected;
    if (place.Item->Folder || IsReadOnly(*place.Item) || place.Item->Denied)
        return Fault::AccessDenied;
    if (place.Item->Locked || place.Item->Open || (exclusively && place.Item->Handles > 0))
        return Fault::SharingViolation;
    return Fault::None;
}

Fault SetLength(Drive& drive, Content& data, const std::string& path, std::uint64_t length) {
    const std::uint64_t cluster = drive.Cluster(), now = data.Length();
    const std::uint64_t allocated = (now + cluster - 1) / cluster * cluster;
    if (length > allocated && length - allocated > drive.Free())
        return Fault::DiskFull;
    if (length != now)
        Journal(Did::Length, path, length);
    Account(drive, now, length);
    data.Resize(length);
    return Fault::None;
}

Place FindItem(const std::string& path, bool followLast) {
    Place place = Find(path, followLast);
    if (!Failed(place.Trouble) && !place.Item)
        place.Trouble = Fault::NotFound;
    if (!Failed(place.Trouble) && !place.Stream.empty() &&
        place.Item->Streams.count(place.Stream) == 0)
        place.Trouble = Fault::NotFound;
    return place;
}

Content& DataOf(const Place& place) {
    return place.Stream.empty() ? place.Item->Data : place.Item->Streams[place.Stream];
}

std::string PathOf(const Place& place) {
    return place.Path + (place.Stream.empty() ? "" : ":" + place.Stream);
}

Place Ask(Call kind, const std::string& path, bool followLast) {
    Place place;
    place.Trouble = Begin(kind, path);
    return Failed(place.Trouble) ? place : FindItem(path, followLast);
}

void Reset() {
    drives.clear();
    handles.clear();
    hooks.clear();
    journal.clear();
    made.fill(0);
    order = {};
    commandLine.clear();
    linksOpened.clear();
    nextHandle = 1;
    libraryLoaded = false;
    auxiliaryLibrary = Fault::None;
    millisecondsPerCall = 0;
    tick = 1'000'000;
    secondsSinceMidnight = 43200;
    numberFormat = {};
    programFolder = currentFolder = "C:\\Program Files\\Nullwright";
    applicationData = "C:\\Users\\me\\AppData\\Roaming";
    AddDrive('C', 64ULL << 30);
    PutFolder(applicationData);
}

int OpenHandles() {
    return static_cast<int>(handles.size());
}

void FailNth(std::int64_t n, Fault fault, Call kind) {
    order = {n, fault, kind, false, false};
}

void FailFrom(std::int64_t n, Fault fault, Call kind) {
    order = {n, fault, kind, true, false};
}

bool HasFailed() {
    return order.Done;
}

std::int64_t CallsMade(Call kind) {
    return made[static_cast<std::size_t>(kind)];
}

void OnCall(Call kind, std::function<Fault(const std::string&)> hook) {
    hooks.emplace_back(kind, std::move(hook));
}

void Advance(double milliseconds) {
    tick += milliseconds;
    secondsSinceMidnight = std::fmod(secondsSinceMidnight + milliseconds / 1000, 86400);
}

} // namespace fake

namespace platform {

using namespace fake;

// ---- Files -------------------------------------------------------------------------------------

Fault OpenFile(const std::string& path, Access access, File& file) {
    if (const Fault fault = Begin(Call::OpenFile, path); Failed(fault))
        return fault;
    Place place = Find(path, true);
    if (Failed(place.Trouble))
        return place.Trouble;
    const bool changes = access != Access::Read;
    const bool makes = access == Access::CreateNew || access == Access::Replace;
    if (place.Item && (place.Item->Folder || place.Item->Denied))
        return place.Item->Folder && access == Access::CreateNew ? Fault::AlreadyExists
                                                                 : Fault::AccessDenied;
    if (!place.Item || (!place.Stream.empty() && place.Item->Streams.count(place.Stream) == 0)) {
        if (!makes)
            return Fault::NotFound;
        if (place.Disk->ReadOnly)
            return Fault::WriteProtected;
        if (place.Folder->Denied)
            return Fault::AccessDenied;
        if (!place.Item)
            place.Item = Add(*place.Folder, place.Name, false);
        place.Item->Attributes |= AttributeArchive;
        if (!place.Stream.empty())
            place.Item->Streams[place.Stream];
        Journal(Did::Create, place.Path);
    } else if (access == Access::CreateNew) {
        return Fault::AlreadyExists;
    } else if (changes) {
        if (const Fault fault = MayChange(place, false); Failed(fault))
            return fault;
    } else if (place.Item->Locked) {
        return Fault::SharingViolation;
    }
    Node& item = *place.Item;
    Content& data = DataOf(place);
    if (access == Access::Replace && SetLength(*place.Disk, data, place.Path, 0) != Fault::None)
        return Fault::Other;
    ++item.Handles;
    item.Open = item.Open || changes;
    file.Handle = nextHandle++;
    handles[file.Handle] = {place.Item, &data, PathOf(place), place.Letter, 0, access};
    return Fault::None;
}

Fault ReadBytes(File file, void* data, std::size_t size, std::size_t& read) {
    Handle& handle = *HandleOf(file);
    if (const Fault fault = Ask(Call::Read, handle); Failed(fault))
        return fault;
    const std::string bytes = handle.Data->Read(handle.Position, size);
    std::memcpy(data, bytes.data(), bytes.size());
    read = bytes.size();
    handle.Position += read;
    return Fault::None;
}

Fault WriteBytes(File file, const void* data, std::size_t size) {
    Handle& handle = *HandleOf(file);
    Fault fault = Begin(Call::Write, handle.Path);
    std::uint64_t count = Failed(fault) ? size / 2 : size;
    if (const Fault gone = Ready(handle); Failed(gone))
        return gone;
    if (handle.Mode == Access::Read)
        return Fault::AccessDenied;
    Drive& drive = drives.at(handle.Letter);
    const std::uint64_t cluster = drive.Cluster(), length = handle.Data->Length();
    const std::uint64_t room = (length + cluster - 1) / cluster * cluster + drive.Free();
    if (handle.Position + count > room) {
        count = room > handle.Position ? room - handle.Position : 0;
        fault = Failed(fault) ? fault : Fault::DiskFull;
    }
    if (count > 0) {
        const Run run = MakeRun(data, count);
        Journal(Did::Write, handle.Path, handle.Position, run);
        handle.Data->Write(handle.Position, run);
        handle.Position += count;
        Account(drive, length, handle.Data->Length());
        Spend(drive, count);
    }
    return fault;
}

Fault SeekTo(File file, std::uint64_t position) {
    Handle& handle = *HandleOf(file);
    const Fault fault = Begin(Call::Seek, handle.Path);
    if (!Failed(fault))
        handle.Position = position;
    return fault;
}

Fault ReadLength(File file, std::uint64_t& length) {
    const Handle& handle = *HandleOf(file);
    const Fault fault = Begin(Call::ReadLength, handle.Path);
    if (!Failed(fault))
        length = handle.Data->Length();
    return fault;
}

Fault ReadHardLinks(File file, std::uint32_t& hardLinks) {
    const Handle& handle = *HandleOf(file);
    const Fault fault = Begin(Call::ReadFileFacts, handle.Path);
    if (!Failed(fault))
        hardLinks = handle.Item->HardLinks;
    return fault;
}

Fault ChangeLength(File file, std::uint64_t length) {
    const Handle& handle = *HandleOf(file);
    if (const Fault fault = Ask(Call::ChangeLength, handle); Failed(fault))
        return fault;
    if (handle.Mode == Access::Read)
        return Fault::AccessDenied;
    return SetLength(drives.at(handle.Letter), *handle.Data, handle.Path, length);
}

Fault FlushBytes(File file) {
    const Handle& handle = *HandleOf(file);
    if (const Fault fault = Ask(Call::Flush, handle); Failed(fault))
        return fault;
    Journal(Did::Flush, handle.Path);
    return Fault::None;
}

Fault CloseFile(File& file) {
    Handle& handle = *HandleOf(file);
    const std::shared_ptr<Node> item = handle.Item;
    const std::string path = handle.Path;
    if (handle.Mode != Access::Read)
        item->Open = false;
    --item->Handles;
    handles.erase(file.Handle);
    file.Handle = 0;
    return Begin(Call::Close, path);
}

Fault ReadAttributes(const std::string& path, std::uint32_t& attributes) {
    const Place place = Ask(Call::ReadAttributes, path, false);
    if (!Failed(place.Trouble))
        attributes = AttributesOf(*place.Item);
    return place.Trouble;
}

Fault WriteAttributes(const std::string& path, std::uint32_t attributes) {
    const Place place = Ask(Call::WriteAttributes, path, false);
    if (Failed(place.Trouble))
        return place.Trouble;
    if (place.Disk->ReadOnly)
        return Fault::WriteProtected;
    if (place.Item->Denied)
        return Fault::AccessDenied;
    constexpr std::uint32_t settable =
        AttributeReadOnly | AttributeHidden | AttributeSystem | AttributeArchive | AttributeOffline;
    place.Item->Attributes = (place.Item->Attributes & ~settable) | (attributes & settable);
    Journal(Did::Attributes, place.Path, place.Item->Attributes);
    return Fault::None;
}

Fault ReadFileLength(const std::string& path, std::uint64_t& length) {
    const Place place = Ask(Call::ReadFileLength, path, false);
    if (Failed(place.Trouble))
        return place.Trouble;
    if (place.Item->Folder)
        return Fault::AccessDenied;
    length = DataOf(place).Length();
    return Fault::None;
}

Fault ReadFileFacts(const std::string& path, FileFacts& facts) {
    const Place place = Ask(Call::ReadFileFacts, path, false);
    if (!Failed(place.Trouble))
        facts = {AttributesOf(*place.Item), place.Item->Data.Length(), place.Item->HardLinks,
                 !place.Item->LinkTarget.empty()};
    return place.Trouble;
}

Fault ListStreams(const std::string& path, std::vector<Stream>& streams) {
    const Place place = Ask(Call::ListStreams, path, true);
    if (Failed(place.Trouble))
        return place.Trouble;
    streams.clear();
    for (const auto& [name, data] : place.Item->Streams)
        streams.push_back({path + ":" + name, data.Length()});
    return Fault::None;
}

Fault RemoveFile(const std::string& path) {
    const Place place = Ask(Call::RemoveFile, path, false);
    if (Failed(place.Trouble))
        return place.Trouble;
    if (const Fault fault = MayChange(place, true); Failed(fault))
        return fault;
    if (!place.Stream.empty()) {
        Account(*place.Disk, DataOf(place).Length(), 0);
        place.Item->Streams.erase(place.Stream);
    } else {
        TakeAway(path);
    }
    Journal(Did::Remove, PathOf(place));
    return Fault::None;
}

Fault RenameReplacing(const std::string& from, const std::string& to) {
    if (const Fault fault = Begin(Call::Rename, from); Failed(fault))
        return fault;
    const Place source = FindItem(from, false), target = Find(to, false);
    for (const Fault fault : {source.Trouble, target.Trouble})
        if (Failed(fault))
            return fault;
    if (source.Disk != target.Disk)
        return Fault::Other;
    if (source.Disk->ReadOnly)
        return Fault::WriteProtected;
    if (source.Item->Locked || source.Item->Handles > 0)
        return Fault::SharingViolation;
    if (target.Item && target.Item != source.Item) {
        if (const Fault fault = MayChange(target, true); Failed(fault))
            return fault;
        TakeAway(to);
    }
    Drop(*source.Folder, *source.Item);
    source.Item->Name = target.Name;
    target.Folder->ByName[LowerCase(target.Name)] = source.Item;
    target.Folder->Children.push_back(source.Item);
    Journal(Did::Rename, source.Path, 0, {}, target.Path);
    return Fault::None;
}

bool FileExists(const std::string& path) {
    const Place place = FindItem(path, false);
    return !Failed(place.Trouble) && !place.Item->Folder;
}

} // namespace platform
