// The drives and the journal.
#include "fakes/FakeDisk.h"

#include <cstdio>
#include <cstring>
#include <sstream>

namespace fake {

using platform::Fault;

std::map<char, Drive> drives;
std::vector<Event> journal;

namespace {
std::int64_t writesUntilSpoilt = 0;
Spoil spoil{};

/// Joins a run to the one before it when that needs no more memory than both; else false.
bool Join(Run& run, const Run& next) {
    const std::uint64_t period = run.Pattern.size(), count = std::min(next.Length, period);
    const Run longer{run.Length + next.Length, run.Pattern};
    if ((next.Length != count && next.Pattern.size() != period) ||
        longer.Bytes(run.Length, count) != next.Bytes(0, count))
        return false;
    run.Length = longer.Length;
    return true;
}

void Append(Content& content, const Run& run) {
    if (run.Length > 0 && (content.Runs.empty() || !Join(content.Runs.back(), run)))
        content.Runs.push_back(run);
}

/// The bytes from one place up to another.
Content Cut(const Content& content, std::uint64_t from, std::uint64_t to) {
    Content part;
    std::uint64_t at = 0;
    for (const Run& run : content.Runs) {
        const std::uint64_t first = std::max(from, at), end = std::min(to, at + run.Length);
        if (first < end)
            Append(part, {end - first,
                          run.Bytes(first - at,
                                    std::min<std::uint64_t>(end - first, run.Pattern.size()))});
        at += run.Length;
    }
    return part;
}

/// The names in a full path, with "." and ".." resolved.
std::vector<std::string> Split(const std::string& path) {
    std::vector<std::string> parts;
    std::istringstream stream(platform::FullPath(path).substr(3));
    for (std::string part; std::getline(stream, part, '\\');)
        parts.push_back(part);
    return parts;
}

/// The key of a name in a folder's map.
std::string KeyOf(const Node& folder, const std::string& name) {
    return folder.TellsCase ? name : platform::LowerCase(name);
}

bool InUse(const Node& node) {
    return node.Handles > 0 || std::any_of(node.Children.begin(), node.Children.end(),
                                           [](const auto& child) { return InUse(*child); });
}

/// The space that the files of a folder and their streams take.
std::uint64_t SpaceOf(const Drive& drive, const Node& folder) {
    std::uint64_t space = 0;
    for (const auto& node : folder.Children)
        space += SpaceOfFile(drive, *node) + SpaceOf(drive, *node);
    return space;
}

void Below(const Node& folder, const std::string& path, std::vector<std::string>& files) {
    for (const auto& child : folder.Children)
        if (!child->Folder)
            files.push_back(path + "\\" + child->Name);
        else if (child->LinkTarget.empty())
            Below(*child, path + "\\" + child->Name, files);
}
} // namespace

std::string Run::Bytes(std::uint64_t from, std::uint64_t count) const {
    count = from < Length ? std::min(count, Length - from) : 0;
    if (Pattern.size() == 1)
        return std::string(count, Pattern[0]);
    std::string bytes;
    bytes.reserve(count);
    while (bytes.size() < count)
        bytes.append(Pattern, (from + bytes.size()) % Pattern.size(), count - bytes.size());
    return bytes;
}

Run MakeRun(const void* data, std::size_t size) {
    const char* bytes = static_cast<const char*>(data);
    for (std::size_t period = 1; period < size && period <= 65536; period *= 2)
        if (std::memcmp(bytes, bytes + period, size - period) == 0)
            return {size, std::string(bytes, period)};
    return {size, std::string(bytes, size)};
}

std::uint64_t Content::Length() const {
    std::uint64_t length = 0;
    for (const Run& run : Runs)
        length += run.Length;
    return length;
}

std::string Content::Read(std::uint64_t from, std::uint64_t count) const {
    std::string bytes;
    for (const Run& run : Cut(*this, from, from + count).Runs)
        bytes += run.Bytes(0, run.Length);
    return bytes;
}

void Content::Resize(std::uint64_t length) {
    const std::uint64_t now = Length();
    if (length > now)
        Append(*this, {length - now, std::string(1, '\0')});
    else if (length < now)
        *this = Cut(*this, 0, length);
}

void Content::Write(std::uint64_t offset, const Run& run) {
    const Content behind = Cut(*this, offset + run.Length, Length());
    Resize(offset);
    Append(*this, run);
    for (const Run& rest : behind.Runs)
        Append(*this, rest);
}

void SpoilNth(std::int64_t n, Spoil how) {
    writesUntilSpoilt = n;
    spoil = how;
}

void PutOnDisk(Node& node, std::uint64_t offset, const Run& run) {
    std::erase_if(node.OnDisk, [&](const auto& old) {
        return old.first >= offset && old.first + old.second.size() <= offset + run.Length;
    });
    if (writesUntilSpoilt == 0 || --writesUntilSpoilt > 0)
        return;
    const std::uint64_t right = spoil == Spoil::Drop   ? 0
                                : spoil == Spoil::Tear ? run.Length / 2
                                                       : run.Length - 1;
    std::string bytes = node.Data.Read(offset + right, run.Length - right);
    bytes.resize(run.Length - right);
    if (spoil == Spoil::Flip)
        bytes[0] = static_cast<char>(run.Bytes(right, 1)[0] ^ 1);
    node.OnDisk[offset + right] = bytes;
}

std::uint64_t Drive::InClusters(std::uint64_t length) const {
    return (length + Cluster() - 1) / Cluster() * Cluster();
}

std::uint64_t SpaceOfFile(const Drive& drive, const Node& file) {
    std::uint64_t space = 0;
    for (const platform::Range& range : file.Allocated)
        space += range.To - range.From;
    const bool isSparse = (file.Attributes & platform::AttributeSparse) != 0;
    return file.InRecord ? 0 : isSparse ? space : drive.InClusters(file.Data.Length());
}

std::uint64_t Drive::Free() const {
    const std::uint64_t whole = Capacity / Cluster() * Cluster();
    const std::uint64_t used = InClusters(Occupied) + SpaceOf(*this, *Root);
    return used >= whole ? 0 : whole - used;
}

Fault TakeRecord(Drive& drive, Node& folder, Node& file) {
    if (&folder == drive.Root.get() && !drive.FreeEntries.empty()) {
        drive.FreeEntries.pop_back();
        return Fault::None;
    }
    if (drive.Records == 0) // the space that FAT's top folder needs to grow
        return drive.FileSystem == "FAT32" && &folder == drive.Root.get() && drive.Free() == 0
                   ? Fault::DiskFull
                   : Fault::None;
    std::uint64_t names = 0;
    for (const auto& child : folder.Children)
        names += 88 + 2 * child->Name.size();
    const std::uint64_t index = names > folder.IndexRoom ? 4096 : 0;
    const std::uint64_t grown = drive.Occupied + index + (drive.FreeRecords.empty() ? 1024 : 0);
    if (drive.InClusters(grown) - drive.InClusters(drive.Occupied) > drive.Free())
        return Fault::DiskFull;
    drive.Occupied = grown;
    folder.IndexRoom += index;
    file.InRecord = true;
    file.Record = drive.FreeRecords.empty() ? drive.Records++ : drive.FreeRecords.begin()->first;
    if (auto old = drive.FreeRecords.extract(file.Record); !old.empty())
        file.LeftInRecord = old.mapped();
    return Fault::None;
}

std::string LeftBy(const Node& file) {
    const std::uint64_t length = file.InRecord ? file.Data.Length() : 0;
    return file.Data.Read(0, length) +
           file.LeftInRecord.substr(std::min<std::size_t>(length, file.LeftInRecord.size()));
}

void FreeRecord(Drive& drive, const Node& folder, const Node& file) {
    if (&folder == drive.Root.get() && drive.FileSystem == "FAT32")
        drive.FreeEntries.push_back(file.Name);
    if (drive.Records > 0)
        drive.FreeRecords[file.Record] = LeftBy(file);
}

void Add(Node& folder, const std::shared_ptr<Node>& node) {
    folder.ByName[KeyOf(folder, node->Name)] = node;
    folder.Children.push_back(node);
}

std::shared_ptr<Node> Add(Node& folder, const std::string& name, bool isFolder) {
    auto node = std::make_shared<Node>();
    node->Name = name;
    node->Folder = isFolder;
    Add(folder, node);
    return node;
}

void Drop(Node& folder, const Node& item) {
    std::erase_if(folder.ByName, [&](const auto& entry) { return entry.second.get() == &item; });
    std::erase_if(folder.Children, [&](const auto& child) { return child.get() == &item; });
}

Drive* DriveOf(const std::string& root) {
    const auto found = drives.find(root.empty() ? '?' : static_cast<char>(root[0] & ~0x20));
    if (found == drives.end())
        return nullptr;
    return found->second.StandsFor.empty() ? &found->second : DriveOf(found->second.StandsFor);
}

Place Find(const std::string& path, bool followLast) {
    Place place;
    place.Disk = path.size() < 2 || path[1] != ':' ? nullptr : DriveOf(path);
    if (!place.Disk || !place.Disk->MediaPresent)
        return {place.Disk ? Fault::NotReady : Fault::NotFound};
    if (const Drive& named = drives.at(static_cast<char>(path[0] & ~0x20));
        !named.StandsFor.empty())
        return Find(named.StandsFor + path.substr(2), followLast);
    std::vector<std::string> parts = Split(path);
    const std::size_t colon = parts.empty() ? std::string::npos : parts.back().find(':');
    if (colon != std::string::npos) {
        parts.push_back(parts.back().substr(colon + 1));
        parts[parts.size() - 2].resize(colon);
    }
    place.Item = place.Disk->Root;
    place.Path = platform::UpperCase(path.substr(0, 2));
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool last = i + 1 == parts.size(), isStream = last && colon != std::string::npos;
        if (!place.Item || place.Item->Folder == isStream)
            return {Fault::NotFound};
        place.Folder = place.Item;
        place.Name = parts[i];
        const auto found = place.Folder->ByName.find(KeyOf(*place.Folder, parts[i]));
        place.Item = found == place.Folder->ByName.end() ? nullptr : found->second;
        if (place.Item && !place.Item->LinkTarget.empty() && (!last || followLast)) {
            place = Find(place.Item->LinkTarget, true);
        } else {
            place.Path += (isStream ? ":" : "\\") + (place.Item ? place.Item->Name : place.Name);
        }
    }
    return place;
}

Drive& AddDrive(char letter, std::uint64_t capacity, std::uint32_t cluster,
                platform::DriveType type) {
    Drive& drive = drives[letter] = Drive{};
    drive.Type = type;
    drive.Capacity = capacity;
    drive.BytesPerSector = std::min<std::uint32_t>(cluster, 512);
    drive.SectorsPerCluster = cluster / drive.BytesPerSector;
    drive.Root = std::make_shared<Node>();
    drive.Root->Folder = true;
    return drive;
}

Node& PutFolder(const std::string& path) {
    std::shared_ptr<Node> folder = drives.at(path[0]).Root;
    for (const std::string& part : Split(path)) {
        const auto found = folder->ByName.find(KeyOf(*folder, part));
        folder = found == folder->ByName.end() ? Add(*folder, part, true) : found->second;
    }
    return *folder;
}

void PutName(const std::string& path, const std::string& file) {
    const std::size_t end = path.rfind('\\');
    auto node = std::make_shared<Node>(At(file)->Bytes);
    node->Name = path.substr(end + 1);
    node->Attributes = At(file)->Attributes;
    Add(PutFolder(path.substr(0, end)), node);
}

std::uint32_t HardLinksOf(const Node& node) {
    return std::max(node.HardLinks, static_cast<std::uint32_t>(node.Bytes.use_count()));
}

Node& PutFile(const std::string& path, const std::string& content, std::uint32_t attributes) {
    TakeAway(path);
    const std::size_t end = path.find_last_of("\\:");
    Node& file = *Add(PutFolder(path.substr(0, end)), path.substr(end + 1), false);
    file.Attributes = attributes;
    file.Data.Write(0, MakeRun(content.data(), content.size()));
    return file;
}

void PutFiles(std::initializer_list<const char*> paths) {
    for (const char* path : paths)
        PutFile(path);
}

Node& PutBigFile(const std::string& path, std::uint64_t length, char byte) {
    Node& file = PutFile(path, "");
    file.Data.Write(0, {length, std::string(1, byte)});
    return file;
}

void TakeAway(const std::string& path) {
    const Place place = Find(path, false);
    if (place.Item && place.Folder)
        Drop(*place.Folder, *place.Item);
}

void PutShortName(const std::string& path, const std::string& name) {
    const Place place = Find(path, false);
    place.Folder->ByName[KeyOf(*place.Folder, name)] = place.Item;
}

bool ReplaceByLink(const std::string& path, const std::string& target) {
    const Place place = Find(path, false);
    if (!place.Item || InUse(*place.Item))
        return false;
    TakeAway(path);
    PutFolder(path).LinkTarget = target;
    return true;
}

Node* At(const std::string& path) {
    return Find(path, false).Item.get();
}

std::string ContentOf(const std::string& path) {
    const Place place = Find(path, true);
    return place.Item ? place.Item->Data.Read(0, place.Item->Data.Length()) : "(missing)";
}

std::vector<std::string> FilesBelow(const std::string& folder) {
    std::vector<std::string> files;
    const Place place = Find(folder, true);
    if (place.Item)
        Below(*place.Item, place.Path, files);
    return files;
}

void Journal(const std::string& what, const std::string& path, std::uint64_t offset,
             const Run& run) {
    Event* last = journal.empty() || what != "write" ? nullptr : &journal.back();
    if (!last || last->What != what || last->Path != path ||
        last->Offset + last->Data.Length != offset || !Join(last->Data, run))
        journal.push_back({what, path, offset, run});
}

std::string JournalText(const std::string& path) {
    std::string text;
    char byte[3];
    for (const Event& event : journal) {
        if (!path.empty() && platform::LowerCase(event.Path) != platform::LowerCase(path))
            continue;
        text += (path.empty() ? event.Path + ": " : "") + event.What;
        if (event.What == "write") {
            text += " " + std::to_string(event.Offset) + "+" + std::to_string(event.Data.Length);
            std::snprintf(byte, sizeof byte, "%02X",
                          static_cast<unsigned char>(event.Data.Pattern[0]));
            text += std::string(" ") + (event.Data.Pattern.size() == 1 ? byte : "*");
        }
        text += "\n";
    }
    return text;
}

} // namespace fake
