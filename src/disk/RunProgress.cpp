// The progress of the commands on drives: line and bar in the main window.
#include "disk/RunProgress.h"

#include "report/run/RunClock.h"
#include "session/Session.h"
#include "support/MainWindow.h"

#include <algorithm>
#include <utility>

ui::Timer tmrRunProgress;

namespace {

/// Bytes to write: of the whole command, of the finished phases, of the current phase.
double dblPlanned = 0, dblEnded = 0, dblOfPhase = 0;
std::function<double()> shareOfPhase; ///< empty between two phases
std::function<std::string()> doingOfPhase;

double ShareOfCommand() {
    const double dblAll = std::max(dblPlanned, dblEnded + dblOfPhase);
    const double dblShare = shareOfPhase ? std::clamp(shareOfPhase(), 0.0, 1.0) : 0;
    return dblAll > 0 ? (dblEnded + dblOfPhase * dblShare) / dblAll : dblShare;
}

void ShowInMain() {
    if (!shareOfPhase)
        return;
    std::string strText = blnStop ? "Stopping ...  " : doingOfPhase() + "  ";
    strText += ElapsedText();
    if (const std::string strRemaining = RemainingText(); !strRemaining.empty())
        strText += "  " + strRemaining;
    SetMainLine(MainLine::EstimatedTime, strText);
    ShowMainProgress(std::max(ClockShare(), 0.0));
}

} // namespace

void PlanRunProgress(double dblBytes) {
    dblPlanned = dblBytes;
}

void BeginRunProgress(double dblBytes, std::function<std::string()> doing,
                      std::function<double()> shareDone) {
    dblOfPhase = dblBytes;
    doingOfPhase = std::move(doing);
    shareOfPhase = std::move(shareDone);
    tmrRunProgress.Interval = 500;
    tmrRunProgress.Tick = RefreshClock;
    tmrRunProgress.Enabled = true;
    if (ClockRuns())
        PauseClock(false);
    else
        BeginClock(ShareOfCommand, ShowInMain);
}

void EndRunProgress() {
    if (shareOfPhase)
        dblEnded += dblOfPhase;
    shareOfPhase = nullptr;
    PauseClock(true);
    tmrRunProgress.Enabled = false;
    SetMainLine(MainLine::EstimatedTime, "");
    ShowMainProgress(-1);
}

void ForgetRunProgress() {
    EndRunProgress();
    EndClock();
    dblPlanned = dblEnded = dblOfPhase = 0;
}

int AskInRun(const std::string& strText, ui::Buttons buttons, ui::Icon icon,
             const std::string& strTitle, const std::string& strQuestion) {
    tmrRunProgress.Enabled = false;
    PauseClock(true);
    const int intAnswer = ui::MsgBox(strText, buttons, icon, strTitle, strQuestion);
    if (shareOfPhase)
        PauseClock(false);
    tmrRunProgress.Enabled = shareOfPhase != nullptr;
    return intAnswer;
}
