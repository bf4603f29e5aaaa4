// The file-monitoring query, and the main window's advice that follows it.
#include "report/frmAntiVirusQuery.h"

#include "ui/Interface.h"

FrmAntiVirusQuery frmAntiVirusQuery;

namespace {

void frmAntiVirusQuery_Activate() {
    frmAntiVirusQuery.blnNo = false;
    frmAntiVirusQuery.blnCancel = false;
}

// Yes and Don't know lead to the same advice.
void cmdYes_Click() {
    ui::Hide(frmAntiVirusQuery);
}

void cmdNo_Click() {
    frmAntiVirusQuery.blnNo = true;
    ui::Hide(frmAntiVirusQuery);
}

void cmdCancel_Click() {
    frmAntiVirusQuery.blnCancel = true;
    ui::Hide(frmAntiVirusQuery);
}

} // namespace

void LoadAntiVirusQueryForm() {
    FrmAntiVirusQuery& f = frmAntiVirusQuery;
    f.Name = "frmAntiVirusQuery";
    f.Caption = "File-monitoring software query";
    f.Width = 6600;
    f.Height = 1560;
    f.Position = ui::StartPosition::Manual;
    f.Activate = frmAntiVirusQuery_Activate;
    f.Close = cmdCancel_Click;

    ui::PutWords({{&f.lblQuery, "Is Norton AntiVirus Auto-Protect, or some other file-monitoring "
                                "software, currently active on this PC?"},
                  {&f.cmdYes, "Yes", 'Y', cmdYes_Click},
                  {&f.cmdNo, "No", 'N', cmdNo_Click},
                  {&f.cmdDontKnow, "Don't know", 'D', cmdYes_Click},
                  {&f.cmdCancel, "Cancel", 0, cmdCancel_Click}});
    f.cmdYes.Default = f.cmdCancel.Cancel = true;

    ui::Bind(f, {{&f.lblQuery, "lblQuery", 120, 120, 6360, 720},
                 {&f.cmdYes, "cmdYes", 120, 1065, 1500, 375},
                 {&f.cmdNo, "cmdNo", 1740, 1065, 1500, 375},
                 {&f.cmdDontKnow, "cmdDontKnow", 3360, 1065, 1500, 375},
                 {&f.cmdCancel, "cmdCancel", 4980, 1065, 1500, 375}});
}

int AntiVirusAdvice(const std::string& strDrive, const ui::Form& frmOwner) {
    frmAntiVirusQuery.Left = frmOwner.Left + 1675;
    frmAntiVirusQuery.Top = frmOwner.Top + 2400;
    ui::KeepOnScreen(frmAntiVirusQuery);
    ui::ShowModal(frmAntiVirusQuery);
    frmAntiVirusQuery.blnAsked = !frmAntiVirusQuery.blnCancel;
    if (frmAntiVirusQuery.blnCancel)
        return ui::AnswerCancel;
    if (frmAntiVirusQuery.blnNo)
        return ui::AnswerNo;
    const int answer = ui::MsgBox(
        "If Drive " + strDrive +
            " has files with extensions such as .exe, .sys, .dll, .doc, etc.,\r\n"
            "then anti-virus software will probably interrupt this operation.\r\n"
            "It is recommended to disable your anti-virus software before continuing.\r\n\r\n"
            "Press 'OK' to continue without disabling, or 'Cancel' to cancel this operation\r\n"
            "so that you can disable your anti-virus software.",
        ui::Buttons::OKCancel, ui::Icon::None, "Nullwright", "anti-virus");
    frmAntiVirusQuery.blnAsked = answer != ui::AnswerCancel;
    return answer;
}
