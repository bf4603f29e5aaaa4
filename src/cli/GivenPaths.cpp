// The paths of a command: read, made full, settled, grouped by folder, without those that others
// hold.
#include "cli/GivenPaths.h"

#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "selection/Selection.h"
#include "settings/TextFiles.h"
#include "support/FolderSearch.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "support/Utf8.h"
#include "ui/console/Terminal.h"
#include "ui/Interface.h"

#include <algorithm>

namespace {

const char* const strTitle = "Files";

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

/// One path as an item of its own; a name in the last place may be a pattern.
bool TakeItem(const CommandLine& line, std::string path, RunItem& item) {
    const std::string pattern = FileNameOf(path);
    if (IsWildcard(pattern)) {
        path = FolderPartOf(path);
        item.strFilespec = pattern;
    } else if (!line.strFiles.empty()) {
        item.strFilespec = line.strFiles;
    }
    if (!TakePath(path, strTitle))
        return false;
    bool blnFolder = false, blnFile = false;
    AskOnDrive(path, [&] {
        blnFolder = platform::FolderExists(path);
        blnFile = !blnFolder && !IsWildcard(pattern) && platform::FileExists(path);
    });
    if (blnFile) {
        item = {FolderPartOf(path), "*.*", {FileNameOf(path)}};
    } else if (blnFolder) {
        item.strFolder = FolderWithBackslash(path);
    } else {
        ui::Complain(path + " not found.", strTitle);
    }
    return blnFile || blnFolder;
}

/// The files of a folder together; what is named twice, once. Items may overlap all the same: what
/// the first has purged the second does not meet.
void AddItem(std::vector<RunItem>& items, const RunItem& item) {
    const auto beside = std::find_if(items.begin(), items.end(), [&](const RunItem& other) {
        return item.names.empty() == other.names.empty() && item.strFolder == other.strFolder &&
               item.strFilespec == other.strFilespec;
    });
    if (beside == items.end())
        items.push_back(item);
    else if (!item.names.empty() && std::find(beside->names.begin(), beside->names.end(),
                                              item.names.front()) == beside->names.end())
        beside->names.push_back(item.names.front());
}

std::string Counted(std::int64_t count, const char* one) {
    return GroupedDigits(count) + " " + one + (count == 1 ? "" : "s");
}

std::string ItemsText(const std::vector<RunItem>& items) {
    std::int64_t files = 0, folders = 0;
    for (const RunItem& item : items) {
        files += std::ssize(item.names);
        folders += item.names.empty();
    }
    return Counted(files + folders, "chosen item") + " (" +
           (files > 0 ? Counted(files, "file") : "") + (files > 0 && folders > 0 ? ", " : "") +
           (folders > 0 ? Counted(folders, "folder") : "") + ")";
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

bool TakeItems(const CommandLine& line, RunRequest& request) {
    for (const std::string& path : line.arguments) {
        RunItem item;
        if (!TakeItem(line, path, item))
            return false;
        AddItem(request.Items, item);
    }
    request.strItems = ItemsText(request.Items);
    return true;
}
