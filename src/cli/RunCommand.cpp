// One command line: checked, prepared, and handed to the command of the program that does it.
#include "cli/RunCommand.h"

#include "cli/CommandLine.h"
#include "cli/Outcome.h"
#include "engine/PurgeTypes.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "report/ReportText.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/TextFiles.h"
#include "shell/ChosenItems.h"
#include "shell/ProcessCommands.h"
#include "shell/SetupCommands.h"
#include "shell/Startup.h"
#include "support/FolderSearch.h"
#include "support/Paths.h"
#include "support/StrProc.h"
#include "support/Utf8.h"
#include "ui/console/Console.h"
#include "ui/console/Terminal.h"

#include "Version.h"

#include <algorithm>
#include <limits>

namespace {

using ui::console::IsTerminal;
using ui::console::Stream;

/// Some millions of paths.
constexpr std::size_t lngMaxList = 256 * 1024 * 1024;

/// Adds paths, each in a line or ended by NUL. "" or what is wrong with the list.
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
        if (std::ranges::any_of(path, [](char c) { return c >= 0 && c < ' '; }))
            return "is no list of paths: there are control characters in it.";
        if (!path.empty())
            paths.push_back(path);
    }
    return paths.size() > before ? "" : "names no path.";
}

/// Makes the paths full, before the current folder changes: those of the command, with the list
/// that --from names, if the command takes paths, and the report's. "" or what is wrong.
std::string CompletePaths(CommandLine& line, bool blnPaths) {
    if (line.Has("report")) {
        std::string& strReport = line.options["report"].front();
        strReport = platform::FullPath(strReport);
        if (!platform::FolderExists(FolderPartOf(strReport)))
            return "There is no folder for the report " + strReport + ".";
    }
    if (line.Has("from"))
        if (const std::string wrong = ReadList(line.Of("from"), line.arguments); !wrong.empty())
            return "--from " + line.Of("from") + " " + wrong;
    const bool blnAlone = line.arguments.size() == 1 && !line.Has("files");
    for (std::string& path : line.arguments) {
        if (!blnPaths)
            continue;
        if (path.empty() || (path.size() == 2 && path[1] == ':'))
            return "\"" + path + "\" is no path: D:\\ is a drive, D:. its current folder.";
        if (!blnAlone && IsWildcard(FileNameOf(path)))
            return path + " is a pattern, which stands alone. Of several folders: --files SPEC.";
        path = platform::FullPath(path);
    }
    return {};
}

/// Specifies what the paths name as the main window does. False, with a message, when one of them
/// is not there or cannot be purged where it is.
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

/// Type and passes into the dialog that holds them. "" or what its lists do not have.
std::string TakeTypeAndPasses(const CommandLine& line) {
    const auto type = std::ranges::find(purgeTypes, line.Of("type"), &PurgeType::strWord);
    if (type != std::end(purgeTypes))
        ui::SelectOption(frmTypeOfPurge.optPurgeType,
                         static_cast<std::size_t>(type - std::begin(purgeTypes)));
    else if (line.Has("type"))
        return "--type is random, patterns or both, not " + line.Of("type") + ".";
    ui::ComboBox& list = frmTypeOfPurge.cboNumberOfPasses[GetPurgeType()];
    const auto passes = std::ranges::find(list.Items, line.Of("passes"), &ui::ListItem::Text);
    if (passes != list.Items.end())
        list.ListIndex = static_cast<int>(passes - list.Items.begin());
    else if (line.Has("passes"))
        return "--passes is a number from 1 to " + list.Items.back().Text +
               " with this type of purge, not " + line.Of("passes") + ".";
    return {};
}

/// The drive is there, and the folders that are to be kept are on it. "" or what is wrong.
std::string TakeDrive(CommandLine& line) {
    const std::string& text = line.arguments[0];
    const std::string rest = text.empty() ? "none" : text.substr(1);
    if (rest.empty() || rest == ":" || rest == ":\\")
        line.chrDrive = DriveLetterOf(text.substr(0, 1) + ":");
    if (line.chrDrive == 0)
        return text + " is no drive. It should be a letter, such as D:.";
    const std::string strDrive(1, line.chrDrive);
    if (platform::DriveLetters().find(line.chrDrive) == std::string::npos)
        return "There is no drive " + strDrive + ":.";
    std::vector<std::string> kept = line.options["exclude"];
    if (std::erase(kept, ".") > 0)
        line.options["exclude ."];
    line.options["exclude"] = kept;
    if (kept.empty())
        line.options.erase("exclude");
    for (const std::string& strName : kept) {
        if (strName.find_first_of("\\/:") != std::string::npos)
            return "--exclude takes the name of a top-level folder, not " + strName + ".";
        if (!platform::FolderExists(strDrive + ":\\" + strName))
            return "There is no folder " + strDrive + ":\\" + strName + " to be kept.";
    }
    return {};
}

/// What a setup file says, and what it does not. "" or what is wrong.
std::string TakeSetup(CommandLine& line) {
    LoadSetupFromFile(line.arguments.front());
    if (frmPurgeConfirmation.chkPurgeSlackOnly.Value == 1)
        line.options["slack-only"]; // the dialog switches it off; nobody would see that
    strFilespec = line.Of("files");
    blnMultipleFiles = true;
    return strDirPath.empty() && !HasComplained() ? "The setup names no folder." : "";
}

int Perform(CommandLine& line, const Command& command, bool blnAttended) {
    PrepareProgram();
    lngReportLimit = std::numeric_limits<std::size_t>::max(); // it is told as it grows
    BeginTelling(line, blnAttended); // what start-up complained of is not the command's
    TellError(command.takes == Takes::Drive       ? TakeDrive(line)
              : command.takes == Takes::SetupFile ? TakeSetup(line)
                                                  : "");
    if (!HasComplained())
        TellError(TakeTypeAndPasses(line));
    if (HasComplained())
        return ExitRefused;
    if (command.onDrive != nullptr) {
        // As if these had been accepted with the options of a purge.
        purgeOptions = {line.Has("verify"), line.Has("names")};
        command.onDrive();
    } else if (command.takes == Takes::SetupFile || TakePaths(line)) {
        blnSubdirectories = blnSubdirectories || line.Has("subfolders");
        cmdProcessFiles_Click(command.blnDestroys ? 1 : 0);
    }
    return EndTelling();
}

} // namespace

int RunCommand(const std::vector<std::string>& arguments) {
    CommandLine line;
    std::string wrong = ReadCommandLine(arguments, line), text;
    const bool blnAttended =
        !line.Has("yes") && IsTerminal(Stream::In) && IsTerminal(Stream::Error);
    BeginTelling(line, blnAttended);
    const Command* command = FindCommand(line.strCommand);
    if (wrong.empty() && command->takes == Takes::Nothing) {
        text = "Nullwright " NW_VERSION "\r\n";
    } else if (wrong.empty() && command->takes == Takes::Word) {
        text = HelpText(line.arguments.empty() ? "" : line.arguments[0]);
        if (text.empty())
            wrong = "There is no command " + line.arguments[0] + ". See: nullwright-cli help";
    } else if (wrong.empty()) {
        wrong = command->blnDestroys && !line.Has("yes") && !blnAttended
                    ? "There is no terminal to ask at. To go on without questions: --yes."
                    : CompletePaths(line, command->takes != Takes::Drive);
    }
    if (ui::console::StopWanted()) // the list may not have come to its end
        return ExitStopped;
    TellError(wrong);
    ui::console::Print(text);
    return !wrong.empty()  ? ExitRefused
           : !text.empty() ? ExitDone
                           : Perform(line, *command, blnAttended);
}
