// Meaningless names and dates for a file or a folder that is about to go.
#include "engine/OverwriteName.h"

#include "drives/DriveWork.h"
#include "engine/HeldFiles.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "support/Numbers.h"
#include "support/Paths.h"

#include <algorithm>
#include <cstdint>

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

} // namespace

bool OverwriteName(std::string& path, bool blnDates) {
    const std::string first = platform::LowerCase(FileNameOf(path));
    std::size_t length = UnitsIn(FileNameOf(path));
    // Before the names: with each of them NTFS keeps the dates once more.
    bool blnAll = !blnDates ||
                  !Failed(OnDrive(path, [&] { return platform::WriteDates(path, lngFixedDate); }));
    for (int i = 0; i < intNames; ++i) {
        if (Failed(Rename(path, first, length, i > 0)))
            return false;
        blnAll = Flush(FolderPartOf(path)) && blnAll;
    }
    return blnAll;
}
