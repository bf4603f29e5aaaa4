// One command line: checked, prepared, and handed to the command of the program that does it.
#include "cli/RunCommand.h"

#include "cli/CommandLine.h"
#include "cli/GivenPaths.h"
#include "cli/Help.h"
#include "cli/Outcome.h"
#include "disk/DiskPurge.h"
#include "disk/FreeSpacePurge.h"
#include "disk/SpeedTest.h"
#include "platform/Drives.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "report/ReportText.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "shell/ProcessCommands.h"
#include "shell/SetupCommands.h"
#include "shell/Startup.h"
#include "ui/console/Console.h"
#include "ui/console/Terminal.h"

#include "Version.h"

#include <charconv>
#include <limits>

namespace {

using ui::console::IsTerminal;
using ui::console::Stream;

/// Type and passes into the dialog that holds them. False, with a message, for a number that its
/// list has not.
bool TakeTypeAndPasses(const CommandLine& line) {
    FrmTypeOfPurge& f = frmTypeOfPurge;
    if (!line.strType.empty())
        ui::SelectOption(f.optPurgeType, line.strType == "random"     ? 0u
                                         : line.strType == "patterns" ? 1u
                                                                      : 2u);
    if (line.strPasses.empty())
        return true;
    ui::ComboBox& list = f.cboNumberOfPasses[GetPurgeType()];
    for (std::size_t i = 0; i < list.Items.size(); ++i)
        if (list.Items[i].Text == line.strPasses) {
            list.ListIndex = static_cast<int>(i);
            return true;
        }
    TellError("--passes is a number from 1 to " + list.Items.back().Text +
              " with this type of purge, not " + line.strPasses + ".");
    return false;
}

/// The drive is there, and the folders that are to be kept are on it.
bool CheckDrive(const CommandLine& line) {
    const std::string strDrive(1, line.chrDrive);
    if (platform::DriveLetters().find(line.chrDrive) == std::string::npos) {
        TellError("There is no drive " + strDrive + ":.");
        return false;
    }
    for (const std::string& strName : line.excluded)
        if (!platform::FolderExists(strDrive + ":\\" + strName)) {
            TellError("There is no folder " + strDrive + ":\\" + strName + " to be kept.");
            return false;
        }
    return true;
}

void RunSetup(CommandLine& line) {
    LoadSetupFromFile(line.arguments.front());
    if (HasComplained())
        return;
    if (strDirPath.empty()) {
        TellError("The setup names no folder.");
        return;
    }
    // The dialog of the options switches it off; nobody would see that.
    line.blnSlackOnly = line.blnSlackOnly || PurgeOptionBoxes().front()->Value == 1;
    blnSubdirectories = blnSubdirectories || line.blnSubfolders;
    strFilespec = line.strFiles;
    blnMultipleFiles = true;
    if (TakeTypeAndPasses(line))
        cmdProcessFiles_Click(1);
}

int RunOnDrive(const CommandLine& line) {
    if (!CheckDrive(line))
        return ExitRefused;
    if (line.strCommand == "free-space")
        PurgeFreeSpaceCommand();
    else if (line.strCommand == "speed")
        TestPurgeSpeedCommand();
    else
        PurgeDiskCommand();
    return EndDriveCommand(line);
}

int Perform(CommandLine& line, bool blnAttended) {
    PrepareProgram();
    lngReportLimit = std::numeric_limits<std::size_t>::max(); // it is told as it grows
    BeginTelling(line, blnAttended); // what start-up complained of is not the command's
    if (line.strCommand == "run") {
        RunSetup(line);
        return EndRun(line);
    }
    if (!TakeTypeAndPasses(line))
        return ExitRefused;
    if (line.chrDrive != 0)
        return RunOnDrive(line);
    if (TakePaths(line)) {
        blnSubdirectories = line.blnSubfolders;
        cmdProcessFiles_Click(line.strCommand == "purge" ? 1 : 0);
    }
    return EndRun(line);
}

} // namespace

int RunCommand(const std::vector<std::string>& arguments) {
    CommandLine line;
    std::string wrong = ReadCommandLine(arguments, line);
    const bool blnAttended = !line.blnYes && IsTerminal(Stream::In) && IsTerminal(Stream::Error);
    BeginTelling(line, blnAttended);
    if (wrong.empty() && line.strCommand == "help") {
        const std::string strOf = line.arguments.empty() ? "" : line.arguments.front();
        if (strOf.empty() || strOf == "questions" || FindCommand(strOf) != nullptr) {
            ui::console::Print(HelpText(strOf));
            return ExitDone;
        }
        wrong = "There is no command " + strOf + ". See: nullwright-cli help";
    } else if (wrong.empty() && line.strCommand == "version") {
        ui::console::Print("Nullwright " NW_VERSION "\r\n");
        return ExitDone;
    } else if (wrong.empty()) {
        if (FindCommand(line.strCommand)->blnDestroys && !line.blnYes && !blnAttended)
            wrong = "There is no terminal to ask at. To go on without questions: --yes.";
        else if (FindCommand(line.strCommand)->takes != Takes::Drive)
            wrong = CompletePaths(line);
    }
    if (wrong.empty())
        return Perform(line, blnAttended);
    TellError(wrong);
    return ExitRefused;
}
