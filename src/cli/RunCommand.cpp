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
#include "support/Utf8.h"
#include "ui/console/Console.h"

#include "Version.h"

#include <algorithm>
#include <limits>

namespace {

/// Some millions of paths.
constexpr std::size_t lngMaxList = 256 * 1024 * 1024;

/// Adds the paths of a list, each in a line or ended by NUL. "" or what is wrong with it.
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

/// Makes the paths of the command, with those of a list, and the report's full, before the current
/// folder changes. False, with a message, for what is none.
bool CompletePaths(const Command& command) {
    const std::string strReport = platform::FullPath(given.Of("report"));
    if (given.Has("report") && !platform::FolderExists(FolderPartOf(strReport)))
        return TellError("There is no folder for the report " + strReport + ".");
    if (given.Has("report"))
        given.options["report"] = {strReport};
    if (given.Has("from"))
        if (const std::string wrong = ReadList(given.Of("from"), given.arguments); !wrong.empty())
            return TellError("--from " + given.Of("from") + " " + wrong);
    const bool blnAlone = given.arguments.size() == 1 && !given.Has("files");
    for (std::string& path : given.arguments) {
        if (command.takes == Takes::Drive)
            continue;
        if (path.empty() || (path.size() == 2 && path[1] == ':'))
            return TellError("\"" + path +
                             "\" is no path: D:\\ is a drive, D:. its current folder.");
        if (!blnAlone && IsWildcard(FileNameOf(path)))
            return TellError(
                path + " is a pattern, which stands alone. Of several folders: --files SPEC.");
        path = platform::FullPath(path);
    }
    return true;
}

/// Specifies what the paths name as the main window does. False, with a message, when one of them
/// is not there or cannot be purged where it is.
bool TakePaths() {
    const std::string strFiles = given.Has("files") ? given.Of("files") : "*.*";
    if (given.arguments.size() > 1)
        return ChooseItems(given.arguments, strFiles) && !HasComplained(); // all of them, or none
    ForgetChosenItems();
    std::string path = given.arguments.front();
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

/// Type and passes into the dialog that holds them. False, with a message, for what its lists do
/// not have.
bool TakeTypeAndPasses() {
    const auto type = std::ranges::find(purgeTypes, given.Of("type"), &PurgeType::strWord);
    if (type != std::end(purgeTypes))
        ui::SelectOption(frmTypeOfPurge.optPurgeType,
                         static_cast<std::size_t>(type - std::begin(purgeTypes)));
    else if (given.Has("type"))
        return TellError("--type is random, patterns or both, not " + given.Of("type") + ".");
    ui::ComboBox& list = frmTypeOfPurge.cboNumberOfPasses[GetPurgeType()];
    return !given.Has("passes") || ui::SelectItem(list, &ui::ListItem::Text, given.Of("passes")) ||
           TellError("--passes is a number from 1 to " + list.Items.back().Text +
                     " with this type of purge, not " + given.Of("passes") + ".");
}

/// False, with a message: the drive is not there, or the folders that are to be kept are not on it.
bool TakeDrive() {
    const std::string& text = given.arguments[0];
    const std::string rest = text.empty() ? "none" : text.substr(1);
    if (rest.empty() || rest == ":" || rest == ":\\")
        given.chrDrive = DriveLetterOf(text.substr(0, 1) + ":");
    if (given.chrDrive == 0)
        return TellError(text + " is no drive. It should be a letter, such as D:.");
    const std::string strDrive(1, given.chrDrive);
    if (platform::DriveLetters().find(given.chrDrive) == std::string::npos)
        return TellError("There is no drive " + strDrive + ":.");
    if (!given.Has("exclude"))
        return true;
    std::vector<std::string>& kept = given.options["exclude"];
    if (std::erase(kept, ".") > 0)
        given.options["exclude ."];
    for (const std::string& strName : kept) {
        if (strName.find_first_of("\\/:") != std::string::npos)
            return TellError("--exclude takes the name of a top-level folder, not " + strName +
                             ".");
        if (!platform::FolderExists(strDrive + ":\\" + strName))
            return TellError("There is no folder " + strDrive + ":\\" + strName + " to be kept.");
    }
    if (kept.empty())
        given.options.erase("exclude");
    return true;
}

/// What a setup file says, and what it does not. False, with a message, when it does not serve.
bool TakeSetup() {
    LoadSetupFromFile(given.arguments.front());
    if (frmPurgeConfirmation.chkPurgeSlackOnly.Value == 1)
        given.options["slack-only"]; // the dialog switches it off; nobody would see that
    strFilespec = given.Of("files");
    blnMultipleFiles = true;
    return !HasComplained() && (!strDirPath.empty() || TellError("The setup names no folder."));
}

int Perform(const Command& command) {
    PrepareProgram();
    lngReportLimit = std::numeric_limits<std::size_t>::max(); // it is told as it grows
    BeginTelling(); // what start-up complained of is not the command's
    if ((command.takes == Takes::Drive && !TakeDrive()) ||
        (command.takes == Takes::SetupFile && !TakeSetup()) || !TakeTypeAndPasses())
        return ExitRefused;
    if (command.onDrive != nullptr) {
        // As if these had been accepted with the options of a purge.
        purgeOptions = {given.Has("verify"), given.Has("names")};
        command.onDrive();
    } else if (command.takes == Takes::SetupFile || TakePaths()) {
        blnSubdirectories = blnSubdirectories || given.Has("subfolders");
        cmdProcessFiles_Click(command.blnDestroys ? 1 : 0);
    }
    return EndTelling();
}

} // namespace

int RunCommand(const std::vector<std::string>& arguments) {
    const std::string wrong = ReadCommandLine(arguments);
    const Command* command = FindCommand(given.strCommand);
    BeginTelling();
    if (!wrong.empty()) {
        TellError(wrong);
    } else if (command->takes == Takes::Nothing) {
        ui::console::Print("Nullwright " NW_VERSION "\r\n");
        return ExitDone;
    } else if (command->takes == Takes::Word) {
        ui::console::Print(HelpText(given.arguments.empty() ? "" : given.arguments[0]));
        return ExitDone;
    } else if (command->blnDestroys && !given.Has("yes") && !IsAttended()) {
        TellError("There is no terminal to ask at. To go on without questions: --yes.");
    } else if (CompletePaths(*command) && ui::console::Interrupts() == 0) {
        return Perform(*command);
    }
    // A stop may have ended a list before its end.
    return ui::console::Interrupts() > 0 ? ExitStopped : ExitRefused;
}
