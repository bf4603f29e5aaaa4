#include "report/frmConfirmFiles.h"

#include "report/frmReport.h"
#include "shell/Session.h"
#include "ui/Interface.h"

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

} // namespace

void LoadConfirmFilesForm() {
    FrmConfirmFiles& f = frmConfirmFiles;
    f.Name = "frmConfirmFiles";
    f.Caption = "Confirm purging of this file";
    f.Width = 7200;
    f.Height = 1920;
    // Neither closing it nor Enter pressed too early is a consent to the purge.
    f.Close = cmdNo_Click;
    f.Activate = [] { ui::SetFocus(frmConfirmFiles.cmdNo); };

    ui::PutWords({{&f.lblFile, "C:\\xxx\\yyy\\..."},
                  {&f.cmdYes, "Yes", 'Y', cmdYes_Click},
                  {&f.cmdNo, "No", 'N', cmdNo_Click},
                  {&f.cmdYesAndDontShowAgain,
                   "Purge this file and all subsequent files (don't show this again).", 'P',
                   cmdYesAndDontShowAgain_Click},
                  {&f.cmdStopPurge, "Stop this purge", 'S', cmdStopPurge_Click}});
    f.lblFile.Ellipsis = true;
    f.cmdNo.Default = f.cmdNo.Cancel = true;

    ui::Bind(f, {{&f.lblFile, "lblFile", 120, 180, 6960, 540},
                 {&f.cmdYes, "cmdYes", 120, 840, 1500, 375},
                 {&f.cmdNo, "cmdNo", 1740, 840, 1500, 375},
                 {&f.cmdStopPurge, "cmdStopPurge", 5280, 840, 1800, 375},
                 {&f.cmdYesAndDontShowAgain, "cmdYesAndDontShowAgain", 120, 1425, 6960, 375}});
}
