// One command line: checked, prepared, and handed to the command of the program that does it.
#include "cli/RunCommand.h"

#include "cli/CommandLine.h"
#include "cli/GivenPaths.h"
#include "cli/Help.h"
#include "cli/Outcome.h"
#include "platform/Drives.h"
#include "platform/Folders.h"
#include "report/ReportText.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/ProcessCommands.h"
#include "shell/SetupCommands.h"
#include "shell/Startup.h"
#include "support/Paths.h"
#include "ui/console/Console.h"
#include "ui/console/Terminal.h"

#include "Version.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

using ui::console::IsTerminal;
using ui::console::Stream;

/// Type and passes into the dialog that holds them. "" or what its lists do not have.
std::string TakeTypeAndPasses(const CommandLine& line) {
    constexpr const char* strTypes[] = {"random", "patterns", "both"};
    if (line.Has("type")) {
        const auto type = std::find(std::begin(strTypes), std::end(strTypes), line.Of("type"));
        if (type == std::end(strTypes))
            return "--type is random, patterns or both, not " + line.Of("type") + ".";
        ui::SelectOption(frmTypeOfPurge.optPurgeType,
                         static_cast<std::size_t>(type - std::begin(strTypes)));
    }
    ui::ComboBox& list = frmTypeOfPurge.cboNumberOfPasses[GetPurgeType()];
    const auto passes = std::find_if(list.Items.begin(), list.Items.end(), [&](const auto& item) {
        return item.Text == line.Of("passes");
    });
    if (passes != list.Items.end())
        list.ListIndex = static_cast<int>(passes - list.Items.begin());
    else if (line.Has("passes"))
        return "--passes is a number from 1 to " + list.Items.back().Text +
               " with this type of purge, not " + line.Of("passes") + ".";
    return {};
}

/// The drive is there, and the folders that are to be kept are on it. "" or what is wrong.
std::string TakeDrive(CommandLine& line) {
    const std::string text = line.arguments[0],
                      rest = text.substr(std::min<std::size_t>(1, text.size()));
    if (rest.empty() || rest == ":" || rest == ":\\")
        line.chrDrive = DriveLetterOf(text.substr(0, 1) + ":");
    if (line.chrDrive == 0)
        return text + " is no drive. It should be a letter, such as D:.";
    const std::string strDrive(1, line.chrDrive);
    if (platform::DriveLetters().find(line.chrDrive) == std::string::npos)
        return "There is no drive " + strDrive + ":.";
    std::vector<std::string> kept = line.options["exclude"];
    line.options.erase("exclude");
    if (std::erase(kept, ".") > 0)
        line.options["exclude ."] = {};
    for (const std::string& strName : kept) {
        if (strName.find_first_of("\\/:") != std::string::npos)
            return "--exclude takes the name of a top-level folder, not " + strName + ".";
        if (!platform::FolderExists(strDrive + ":\\" + strName))
            return "There is no folder " + strDrive + ":\\" + strName + " to be kept.";
        line.options["exclude"] = kept;
    }
    return {};
}

/// What a setup file says, and what it does not. "" or what is wrong.
std::string TakeSetup(CommandLine& line) {
    LoadSetupFromFile(line.arguments.front());
    if (PurgeOptionBoxes().front()->Value == 1)
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
        return EndDriveCommand(line);
    }
    if (command.takes == Takes::SetupFile || TakePaths(line)) {
        blnSubdirectories = blnSubdirectories || line.Has("subfolders");
        cmdProcessFiles_Click(command.blnDestroys ? 1 : 0);
    }
    return EndRun(line);
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
