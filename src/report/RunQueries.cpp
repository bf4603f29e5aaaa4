#include "platform/System.h"
#include "report/frmAntiVirusQuery.h"
#include "report/frmConfirmFiles.h"
#include "report/frmPurgeWarning.h"
#include "report/frmReport.h"
#include "report/ReportProgress.h"
#include "report/ReportText.h"
#include "report/Walks.h"
#include "shell/Session.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <functional>

namespace {

// A question to the user, over the report window with all that was written so far. The time that
// he takes for the answer is none of the run's.
void Ask(const std::function<void()>& question) {
    MovePendingText();
    PauseReportProgress(true);
    question();
    PauseReportProgress(false);
}

void ShowOverReport(ui::Form& form, int right, int below) {
    form.Left = frmReport.Left + right;
    form.Top = frmReport.Top + below;
    ui::KeepOnScreen(form);
    Ask([&] { ui::ShowModal(form); });
}

} // namespace

int AskSensitiveExtension(const std::string& strPath) {
    const std::string extension = platform::LowerCase(ExtensionOf(strPath));
    const char first = extension.empty() ? ' ' : extension.front();
    // "an" before e, i and o only, not before a and u: deliberately so.
    const bool blnAn = first == 'e' || first == 'i' || first == 'o';
    int answer = ui::AnswerCancel;
    Ask([&] {
        answer = ui::MsgBox(strPath + "\r\n\r\nYou have requested to purge a file with a" +
                                (blnAn ? "n" : "") + " \"" + extension +
                                "\" extension.\r\nDo you wish to allow all files with this "
                                "extension to be purged?\r\n"
                                "(Permission lasts only during the course of this operation.)",
                            ui::Buttons::YesNoCancel, ui::Icon::Question, "Purge query", 2);
    });
    return answer;
}

bool GivePurgeAdvice(const std::string& strPath) {
    if (!purgeRun.blnMonitoringAsked) {
        ShowOverReport(frmAntiVirusQuery, 1200, 1800);
        if (frmAntiVirusQuery.blnCancel)
            return false;
        purgeRun.blnMonitoringAsked = true;
        purgeRun.blnNoMonitoring = frmAntiVirusQuery.blnNo;
    }
    if (purgeRun.blnNoMonitoring)
        return true;
    SetFileOfAdvice(strPath);
    ShowOverReport(frmPurgeWarning, 1200, 1200);
    return !blnStopPurge;
}

bool ConfirmFile(const std::string& strPath) {
    if (!blnConfirmFiles || blnPurgeRemainingFiles)
        return true;
    frmConfirmFiles.blnFileConfirmed = false;
    SetFileToConfirm(strPath);
    Ask([] { ui::ShowModal(frmConfirmFiles); });
    return frmConfirmFiles.blnFileConfirmed;
}
