// One command line: checked, prepared, and handed to the command of the program that does it.
#include "cli/RunCommand.h"

#include "cli/CommandLine.h"
#include "cli/Outcome.h"
#include "engine/PurgeTypes.h"
#include "platform/Drives.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "report/ReportText.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "settings/TextFiles.h"
#include "shell/ChosenItems.h"
#include "shell/SetupCommands.h"
#include "shell/Startup.h"
#include "support/Paths.h"
#include "support/StrProc.h"
#include "support/Utf8.h"
#include "ui/console/Console.h"

#include <algorithm>
#include <utility>

namespace {

/// Some millions of paths.
constexpr std::size_t lngMaxList = 256 * 1024 * 1024;

/// Adds the paths of the list given with --from, each in a line or ended by NUL. False, with a
/// message, when it is none.
bool ReadList() {
    const std::string strFrom = given.Of("from"), strList = "--from " + strFrom;
    std::string text;
    if (strFrom == "-" ? !ui::console::ReadInput(text, lngMaxList)
                       : !ReadTextFile(platform::FullPath(strFrom), text, lngMaxList))
        return TellError(strList + " cannot be read, or is longer than 256 MB.");
    if (!IsUtf8(text, true))
        return TellError(strList + " is no list of paths: it is not UTF-8 text.");
    const std::size_t before = given.arguments.size();
    const std::string strEnd(1, text.find('\0') == std::string::npos ? '\n' : '\0');
    for (std::string& path : LinesOf(WithoutMark(std::move(text)), strEnd)) {
        if (strEnd == "\n" && path.ends_with('\r'))
            path.pop_back();
        // A "?" may be a character that whoever wrote the list could not write.
        if (IsWildcard(FileNameOf(path)) ||
            std::ranges::any_of(path, [](char c) { return c >= 0 && c < ' '; }))
            return TellError(strList + " holds control characters or patterns: no list of paths.");
        if (!path.empty())
            given.arguments.push_back(std::move(path));
    }
    return given.arguments.size() > before || TellError(strList + " names no path.");
}

/// False, with a message: the drive is not there, or the folders that are to be kept are not on it.
bool TakeDrive() {
    const std::string& text = given.arguments.front(); // "D", "D:" or "D:\"
    const std::string strRoot = text.substr(0, 1) + ":\\";
    given.chrDrive = strRoot.starts_with(text) ? DriveLetterOf(strRoot) : '\0';
    if (given.chrDrive == 0)
        return TellError(text + " is no drive. It should be a letter, such as D:.");
    if (platform::DriveLetters().find(given.chrDrive) == std::string::npos)
        return TellError(std::string("There is no drive ") + given.chrDrive + ":.");
    const auto kept = given.options.extract("exclude");
    for (const std::string& strName : kept ? kept.mapped() : std::vector<std::string>())
        if (strName == ".")
            given.options["exclude ."];
        else if (strName == ".." || strName.find_first_of("\\/:") != std::string::npos ||
                 !platform::FolderExists(strRoot + strName))
            return TellError("There is no top-level folder " + strName + " to be kept.");
        else
            given.options["exclude"].push_back(strName);
    return true;
}

/// Makes the paths of the command, with those of a list, and the report's full, before the current
/// folder changes. False, with a message, for what is none.
bool CompletePaths(const Command& command) {
    if (given.Has("report")) {
        std::string& path = given.options["report"].front();
        path = platform::FullPath(path);
        if (!platform::FolderExists(FolderPartOf(path)) || platform::FolderExists(path) ||
            IsWildcard(FileNameOf(path)))
            return TellError("There is no folder for the report " + path + ", or it is no file.");
    }
    if (given.Has("from") && !ReadList())
        return false;
    if (command.takes == Takes::Drive)
        return TakeDrive();
    const bool blnAlone = given.arguments.size() == 1 && !given.Has("files");
    for (std::string& path : given.arguments) {
        if (path.empty() || (path.size() == 2 && path[1] == ':'))
            return TellError("\"" + path +
                             "\" is no path: D:\\ is a drive, D:. its current folder.");
        if (!blnAlone && command.takes == Takes::Paths && IsWildcard(FileNameOf(path)))
            return TellError(path + " is a pattern, which stands alone. Of folders: --files SPEC.");
        path = platform::FullPath(path);
    }
    return true;
}

/// Specifies what the paths name as the main window does. False, with a message, when one of them
/// is not there or cannot be purged where it is.
bool TakePaths() {
    const std::string strFiles = given.Of("files", "*.*");
    if (given.arguments.size() > 1)
        return ChooseItems(given.arguments, strFiles) &&
               !told.blnComplained; // all of them, or none
    std::string path = given.arguments.front();
    const std::string name = FileNameOf(path);
    if (IsWildcard(name))
        path = FolderPartOf(path);
    PathKind kind{};
    if (!TakePath(path, "Files", &kind))
        return false;
    if (kind == PathKind::NotThere)
        return TellError(path + " not found.");
    blnMultipleFiles = kind == PathKind::Folder;
    strDirPath = blnMultipleFiles ? FolderWithBackslash(path) : FolderPartOf(path);
    strFilespec = IsWildcard(name) ? name : blnMultipleFiles ? strFiles : FileNameOf(path);
    RememberFolder();
    return true;
}

/// Type and passes into the dialog that holds them. False, with a message, for what its lists do
/// not have.
bool TakeTypeAndPasses() {
    const auto type = std::ranges::find(purgeTypes, given.Of("type"), &PurgeType::strWord);
    if (type != std::end(purgeTypes))
        SetPurgeType(static_cast<std::int16_t>(type - std::begin(purgeTypes)));
    else if (given.Has("type"))
        return TellError("--type is random, patterns or both, not " + given.Of("type") + ".");
    ui::ComboBox& list = frmTypeOfPurge.cboNumberOfPasses[GetPurgeType()];
    return !given.Has("passes") || ui::SelectItem(list, &ui::ListItem::Text, given.Of("passes")) ||
           TellError("--passes is a number from 1 to " + list.Items.back().Text +
                     " with this type of purge, not " + given.Of("passes") + ".");
}

/// What a setup file says, and what it does not. False, with a message, when it does not serve.
bool TakeSetup() {
    LoadSetupFromFile(given.arguments.front());
    if (frmPurgeConfirmation.chkPurgeSlackOnly.Value == 1)
        given.options["slack-only"]; // the dialog switches it off; nobody would see that
    strFilespec = given.Of("files");
    blnMultipleFiles = true;
    return !told.blnComplained && (!strDirPath.empty() || TellError("The setup names no folder."));
}

int Perform(const Command& command) {
    PrepareProgram();
    lngReportLimit = std::string::npos; // it is told as it grows
    told = {};                          // what start-up complained of is not the command's
    if ((command.takes != Takes::Paths || TakePaths()) &&
        (command.takes != Takes::SetupFile || TakeSetup()) && TakeTypeAndPasses()) {
        // As if these had been accepted with the options of a purge.
        purgeOptions = {given.Has("verify"), given.Has("names")};
        blnSubdirectories = blnSubdirectories || given.Has("subfolders");
        command.perform();
    }
    return EndTelling();
}

} // namespace

int RunCommand(const std::vector<std::string>& arguments) {
    const Command* command = ReadCommandLine(arguments);
    if (command != nullptr && command->OnlyTells()) {
        command->perform();
        return ExitDone;
    }
    if (command != nullptr && CompletePaths(*command) && ui::console::Interrupts() == 0)
        return Perform(*command);
    // A stop may have ended a list before its end.
    return ui::console::Interrupts() > 0 ? ExitStopped : ExitRefused;
}
