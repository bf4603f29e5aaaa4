// The clock of the commands on drives: time line and share in the main window.
#include "disk/RunProgress.h"

#include "report/run/RunClock.h"
#include "support/MainWindow.h"

#include <algorithm>
#include <utility>

ui::Timer tmrRunProgress;

namespace {

void ShowInMain() {
    const std::string strRemaining = RemainingText();
    SetMainLine(MainLine::EstimatedTime,
                ElapsedText() + (strRemaining.empty() ? "" : "  ") + strRemaining);
    ShowMainProgress(std::clamp(ClockShare(), 0.0, 1.0));
}

} // namespace

void BeginRunProgress(std::function<double()> shareDone) {
    tmrRunProgress.Interval = 500;
    tmrRunProgress.Tick = RefreshClock;
    tmrRunProgress.Enabled = true;
    BeginClock(std::move(shareDone), ShowInMain);
}

void EndRunProgress() {
    EndClock();
    tmrRunProgress.Enabled = false;
    SetMainLine(MainLine::EstimatedTime, "");
    ShowMainProgress(-1);
}

int AskInRun(const std::string& strText, ui::Buttons buttons, ui::Icon icon,
             const std::string& strTitle) {
    tmrRunProgress.Enabled = false;
    PauseClock(true);
    const int intAnswer = ui::MsgBox(strText, buttons, icon, strTitle);
    PauseClock(false);
    tmrRunProgress.Enabled = ClockRuns();
    return intAnswer;
}
