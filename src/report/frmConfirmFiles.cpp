// The confirmation of a single file.
#include "report/frmConfirmFiles.h"

#include "report/frmReport.h"
#include "session/Session.h"
#include "ui/Interface.h"
#include "ui/PathEllipsis.h"

#include <algorithm>
#include <cstddef>

FrmConfirmFiles frmConfirmFiles;

namespace {

void Answer(bool blnConfirmed) {
    frmConfirmFiles.blnFileConfirmed = blnConfirmed;
    ui::Hide(frmConfirmFiles);
}

void cmdYes_Click() {
    Answer(true);
}

void cmdNo_Click() {
    Answer(false);
}

void cmdYesAndDontShowAgain_Click() {
    blnPurgeRemainingFiles = true;
    Answer(true);
}

void cmdStopPurge_Click() {
    blnStop = true;
    frmReport.lblPausedDone.Caption = "Stopped";
    Answer(false);
}

/// The window grows with the path, so that the whole path is visible: nobody should confirm a file
/// whose name is cut short. Of a path for which no screen is large enough the middle is left out.
void LayOut(const std::string& strPath) {
    FrmConfirmFiles& f = frmConfirmFiles;
    constexpr std::size_t lngCharactersInLine = 60, lngMaxLines = 19;
    constexpr int intLineHeight = 255;
    f.lblFile.Caption = ui::ShortenPath(strPath, [](const std::string& strText) {
        return strText.size() < lngCharactersInLine * lngMaxLines;
    });
    f.lblFile.ToolTip = f.lblFile.Caption == strPath ? "" : strPath;
    const std::size_t lngLines = f.lblFile.Caption.size() / lngCharactersInLine + 1; // rounded up
    f.lblFile.Height = static_cast<int>(std::max<std::size_t>(lngLines, 2)) * intLineHeight;
    const int intTop = f.lblFile.Top + f.lblFile.Height + 210;
    for (ui::Button* button : {&f.cmdYes, &f.cmdNo, &f.cmdStopPurge})
        button->Top = intTop;
    f.cmdYesAndDontShowAgain.Top = intTop + 495;
    f.Height = intTop + 990;
}

} // namespace

void LoadConfirmFilesForm() {
    FrmConfirmFiles& f = frmConfirmFiles;
    f.Name = "frmConfirmFiles";
    f.Caption = "Confirm purging of this file";
    f.Width = 7200;
    // Closing the window and pressing Enter too early must not count as consent to the purge.
    f.Close = cmdNo_Click;
    f.Activate = [] { ui::SetFocus(frmConfirmFiles.cmdNo); };

    ui::PutWords({{&f.lblFile, "C:\\xxx\\yyy\\..."},
                  {&f.cmdYes, "Yes", 'Y', cmdYes_Click},
                  {&f.cmdNo, "No", 'N', cmdNo_Click},
                  {&f.cmdYesAndDontShowAgain,
                   "Purge this file and all subsequent files (don't show this again).", 'P',
                   cmdYesAndDontShowAgain_Click},
                  {&f.cmdStopPurge, "Stop this purge", 'S', cmdStopPurge_Click}});
    f.cmdNo.Default = f.cmdNo.Cancel = true;

    ui::Bind(f, {{&f.lblFile, "lblFile", 120, 180, 6960, 0},
                 {&f.cmdYes, "cmdYes", 120, 0, 1500, 375},
                 {&f.cmdNo, "cmdNo", 1740, 0, 1500, 375},
                 {&f.cmdStopPurge, "cmdStopPurge", 5280, 0, 1800, 375},
                 {&f.cmdYesAndDontShowAgain, "cmdYesAndDontShowAgain", 120, 0, 6960, 375}});
    LayOut(f.lblFile.Caption);
}

void SetFileToConfirm(const std::string& strPath) {
    LayOut(strPath);
}
