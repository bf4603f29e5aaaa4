// Folders, drives, clock, settings and the auxiliary library of the fake platform.
#include "fakes/FakeDisk.h"
#include "fakes/FakePlatform.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cwchar>
#include <locale.h>
#include <wctype.h>

namespace platform {

using namespace fake;

Fault EnumerateFolder(const std::string& folder,
                      const std::function<bool(const FolderEntry&)>& visit) {
    const Fault ordered = Begin(Call::Enumerate, folder);
    const Place place = FindItem(folder, true);
    if (Failed(place.Trouble))
        return place.Trouble;
    if (!place.Item->Folder)
        return Fault::NotFound;
    if (place.Item->Denied)
        return Fault::AccessDenied;
    const auto children = place.Item->Children; // a visitor may delete what it meets
    std::size_t count = Failed(ordered) ? children.size() / 2 : children.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Node& node = *children[i];
        if (!visit({node.Name, AttributesOf(node), node.Data.Length(), node.Folder,
                    !node.LinkTarget.empty()}))
            return Fault::None;
    }
    return ordered;
}

Fault MakeFolder(const std::string& path) {
    if (const Fault fault = Begin(Call::MakeFolder, path); Failed(fault))
        return fault;
    const Place place = Find(path, false);
    if (Failed(place.Trouble) || place.Item)
        return Failed(place.Trouble) ? place.Trouble : Fault::AlreadyExists;
    if (place.Disk->ReadOnly || place.Folder->Denied)
        return place.Disk->ReadOnly ? Fault::WriteProtected : Fault::AccessDenied;
    Add(*place.Folder, place.Name, true);
    Journal("make folder", place.Path);
    return Fault::None;
}

Fault RemoveFolder(const std::string& path) {
    const Place place = BeginAt(Call::RemoveFolder, path, false);
    if (Failed(place.Trouble) || !place.Item->Folder)
        return Failed(place.Trouble) ? place.Trouble : Fault::NotFound;
    if (place.Disk->ReadOnly)
        return Fault::WriteProtected;
    if (!place.Folder || place.Item->Denied || IsReadOnly(*place.Item))
        return Fault::AccessDenied;
    if (place.Item->LinkTarget.empty() && !place.Item->Children.empty())
        return Fault::NotEmpty;
    Drop(*place.Folder, *place.Item);
    Journal("remove folder", place.Path);
    return Fault::None;
}

bool FolderExists(const std::string& path) {
    const Place place = FindItem(path, false);
    return !Failed(place.Trouble) && place.Item->Folder;
}

// ---- Drives ------------------------------------------------------------------------------------

namespace {
/// The drive of a root path with a medium in it, or the fault.
Fault ReadyDrive(Call kind, const std::string& root, Drive*& drive) {
    if (const Fault fault = Begin(kind, root); Failed(fault))
        return fault;
    if (root.empty() || (root.size() > 1 && root[1] != ':'))
        return Fault::InvalidName;
    const auto found = drives.find(static_cast<char>(root[0] & ~0x20));
    if (found == drives.end())
        return Fault::NotFound;
    drive = &found->second;
    return drive->MediaPresent ? Fault::None : Fault::NotReady;
}

std::string CaseOf(const std::string& text, wint_t (*change)(wint_t, locale_t)) {
    static const locale_t unicode = newlocale(LC_ALL_MASK, "C.UTF-8", nullptr);
    const locale_t before = uselocale(unicode);
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        wchar_t point = 0;
        std::mbstate_t reading{}, writing{};
        const std::size_t size = std::mbrtowc(&point, &text[i], text.size() - i, &reading);
        char bytes[MB_LEN_MAX];
        if (size == 0 || size > text.size()) // a zero, or not UTF-8: as it is
            result += text[i++];
        else {
            const auto changed = static_cast<wchar_t>(change(static_cast<wint_t>(point), unicode));
            result.append(bytes, std::wcrtomb(bytes, changed, &writing));
            i += size;
        }
    }
    uselocale(before);
    return result;
}
} // namespace

std::string DriveLetters() {
    std::string letters;
    for (const auto& drive : drives)
        letters += drive.first;
    return letters;
}

DriveType TypeOfDrive(const std::string& root) {
    const auto found = drives.find(root.empty() ? '?' : static_cast<char>(root[0] & ~0x20));
    return found == drives.end() ? DriveType::NoRoot : found->second.Type;
}

Fault ReadClusterFacts(const std::string& root, ClusterFacts& facts) {
    Drive* drive = nullptr;
    const Fault fault = ReadyDrive(Call::ClusterFacts, root, drive);
    if (!Failed(fault))
        facts = {drive->BytesPerSector, drive->SectorsPerCluster, drive->Free() / drive->Cluster(),
                 drive->Capacity / drive->Cluster()};
    return fault;
}

Fault ReadDriveSpace(const std::string& root, std::uint64_t& freeBytes, std::uint64_t& totalBytes) {
    Drive* drive = nullptr;
    const Fault fault = ReadyDrive(Call::DriveSpace, root, drive);
    if (!Failed(fault)) {
        freeBytes = std::min(drive->Free(), drive->Quota);
        totalBytes = drive->Capacity;
    }
    return fault;
}

Fault ReadVolumeFacts(const std::string& root, VolumeFacts& facts) {
    Drive* drive = nullptr;
    const Fault fault = ReadyDrive(Call::VolumeFacts, root, drive);
    if (!Failed(fault))
        facts = {drive->Label, drive->FileSystem, drive->ReadOnly};
    return fault;
}

Fault FlushRecords(const std::string& folder) {
    const Fault fault = Begin(Call::Flush, folder);
    if (!Failed(fault))
        Journal("flush", folder);
    return fault;
}

// ---- System ------------------------------------------------------------------------------------

Fault ReadApplicationDataFolder(std::string& folder) {
    const Fault fault = Begin(Call::ApplicationDataFolder, "");
    if (!Failed(fault))
        folder = applicationData;
    return fault;
}

std::string ProgramFolder() {
    return programFolder;
}

std::string ProgramPath() {
    return programFolder + "\\nullwright.exe";
}

std::string SystemFolder() {
    return "C:\\WINDOWS";
}

std::vector<std::string> CommandLineArguments() {
    return commandLine;
}

Fault ChangeCurrentFolder(const std::string& folder) {
    if (const Fault fault = Begin(Call::ChangeCurrentFolder, folder); Failed(fault))
        return fault;
    const bool onThisDrive = folder.starts_with('\\') && currentFolder.size() > 1;
    const Place place = FindItem(onThisDrive ? currentFolder.substr(0, 2) + folder : folder, true);
    if (!Failed(place.Trouble))
        currentFolder = place.Path;
    return place.Trouble;
}

std::string FullPath(const std::string& path) {
    const bool isFull = path.starts_with("\\\\") || (path.size() > 1 && path[1] == ':');
    return isFull ? path : currentFolder + (currentFolder.ends_with('\\') ? "" : "\\") + path;
}

std::uint64_t TickCount() {
    return static_cast<std::uint64_t>(tick);
}

double SecondsSinceMidnight() {
    return secondsSinceMidnight;
}

std::string DateText() {
    return "11/21/2026";
}

std::string TimeText() {
    char text[40];
    const int seconds = static_cast<int>(secondsSinceMidnight);
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60,
                  seconds % 60);
    return text;
}

NumberFormat RegionalNumberFormat() {
    return numberFormat;
}

std::string LowerCase(const std::string& text) {
    return CaseOf(text, towlower_l);
}

std::string UpperCase(const std::string& text) {
    return CaseOf(text, towupper_l);
}

Fault OpenLink(const std::string& target) {
    const Fault fault = Begin(Call::OpenLink, target);
    if (!Failed(fault))
        linksOpened.push_back(target);
    return fault;
}

Fault LoadAuxiliaryLibrary() {
    const Fault fault = Begin(Call::LoadLibrary, "");
    libraryLoaded = libraryLoaded || (!Failed(fault) && !Failed(auxiliaryLibrary));
    return Failed(fault) ? fault : libraryLoaded ? Fault::None : auxiliaryLibrary;
}

std::int32_t AuxiliaryChangeFileSize(const std::string& path, std::int64_t newLength) {
    const Place place = BeginAt(Call::AuxiliaryChange, path, true);
    const auto length = static_cast<std::uint64_t>(newLength);
    return Failed(place.Trouble) || !libraryLoaded || newLength < -1 ||
                   Failed(MayChange(place, false)) ||
                   (newLength >= 0 && Failed(SetLength(place, length)))
               ? -1
               : 0;
}

std::int32_t AuxiliaryFlushFile(const std::string& path) {
    const Place place = BeginAt(Call::AuxiliaryFlush, path, true);
    if (Failed(place.Trouble) || !libraryLoaded || Failed(MayChange(place, false)))
        return -1;
    Journal("flush", place.FullPath());
    return 0;
}

} // namespace platform
