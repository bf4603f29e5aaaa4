// Setup files: fourteen lines of text, read item by item, and a line more for each option that came
// later and is on.
#include "settings/SetupFiles.h"

#include "engine/PurgeTypes.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/TextFiles.h"
#include "support/FolderSearch.h"
#include "support/Paths.h"
#include "support/ProgramTexts.h"
#include "support/Utf8.h"
#include "ui/Controls.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

/// Major and minor number of the program's version; the first line of a setup file.
constexpr const char* strVersion = "1.0";
/// Behind the name of an option.
constexpr const char* strOn = "=1";

/// A copy of the program with a file of this name beside it keeps its settings there and leaves
/// nothing elsewhere.
constexpr const char* strPortableMarker = "nullwright.portable";

std::string strNextRunFolder;
std::string strNextRunPath;

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool IsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

/// Takes the next item from the front of the text: up to a comma or the end of the line, without
/// leading blanks. A quoted item ends at its closing quote, so that files edited by hand may hold
/// a comma. False at the end of the text.
bool TakeItem(std::string_view& strText, std::string_view& strItem) {
    std::size_t i = 0;
    while (i < strText.size() && IsBlank(strText[i]))
        ++i;
    if (i == strText.size())
        return false;
    std::size_t intEnd = i;
    if (strText[i] == '"') {
        const std::size_t intQuote = strText.find('"', i + 1);
        if (intQuote == std::string_view::npos)
            return false;
        strItem = strText.substr(i + 1, intQuote - i - 1);
        intEnd = intQuote + 1;
        while (intEnd < strText.size() && strText[intEnd] != ',' && !IsLineEnd(strText[intEnd]))
            ++intEnd;
    } else {
        intEnd = std::min(strText.find_first_of(",\r\n", i), strText.size());
        strItem = strText.substr(i, intEnd - i);
    }
    // CR LF, LF and CR end a line.
    if (intEnd < strText.size())
        intEnd += strText.substr(intEnd).starts_with("\r\n") ? 2 : 1;
    strText.remove_prefix(intEnd);
    return true;
}

bool TakeNumber(std::string_view& strText, std::int16_t& intNumber) {
    std::string_view strItem;
    if (!TakeItem(strText, strItem))
        return false;
    while (!strItem.empty() && IsBlank(strItem.back()))
        strItem.remove_suffix(1);
    const char* const chrEnd = strItem.data() + strItem.size();
    std::int16_t n = 0;
    const auto result = std::from_chars(strItem.data(), chrEnd, n);
    if (result.ec != std::errc{} || result.ptr != chrEnd)
        return false;
    intNumber = n;
    return true;
}

/// True for text that can be a path.
bool IsCleanText(std::string_view strText) {
    for (const char c : strText)
        if (static_cast<unsigned char>(c) < 0x20)
            return false;
    return IsUtf8(std::string(strText), true);
}

/// A folder: empty, or on a drive with a letter. Anything else would be refused where folders are
/// chosen, too.
bool TakeFolder(std::string_view& strText, std::string& strFolder) {
    std::string_view strItem;
    if (!TakeItem(strText, strItem) || !IsCleanText(strItem))
        return false;
    const bool blnOnDrive =
        strItem.size() > 2 && strItem[2] == '\\' && DriveIndexOf(std::string(strItem)) >= 0;
    if (!strItem.empty() && !blnOnDrive)
        return false;
    strFolder = FolderWithBackslash(std::string(strItem));
    return true;
}

/// The check boxes of the purge options, up to the first value that is missing or wrong; false
/// when there is one.
bool TakeBoxes(std::string_view& strText) {
    for (const OptionBox& option : PurgeOptionBoxes()) {
        std::int16_t intValue = 0;
        if (!TakeNumber(strText, intValue) || intValue < 0 || intValue > 1)
            return false;
        option.Box->Value = intValue;
    }
    return true;
}

/// What follows the fourteen lines: "verify=1". What is not understood is passed over.
void TakeFurtherOptions(std::string_view& strText) {
    for (const OptionBox& option : FurtherOptions())
        option.Box->Value = 0;
    std::string_view strItem;
    while (TakeItem(strText, strItem))
        for (const OptionBox& option : FurtherOptions())
            if (strItem == option.strName + std::string(strOn))
                option.Box->Value = 1;
}

/// "C:\" for the first drive that is a fixed disk; "" when there is none. Not by FirstFixedDrive,
/// which gives up at the first letter without a drive, and that is A: nearly everywhere.
std::string FirstFixedRoot() {
    for (const char chrDrive : platform::DriveLetters()) {
        const std::string strRoot = std::string(1, chrDrive) + ":\\";
        if (platform::TypeOfDrive(strRoot) == platform::DriveType::Fixed)
            return strRoot;
    }
    return {};
}

} // namespace

std::string SetupText(bool blnWithFolders) {
    std::string strText;
    const auto line = [&strText](const std::string& strValue) { strText += strValue + "\r\n"; };
    line(strVersion);
    line(blnSubdirectories ? "1" : "0");
    line(blnConfirmFiles ? "1" : "0");
    line(blnWithFolders ? strDirPath : "");
    line(blnWithFolders ? strBrowsePath : "");
    line(std::to_string(GetPurgeType()));
    line(std::to_string(GetNumberOfPasses()));
    for (const OptionBox& option : PurgeOptionBoxes())
        line(std::to_string(option.Box->Value));
    for (const OptionBox& option : FurtherOptions())
        if (option.Box->Value == 1)
            line(option.strName + std::string(strOn));
    return strText;
}

bool ApplySetupText(const std::string& text) {
    std::string_view strRest = text;
    std::string_view strVersionRead;
    std::int16_t intSubdirectories = 0, intConfirm = 0, intType = 0, intPasses = 0;
    std::string strFolder, strBrowse;
    if (!TakeItem(strRest, strVersionRead) || !TakeNumber(strRest, intSubdirectories) ||
        !TakeNumber(strRest, intConfirm) || !TakeFolder(strRest, strFolder) ||
        !TakeFolder(strRest, strBrowse) || !TakeNumber(strRest, intType) ||
        !TakeNumber(strRest, intPasses))
        return false;

    // From here on what has been read takes effect, step by step, also when a later step fails. A
    // fault among the boxes ends their reading, but what was read before them still takes effect.
    const bool blnAllBoxes = TakeBoxes(strRest);
    if (blnAllBoxes)
        TakeFurtherOptions(strRest);

    if (intSubdirectories < 0 || intSubdirectories > 1)
        return false;
    blnSubdirectories = intSubdirectories == 1;
    if (intConfirm < 0 || intConfirm > 1)
        return false;
    blnConfirmFiles = intConfirm == 1;

    // A setup holds no file specification. The old one was meant for the old folder: it goes.
    strDirPath = strFolder;
    strBrowsePath = strBrowse;
    strFilespec.clear();
    blnMultipleFiles = false;

    if (!IsPurgeType(intType))
        return false;
    SetPurgeType(intType);
    return ui::SelectItem(frmTypeOfPurge.cboNumberOfPasses[intType], &ui::ListItem::Text,
                          std::to_string(intPasses)) &&
           blnAllBoxes;
}

bool ReadSetupFile(const std::string& path) {
    std::string strText;
    bool blnRead = false;
    AskOnDrive(path, [&] { blnRead = ReadTextFile(path, strText); });
    return blnRead && ApplySetupText(strText);
}

bool FoldersFitSetupFile() {
    return (strDirPath + strBrowsePath).find(',') == std::string::npos;
}

bool WriteSetupFile(const std::string& path, bool blnWithFolders) {
    return WriteTextFile(path, SetupText(blnWithFolders));
}

void FindNextRunSetupPath() {
    strNextRunFolder.clear();
    strNextRunPath.clear();
    const std::string strProgramFolder = platform::ProgramFolder();
    if (platform::FileExists(FolderWithBackslash(strProgramFolder) + strPortableMarker)) {
        strNextRunFolder = strProgramFolder;
    } else {
        std::string strPlace;
        if (platform::Failed(platform::ReadApplicationDataFolder(strPlace)))
            strPlace = FirstFixedRoot();
        if (strPlace.empty())
            return;
        strNextRunFolder = FolderWithBackslash(strPlace) + ProgramText(TextNumber::SettingsFolder);
    }
    strNextRunPath = FolderWithBackslash(strNextRunFolder) +
                     platform::LowerCase(ProgramText(TextNumber::NextRunStem)) + ".usr";
}

const std::string& NextRunSetupPath() {
    return strNextRunPath;
}

bool MakeNextRunFolder() {
    if (strNextRunFolder.empty())
        return false;
    return platform::FolderExists(strNextRunFolder) ||
           !platform::Failed(platform::MakeFolder(strNextRunFolder));
}
