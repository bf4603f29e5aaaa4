// Lengths, deletion and extensions of single files, and the calls of the auxiliary library.
#include "engine/FileProc.h"

#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "support/Utf8.h"

#include <algorithm>

namespace {

/// Clears one attribute bit by exclusive-or against what was just read. Faults do not count.
void ClearAttribute(const std::string& path, std::uint32_t& attributes, std::uint32_t bit) {
    if ((attributes & bit) == 0)
        return;
    (void)platform::WriteAttributes(path, attributes ^ bit);
    (void)platform::ReadAttributes(path, attributes);
}

/// Whether the folder that a path lies in is there. What the system does not find in it is gone;
/// otherwise the drive may have been pulled, or the folder moved, with all that is in it.
bool FolderAnswers(const std::string& path) {
    return platform::FolderExists(FolderPartOf(path));
}

template<std::size_t N>
bool IsOneOf(const std::string& text, const char* const (&list)[N]) {
    return std::find(std::begin(list), std::end(list), text) != std::end(list);
}

} // namespace

bool FlushFile(const std::string& path) {
    return !Failed(platform::LoadAuxiliaryLibrary()) && platform::AuxiliaryFlushFile(path) == 0;
}

std::int16_t ChangeFileSize(const std::string& path, std::int64_t newLength) {
    if (Failed(platform::LoadAuxiliaryLibrary()))
        return -1;
    return static_cast<std::int16_t>(platform::AuxiliaryChangeFileSize(path, newLength));
}

bool DeleteFileClearingAttributes(const std::string& path, bool clearHidden, bool clearReadOnly,
                                  bool clearSystem, platform::Fault* fault,
                                  std::int64_t onlyLength) {
    std::uint32_t attributes = 0;
    std::uint64_t length = 0;
    const platform::Fault asked = platform::ReadAttributes(path, attributes, &length);
    // Only "not found" proves that there is nothing to delete.
    if (asked == platform::Fault::NotFound) {
        const bool blnGone = FolderAnswers(path);
        if (fault && !blnGone)
            *fault = asked;
        return blnGone;
    }
    if (onlyLength >= 0 && !Failed(asked) && length != static_cast<std::uint64_t>(onlyLength)) {
        if (fault)
            *fault = platform::Fault::None;
        return false;
    }
    if (clearHidden)
        ClearAttribute(path, attributes, platform::AttributeHidden);
    if (clearReadOnly)
        ClearAttribute(path, attributes, platform::AttributeReadOnly);
    if (clearSystem)
        ClearAttribute(path, attributes, platform::AttributeSystem);
    const platform::Fault removal = platform::RemoveFile(path);
    if (fault)
        *fault = removal;
    return !Failed(removal);
}

bool FileExistsFSO(const std::string& path) {
    return platform::FileExists(path);
}

bool IsGone(const std::string& path) {
    std::uint32_t attributes = 0;
    return platform::ReadAttributes(path, attributes) == platform::Fault::NotFound &&
           FolderAnswers(path);
}

std::int64_t GetFileLength(const std::string& path) {
    std::uint64_t length = 0;
    return Failed(platform::ReadFileLength(path, length)) ? 0 : static_cast<std::int64_t>(length);
}

std::string UniqueNumberedFileName(const std::string& base) {
    // A drive can need many thousands of dummy files: while the name given last is in use, the
    // search goes on behind it instead of asking for all the lower numbers again.
    static std::string strLastBase;
    static std::int64_t lngLastNumber = 0;
    std::int64_t number = 1;
    if (base == strLastBase && FileExistsFSO(base + std::to_string(lngLastNumber)))
        number = lngLastNumber + 1;
    while (FileExistsFSO(base + std::to_string(number)))
        ++number;
    strLastBase = base;
    lngLastNumber = number;
    return base + std::to_string(number);
}

bool IsSensitiveFile(const std::string& path, bool shortList) {
    static constexpr const char* always[] = {"BAT", "INI", "SYS", "SCR", "EXE", "DRV",
                                             "DOC", "DLL", "COM", "BIN", "386"};
    static constexpr const char* longListOnly[] = {"SHS", "RTF", "PPT", "MSO", "MDB",
                                                   "DOT", "CPL", "CLA", "CBT", "ADT"};
    const std::string extension = platform::UpperCase(ExtensionOf(path));
    // Four letters are never sensitive ("xlsx", "docx"): deliberately so.
    if (CharactersIn(extension) != 3)
        return false;
    return extension.rfind("XL", 0) == 0 || extension.rfind("OV", 0) == 0 ||
           IsOneOf(extension, always) || (!shortList && IsOneOf(extension, longListOnly));
}
