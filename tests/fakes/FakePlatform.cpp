// The calls on files over the fake drives.
#include "fakes/FakeDisk.h"

#include <cstring>

namespace fake {

using platform::Fault;

Fault auxiliaryLibrary;

namespace {

struct Handle {
    std::shared_ptr<Node> Item;
    std::string Path;
    std::uint64_t Position = 0;
    platform::Access Mode = platform::Access::Read;
};

std::map<std::uintptr_t, Handle> handles; ///< including held folders
std::uintptr_t nextHandle = 1;

bool Reads(platform::Access access) {
    return access == platform::Access::Read || access == platform::Access::ReadPastCache;
}

} // namespace

std::uint32_t AttributesOf(const Node& node) {
    return node.Attributes | (node.Folder ? platform::AttributeFolder : 0u) |
           (node.LinkTarget.empty() && node.MountedCluster == 0 ? 0u
                                                                : platform::AttributeReparsePoint);
}

bool IsLinkAt(const Place& place) {
    return place.Folder && place.Item->ReparseTag == 0 &&
           (AttributesOf(*place.Item) & platform::AttributeReparsePoint) != 0;
}

platform::FolderIdentity IdentityOf(const Place& place) {
    std::uint64_t volume = place.Disk->Serial;
    for (std::string path = place.Path; path.size() > 2; path.resize(path.rfind('\\')))
        volume += Find(path, false).Item->MountedCluster; // where its own volume is mounted
    const bool unnumbered = !place.Folder && place.Disk->FileSystem == "exFAT";
    return {volume, unnumbered ? 0 : place.Item->Number, 0};
}

Fault MayWrite(const Drive& drive, const Node& node) {
    return drive.ReadOnly ? Fault::WriteProtected : node.Denied ? Fault::AccessDenied : Fault::None;
}

Fault MayChange(const Place& place, bool exclusively) {
    const Node& node = *place.Item;
    if (node.Folder || (node.Attributes & platform::AttributeReadOnly) != 0)
        return Fault::AccessDenied;
    if (node.Locked || node.Open || (exclusively && node.Handles > 0))
        return Fault::SharingViolation;
    return MayWrite(*place.Disk, node);
}

Fault SetLength(const Place& place, std::uint64_t length) {
    if (length != place.Item->Data.Length())
        Journal("length " + std::to_string(length), place.Path);
    place.Item->Data.Resize(length);
    return Fault::None;
}

Place FindItem(const std::string& path, bool followLast) {
    Place place = Find(path, followLast);
    if (!Failed(place.Trouble) && !place.Item)
        place.Trouble = Fault::NotFound;
    return place;
}

Fault OnItem(const char* call, const std::string& path, bool followLast,
             const std::function<Fault(const Place&)>& work) {
    const Fault fault = Begin(call, path);
    const Place place = FindItem(path, followLast);
    return Failed(fault) ? fault : Failed(place.Trouble) ? place.Trouble : work(place);
}

namespace {
/// A call on an open file: NotReady when the medium or the folder under it is gone.
Fault BeginOn(const char* call, const Handle& handle) {
    const Fault fault = Begin(call, handle.Path);
    return Failed(FindItem(handle.Path, true).Trouble) ? Fault::NotReady : fault;
}

template<typename Work>
Fault OnOpen(const char* call, platform::File file, Work work) {
    Handle& handle = handles.at(file.Handle);
    const Fault fault = BeginOn(call, handle);
    if (!Failed(fault))
        work(handle);
    return fault;
}
} // namespace

void Reset() {
    ResetMachine();
    drives.clear();
    handles.clear();
    SpoilNth(0, {});
    journal.clear();
    auxiliaryLibrary = Fault::None;
    AddDrive('C', 64ULL << 30);
    PutFolder(applicationData);
}

int OpenHandles() {
    return static_cast<int>(handles.size());
}

} // namespace fake

namespace platform {

using namespace fake;

Fault OpenFile(const std::string& path, Access access, File& file) {
    if (const Fault fault = Begin(__func__, path); Failed(fault))
        return fault;
    Place place = Find(path, access != Access::ChangeItself);
    if (Failed(place.Trouble))
        return place.Trouble;
    const bool changes = !Reads(access), creates = access == Access::CreateNew;
    Fault fault = Fault::None;
    if (place.Item && creates)
        fault = Fault::AlreadyExists;
    else if (place.Item && changes)
        fault = MayChange(place, false);
    else if (place.Item)
        fault = place.Item->Folder || place.Item->Denied ? Fault::AccessDenied
                : place.Item->Locked                     ? Fault::SharingViolation
                                                         : Fault::None;
    else
        fault = creates || access == Access::Replace ? MayWrite(*place.Disk, *place.Folder)
                                                     : Fault::NotFound;
    if (Failed(fault))
        return fault;
    if (!place.Item) {
        place.Item = Add(*place.Folder, place.Name, false);
        if (fault = TakeRecord(*place.Disk, *place.Folder, *place.Item); Failed(fault)) {
            Drop(*place.Folder, *place.Item);
            return fault;
        }
        place.Item->Attributes = AttributeArchive;
        Journal("create", place.Path);
    } else if (access == Access::Replace) {
        (void)SetLength(place, 0);
    }
    ++place.Item->Handles;
    place.Item->Open = place.Item->Open || changes;
    file.Handle = nextHandle++;
    handles[file.Handle] = {place.Item, place.Path, 0, access};
    return Fault::None;
}

Fault ReadBytes(File file, void* data, std::size_t size, std::size_t& read) {
    return OnOpen(__func__, file, [&](Handle& handle) {
        std::string bytes = handle.Item->Data.Read(handle.Position, size);
        for (const auto& [offset, other] : handle.Item->OnDisk)
            for (std::size_t i = 0; i < other.size() && handle.Mode == Access::ReadPastCache; ++i)
                if (offset + i >= handle.Position && offset + i < handle.Position + bytes.size())
                    bytes[offset + i - handle.Position] = other[i];
        std::memcpy(data, bytes.data(), bytes.size());
        read = bytes.size();
        handle.Position += read;
    });
}

Fault WriteBytes(File file, const void* data, std::size_t size) {
    Handle& handle = handles.at(file.Handle);
    Fault fault = BeginOn(__func__, handle);
    if (fault == Fault::NotReady || Reads(handle.Mode))
        return Failed(fault) ? fault : Fault::AccessDenied;
    std::uint64_t count = Failed(fault) ? size / 2 : size;
    const Drive& drive = drives.at(handle.Path[0]);
    Node& node = *handle.Item;
    const std::uint64_t length = node.Data.Length();
    const bool isSparse = (node.Attributes & AttributeSparse) != 0; // its last cluster is there
    const std::uint64_t room = std::max(isSparse ? drive.InClusters(length) : length,
                                        SpaceOfFile(drive, node) + drive.FreeForUser());
    const bool stays = drive.Records > 0 && handle.Position + count <= recordRoom;
    if (handle.Position + count > room && !(node.InRecord && stays)) {
        count = room > handle.Position ? room - handle.Position : 0;
        fault = Failed(fault) ? fault : Fault::DiskFull;
    }
    if (count > 0) {
        const Run run = MakeRun(data, count);
        Journal("write", handle.Path, handle.Position, run);
        if (node.InRecord && !stays && handle.Position + count > length) {
            node.LeftInRecord = LeftBy(node);
            node.InRecord = false;
        }
        PutOnDisk(node, handle.Position, run);
        handle.Item->Data.Write(handle.Position, run);
        handle.Position += count;
        if (drive.BytesPerSecond > 0)
            Advance(static_cast<double>(count) * 1000 / drive.BytesPerSecond);
    }
    return fault;
}

Fault SeekTo(File file, std::uint64_t position) {
    return OnOpen(__func__, file, [&](Handle& handle) { handle.Position = position; });
}

Fault ReadLength(File file, std::uint64_t& length) {
    return OnOpen(__func__, file, [&](Handle& handle) { length = handle.Item->Data.Length(); });
}

Fault ReadOpenFileFacts(File file, OpenFileFacts& facts) {
    return OnOpen(__func__, file, [&](Handle& handle) {
        const Node& node = *handle.Item;
        facts = {node.Data.Length(), SpaceOfFile(drives.at(handle.Path[0]), node),
                 HardLinksOf(node), AttributesOf(node)};
    });
}

Fault ReadFileNumber(File file, std::uint64_t& number) {
    return OnOpen(__func__, file, [&](Handle& handle) {
        number = handle.Item->Record > 0 ? handle.Item->Record : handle.Item->Number;
    });
}

Fault HasClusters(File file, bool& hasClusters) {
    return OnOpen(__func__, file, [&](Handle& handle) {
        hasClusters = !handle.Item->InRecord && handle.Item->Data.Length() > 0;
    });
}

Fault ListAllocatedRanges(File file, std::uint64_t length, std::vector<Range>& ranges) {
    return OnOpen(__func__, file, [&](Handle& handle) {
        ranges = handle.Item->Allocated;
        if ((handle.Item->Attributes & AttributeSparse) == 0 && length > 0)
            ranges = {{0, length}};
    });
}

Fault ChangeLength(File file, std::uint64_t length) {
    Fault outcome = Fault::None;
    const Fault fault = OnOpen(__func__, file, [&](Handle& handle) {
        outcome =
            Reads(handle.Mode) ? Fault::AccessDenied : SetLength(Find(handle.Path, true), length);
    });
    return Failed(fault) ? fault : outcome;
}

Fault FlushBytes(File file) {
    return OnOpen(__func__, file, [](Handle& handle) { Journal("flush", handle.Path); });
}

Fault CloseFile(File& file) {
    const Handle handle = handles.at(file.Handle);
    handle.Item->Open = handle.Item->Open && Reads(handle.Mode);
    --handle.Item->Handles;
    handles.erase(file.Handle);
    file.Handle = 0;
    return Begin(__func__, handle.Path);
}

Fault ReadAttributes(const std::string& path, std::uint32_t& attributes, std::uint64_t* length) {
    return OnItem(__func__, path, false, [&](const Place& place) {
        attributes = AttributesOf(*place.Item);
        if (length)
            *length = place.Item->Data.Length();
        return Fault::None;
    });
}

Fault WriteAttributes(const std::string& path, std::uint32_t attributes) {
    return OnItem(__func__, path, false, [&](const Place& place) {
        constexpr std::uint32_t settable = AttributeReadOnly | AttributeHidden | AttributeSystem |
                                           AttributeArchive | AttributeOffline;
        const Fault fault = MayWrite(*place.Disk, *place.Item);
        if (!Failed(fault)) {
            place.Item->Attributes = (place.Item->Attributes & ~settable) | (attributes & settable);
            Journal("attributes " + std::to_string(place.Item->Attributes), place.Path);
        }
        return fault;
    });
}

Fault ReadFileLength(const std::string& path, std::uint64_t& length) {
    return OnItem(__func__, path, false, [&](const Place& place) {
        length = place.Item->Data.Length();
        return Fault::None;
    });
}

Fault ReadFileFacts(const std::string& path, FileFacts& facts) {
    return OnItem(__func__, path, false, [&](const Place& place) {
        const Node& node = *place.Item;
        facts = {AttributesOf(node), node.Data.Length(), HardLinksOf(node), IsLinkAt(place),
                 node.ReparseTag};
        return Fault::None;
    });
}

Fault ListStreams(const std::string& path, std::vector<Stream>& streams) {
    return OnItem(__func__, path, true, [&](const Place& place) {
        streams.clear();
        for (const auto& stream : place.Item->Children)
            streams.push_back({path + ":" + stream->Name, stream->Data.Length()});
        return Fault::None;
    });
}

Fault ListNames(const std::string& path, std::vector<std::string>& names) {
    return OnItem(__func__, path, true, [&](const Place& place) {
        std::vector<std::string> found;
        for (const std::string& file : FilesBelow(place.Path.substr(0, 3)))
            if (At(file)->Bytes == place.Item->Bytes)
                found.push_back(file);
        if (found.size() < HardLinksOf(*place.Item))
            return Fault::NotSupported;
        names = std::move(found);
        return Fault::None;
    });
}

Fault RemoveFile(const std::string& path) {
    return OnItem(__func__, path, false, [&](const Place& place) {
        const Fault fault = MayChange(place, true);
        if (!Failed(fault)) {
            FreeRecord(*place.Disk, *place.Folder, *place.Item);
            TakeAway(path);
            Journal("remove", place.Path);
        }
        return fault;
    });
}

Fault RenameReplacing(const std::string& from, const std::string& to) {
    return OnItem(__func__, from, false, [&](const Place& source) {
        const Place target = Find(to, false);
        Fault fault = Failed(target.Trouble) ? target.Trouble : MayChange(source, true);
        if (!Failed(fault) && target.Item)
            fault = MayChange(target, true);
        if (Failed(fault))
            return fault;
        TakeAway(to);
        Drop(*source.Folder, *source.Item);
        source.Item->Name = target.Name;
        Add(*target.Folder, source.Item);
        Journal("rename " + target.Path, source.Path);
        return fault;
    });
}

Fault HoldFolder(const std::string& path, FolderHold& hold) {
    return OnItem(__func__, path, path.size() <= 3, [&](const Place& place) {
        Node& node = *place.Item;
        if (!node.Folder || node.Denied)
            return node.Folder ? Fault::AccessDenied : Fault::NotFound;
        hold = {0, IdentityOf(place), IsLinkAt(place)};
        if (!hold.IsLink) {
            ++node.Handles;
            hold.Handle = nextHandle++;
            handles[hold.Handle] = {place.Item, place.Path};
        }
        return Fault::None;
    });
}

void LetGo(FolderHold& hold) {
    if (hold.Handle == 0)
        return;
    --handles.at(hold.Handle).Item->Handles;
    handles.erase(hold.Handle);
    hold.Handle = 0;
}

bool FileExists(const std::string& path) {
    const Place place = FindItem(path, false);
    return !Failed(place.Trouble) && !place.Item->Folder;
}

} // namespace platform
