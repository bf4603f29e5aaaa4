// The main window's look: places, captions, colours; and the binding of all its handlers.
#include "shell/frmMainLayout.h"

#include "disk/DiskPurge.h"
#include "disk/FreeSpacePurge.h"
#include "disk/RunProgress.h"
#include "disk/SpeedTest.h"
#include "report/frmReport.h"
#include "shell/frmMain.h"
#include "shell/ProcessCommands.h"
#include "shell/SetupCommands.h"
#include "shell/SpecifyCommands.h"

#include <initializer_list>

namespace {

constexpr int intMargin = 120;
constexpr int intRowPitch = 480;
constexpr int intButtonHeight = 450;
constexpr int intMenuWidth = 2460;
constexpr int intLabelLeft = intMargin + intMenuWidth + 180;
constexpr int intWindowWidth = 11520;
constexpr int intLabelWidth = intWindowWidth - intLabelLeft - intMargin;
constexpr int intSecondLabelLeft = intLabelLeft + 660; ///< behind "Yes" or "No"
constexpr int intSecondLabelWidth = intWindowWidth - intSecondLabelLeft - intMargin;
/// A label's text stands this far below the top of the button beside it.
constexpr int intLabelDrop = 150;
constexpr int intLineHeight = 240;

// The tops of the groups of buttons: what to purge, how, go, whole drives, the program itself.
constexpr int intTopWhat = intMargin;
constexpr int intTopHow = intTopWhat + 5 * intRowPitch + 120;
constexpr int intTopGo = intTopHow + 2 * intRowPitch + 120;
constexpr int intTopDrives = intTopGo + 4 * intRowPitch + 120;
/// Leaves lblLargePurgeMessage room for five lines.
constexpr int intTopProgram = intTopDrives + 3 * intRowPitch + 480;
constexpr int intMenuBottom = intTopProgram + 3 * intRowPitch;
constexpr int intStatusTop = intMenuBottom + 90;
constexpr int intWindowHeight = intStatusTop + 330;

constexpr std::uint32_t colBlack = 0x000000, colWhite = 0xFFFFFF, colSeparator = 0xC8C8C8,
                        colLink = 0xCC6600;

/// The top of a row in a group, on the form; inside fraMenu it is less by the margin.
constexpr int Row(int intTopOfGroup, int intRow) {
    return intTopOfGroup + intRow * intRowPitch;
}

void PlaceControls() {
    FrmMain& f = frmMain;
    ui::PutInto(f.fraMenu,
                {&f.cmdSingleFile, &f.cmdSpecifyDirectory[0], &f.cmdSpecifyDirectory[1],
                 &f.cmdSpecifyFiles, &f.cmdSubdirectories, &f.cmdClear, &f.cmdTypeOfPurge,
                 &f.cmdConfirmFiles, &f.cmdProcessFiles[0], &f.cmdProcessFiles[1],
                 &f.cmdReportScreen, &f.cmdLargePurge[0], &f.cmdLargePurge[1], &f.cmdLargePurge[2],
                 &f.cmdSetup, &f.cmdHelp, &f.cmdQuit});
    ui::PutInto(f.fraSetup, {&f.cmdLoadSetup, &f.cmdSaveSetup, &f.cmdClearSetup, &f.cmdRestoreSetup,
                             &f.cmdKeepSetup});
    ui::PutInto(f.picSaveSetup,
                {&f.cmdSaveSetupForNextRun, &f.cmdSaveSetupAsOperationFile, &f.cmdDontSaveSetup});

    const auto button = [](ui::Button& which, const char* name, int intTopOfGroup, int intRow) {
        return ui::Placed{&which,       name,           0, Row(intTopOfGroup, intRow) - intMargin,
                          intMenuWidth, intButtonHeight};
    };
    const auto label = [](ui::Label& which, const char* name, int intTopOfGroup, int intRow) {
        return ui::Placed{&which,        name,
                          intLabelLeft,  Row(intTopOfGroup, intRow) + intLabelDrop,
                          intLabelWidth, intLineHeight};
    };
    const auto second = [](ui::Label& which, const char* name, int intTopOfGroup, int intRow) {
        return ui::Placed{&which,
                          name,
                          intSecondLabelLeft,
                          Row(intTopOfGroup, intRow) + intLabelDrop,
                          intSecondLabelWidth,
                          intLineHeight};
    };
    const auto separator = [](int intIndex, const char* name, int intTop) {
        return ui::Placed{
            &frmMain.fraSeparator[intIndex], name, intLabelLeft, intTop, intLabelWidth, 15};
    };
    constexpr int intHalf = intLabelWidth / 2;

    ui::Bind(
        f,
        {{&f.fraMenu, "fraMenu", intMargin, intMargin, intMenuWidth, intMenuBottom - intMargin},
         button(f.cmdSingleFile, "cmdSingleFile", intTopWhat, 0),
         button(f.cmdSpecifyDirectory[0], "cmdSpecifyDirectory(0)", intTopWhat, 1),
         button(f.cmdSpecifyFiles, "cmdSpecifyFiles", intTopWhat, 2),
         button(f.cmdSubdirectories, "cmdSubdirectories", intTopWhat, 3),
         button(f.cmdClear, "cmdClear", intTopWhat, 4),
         button(f.cmdTypeOfPurge, "cmdTypeOfPurge", intTopHow, 0),
         button(f.cmdConfirmFiles, "cmdConfirmFiles", intTopHow, 1),
         button(f.cmdProcessFiles[0], "cmdProcessFiles(0)", intTopGo, 0),
         button(f.cmdProcessFiles[1], "cmdProcessFiles(1)", intTopGo, 1),
         button(f.cmdSpecifyDirectory[1], "cmdSpecifyDirectory(1)", intTopGo, 2),
         button(f.cmdReportScreen, "cmdReportScreen", intTopGo, 3),
         button(f.cmdLargePurge[0], "cmdLargePurge(0)", intTopDrives, 0),
         button(f.cmdLargePurge[2], "cmdLargePurge(2)", intTopDrives, 1),
         button(f.cmdLargePurge[1], "cmdLargePurge(1)", intTopDrives, 2),
         button(f.cmdSetup, "cmdSetup", intTopProgram, 0),
         button(f.cmdHelp, "cmdHelp", intTopProgram, 1),
         button(f.cmdQuit, "cmdQuit", intTopProgram, 2),
         // The panels open beside "Setup", over the labels there.
         {&f.fraSetup, "fraSetup", intLabelLeft, intTopProgram - 210, intLabelWidth, 795},
         {&f.cmdLoadSetup, "cmdLoadSetup", 150, 285, 1560, 405},
         {&f.cmdSaveSetup, "cmdSaveSetup", 1815, 285, 1560, 405},
         {&f.cmdClearSetup, "cmdClearSetup", 3480, 285, 1560, 405},
         {&f.cmdRestoreSetup, "cmdRestoreSetup", 5145, 285, 1680, 405},
         {&f.cmdKeepSetup, "cmdKeepSetup", 6930, 285, 1200, 405},
         {&f.picSaveSetup, "picSaveSetup", intLabelLeft, intTopProgram - 210, intLabelWidth, 795},
         {&f.cmdSaveSetupForNextRun, "cmdSaveSetupForNextRun", 150, 285, 2460, 405},
         {&f.cmdSaveSetupAsOperationFile, "cmdSaveSetupAsOperationFile", 2715, 285, 2940, 405},
         {&f.cmdDontSaveSetup, "cmdDontSaveSetup", 5760, 285, 1200, 405},
         label(f.lblSingleFile, "lblSingleFile", intTopWhat, 0),
         label(f.lblDirectory, "lblDirectory", intTopWhat, 1),
         {&f.lblFiles, "lblFiles", intLabelLeft, Row(intTopWhat, 2) + intLabelDrop, intHalf - 120,
          intLineHeight},
         {&f.lblFiles2, "lblFiles2", intLabelLeft + intHalf, Row(intTopWhat, 2) + intLabelDrop,
          intHalf, intLineHeight},
         label(f.lblSubdirectories, "lblSubdirectories", intTopWhat, 3),
         second(f.lblSubdirectories2, "lblSubdirectories2", intTopWhat, 3),
         label(f.lblTypeOfPurge, "lblTypeOfPurge", intTopHow, 0),
         label(f.lblConfirmFiles, "lblConfirmFiles", intTopHow, 1),
         second(f.lblConfirmFiles2, "lblConfirmFiles2", intTopHow, 1),
         label(f.lblEstimatedTime, "lblEstimatedTime", intTopGo, 0),
         {&f.lblPurgeFoldersMessage, "lblPurgeFoldersMessage", intLabelLeft, Row(intTopGo, 2) + 30,
          intLabelWidth, 2 * intLineHeight},
         label(f.lblPurgeSpeed, "lblPurgeSpeed", intTopDrives, 0),
         {&f.lblLargePurgeMessage, "lblLargePurgeMessage", intLabelLeft, Row(intTopDrives, 1) - 30,
          intLabelWidth, 5 * intLineHeight},
         label(f.lblSetupFilename, "lblSetupFilename", intTopProgram, 0),
         label(f.lblOnlineDocumentation, "lblOnlineDocumentation", intTopProgram, 1),
         {&f.lblCorvaneSystems, "lblCorvaneSystems", intLabelLeft,
          Row(intTopProgram, 2) + intLabelDrop, intHalf - 120, intLineHeight},
         {&f.lblCV_URL, "lblCV_URL", intLabelLeft + intHalf, Row(intTopProgram, 2) + intLabelDrop,
          intHalf, intLineHeight},
         separator(0, "fraSeparator(0)", intTopHow - 75),
         separator(1, "fraSeparator(1)", intTopGo - 75),
         separator(2, "fraSeparator(2)", intTopDrives - 75),
         separator(3, "fraSeparator(3)", intTopProgram - 225),
         separator(4, "fraSeparator(4)", intStatusTop - 60),
         {&f.lblStatus, "lblStatus", intMargin, intStatusTop + 15, intWindowWidth - 2 * intMargin,
          intLineHeight}});

    // "Yes" and "No" end where the words behind them begin.
    f.lblSubdirectories.Width = f.lblConfirmFiles.Width =
        intSecondLabelLeft - intLabelLeft - intMargin;
    f.fraSeparator[4].Left = intMargin;
    f.fraSeparator[4].Width = intWindowWidth - 2 * intMargin;
    f.lblDirectory.Ellipsis = f.lblFiles.Ellipsis = f.lblSetupFilename.Ellipsis = true;
}

/// The rooms below know the menu only: the setup panel is disabled here while they work.
void RunDisabled(void (*command)()) {
    EnableMain(false);
    command();
    EnableMain(true);
}

void PurgeDisk_Click() {
    RunDisabled(PurgeDiskCommand);
    UpdateSubdirectoriesLabels(); // which the disk purge wrote its exclusions into
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
        {&f.lblOnlineDocumentation, "Online documentation", 0, lblOnlineDocumentation_Click},
        {&f.lblCorvaneSystems, "Corvane Systems", 0, lblCorvaneSystems_Click},
    });
    f.fraMenu.Border = false;
    f.cmdKeepSetup.Cancel = f.cmdDontSaveSetup.Cancel = true;
    f.fraSetup.Visible = f.picSaveSetup.Visible = false;
    f.lblOnlineDocumentation.Link = f.lblCorvaneSystems.Link = f.lblCV_URL.Link = true;
    for (ui::Frame& line : f.fraSeparator) {
        line.Border = false;
        line.BackColor = colSeparator;
    }
    for (ui::Label* link : {&f.lblOnlineDocumentation, &f.lblCorvaneSystems, &f.lblCV_URL})
        link->ForeColor = colLink;

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
    f.cmdHelp.ToolTip = "Where the user manual is";
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
    f.Close = cmdQuit_Click;
    f.HoldsShutdown = ShutdownObjection;
    f.FilesDropped = FilesDroppedOnMain;
}

} // namespace

void LoadMainForm() {
    frmMain.Name = "frmMain";
    frmMain.Caption = "Nullwright";
    frmMain.Width = intWindowWidth;
    frmMain.Height = intWindowHeight;
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
