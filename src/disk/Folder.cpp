// Creates, recognises, lists and removes the folders that hold dummy files.
#include "disk/Folder.h"

#include "engine/FileProc.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "support/Paths.h"

namespace {

constexpr std::size_t intSuffixDigits = 16;

/// A number that no earlier run has used: clock and counter, mixed with the finaliser and the
/// constants of SplitMix64.
std::uint64_t UniqueNumber() {
    static std::uint64_t lngCalls = 0;
    auto z = platform::TickCount() * 86400000 +
             static_cast<std::uint64_t>(platform::SecondsSinceMidnight() * 1000) +
             ++lngCalls * 0x9E3779B97F4A7C15;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
}

std::string HexDigits(std::uint64_t number) {
    std::string digits(intSuffixDigits, '0');
    for (std::size_t i = intSuffixDigits; i-- > 0; number >>= 4)
        digits[i] = "0123456789abcdef"[number & 15];
    return digits;
}

/// The digits after stub + "_" in the name of one of our folders; "" for any other name.
std::string SuffixOf(const std::string& strName, const std::string& strStub) {
    const std::string start = strStub + "_";
    if (strName.size() != start.size() + intSuffixDigits || !strName.starts_with(start))
        return {};
    const std::string suffix = strName.substr(start.size());
    return suffix.find_first_not_of("0123456789abcdef") == std::string::npos ? suffix
                                                                             : std::string();
}

/// The marker holds nothing that shows the purpose, so its name does. It begins empty; on NTFS null
/// bytes push it out of its record (see FillMarker), and its cluster is overwritten by them only.
std::string MarkerName(const std::string& strSuffix, DummyPurpose purpose) {
    return "nullwright-" + strSuffix + (purpose == DummyPurpose::SpeedTest ? ".test" : ".mark");
}

/// The path of the marker in a folder with this suffix, "" when there is none.
std::string FindMarker(const std::string& strFolder, const std::string& strSuffix,
                       DummyPurpose& purpose) {
    for (const auto kind : {DummyPurpose::Filling, DummyPurpose::SpeedTest}) {
        std::string strMarker = strFolder + "\\" + MarkerName(strSuffix, kind);
        if (platform::FileExists(strMarker)) {
            purpose = kind;
            return strMarker;
        }
    }
    purpose = DummyPurpose::Unknown;
    return {};
}

bool IsEmptyFolder(const std::string& strFolder) {
    bool blnEmpty = true;
    const auto fault = platform::EnumerateFolder(strFolder, [&](const platform::FolderEntry&) {
        blnEmpty = false;
        return false;
    });
    return !Failed(fault) && blnEmpty;
}

bool IsInUse(const std::string& strMarker) {
    platform::File marker;
    const auto fault = platform::OpenFile(strMarker, platform::Access::Change, marker);
    if (!Failed(fault))
        (void)platform::CloseFile(marker);
    return fault == platform::Fault::SharingViolation;
}

/// The number in a name stub + number as we write it; 0 for any other name.
std::int64_t DummyNumberOf(const std::string& strName, const std::string& strStub) {
    if (!platform::LowerCase(strName).starts_with(platform::LowerCase(strStub)))
        return 0;
    const std::string digits = strName.substr(strStub.size());
    if (digits.empty() || digits.size() > 15 || digits[0] == '0' ||
        digits.find_first_not_of("0123456789") != std::string::npos)
        return 0;
    return std::stoll(digits);
}

const char* const strRecordStart = "_NW";
constexpr std::size_t intRecordDigits = 5;
constexpr std::size_t intSpareLetters = 200;
const char* const strRecordAlphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

/// Whether a name consists of a beginning from RecordFileName and this end.
bool IsRecordFile(const std::string& strName, const std::string& strEnd) {
    const std::size_t intLength = std::string(strRecordStart).size() + intRecordDigits;
    return strName.starts_with(strRecordStart) && strName.size() == intLength + strEnd.size() &&
           strName.ends_with(strEnd) &&
           strName.find_first_not_of(strRecordAlphabet, 1) >= intLength;
}

std::string SpareEnd() {
    return std::string(intSpareLetters, 'Z');
}

std::string RootEntryEnd(const std::string& strFolder) {
    return "." + platform::UpperCase(strFolder.substr(strFolder.size() - 3));
}

} // namespace

std::string RecordFileName(std::int64_t lngNumber) {
    std::string strDigits(intRecordDigits, '0');
    for (std::size_t i = intRecordDigits; i-- > 0; lngNumber /= 36)
        strDigits[i] = strRecordAlphabet[lngNumber % 36];
    return strRecordStart + strDigits;
}

std::string SpareFileName(std::int64_t lngNumber) {
    return RecordFileName(lngNumber) + SpareEnd();
}

std::string RootEntryName(const std::string& strFolder, std::int64_t lngNumber) {
    return RecordFileName(lngNumber) + RootEntryEnd(strFolder);
}

platform::Fault ListRecordFiles(const std::string& strFolder, const std::string& strStub,
                                std::vector<std::string>& paths) {
    if (SuffixOf(FileNameOf(strFolder), strStub).empty())
        return platform::Fault::InvalidName;
    std::vector<std::string> found;
    auto fault = platform::EnumerateFolder(strFolder, [&](const platform::FolderEntry& entry) {
        if (!entry.IsFolder && !entry.IsLink &&
            (IsRecordFile(entry.Name, "") || IsRecordFile(entry.Name, SpareEnd())))
            found.push_back(strFolder + "\\" + entry.Name);
        return true;
    });
    const std::string strRoot = FolderPartOf(strFolder), strEnd = RootEntryEnd(strFolder);
    if (!Failed(fault))
        fault = platform::EnumerateFolder(strRoot, [&](const platform::FolderEntry& entry) {
            if (!entry.IsFolder && !entry.IsLink && entry.Length == 0 &&
                IsRecordFile(entry.Name, strEnd))
                found.push_back(strRoot + entry.Name);
            return true;
        });
    if (!Failed(fault))
        paths = std::move(found);
    return fault;
}

std::string MakeDummyFolder(const std::string& strDriveRoot, const std::string& strStub,
                            DummyPurpose purpose, platform::File& marker) {
    for (int intTry = 0; intTry < 10; ++intTry) {
        const std::string suffix = HexDigits(UniqueNumber());
        const std::string strFolder = FolderWithBackslash(strDriveRoot) + strStub + "_" + suffix;
        const auto fault = platform::MakeFolder(strFolder);
        if (fault == platform::Fault::AlreadyExists)
            continue;
        if (Failed(fault))
            return {};
        if (!Failed(platform::OpenFile(strFolder + "\\" + MarkerName(suffix, purpose),
                                       platform::Access::CreateNew, marker)))
            return strFolder;
        // Without its marker the folder could not be recognised as ours after a crash.
        (void)platform::RemoveFolder(strFolder);
        return {};
    }
    return {};
}

platform::Fault ListDummyFiles(const std::string& strFolder, const std::string& strStub,
                               std::vector<DummyFile>& files) {
    if (SuffixOf(FileNameOf(strFolder), strStub).empty())
        return platform::Fault::InvalidName;
    std::vector<DummyFile> found;
    const auto fault =
        platform::EnumerateFolder(strFolder, [&](const platform::FolderEntry& entry) {
            if (entry.IsFolder || entry.IsLink)
                return true;
            if (const auto lngNumber = DummyNumberOf(entry.Name, strStub); lngNumber > 0)
                found.push_back({lngNumber, static_cast<std::int64_t>(entry.Length)});
            return true;
        });
    if (!Failed(fault))
        files = std::move(found);
    return fault;
}

std::string DummyFilePath(const std::string& strFolder, const std::string& strStub,
                          std::int64_t lngNumber) {
    return strFolder + "\\" + strStub + std::to_string(lngNumber);
}

namespace {

/// What is not found with its whole drive is not gone.
platform::Fault NoneIfGone(const std::string& strFolder, platform::Fault fault) {
    return IsGone(strFolder) ? platform::Fault::None : fault;
}

} // namespace

platform::Fault RemoveDummyFolder(const std::string& strFolder, const std::string& strStub) {
    const std::string suffix = SuffixOf(FileNameOf(strFolder), strStub);
    if (suffix.empty())
        return platform::Fault::InvalidName;
    DummyPurpose purpose;
    const std::string strMarker = FindMarker(strFolder, suffix, purpose);
    bool blnDummies = false, blnOthers = false;
    std::vector<std::string> small;
    auto fault = ListRecordFiles(strFolder, strStub, small);
    if (fault == platform::Fault::NotFound)
        return NoneIfGone(strFolder, fault);
    if (Failed(fault) || !small.empty())
        return Failed(fault) ? fault : platform::Fault::AccessDenied;
    fault = platform::EnumerateFolder(strFolder, [&](const platform::FolderEntry& entry) {
        blnDummies = blnDummies || DummyNumberOf(entry.Name, strStub) > 0;
        blnOthers = blnOthers || strMarker.empty() || entry.Name != FileNameOf(strMarker);
        return !blnDummies;
    });
    if (fault == platform::Fault::NotFound)
        return NoneIfGone(strFolder, fault);
    if (Failed(fault))
        return fault;
    // Delete the marker after the last dummy file: after an interruption, a folder with dummy files
    // is still recognised as ours.
    if (blnDummies)
        return platform::Fault::AccessDenied;
    fault = strMarker.empty() ? platform::Fault::None : platform::RemoveFile(strMarker);
    if (Failed(fault) && fault != platform::Fault::NotFound)
        return fault;
    if (blnOthers)
        return platform::Fault::NotEmpty;
    fault = platform::RemoveFolder(strFolder);
    // A deleted dummy file that is still open elsewhere is no longer listed but still in the
    // folder.
    return fault == platform::Fault::NotFound   ? NoneIfGone(strFolder, fault)
           : fault == platform::Fault::NotEmpty ? platform::Fault::SharingViolation
                                                : fault;
}

std::vector<DummyFolder> FindLeftoverDummyFolders(const std::string& strDriveRoot,
                                                  const std::string& strStub) {
    std::vector<DummyFolder> folders;
    const std::string strRoot = FolderWithBackslash(strDriveRoot);
    // An unreadable root contains nothing that we could remove.
    (void)platform::EnumerateFolder(strRoot, [&](const platform::FolderEntry& entry) {
        if (entry.IsFolder && !entry.IsLink && !SuffixOf(entry.Name, strStub).empty())
            folders.push_back({strRoot + entry.Name});
        return true;
    });
    std::erase_if(folders, [&](DummyFolder& folder) {
        const std::string strMarker = FindMarker(
            folder.strPath, SuffixOf(FileNameOf(folder.strPath), strStub), folder.Purpose);
        return strMarker.empty() ? !IsEmptyFolder(folder.strPath) : IsInUse(strMarker);
    });
    return folders;
}
