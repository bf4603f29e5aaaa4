// The purge advice.
#include "report/frmPurgeWarning.h"

#include "session/Session.h"
#include "ui/Interface.h"

#include <algorithm>

FrmPurgeWarning frmPurgeWarning;

namespace {

void frmPurgeWarning_Activate() {
    blnStopPurge = false;
    frmPurgeWarning.chkDontShowAgain.Value = 0;
    // "(each time the file  is to be overwritten)": the double blank is deliberate.
    frmPurgeWarning.lblMessage.Caption =
        "The file " + frmPurgeWarning.strFilePath +
        " will now be purged.  "
        "If Norton AntiVirus Auto-Protect (or a similar "
        "utility) is active then it may produce a warning message (each time the file "
        " is to be overwritten).  "
        "If so, do not stop the operation but rather allow it to continue.\r\n\r\n";
    frmPurgeWarning.lblMessage.Caption += "It is better to disable your antivirus software "
                                          "either before running Nullwright or during a run "
                                          "(like now).";
    ui::Beep();
}

void chkDontShowAgain_Click() {
    blnShowPurgeWarning = frmPurgeWarning.chkDontShowAgain.Value != 1;
    if (frmPurgeWarning.chkDontShowAgain.Value == 1)
        ui::SetFocus(frmPurgeWarning.cmdOK);
}

void cmdOK_Click() {
    blnShowPurgeWarning = frmPurgeWarning.chkDontShowAgain.Value != 1;
    ui::Hide(frmPurgeWarning);
}

void cmdStopPurge_Click() {
    blnStopPurge = true;
    ui::Hide(frmPurgeWarning);
}

/// The window grows with the path in its text.
void LayOut() {
    FrmPurgeWarning& f = frmPurgeWarning;
    constexpr int intCharactersBesidePath = 250, intCharactersInLine = 52, intLineHeight = 255;
    constexpr int intLinesBelow = 3, intMaxLines = 30;
    const int intLines =
        (static_cast<int>(f.strFilePath.size()) + intCharactersBesidePath) / intCharactersInLine +
        1 + intLinesBelow; // rounded up
    f.lblMessage.Height = std::min(intLines, intMaxLines) * intLineHeight;
    f.chkDontShowAgain.Top = f.lblMessage.Top + f.lblMessage.Height + 120;
    f.cmdOK.Top = f.cmdStopPurge.Top = f.chkDontShowAgain.Top + 465;
    f.Height = f.cmdOK.Top + 495;
}

} // namespace

void LoadPurgeWarningForm() {
    FrmPurgeWarning& f = frmPurgeWarning;
    f.Name = "frmPurgeWarning";
    f.Caption = "Purge advice";
    f.Width = 6600;
    f.Position = ui::StartPosition::Manual;
    f.Activate = frmPurgeWarning_Activate;
    f.Close = cmdStopPurge_Click; // closing the window is no consent to the purge

    ui::PutWords({{&f.chkDontShowAgain, "Don't display this advice again during this session.", 'D',
                   chkDontShowAgain_Click},
                  {&f.cmdOK, "OK", 0, cmdOK_Click},
                  {&f.cmdStopPurge, "Cancel purge operation", 'C', cmdStopPurge_Click}});
    f.cmdOK.Default = f.cmdStopPurge.Cancel = true;

    ui::Bind(f, {{&f.cmdOK, "cmdOK", 2160, 0, 1500, 375},
                 {&f.cmdStopPurge, "cmdStopPurge", 3780, 0, 2700, 375},
                 {&f.chkDontShowAgain, "chkDontShowAgain", 120, 0, 6360, 300},
                 {&f.lblMessage, "lblMessage", 120, 120, 6360, 0}});
    LayOut();
}

void SetFileOfAdvice(const std::string& strPath) {
    frmPurgeWarning.strFilePath = strPath;
    LayOut();
}
