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

double secondsSinceMidnight;
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

} // namespace

double tick;
bool libraryLoaded;

Fault Begin(Call kind, const std::string& path) {
    ++made[0];
    ++made[static_cast<std::size_t>(kind)];
    for (std::size_t i = 0; i < hooks.size(); ++i)
        if (hooks[i].first == kind || hooks[i].first == Call::Any) {
            const auto hook = hooks[i].second; // which may add others
            if (const Fault fault = hook(path); Failed(fault))
                return fault;
        }
    if (order.Left > 0 && (order.Kind == Call::Any || order.Kind == kind) && --order.Left == 0) {
        order.Done = true;
        order.Left = order.ForEver ? 1 : 0;
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

Fault SetLength(const Place& place, std::uint64_t length) {
    Drive& drive = *place.Disk;
    const std::uint64_t cluster = drive.Cluster(), now = place.Data().Length();
    const std::uint64_t allocated = (now + cluster - 1) / cluster * cluster;
    if (length > allocated && length - allocated > drive.Free())
        return Fault::DiskFull;
    if (length != now)
        Journal("length", place.FullPath(), length);
    Account(drive, now, length);
    place.Data().Resize(length);
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

Place BeginAt(Call kind, const std::string& path, bool followLast) {
    const Fault fault = Begin(kind, path);
    Place place = FindItem(path, followLast);
    if (Failed(fault))
        place.Trouble = fault;
    return place;
}

namespace {
/// A call on an open file: NotReady when the medium under it is gone.
Fault Begin(Call kind, const Handle& handle) {
    const Fault fault = Begin(kind, handle.Path);
    const auto drive = drives.find(handle.Letter);
    return drive == drives.end() || !drive->second.MediaPresent ? Fault::NotReady : fault;
}
} // namespace

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
    if (place.Item && (place.Item->Folder || place.Item->Denied))
        return place.Item->Folder && access == Access::CreateNew ? Fault::AlreadyExists
                                                                 : Fault::AccessDenied;
    if (!place.Item || (!place.Stream.empty() && place.Item->Streams.count(place.Stream) == 0)) {
        if (access != Access::CreateNew && access != Access::Replace)
            return Fault::NotFound;
        if (place.Disk->ReadOnly || place.Folder->Denied)
            return place.Disk->ReadOnly ? Fault::WriteProtected : Fault::AccessDenied;
        if (!place.Item)
            place.Item = Add(*place.Folder, place.Name, false);
        place.Item->Attributes |= AttributeArchive;
        Journal("create", place.Path);
    } else if (access == Access::CreateNew) {
        return Fault::AlreadyExists;
    } else if (changes) {
        if (const Fault fault = MayChange(place, false); Failed(fault))
            return fault;
    } else if (place.Item->Locked) {
        return Fault::SharingViolation;
    }
    if (access == Access::Replace && Failed(SetLength(place, 0)))
        return Fault::Other;
    ++place.Item->Handles;
    place.Item->Open = place.Item->Open || changes;
    file.Handle = nextHandle++;
    handles[file.Handle] = {place.Item, &place.Data(), place.FullPath(), place.Letter, 0, access};
    return Fault::None;
}

Fault ReadBytes(File file, void* data, std::size_t size, std::size_t& read) {
    Handle& handle = *HandleOf(file);
    if (const Fault fault = Begin(Call::Read, handle); Failed(fault))
        return fault;
    const std::string bytes = handle.Data->Read(handle.Position, size);
    std::memcpy(data, bytes.data(), bytes.size());
    read = bytes.size();
    handle.Position += read;
    return Fault::None;
}

Fault WriteBytes(File file, const void* data, std::size_t size) {
    Handle& handle = *HandleOf(file);
    Fault fault = Begin(Call::Write, handle);
    if (fault == Fault::NotReady || handle.Mode == Access::Read)
        return Failed(fault) ? fault : Fault::AccessDenied;
    std::uint64_t count = Failed(fault) ? size / 2 : size;
    Drive& drive = drives.at(handle.Letter);
    const std::uint64_t cluster = drive.Cluster(), length = handle.Data->Length();
    const std::uint64_t room = (length + cluster - 1) / cluster * cluster + drive.Free();
    if (handle.Position + count > room) {
        count = room > handle.Position ? room - handle.Position : 0;
        fault = Failed(fault) ? fault : Fault::DiskFull;
    }
    if (count > 0) {
        const Run run = MakeRun(data, count);
        Journal("write", handle.Path, handle.Position, run);
        handle.Data->Write(handle.Position, run);
        handle.Position += count;
        Account(drive, length, handle.Data->Length());
        if (drive.BytesPerSecond > 0)
            Advance(static_cast<double>(count) * 1000 / drive.BytesPerSecond);
    }
    return fault;
}

Fault SeekTo(File file, std::uint64_t position) {
    Handle& handle = *HandleOf(file);
    const Fault fault = Begin(Call::Seek, handle);
    if (!Failed(fault))
        handle.Position = position;
    return fault;
}

Fault ReadLength(File file, std::uint64_t& length) {
    const Handle& handle = *HandleOf(file);
    const Fault fault = Begin(Call::ReadLength, handle);
    if (!Failed(fault))
        length = handle.Data->Length();
    return fault;
}

Fault ReadHardLinks(File file, std::uint32_t& hardLinks) {
    const Handle& handle = *HandleOf(file);
    const Fault fault = Begin(Call::ReadFileFacts, handle);
    if (!Failed(fault))
        hardLinks = handle.Item->HardLinks;
    return fault;
}

Fault ChangeLength(File file, std::uint64_t length) {
    const Handle& handle = *HandleOf(file);
    if (const Fault fault = Begin(Call::ChangeLength, handle); Failed(fault))
        return fault;
    return handle.Mode == Access::Read ? Fault::AccessDenied
                                       : SetLength(Find(handle.Path, true), length);
}

Fault FlushBytes(File file) {
    const Handle& handle = *HandleOf(file);
    const Fault fault = Begin(Call::Flush, handle);
    if (!Failed(fault))
        Journal("flush", handle.Path);
    return fault;
}

Fault CloseFile(File& file) {
    const Handle handle = *HandleOf(file);
    handle.Item->Open = handle.Item->Open && handle.Mode == Access::Read;
    --handle.Item->Handles;
    handles.erase(file.Handle);
    file.Handle = 0;
    return Begin(Call::Close, handle.Path);
}

Fault ReadAttributes(const std::string& path, std::uint32_t& attributes) {
    const Place place = BeginAt(Call::ReadAttributes, path, false);
    if (!Failed(place.Trouble))
        attributes = AttributesOf(*place.Item);
    return place.Trouble;
}

Fault WriteAttributes(const std::string& path, std::uint32_t attributes) {
    const Place place = BeginAt(Call::WriteAttributes, path, false);
    if (Failed(place.Trouble))
        return place.Trouble;
    if (place.Disk->ReadOnly || place.Item->Denied)
        return place.Disk->ReadOnly ? Fault::WriteProtected : Fault::AccessDenied;
    constexpr std::uint32_t settable =
        AttributeReadOnly | AttributeHidden | AttributeSystem | AttributeArchive | AttributeOffline;
    place.Item->Attributes = (place.Item->Attributes & ~settable) | (attributes & settable);
    Journal("attributes", place.Path, place.Item->Attributes);
    return Fault::None;
}

Fault ReadFileLength(const std::string& path, std::uint64_t& length) {
    const Place place = BeginAt(Call::ReadFileLength, path, false);
    if (Failed(place.Trouble) || place.Item->Folder)
        return Failed(place.Trouble) ? place.Trouble : Fault::AccessDenied;
    length = place.Data().Length();
    return Fault::None;
}

Fault ReadFileFacts(const std::string& path, FileFacts& facts) {
    const Place place = BeginAt(Call::ReadFileFacts, path, false);
    if (!Failed(place.Trouble))
        facts = {AttributesOf(*place.Item), place.Item->Data.Length(), place.Item->HardLinks,
                 !place.Item->LinkTarget.empty()};
    return place.Trouble;
}

Fault ListStreams(const std::string& path, std::vector<Stream>& streams) {
    const Place place = BeginAt(Call::ListStreams, path, true);
    if (Failed(place.Trouble))
        return place.Trouble;
    streams.clear();
    for (const auto& [name, data] : place.Item->Streams)
        streams.push_back({path + ":" + name, data.Length()});
    return Fault::None;
}

Fault RemoveFile(const std::string& path) {
    const Place place = BeginAt(Call::RemoveFile, path, false);
    const Fault fault = Failed(place.Trouble) ? place.Trouble : MayChange(place, true);
    if (Failed(fault))
        return fault;
    TakeAway(path);
    Journal("remove", place.FullPath());
    return Fault::None;
}

Fault RenameReplacing(const std::string& from, const std::string& to) {
    const Place source = BeginAt(Call::Rename, from, false), target = Find(to, false);
    if (Failed(source.Trouble) || Failed(target.Trouble))
        return Failed(source.Trouble) ? source.Trouble : target.Trouble;
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
    Journal("rename", source.Path, 0, {}, target.Path);
    return Fault::None;
}

bool FileExists(const std::string& path) {
    const Place place = FindItem(path, false);
    return !Failed(place.Trouble) && !place.Item->Folder;
}

} // namespace platform
