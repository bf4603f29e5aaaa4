// The paths of a command: read from lists, made full, specified as in the main window.
#include "cli/GivenPaths.h"

#include "cli/Outcome.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "settings/TextFiles.h"
#include "shell/ChosenItems.h"
#include "support/FolderSearch.h"
#include "support/Paths.h"
#include "support/Utf8.h"
#include "ui/console/Terminal.h"

#include <algorithm>

namespace {

/// Some millions of paths.
constexpr std::size_t lngMaxList = 256 * 1024 * 1024;

/// Adds paths that NUL ends, or lines. "" or what is wrong with the list.
std::string ReadList(const std::string& strFrom, std::vector<std::string>& paths) {
    std::string text;
    if (strFrom == "-" ? !ui::console::ReadInput(text, lngMaxList)
                       : !ReadTextFile(platform::FullPath(strFrom), text, lngMaxList))
        return "cannot be read, or is longer than 256 MB.";
    if (!IsUtf8(text, true))
        return "is no list of paths: it is not UTF-8 text.";
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3); // the mark of UTF-8
    const std::size_t before = paths.size();
    const char end = text.find('\0') == std::string::npos ? '\n' : '\0';
    for (std::size_t from = 0, to = 0; from < text.size(); from = to + 1) {
        to = std::min(text.find(end, from), text.size());
        std::string path = text.substr(from, to - from);
        if (end == '\n' && path.ends_with('\r'))
            path.pop_back();
        if (std::any_of(path.begin(), path.end(), [](char c) { return c >= 0 && c < ' '; }))
            return "is no list of paths: there are control characters in it.";
        if (!path.empty())
            paths.push_back(path);
    }
    return paths.size() > before ? "" : "names no path.";
}

} // namespace

std::string CompletePaths(CommandLine& line, bool blnPaths) {
    if (line.Has("report")) {
        const std::string strReport = platform::FullPath(line.Of("report"));
        if (!platform::FolderExists(FolderPartOf(strReport)))
            return "There is no folder for the report " + strReport + ".";
        line.options["report"] = {strReport};
    }
    if (line.Has("from"))
        if (const std::string wrong = ReadList(line.Of("from"), line.arguments); !wrong.empty())
            return "--from " + line.Of("from") + " " + wrong;
    for (std::string& path : line.arguments) {
        if (blnPaths && (path.empty() || (path.size() == 2 && path[1] == ':')))
            return "\"" + path + "\" is no path: D:\\ is a drive, D:. its current folder.";
        const bool blnAlone = line.arguments.size() == 1 && !line.Has("files");
        if (blnPaths && !blnAlone && IsWildcard(FileNameOf(path)))
            return path + " is a pattern, which stands alone. Of several folders: --files SPEC.";
        path = blnPaths ? platform::FullPath(path) : path;
    }
    return {};
}

bool TakePaths(const CommandLine& line) {
    const std::string strFiles = line.Has("files") ? line.Of("files") : "*.*";
    if (line.arguments.size() > 1)
        return ChooseItems(line.arguments, strFiles) && !HasComplained(); // all of them, or none
    ForgetChosenItems();
    std::string path = line.arguments.front();
    const std::string name = FileNameOf(path);
    if (IsWildcard(name))
        path = FolderPartOf(path);
    if (!TakePath(path, "Files"))
        return false;
    AskOnDrive(path, [&] {
        blnMultipleFiles = platform::FolderExists(path);
        if (!blnMultipleFiles && !platform::FileExists(path))
            TellError(path + " not found.");
    });
    strDirPath = blnMultipleFiles ? FolderWithBackslash(path) : FolderPartOf(path);
    strFilespec = IsWildcard(name) ? name : blnMultipleFiles ? strFiles : FileNameOf(path);
    RememberFolder();
    return !HasComplained();
}
