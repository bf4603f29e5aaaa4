// The places in the main window: a table of rows, and the distances between them by window height.
#include "shell/frmMainPlaces.h"

#include "shell/frmMain.h"

#include <algorithm>

namespace {

constexpr int intMargin = 120;
constexpr int intMenuWidth = 2460;
constexpr int intLabelLeft = intMargin + intMenuWidth + 180;
constexpr int intSecondLabelLeft = intLabelLeft + 660; ///< after "Yes" or "No"
constexpr int intLineHeight = 240;
constexpr int intUsualWidth = 11520;
/// In a narrower window the texts on the buttons of the panels would be cut.
constexpr int intLeastWidth = 9780;
/// Minimum window height; the contents then scroll.
constexpr int intLeastHeight = 3000;

/// Distances, from the lowest window that needs no scrolling to the usual one.
struct Spacing {
    int Top, Pitch, ButtonGap, GroupGap;
    int ProgramGap; ///< leaves lblLargePurgeMessage room for five lines
    int StatusGap, Foot;

    constexpr int Height() const {
        return Top + 17 * Pitch + 3 * GroupGap + ProgramGap + StatusGap + intLineHeight + Foot;
    }
};
constexpr Spacing Tight{60, 345, 15, 30, 45, 30, 15};
constexpr Spacing Usual{120, 480, 30, 120, 480, 105, 75};

/// The distances that fill a window of this height.
Spacing SpacingFor(int intHeight) {
    const int intRoom = std::clamp(intHeight, Tight.Height(), Usual.Height()) - Tight.Height();
    const auto between = [intRoom](int intLow, int intHigh) {
        constexpr int intMore = Usual.Height() - Tight.Height();
        constexpr int intPixel = 15; // at the usual resolution; makes all rows equal
        return intLow + (intHigh - intLow) * intRoom / intMore / intPixel * intPixel;
    };
    return {between(Tight.Top, Usual.Top),
            between(Tight.Pitch, Usual.Pitch),
            between(Tight.ButtonGap, Usual.ButtonGap),
            between(Tight.GroupGap, Usual.GroupGap),
            between(Tight.ProgramGap, Usual.ProgramGap),
            between(Tight.StatusGap, Usual.StatusGap),
            between(Tight.Foot, Usual.Foot)};
}

/// All controls with names and places, in tab order.
std::vector<ui::Placed> Places(int intWidth, int intHeight) {
    FrmMain& f = frmMain;
    const Spacing s = SpacingFor(intHeight);
    // The tops of the groups of buttons: what to purge, how, start, whole drives, the program
    // itself.
    const int intWhat = s.Top;
    const int intHow = intWhat + 5 * s.Pitch + s.GroupGap;
    const int intGo = intHow + 2 * s.Pitch + s.GroupGap;
    const int intDrives = intGo + 4 * s.Pitch + s.GroupGap;
    const int intProgram = intDrives + 3 * s.Pitch + s.ProgramGap;
    const int intMenuBottom = intProgram + 3 * s.Pitch;
    const int intStatus = std::max(intHeight - s.Foot - intLineHeight, intMenuBottom + s.StatusGap);
    const int intButton = s.Pitch - s.ButtonGap;
    // Aligns a label's text with the text of its button.
    const int intDrop = (intButton - intLineHeight) / 2 + 15;
    const int intRoom = intWidth - intLabelLeft - intMargin, intHalf = intRoom / 2;
    // The panels open beside "Setup", over the labels. Their buttons shrink with them.
    const int intPanel = intProgram - std::min(255, s.ProgramGap);
    const int intPanelHeight = 285 + intButton + 60;

    const auto button = [&](ui::Control& which, const char* name, int intGroup, int intRow) {
        return ui::Placed{&which,       name,     0, intGroup + intRow * s.Pitch - s.Top,
                          intMenuWidth, intButton};
    };
    const auto label = [&](ui::Control& which, const char* name, int intGroup, int intRow) {
        return ui::Placed{&which,       name,
                          intLabelLeft, intGroup + intRow * s.Pitch + intDrop,
                          intRoom,      intLineHeight};
    };
    const auto part = [&](ui::Control& which, const char* name, int intGroup, int intRow, int left,
                          int right) {
        ui::Placed placed = label(which, name, intGroup, intRow);
        placed.Left = left;
        placed.Width = right - left;
        return placed;
    };
    const auto panelButton = [&](ui::Control& which, const char* name, int intLeft, int intLength) {
        const auto shrunk = [intRoom](int intTwips) {
            return std::min(intTwips,
                            intTwips * intRoom / (intUsualWidth - intLabelLeft - intMargin));
        };
        return ui::Placed{&which, name, shrunk(intLeft), 285, shrunk(intLength), intButton - 45};
    };
    const auto separator = [&](int intIndex, const char* name, int intLeft, int intTop) {
        return ui::Placed{&f.fraSeparator[intIndex],      name, intLeft, intTop,
                          intWidth - intLeft - intMargin, 15};
    };
    const int intAbove = (s.ButtonGap + s.GroupGap) / 2;
    const int intMiddle = intLabelLeft + intHalf, intRight = intWidth - intMargin;

    return {
        {&f.fraMenu, "fraMenu", intMargin, s.Top, intMenuWidth, intMenuBottom - s.Top},
        button(f.cmdSingleFile, "cmdSingleFile", intWhat, 0),
        button(f.cmdSpecifyDirectory[0], "cmdSpecifyDirectory(0)", intWhat, 1),
        button(f.cmdSpecifyFiles, "cmdSpecifyFiles", intWhat, 2),
        button(f.cmdSubdirectories, "cmdSubdirectories", intWhat, 3),
        button(f.cmdClear, "cmdClear", intWhat, 4),
        button(f.cmdTypeOfPurge, "cmdTypeOfPurge", intHow, 0),
        button(f.cmdConfirmFiles, "cmdConfirmFiles", intHow, 1),
        button(f.cmdProcessFiles[0], "cmdProcessFiles(0)", intGo, 0),
        button(f.cmdProcessFiles[1], "cmdProcessFiles(1)", intGo, 1),
        button(f.cmdSpecifyDirectory[1], "cmdSpecifyDirectory(1)", intGo, 2),
        // Outside of the frame, because the report can be shown while an operation runs.
        {&f.cmdReportScreen, "cmdReportScreen", intMargin, intGo + 3 * s.Pitch, intMenuWidth,
         intButton},
        button(f.cmdLargePurge[0], "cmdLargePurge(0)", intDrives, 0),
        button(f.cmdLargePurge[2], "cmdLargePurge(2)", intDrives, 1),
        button(f.cmdLargePurge[1], "cmdLargePurge(1)", intDrives, 2),
        button(f.cmdSetup, "cmdSetup", intProgram, 0),
        button(f.cmdHelp, "cmdHelp", intProgram, 1),
        button(f.cmdQuit, "cmdQuit", intProgram, 2),
        {&f.fraSetup, "fraSetup", intLabelLeft, intPanel, intRoom, intPanelHeight},
        panelButton(f.cmdLoadSetup, "cmdLoadSetup", 150, 1560),
        panelButton(f.cmdSaveSetup, "cmdSaveSetup", 1815, 1560),
        panelButton(f.cmdClearSetup, "cmdClearSetup", 3480, 1560),
        panelButton(f.cmdRestoreSetup, "cmdRestoreSetup", 5145, 1680),
        panelButton(f.cmdKeepSetup, "cmdKeepSetup", 6930, 1200),
        {&f.picSaveSetup, "picSaveSetup", intLabelLeft, intPanel, intRoom, intPanelHeight},
        panelButton(f.cmdSaveSetupForNextRun, "cmdSaveSetupForNextRun", 150, 2460),
        panelButton(f.cmdSaveSetupAsOperationFile, "cmdSaveSetupAsOperationFile", 2715, 2940),
        panelButton(f.cmdDontSaveSetup, "cmdDontSaveSetup", 5760, 1200),
        label(f.lblSingleFile, "lblSingleFile", intWhat, 0),
        label(f.lblDirectory, "lblDirectory", intWhat, 1),
        label(f.lblFiles, "lblFiles", intWhat, 2),
        label(f.lblFiles2, "lblFiles2", intWhat, 2),
        part(f.lblSubdirectories, "lblSubdirectories", intWhat, 3, intLabelLeft,
             intSecondLabelLeft - intMargin),
        part(f.lblSubdirectories2, "lblSubdirectories2", intWhat, 3, intSecondLabelLeft, intRight),
        label(f.lblTypeOfPurge, "lblTypeOfPurge", intHow, 0),
        part(f.lblConfirmFiles, "lblConfirmFiles", intHow, 1, intLabelLeft,
             intSecondLabelLeft - intMargin),
        part(f.lblConfirmFiles2, "lblConfirmFiles2", intHow, 1, intSecondLabelLeft, intRight),
        label(f.lblEstimatedTime, "lblEstimatedTime", intGo, 0),
        part(f.barProgress, "barProgress", intGo, 1, intLabelLeft, intMiddle),
        {&f.lblPurgeFoldersMessage, "lblPurgeFoldersMessage", intLabelLeft,
         intGo + 2 * s.Pitch + 30, intRoom, 2 * intLineHeight},
        label(f.lblPurgeSpeed, "lblPurgeSpeed", intDrives, 0),
        {&f.lblLargePurgeMessage, "lblLargePurgeMessage", intLabelLeft,
         intDrives + std::max(s.Pitch - 30, intDrop + intLineHeight + 15), intRoom,
         5 * intLineHeight},
        label(f.lblSetupFilename, "lblSetupFilename", intProgram, 0),
        part(f.lblOnlineDocumentation, "lblOnlineDocumentation", intProgram, 1, intLabelLeft,
             intMiddle - intMargin),
        part(f.lblAbout, "lblAbout", intProgram, 1, intMiddle, intRight),
        part(f.lblCorvaneSystems, "lblCorvaneSystems", intProgram, 2, intLabelLeft,
             intMiddle - intMargin),
        part(f.lblCV_URL, "lblCV_URL", intProgram, 2, intMiddle, intRight),
        separator(0, "fraSeparator(0)", intLabelLeft, intHow - intAbove),
        separator(1, "fraSeparator(1)", intLabelLeft, intGo - intAbove),
        separator(2, "fraSeparator(2)", intLabelLeft, intDrives - intAbove),
        separator(3, "fraSeparator(3)", intLabelLeft,
                  intProgram - std::min(225, (s.ButtonGap + s.ProgramGap) / 2)),
        separator(4, "fraSeparator(4)", intMargin, intStatus - std::min(75, s.StatusGap)),
        {&f.lblStatus, "lblStatus", intMargin, intStatus, intWidth - 2 * intMargin, intLineHeight},
    };
}

} // namespace

void PlaceControls() {
    FrmMain& f = frmMain;
    f.Width = intUsualWidth;
    f.Height = Usual.Height();
    f.MinWidth = intLeastWidth;
    f.MinHeight = intLeastHeight;
    f.ContentHeight = Tight.Height();
    f.Resizable = true;
    f.Resize = LayOutMain;
    ui::PutInto(f.fraMenu, {&f.cmdSingleFile, &f.cmdSpecifyDirectory[0], &f.cmdSpecifyDirectory[1],
                            &f.cmdSpecifyFiles, &f.cmdSubdirectories, &f.cmdClear,
                            &f.cmdTypeOfPurge, &f.cmdConfirmFiles, &f.cmdProcessFiles[0],
                            &f.cmdProcessFiles[1], &f.cmdLargePurge[0], &f.cmdLargePurge[1],
                            &f.cmdLargePurge[2], &f.cmdSetup, &f.cmdHelp, &f.cmdQuit});
    ui::PutInto(f.fraSetup, {&f.cmdLoadSetup, &f.cmdSaveSetup, &f.cmdClearSetup, &f.cmdRestoreSetup,
                             &f.cmdKeepSetup});
    ui::PutInto(f.picSaveSetup,
                {&f.cmdSaveSetupForNextRun, &f.cmdSaveSetupAsOperationFile, &f.cmdDontSaveSetup});
    ui::Bind(f, Places(f.Width, f.Height));
}

void LayOutMain() {
    ui::Place(Places(frmMain.Width, frmMain.Height));
    FitLabels();
}

void HideCovered() {
    FrmMain& f = frmMain;
    for (ui::Control* control : {static_cast<ui::Control*>(&f.fraSeparator[3]),
                                 static_cast<ui::Control*>(&f.lblSetupFilename),
                                 static_cast<ui::Control*>(&f.lblOnlineDocumentation),
                                 static_cast<ui::Control*>(&f.lblAbout)}) {
        control->Visible = true;
        for (const ui::Control* above :
             {static_cast<ui::Control*>(&f.fraSetup), static_cast<ui::Control*>(&f.picSaveSetup),
              static_cast<ui::Control*>(&f.lblLargePurgeMessage)})
            if (above->Visible && control->Top < above->Top + above->Height &&
                above->Top < control->Top + control->Height)
                control->Visible = false;
    }
}
