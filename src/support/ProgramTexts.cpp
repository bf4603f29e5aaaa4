// The built-in texts, and the file that may replace them, read with bounds checks.
#include "support/ProgramTexts.h"

#include "platform/Files.h"
#include "support/Paths.h"
#include "support/StrProc.h"
#include "support/Utf8.h"

#include <array>
#include <iterator>
#include <map>

namespace {

enum class Use {
    Prose,    ///< shown to the user
    FileName, ///< the name of a file or folder
    Address   ///< opened in the browser: never anything that could start a program
};

struct BuiltIn {
    TextNumber Number;
    Use How;
    const char* Text;
};

constexpr BuiltIn builtIns[] = {
    {TextNumber::NextRunStem, Use::FileName, "Nullwright"},
    {TextNumber::AcceptTypeTitle, Use::Prose, "Nullwright"},
    {TextNumber::SettingsFolder, Use::FileName, "Nullwright"},
    {TextNumber::SlackOnlyNote, Use::Prose,
     "Only the slack area between the end of each file and the end of its last cluster will be "
     "overwritten. The files themselves are neither changed nor deleted."},
    {TextNumber::OrdinaryNote, Use::Prose,
     "The contents of each file and its slack area will be overwritten. What has been purged "
     "cannot be brought back."},
    {TextNumber::MakerLink, Use::Address, "https://nullwright.example/"},
    {TextNumber::DocumentationLink, Use::Address, "https://nullwright.example/manual/"},
};

constexpr std::size_t longestFile = 1 << 20;
constexpr std::size_t longestText = 4000, longestName = 60;

/// The loaded entries; missing ones are built in.
std::map<TextNumber, std::string> loadedTexts;

const BuiltIn* FindBuiltIn(int number) {
    for (const BuiltIn& entry : builtIns)
        if (static_cast<int>(entry.Number) == number)
            return &entry;
    return nullptr;
}

bool IsUsable(const std::string& text, Use how) {
    if (text.empty() || text.size() > longestText || !IsUtf8(text))
        return false;
    for (const char c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == 0x7F)
            return false;
    if (how == Use::Prose)
        return text.find_first_not_of(' ') != std::string::npos;
    if (how == Use::Address)
        return (text.rfind("https://", 0) == 0 || text.rfind("http://", 0) == 0) &&
               text.find_first_of(" \"<>\\") == std::string::npos;
    return text.size() <= longestName && text.find_first_of("\\/:*?\"<>|") == std::string::npos &&
           text.front() != ' ' && text.back() != ' ' && text.back() != '.';
}

platform::Fault ReadWhole(const std::string& path, std::string& content) {
    platform::File file;
    platform::Fault fault = platform::OpenFile(path, platform::Access::Read, file);
    if (Failed(fault))
        return fault;
    std::array<char, 8192> piece{};
    std::size_t read = 0;
    do {
        fault = platform::ReadBytes(file, piece.data(), piece.size(), read);
        if (!Failed(fault))
            content.append(piece.data(), read);
    } while (!Failed(fault) && read > 0 && content.size() <= longestFile);
    const platform::Fault closing = platform::CloseFile(file);
    if (!Failed(fault) && content.size() > longestFile)
        fault = platform::Fault::Other;
    return Failed(fault) ? fault : closing;
}

/// Reads one line; false when it is malformed. Empty lines, notes ("# ...") and numbers unknown to
/// this version are ignored.
bool TakeLine(const std::string& line) {
    if (line.empty() || line[0] == '#')
        return true;
    const std::size_t tab = line.find('\t');
    if (tab == std::string::npos || tab == 0 || tab > 5 ||
        line.find_first_not_of("0123456789") != tab)
        return false;
    const BuiltIn* entry = FindBuiltIn(std::stoi(line.substr(0, tab)));
    if (entry == nullptr)
        return true;
    const std::string text = line.substr(tab + 1);
    if (!IsUsable(text, entry->How))
        return false;
    return loadedTexts.emplace(entry->Number, text).second; // a duplicate number is an error
}

} // namespace

std::string LoadProgramTexts(const std::string& strProgramTextFile) {
    loadedTexts.clear();
    const std::string name =
        "The file with the program texts, \"" + FileNameOf(strProgramTextFile) + "\", ";
    std::string content;
    const platform::Fault fault = ReadWhole(strProgramTextFile, content);
    if (fault == platform::Fault::NotFound)
        return name + "is missing, so the built-in English texts are used.";
    if (Failed(fault))
        return name + "cannot be read, so the built-in English texts are used.";

    bool blnWhole = true;
    for (std::string line : LinesOf(WithoutMark(content), "\n")) {
        if (line.back() == '\r')
            line.pop_back();
        blnWhole = TakeLine(line) && blnWhole;
    }
    if (loadedTexts.empty())
        return name + "holds no texts, so the built-in English texts are used.";
    if (!blnWhole || loadedTexts.size() < std::size(builtIns))
        return name + "is damaged, so some texts are the built-in English ones.";
    return {};
}

std::string ProgramText(TextNumber number) {
    const auto found = loadedTexts.find(number);
    if (found != loadedTexts.end())
        return found->second;
    const BuiltIn* entry = FindBuiltIn(static_cast<int>(number));
    return entry == nullptr ? std::string() : entry->Text;
}
