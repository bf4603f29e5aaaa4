// The paths of a command: read from files, made full, specified as in the main window.
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

/// Paths that NUL ends, or lines.
void SplitPaths(std::string text, std::vector<std::string>& paths) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3); // the mark of UTF-8
    const char end = text.find('\0') == std::string::npos ? '\n' : '\0';
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t to = std::min(text.find(end, from), text.size());
        std::string path = text.substr(from, to - from);
        if (end == '\n' && path.ends_with('\r'))
            path.pop_back();
        if (!path.empty())
            paths.push_back(path);
        from = to + 1;
    }
}

} // namespace

std::string CompletePaths(CommandLine& line) {
    if (!line.strFrom.empty()) {
        std::string text;
        const std::string strFrom = "--from " + line.strFrom;
        if (line.strFrom == "-" ? !ui::console::ReadInput(text)
                                : !ReadTextFile(platform::FullPath(line.strFrom), text))
            return strFrom + " cannot be read, or is longer than 1 MB: then by standard input.";
        if (!IsUtf8(text, true))
            return strFrom + " is not UTF-8 text.";
        SplitPaths(std::move(text), line.arguments);
        if (line.arguments.empty())
            return strFrom + " names no path.";
    }
    for (std::string& path : line.arguments) {
        if (path.empty() || (path.size() == 2 && path[1] == ':'))
            return "\"" + path + "\" is no path: D:\\ is a drive, D:. its current folder.";
        path = platform::FullPath(path);
    }
    if (!line.strReport.empty())
        line.strReport = platform::FullPath(line.strReport);
    return {};
}

bool TakePaths(const CommandLine& line) {
    const std::string strFiles = line.strFiles.empty() ? "*.*" : line.strFiles;
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
