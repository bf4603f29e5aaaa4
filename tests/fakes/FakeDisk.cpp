// The drives and the journal.
#include "fakes/FakeDisk.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace fake {

using platform::Fault;

std::map<char, Drive> drives;
std::vector<Event> journal;

namespace {
constexpr std::uint64_t smallRun = 512; ///< up to here a run may become part of arbitrary bytes
constexpr std::uint64_t longestLiteral = 1 << 26;

Run Slice(const Run& run, std::uint64_t from, std::uint64_t count) {
    const std::uint64_t period = run.Pattern.size();
    if (count <= period)
        return {count, run.Bytes(from, count)};
    return {count, run.Bytes(from, period)};
}

/// Whether `next` is what `run` would go on with.
bool Continues(const Run& run, const Run& next) {
    const std::uint64_t period = run.Pattern.size();
    if (next.Pattern.size() != period && next.Length > period)
        return false;
    const std::uint64_t count = std::min(next.Length, period), at = run.Length % period;
    const std::uint64_t head = std::min(count, period - at);
    const std::string bytes = next.Bytes(0, count);
    return bytes.compare(0, head, run.Pattern, at, head) == 0 &&
           bytes.compare(head, count - head, run.Pattern, 0, count - head) == 0;
}

std::uint64_t InClusters(const Drive& drive, std::uint64_t length) {
    return (length + drive.Cluster() - 1) / drive.Cluster() * drive.Cluster();
}

std::vector<std::string> Split(const std::string& path) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    while (from <= path.size()) {
        const std::size_t to = std::min(path.find('\\', from), path.size());
        if (to > from)
            parts.push_back(path.substr(from, to - from));
        from = to + 1;
    }
    return parts;
}

bool IsValidName(const std::string& name) {
    return name.find_first_of("<>\"/|?*:") == std::string::npos &&
           std::none_of(name.begin(), name.end(), [](char c) { return c > 0 && c < 32; });
}

Place Nowhere(Fault fault) {
    Place place;
    place.Trouble = fault;
    return place;
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
    std::string bytes;
    count = from < Length ? std::min(count, Length - from) : 0;
    bytes.reserve(count);
    while (bytes.size() < count) {
        const std::uint64_t at = (from + bytes.size()) % Pattern.size();
        if (Pattern.size() == 1)
            bytes.assign(count, Pattern[0]);
        else
            bytes.append(Pattern, at, count - bytes.size());
    }
    return bytes;
}

Run MakeRun(const void* data, std::size_t size) {
    const char* bytes = static_cast<const char*>(data);
    const auto repeats = [&](std::size_t period) {
        return size > period && std::memcmp(bytes, bytes + period, size - period) == 0;
    };
    if (size <= 1 || repeats(1))
        return {size, std::string(bytes, std::min<std::size_t>(size, 1))};
    for (std::size_t period = 512; period <= 65536; period *= 2)
        if (repeats(period))
            return {size, std::string(bytes, period)};
    return {size, std::string(bytes, size)};
}

bool Join(Run& run, const Run& next) {
    if (run.Length == 0 || next.Length == 0) {
        if (run.Length == 0)
            run = next;
        return true;
    }
    if (Continues(run, next)) {
        run.Length += next.Length;
        return true;
    }
    const auto pliable = [](const Run& r) {
        return r.Pattern.size() == r.Length || r.Length <= smallRun;
    };
    if (!pliable(run) || !pliable(next) || run.Length + next.Length > longestLiteral)
        return false;
    if (run.Pattern.size() != run.Length)
        run.Pattern = run.Bytes(0, run.Length);
    run.Pattern += next.Bytes(0, next.Length);
    run.Length += next.Length;
    return true;
}

std::uint64_t Content::Length() const {
    return Runs.empty() ? 0 : Runs.rbegin()->first + Runs.rbegin()->second.Length;
}

std::string Content::Read(std::uint64_t from, std::uint64_t count) const {
    std::string bytes;
    auto run = Runs.upper_bound(from);
    if (run != Runs.begin())
        --run;
    for (; run != Runs.end() && bytes.size() < count; ++run) {
        const std::uint64_t skip = from + bytes.size() - run->first;
        bytes += run->second.Bytes(skip, count - bytes.size());
    }
    return bytes;
}

void Content::Resize(std::uint64_t length) {
    const std::uint64_t now = Length();
    if (length > now) {
        Write(now, {length - now, std::string(1, '\0')});
        return;
    }
    Runs.erase(Runs.lower_bound(length), Runs.end());
    if (Length() > length) {
        auto last = std::prev(Runs.end());
        last->second = Slice(last->second, 0, length - last->first);
    }
}

void Content::Write(std::uint64_t offset, const Run& run) {
    if (run.Length == 0)
        return;
    if (offset > Length())
        Resize(offset);
    const auto cutAt = [this](std::uint64_t at) {
        auto found = Runs.upper_bound(at);
        if (found == Runs.begin())
            return;
        --found;
        Run& whole = found->second;
        const std::uint64_t head = at - found->first;
        if (head == 0 || head >= whole.Length)
            return;
        Runs[at] = Slice(whole, head, whole.Length - head);
        whole = Slice(whole, 0, head);
    };
    cutAt(offset);
    cutAt(offset + run.Length);
    Runs.erase(Runs.lower_bound(offset), Runs.lower_bound(offset + run.Length));
    auto next = Runs.lower_bound(offset);
    if (next != Runs.begin()) {
        auto before = std::prev(next);
        if (Join(before->second, run))
            return;
    }
    Runs[offset] = run;
}

std::uint64_t Drive::Free() const {
    const std::uint64_t whole = Capacity / Cluster() * Cluster();
    const std::uint64_t used = InClusters(*this, Occupied) + UsedByFiles;
    return used >= whole ? 0 : whole - used;
}

void Account(Drive& drive, std::uint64_t oldLength, std::uint64_t newLength) {
    drive.UsedByFiles += InClusters(drive, newLength) - InClusters(drive, oldLength);
}

std::shared_ptr<Node> Add(Node& folder, const std::string& name, bool isFolder) {
    auto node = std::make_shared<Node>();
    node->Name = name;
    node->Folder = isFolder;
    folder.ByName[platform::LowerCase(name)] = node;
    folder.Children.push_back(node);
    return node;
}

void Drop(Node& folder, const Node& item) {
    folder.ByName.erase(platform::LowerCase(item.Name));
    std::erase_if(folder.Children, [&](const auto& child) { return child.get() == &item; });
}

Place Find(const std::string& path, bool followLast) {
    Place place;
    if (path.size() < 2 || path[1] != ':')
        return path.empty() ? Nowhere(Fault::NotFound)
                            : Find(currentFolder + "\\" + path, followLast);
    place.Letter = static_cast<char>(path[0] & ~0x20);
    const auto drive = drives.find(place.Letter);
    if (drive == drives.end())
        return Nowhere(Fault::NotFound);
    place.Disk = &drive->second;
    if (!place.Disk->MediaPresent)
        return Nowhere(Fault::NotReady);
    std::vector<std::string> parts = Split(path.substr(2));
    if (!parts.empty()) {
        const std::size_t colon = parts.back().find(':');
        if (colon != std::string::npos) {
            place.Stream = parts.back().substr(colon + 1);
            parts.back().resize(colon);
            if (place.Disk->FileSystem != "NTFS")
                return Nowhere(Fault::InvalidName);
        }
    }
    place.Item = place.Disk->Root;
    place.Path = std::string(1, place.Letter) + ":";
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!place.Item || !place.Item->Folder)
            return Nowhere(Fault::NotFound);
        if (!IsValidName(parts[i]))
            return Nowhere(Fault::InvalidName);
        place.Folder = place.Item;
        place.Name = parts[i];
        const auto found = place.Folder->ByName.find(platform::LowerCase(parts[i]));
        place.Item = found == place.Folder->ByName.end() ? nullptr : found->second;
        const bool last = i + 1 == parts.size();
        if (place.Item && !place.Item->LinkTarget.empty() && (!last || followLast)) {
            const std::string stream = place.Stream;
            place = Find(place.Item->LinkTarget, true);
            place.Stream = stream;
            if (Failed(place.Trouble))
                return place;
        } else {
            place.Path += "\\" + (place.Item ? place.Item->Name : place.Name);
        }
    }
    return place;
}

// ---- Setting up and looking --------------------------------------------------------------------

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
    for (const std::string& part : Split(path.substr(2))) {
        const auto found = folder->ByName.find(platform::LowerCase(part));
        folder = found == folder->ByName.end() ? Add(*folder, part, true) : found->second;
    }
    return *folder;
}

Node& PutFile(const std::string& path, const std::string& content, std::uint32_t attributes) {
    TakeAway(path);
    const std::size_t end = path.rfind('\\');
    Node& file = *Add(PutFolder(path.substr(0, end)), path.substr(end + 1), false);
    file.Attributes = attributes;
    file.Data.Write(0, MakeRun(content.data(), content.size()));
    Account(drives.at(path[0]), 0, content.size());
    return file;
}

Node& PutBigFile(const std::string& path, std::uint64_t length, char byte) {
    Node& file = PutFile(path, "");
    file.Data.Write(0, {length, std::string(1, byte)});
    Account(drives.at(path[0]), 0, length);
    return file;
}

Node& PutFolderLink(const std::string& path, const std::string& target) {
    Node& link = PutFolder(path);
    link.LinkTarget = target;
    return link;
}

Node& PutFileLink(const std::string& path, const std::string& target) {
    Node& link = PutFile(path, "");
    link.LinkTarget = target;
    return link;
}

void PutStream(const std::string& path, const std::string& stream, const std::string& content) {
    At(path)->Streams[stream].Write(0, MakeRun(content.data(), content.size()));
    Account(drives.at(path[0]), 0, content.size());
}

void TakeAway(const std::string& path) {
    const Place place = Find(path, false);
    if (!place.Item || !place.Folder)
        return;
    if (!place.Stream.empty()) {
        Account(*place.Disk, place.Data().Length(), 0);
        place.Item->Streams.erase(place.Stream);
        return;
    }
    if (place.Item->Folder && place.Item->LinkTarget.empty())
        for (const std::string& file : FilesBelow(path))
            TakeAway(file);
    Account(*place.Disk, place.Item->Data.Length(), 0);
    for (const auto& [name, content] : place.Item->Streams)
        Account(*place.Disk, content.Length(), 0);
    Drop(*place.Folder, *place.Item);
}

Node* At(const std::string& path) {
    return Find(path, false).Item.get();
}

std::string ContentOf(const std::string& path) {
    const Place place = Find(path, true);
    if (!place.Item || place.Item->Folder)
        return "(missing)";
    return place.Data().Read(0, place.Data().Length());
}

std::vector<std::string> FilesBelow(const std::string& folder) {
    std::vector<std::string> files;
    const Place place = Find(folder, true);
    if (place.Item)
        Below(*place.Item, place.Path, files);
    return files;
}

// ---- The journal -------------------------------------------------------------------------------

void Journal(const char* what, const std::string& path, std::uint64_t offset, const Run& run,
             const std::string& newPath) {
    if (!journal.empty()) {
        Event& last = journal.back();
        if (last.What == "write" && last.What == what && last.Path == path &&
            last.Offset + last.Data.Length == offset && Join(last.Data, run))
            return;
    }
    journal.push_back({what, path, offset, run, newPath});
}

std::string JournalText(const std::string& path) {
    std::string text;
    char byte[3];
    for (const Event& event : journal) {
        if (!path.empty() && platform::LowerCase(event.Path) != platform::LowerCase(path))
            continue;
        if (path.empty())
            text += event.Path + ": ";
        text += event.What;
        const std::string offset = std::to_string(event.Offset);
        if (event.What == "write") {
            text += " " + offset + "+" + std::to_string(event.Data.Length) + " ";
            std::snprintf(byte, sizeof byte, "%02X",
                          static_cast<unsigned char>(event.Data.Pattern[0]));
            text += event.Data.Pattern.size() == 1 ? byte : "*";
        } else if (event.What == "length" || event.What == "attributes") {
            text += " " + offset;
        } else if (event.What == "rename") {
            text += " " + event.NewPath;
        }
        text += "\n";
    }
    return text;
}

} // namespace fake
