// Meaningless names and dates for a file or a folder that is about to go.
#include "engine/OverwriteName.h"

#include "drives/DriveWork.h"
#include "engine/FileProc.h"
#include "engine/HeldFiles.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "session/Session.h"
#include "support/Numbers.h"
#include "support/Paths.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace {

/// The first name is one letter again and again, the others are random.
constexpr int intNames = 3;
constexpr int intMostTries = 64;
/// A name in which all names of the same length are taken (there are 32 of one letter) is left for
/// one so much longer.
constexpr std::size_t lngLonger = 8;
constexpr std::size_t lngLongestName = 255;
constexpr std::int64_t lngFixedDate = 946'684'800; // 1 January 2000

/// No point, which would make an extension, and not the letters of names that devices have: "con".
constexpr char strLetters[] = "abcdefghijklmqrstvwxyz0123456789";

/// Bytes that an entry of NTFS's index needs beside two for each unit of the name.
constexpr std::size_t lngEntry = 98;
constexpr std::size_t lngFillingName = 100;
/// The old names may lie in blocks that are half full, as the new ones will. Seen on images: with
/// one new entry for 430 bytes of old ones some names stay, for 280 none.
constexpr std::size_t lngBytesForEach = 250;
constexpr std::size_t lngLeastFilling = 8, lngMostFilling = 65536;

/// By folder: how many bytes the entries took whose names were overwritten there.
std::map<std::string, std::size_t> overwritten;

/// As file systems count: half a surrogate pair is one.
std::size_t UnitsIn(const std::string& name) {
    std::size_t units = 0;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        units += (byte & 0xC0) != 0x80 ? 1u : 0u;
        units += byte >= 0xF0 ? 1u : 0u;
    }
    return units;
}

char RandomLetter() {
    return strLetters[RandomInteger(0, sizeof strLetters - 2)];
}

std::string MeaninglessName(std::size_t length, bool random) {
    std::string name(length, RandomLetter());
    if (random)
        std::generate(name.begin(), name.end(), RandomLetter);
    return name;
}

template<typename Work>
platform::Fault OnDrive(const std::string& path, Work work) {
    return TryWhileHeld([&] {
        auto fault = platform::Fault::None;
        WorkOnDrive(path, [&] { fault = work(); });
        return fault;
    });
}

platform::Fault Rename(std::string& path, const std::string& first, std::size_t& length,
                       bool random) {
    auto fault = platform::Fault::AlreadyExists;
    for (int i = 0; i < intMostTries && fault == platform::Fault::AlreadyExists; ++i) {
        if (i == intMostTries / 2)
            length = std::min(length + lngLonger, lngLongestName);
        const std::string name = MeaninglessName(length, random);
        const std::string to = FolderPartOf(path) + name;
        if (to == path || name == first)
            continue;
        fault = OnDrive(path, [&] { return platform::RenameNew(path, to); });
        if (!Failed(fault))
            path = to;
    }
    return fault;
}

/// Each name is to get to the disk before the next one, as far as Windows lets this user ask for
/// it.
bool Flush(const std::string& folder) {
    const platform::Fault fault = OnDrive(folder, [&] { return platform::FlushFolder(folder); });
    return !Failed(fault) || fault == platform::Fault::AccessDenied ||
           fault == platform::Fault::NotSupported;
}

/// Names in ascending order, from the beginning of the alphabet to its end: so every block is full
/// once, and those between names that stay are reached, too.
std::string FillingName(std::size_t index, std::size_t count) {
    constexpr std::size_t lngLetters = sizeof strLetters - 1;
    std::string name(4, strLetters[0]);
    std::size_t place = index * (lngLetters * lngLetters * lngLetters * lngLetters) / count;
    for (std::size_t i = name.size(); i-- > 0; place /= lngLetters)
        name[i] = strLetters[(place + lngLetters - 10) % lngLetters]; // digits come first
    return name + "_nw_name_" + MeaninglessName(lngFillingName - name.size() - 9, true);
}

platform::Fault MakeEmpty(const std::string& path, std::vector<std::string>& made) {
    platform::File file;
    const platform::Fault fault = platform::OpenFile(path, platform::Access::CreateNew, file);
    if (Failed(fault))
        return fault;
    made.push_back(path);
    return platform::CloseFile(file);
}

/// Not when somebody has written into it.
bool RemoveEmpty(const std::string& path) {
    return DeleteFileClearingAttributes(path, true, true, true, nullptr, 0);
}

} // namespace

std::string FillIndexOf(const std::string& folder) {
    const auto node = overwritten.extract(folder);
    if (node.empty())
        return {};
    const std::size_t count =
        std::min(node.mapped() / lngBytesForEach + lngLeastFilling, lngMostFilling);
    std::vector<std::string> made, left;
    auto fault = platform::Fault::None;
    std::size_t next = 0;
    RunStepsOnDrive(
        folder, ui::Effort::Long,
        [&] {
            fault = MakeEmpty(folder + FillingName(next, count), made);
            return !Failed(fault) && ++next < count;
        },
        [] { return !blnStop; });
    RunStepsOnDrive(
        folder, ui::Effort::Long,
        [&] {
            if (made.empty())
                return false;
            if (!RemoveEmpty(made.back()))
                left.push_back(made.back());
            made.pop_back();
            return true;
        },
        [] { return true; });
    std::string told;
    for (const std::string& path : left) // somebody may look into each new file for a moment
        if (OnDrive(path, [&] {
                return RemoveEmpty(path) ? platform::Fault::None
                                         : platform::Fault::SharingViolation;
            }) != platform::Fault::None)
            told += path + ": an empty file, which could not be deleted.\r\n";
    if (next < count || !Flush(folder))
        told += "Names of purged files may remain in the index of " + folder + ".\r\n";
    return told;
}

bool OverwriteName(std::string& path, bool blnDates) {
    const std::string first = platform::LowerCase(FileNameOf(path));
    std::size_t length = UnitsIn(FileNameOf(path));
    overwritten[FolderPartOf(path)] += lngEntry + 2 * length;
    bool blnAll = true;
    for (int i = 0; i < intNames; ++i) {
        if (Failed(Rename(path, first, length, i > 0)))
            return false;
        blnAll = Flush(FolderPartOf(path)) && blnAll;
        // What cannot be renamed cannot be deleted either, as a rule, and keeps its dates. With
        // each further name NTFS keeps the dates once more.
        if (i == 0 && blnDates &&
            Failed(OnDrive(path, [&] { return platform::WriteDates(path, lngFixedDate); })))
            blnAll = false;
    }
    return blnAll;
}
