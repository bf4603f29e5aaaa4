// The questions and polls of a run, implemented by the report window and its dialogs.
#include "report/frmAntiVirusQuery.h"
#include "report/frmConfirmFiles.h"
#include "report/frmPurgeWarning.h"
#include "report/frmReport.h"
#include "report/ReportText.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "session/Session.h"
#include "ui/Interface.h"

#include <functional>

namespace {

void Ask(const std::function<void()>& question) {
    MovePendingText();
    const bool blnPaused = ClockIsPaused();
    PauseClock(true);
    question();
    PauseClock(blnPaused);
}

void ShowOverReport(ui::Form& form, int right, int below) {
    form.Left = frmReport.Left + right;
    form.Top = frmReport.Top + below;
    ui::KeepOnScreen(form);
    Ask([&] { ui::ShowModal(form); });
}

bool IsPaused() {
    return currentRun.State == RunState::Paused && !blnStop;
}

} // namespace

void CheckPauseStop() {
    ui::DoEvents();
    if (IsPaused()) {
        MovePendingText();
        PauseClock(true);
        ui::Repaint(frmReport);
        while (IsPaused())
            ui::Wait(20);
        PauseClock(false);
    }
    if (!blnStop) {
        RefreshClock();
        return;
    }
    AppendBeyondLimit("\r\n");
    ui::Repaint(frmReport);
}

int AskInReport(const std::string& strText, ui::Buttons buttons, const std::string& strTitle,
                const std::string& strQuestion, int intDefault) {
    int answer = ui::AnswerCancel;
    Ask([&] {
        answer =
            ui::MsgBox(strText, buttons, ui::Icon::Question, strTitle, strQuestion, intDefault);
    });
    return answer;
}

bool AskAboutMonitoring(bool& blnNone) {
    ShowOverReport(frmAntiVirusQuery, 1200, 1800);
    if (frmAntiVirusQuery.blnCancel)
        return false;
    blnNone = frmAntiVirusQuery.blnNo;
    return true;
}

bool ShowPurgeAdvice(const std::string& strPath) {
    SetFileOfAdvice(strPath);
    ShowOverReport(frmPurgeWarning, 1200, 1200);
    return !blnStopPurge;
}

bool AskToPurgeFile(const std::string& strPath) {
    frmConfirmFiles.blnFileConfirmed = false;
    SetFileToConfirm(strPath);
    Ask([] { ui::ShowModal(frmConfirmFiles); });
    return frmConfirmFiles.blnFileConfirmed;
}
