// The main window's captions and colours, and the binding of its handlers.
#include "shell/frmMainLayout.h"

#include "disk/DiskPurge.h"
#include "disk/FreeSpacePurge.h"
#include "disk/RunProgress.h"
#include "disk/SpeedTest.h"
#include "report/frmReport.h"
#include "shell/frmMain.h"
#include "shell/frmMainPlaces.h"
#include "shell/ProcessCommands.h"
#include "shell/SetupCommands.h"
#include "shell/SpecifyCommands.h"

#include <initializer_list>

namespace {

constexpr std::uint32_t colBlack = 0x000000, colWhite = 0xFFFFFF, colSeparator = 0xC8C8C8,
                        colLink = 0xCC6600;

/// Runs a command with the setup panel disabled; the lower rooms disable only the menu.
void RunDisabled(void (*command)()) {
    EnableMain(false);
    command();
    EnableMain(true);
}

void PurgeDisk_Click() {
    RunDisabled(PurgeDiskCommand);
    UpdateSubdirectoriesLabels(); // the disk purge wrote its exclusions there
}

void WriteWords() {
    FrmMain& f = frmMain;
    ui::PutWords({
        {&f.cmdSingleFile, "Single file", 'S', cmdSingleFile_Click},
        {&f.cmdSpecifyDirectory[0], "Specify folder", 'f', [] { cmdSpecifyDirectory_Click(0); }},
        {&f.cmdSpecifyDirectory[1], "Purge folders", 'g', [] { cmdSpecifyDirectory_Click(1); }},
        {&f.cmdSpecifyFiles, "Specify files", 'i', cmdSpecifyFiles_Click},
        {&f.cmdSubdirectories, "Subfolders?", 'b', cmdSubdirectories_Click},
        {&f.cmdClear, "Clear", 'a', cmdClear_Click},
        {&f.cmdTypeOfPurge, "Type of purge", 'y', cmdTypeOfPurge_Click},
        {&f.cmdConfirmFiles, "Confirm files?", 'm', cmdConfirmFiles_Click},
        {&f.cmdProcessFiles[0], "List files, estimate time", 'L', [] { cmdProcessFiles_Click(0); }},
        {&f.cmdProcessFiles[1], "Purge files", 'P', [] { cmdProcessFiles_Click(1); }},
        {&f.cmdReportScreen, "Report", 'R', ShowReportAgain},
        {&f.cmdLargePurge[0], "Test purge speed", 'T', [] { RunDisabled(TestPurgeSpeedCommand); }},
        {&f.cmdLargePurge[1], "Purge disk", 'k', PurgeDisk_Click},
        {&f.cmdLargePurge[2], "Purge free space", 'e', [] { RunDisabled(PurgeFreeSpaceCommand); }},
        {&f.cmdSetup, "Setup", 'u', cmdSetup_Click},
        {&f.cmdHelp, "Help", 'H', cmdHelp_Click},
        {&f.cmdQuit, "Quit", 'Q', cmdQuit_Click},
        {&f.fraSetup, "Setup"},
        {&f.cmdLoadSetup, "Load setup", 'd', cmdLoadSetup_Click},
        {&f.cmdSaveSetup, "Save setup", 'v', cmdSaveSetup_Click},
        {&f.cmdClearSetup, "Clear setup", 'C', cmdClearSetup_Click},
        {&f.cmdRestoreSetup, "Restore setup", 'o', cmdRestoreSetup_Click},
        {&f.cmdKeepSetup, "Not now", 'w', cmdKeepSetup_Click},
        {&f.picSaveSetup, "Save setup"},
        {&f.cmdSaveSetupForNextRun, "Save setup for next run", 'x', cmdSaveSetupForNextRun_Click},
        {&f.cmdSaveSetupAsOperationFile, "Save setup as operation file", 'n',
         cmdSaveSetupAsOperationFile_Click},
        {&f.cmdDontSaveSetup, "Not now", 'w', cmdDontSaveSetup_Click},
        {&f.lblSingleFile, "To purge multiple files specify folder and files."},
        {&f.barProgress, "Progress"}, // for screen readers
        {&f.lblOnlineDocumentation, "Online documentation", 0, lblOnlineDocumentation_Click},
        {&f.lblAbout, "About Nullwright ...", 0, lblAbout_Click},
        {&f.lblCorvaneSystems, "Corvane Systems", 0, lblCorvaneSystems_Click},
    });
    f.fraMenu.Border = false;
    f.cmdKeepSetup.Cancel = f.cmdDontSaveSetup.Cancel = true;
    f.fraSetup.Visible = f.picSaveSetup.Visible = f.barProgress.Visible = false;
    f.lblDirectory.Ellipsis = f.lblFiles.Ellipsis = f.lblSetupFilename.Ellipsis = true;
    f.lblStatus.Ellipsis = true;
    for (ui::Frame& line : f.fraSeparator) {
        line.Border = false;
        line.BackColor = colSeparator;
    }
    for (ui::Label* link : f.Links()) {
        link->Link = true;
        link->ForeColor = colLink;
    }

    f.cmdSingleFile.ToolTip = "Choose one file to purge";
    f.cmdSpecifyDirectory[0].ToolTip = "Choose the folder that holds the files to purge";
    f.cmdSpecifyDirectory[1].ToolTip = "Choose subfolders of a folder and purge all their files";
    f.cmdSpecifyFiles.ToolTip = "Choose which files of the folder are meant";
    f.cmdSubdirectories.ToolTip = "Include the files in lower subfolders, or leave them out";
    f.cmdClear.ToolTip = "Forget the folder and the files that were specified";
    f.cmdTypeOfPurge.ToolTip = "Choose what is written over the data, and how often";
    f.cmdConfirmFiles.ToolTip = "Ask before each file is purged, or do not";
    f.cmdProcessFiles[0].ToolTip = "List the files that a purge would destroy; nothing is changed";
    f.cmdProcessFiles[1].ToolTip = "Destroy the data in the specified files";
    f.cmdReportScreen.ToolTip = "Show the report of the last listing or purge again";
    f.cmdLargePurge[0].ToolTip = "Measure how fast a drive can be overwritten";
    f.cmdLargePurge[1].ToolTip = "Purge the free space and the files of a whole drive";
    f.cmdLargePurge[2].ToolTip = "Destroy what is left of deleted files on a drive";
    f.cmdSetup.ToolTip = "Load, save, clear or restore the setup";
    f.cmdHelp.ToolTip = "Where the user manual is; F1 opens it";
    f.lblAbout.ToolTip = "Version, licence, and where the settings are";
    f.cmdQuit.ToolTip = "End the program; nothing is saved";
    f.cmdLoadSetup.ToolTip = "Load a setup that was saved as an operation file";
    f.cmdSaveSetup.ToolTip = "Save the setup for the next run, or as an operation file";
    f.cmdClearSetup.ToolTip = "Forget the folder and the files that were specified";
    f.cmdRestoreSetup.ToolTip = "Bring back the setup that the program started with";
    f.cmdSaveSetupForNextRun.ToolTip = "The program starts with this setup from now on";
    f.cmdSaveSetupAsOperationFile.ToolTip = "Save the setup in a file of your own";
}

void BindHandlers() {
    FrmMain& f = frmMain;
    f.lblCV_URL.Click = lblCorvaneSystems_Click;
    for (ui::Control* control : f.Controls)
        if (control->Kind == ui::ControlKind::Button)
            control->MouseOver = [control] { Button_MouseOver(*control); };

    f.Clock2.Interval = 1000;
    f.Clock2.Tick = Clock2_Tick;
    f.Timers = {&f.Clock2, &tmrRunProgress};
    f.MenuItem = &f.lblAbout;
    f.Close = cmdQuit_Click;
    f.HoldsShutdown = ShutdownObjection;
    f.FilesDropped = FilesDroppedOnMain;
}

} // namespace

void LoadMainForm() {
    frmMain.Name = "frmMain";
    frmMain.Caption = "Nullwright";
    frmMain.Position = ui::StartPosition::CenterScreen;
    PlaceControls();
    WriteWords();
    BindHandlers();
}

void ColourMessageLabels() {
    for (ui::Label* label :
         {&frmMain.lblPurgeSpeed, &frmMain.lblSubdirectories2, &frmMain.lblLargePurgeMessage}) {
        label->BackColor = colBlack;
        label->ForeColor = colWhite;
    }
}
