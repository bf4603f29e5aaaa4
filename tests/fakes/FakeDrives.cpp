// Folders, drives, the current folder and the auxiliary library of the fake platform.
#include "fakes/FakeDisk.h"

namespace platform {

using namespace fake;

Fault EnumerateFolder(const std::string& folder,
                      const std::function<bool(const FolderEntry&)>& visit) {
    const Fault ordered = Begin(__func__, folder);
    const Place place = FindItem(folder, true);
    if (Failed(place.Trouble) || !place.Item->Folder)
        return Failed(place.Trouble) ? place.Trouble : Fault::NotFound;
    if (place.Item->Denied)
        return Fault::AccessDenied;
    const auto children = place.Item->Children; // a visitor may delete entries
    const std::size_t count = Failed(ordered) ? children.size() / 2 : children.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Node& node = *children[i];
        const std::uint32_t attributes = AttributesOf(node);
        if (!visit({node.Name, attributes, node.Data.Length(), node.Folder,
                    (attributes & AttributeReparsePoint) != 0}))
            return Fault::None;
    }
    return ordered;
}

Fault MakeFolder(const std::string& path) {
    if (const Fault fault = Begin(__func__, path); Failed(fault))
        return fault;
    const Place place = Find(path, false);
    if (Failed(place.Trouble) || place.Item)
        return Failed(place.Trouble) ? place.Trouble : Fault::AlreadyExists;
    const Fault fault = MayWrite(*place.Disk, *place.Folder);
    if (!Failed(fault)) {
        Add(*place.Folder, place.Name, true);
        Journal("make folder", place.Path);
    }
    return fault;
}

Fault RemoveFolder(const std::string& path) {
    return OnItem(__func__, path, false, [](const Place& place) {
        const Node& node = *place.Item;
        if (const Fault fault = MayWrite(*place.Disk, node); Failed(fault))
            return fault;
        if (!node.Folder || !place.Folder || (node.Attributes & AttributeReadOnly) != 0)
            return Fault::AccessDenied;
        if (node.LinkTarget.empty() && !node.Children.empty())
            return Fault::NotEmpty;
        if (node.Handles > 0)
            return Fault::SharingViolation;
        place.Disk->Occupied -= node.IndexRoom;
        Drop(*place.Folder, node);
        Journal("remove folder", place.Path);
        return Fault::None;
    });
}

bool FolderExists(const std::string& path) {
    const Place place = FindItem(path, false);
    return !Failed(place.Trouble) && place.Item->Folder;
}

Fault ReadFolderIdentity(const std::string& path, FolderIdentity& identity) {
    return OnItem(__func__, path, true, [&](const Place& place) {
        identity = IdentityOf(place);
        return Fault::None;
    });
}

Fault ReadRealPath(const std::string& path, std::string& real) {
    return OnItem(__func__, path, path.size() <= 3, [&](const Place& place) {
        if (place.Disk->Type == DriveType::Remote)
            return Fault::NotSupported;
        real = place.Folder ? place.Path : place.Path + "\\";
        return Fault::None;
    });
}

Fault ReadVolumeRoot(const std::string& path, std::string& root) {
    return OnItem(__func__, path, true, [&](const Place& place) {
        root = place.Path;
        while (root.size() > 2 && Find(root, false).Item->MountedCluster == 0)
            root.resize(root.rfind('\\'));
        root += "\\";
        return Fault::None;
    });
}

bool FolderTellsCase(const std::string& path) {
    (void)Begin("FolderTellsCase", path);
    const Place place = FindItem(path, true);
    return !Failed(place.Trouble) && place.Item->TellsCase;
}

namespace {
/// A call that needs a drive with a medium, given by its root path.
template<typename Work>
Fault OnDrive(const char* call, const std::string& root, Work work) {
    if (const Fault fault = Begin(call, root); Failed(fault))
        return fault;
    const Drive* drive = DriveOf(root);
    if (drive == nullptr || !drive->MediaPresent)
        return drive == nullptr ? Fault::NotFound : Fault::NotReady;
    work(*drive);
    return Fault::None;
}
} // namespace

std::string DriveLetters() {
    std::string letters;
    for (const auto& drive : drives)
        letters += drive.first;
    return letters;
}

DriveType TypeOfDrive(const std::string& root) {
    const Drive* drive = DriveOf(root);
    return drive == nullptr ? DriveType::NoRoot : drive->Type;
}

Fault ReadClusterFacts(const std::string& root, ClusterFacts& facts) {
    return OnDrive(__func__, root, [&](const Drive& drive) {
        facts = {drive.BytesPerSector, drive.SectorsPerCluster,
                 drive.FreeForUser() / drive.Cluster(), drive.Capacity / drive.Cluster()};
        const Place place = root.size() > 3 ? FindItem(root, false) : Place{};
        if (place.Item && place.Item->MountedCluster != 0)
            facts = {512, place.Item->MountedCluster / 512, 1000, 1000};
    });
}

Fault ReadDriveSpace(const std::string& root, std::uint64_t& freeBytes, std::uint64_t& totalBytes,
                     std::uint64_t* freeOnVolume) {
    return OnDrive(__func__, root, [&](const Drive& drive) {
        freeBytes = drive.FreeForUser();
        totalBytes = drive.Capacity;
        if (freeOnVolume)
            *freeOnVolume = drive.Free();
    });
}

Fault ReadVolumeFacts(const std::string& root, VolumeFacts& facts) {
    return OnDrive(__func__, root, [&](const Drive& drive) {
        facts = {drive.Label, drive.FileSystem, drive.ReadOnly};
    });
}

Fault ReadDriveNature(const std::string& root, DriveNature& nature) {
    return OnDrive(__func__, root, [&](const Drive& drive) { nature = drive.Nature; });
}

Fault ReadRecordCount(const std::string& root, std::uint64_t& records) {
    const Drive& drive = drives.at(root[0]);
    const Fault fault = Begin(__func__, root);
    if (!Failed(fault) && drive.Records > 0 && drive.TellsRecords)
        records = drive.Records;
    return Failed(fault) || (drive.Records > 0 && drive.TellsRecords) ? fault : Fault::NotSupported;
}

Fault FlushRecords(const std::string& folder) {
    const Fault fault = Begin(__func__, folder);
    if (!Failed(fault))
        Journal("flush", folder);
    return fault;
}

Fault FlushFolder(const std::string& path) {
    const Fault fault = Begin(__func__, path);
    if (!Failed(fault))
        Journal("flush folder", path);
    return fault;
}

Fault RenameNew(const std::string& from, const std::string& to) {
    return OnItem(__func__, from, false, [&](const Place& source) {
        const Place target = Find(to, false);
        const Node& node = *source.Item;
        const Fault fault = Failed(target.Trouble)            ? target.Trouble
                            : target.Item                     ? Fault::AlreadyExists
                            : node.Locked || node.Handles > 0 ? Fault::SharingViolation
                                                              : MayWrite(*source.Disk, node);
        if (Failed(fault))
            return fault;
        Drop(*source.Folder, node);
        source.Item->Name = target.Name;
        Add(*target.Folder, source.Item);
        Journal("rename " + target.Path, source.Path);
        return fault;
    });
}

Fault WriteDates(const std::string& path, std::int64_t seconds) {
    return OnItem(__func__, path, false, [&](const Place& place) {
        place.Item->Dates = seconds;
        Journal("dates", place.Path);
        return MayWrite(*place.Disk, *place.Item);
    });
}

Fault ChangeCurrentFolder(const std::string& folder) {
    if (const Fault fault = Begin(__func__, folder); Failed(fault))
        return fault;
    const bool onThisDrive = folder.starts_with('\\') && currentFolder.size() > 1;
    const Place place = FindItem(onThisDrive ? currentFolder.substr(0, 2) + folder : folder, true);
    if (!Failed(place.Trouble))
        currentFolder = place.Path;
    return place.Trouble;
}

Fault LoadAuxiliaryLibrary() {
    const Fault fault = Begin(__func__, "");
    return Failed(fault) ? fault : auxiliaryLibrary;
}

namespace {
/// The library's answer: 0, −1, or −4 for a held file. The library must have been loaded.
std::int32_t InLibrary(const char* call, const std::string& path,
                       const std::function<Fault(const Place&)>& work) {
    const Fault fault = OnItem(call, path, true, [&](const Place& place) {
        const bool loaded = CallsMade("LoadAuxiliaryLibrary") > 0 && !Failed(auxiliaryLibrary);
        const Fault refusal = loaded ? MayChange(place, false) : Fault::NotSupported;
        return Failed(refusal) ? refusal : work(place);
    });
    return fault == Fault::SharingViolation ? -4 : Failed(fault) ? -1 : 0;
}
} // namespace

std::int32_t AuxiliaryChangeFileSize(const std::string& path, std::int64_t newLength) {
    return InLibrary(__func__, path, [&](const Place& place) {
        return newLength == -1  ? Fault::None
               : newLength < -1 ? Fault::Other
                                : SetLength(place, static_cast<std::uint64_t>(newLength));
    });
}

std::int32_t AuxiliaryFlushFile(const std::string& path) {
    return InLibrary(__func__, path, [](const Place& place) {
        Journal("flush", place.Path);
        return Fault::None;
    });
}

} // namespace platform
