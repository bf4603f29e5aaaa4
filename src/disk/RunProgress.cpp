// The clock of the commands on drives: time line and share in the main window.
#include "disk/RunProgress.h"

#include "platform/System.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/StrProc.h"

#include <algorithm>
#include <string>
#include <utility>

ui::Timer tmrRunProgress;

namespace {

/// Before this much time and share of the work a remaining time would be a guess.
constexpr double dblSecondsBeforeEstimate = 3;
constexpr double dblFractionBeforeEstimate = 0.005;

std::function<double()> shareOfRun; ///< none while nothing runs
std::uint64_t lngStarted = 0;
std::int64_t lngSecondShown = 0;

} // namespace

void BeginRunProgress(std::function<double()> shareDone) {
    shareOfRun = std::move(shareDone);
    tmrRunProgress.Interval = 500;
    tmrRunProgress.Tick = ShowRunProgress;
    tmrRunProgress.Enabled = true;
    lngStarted = platform::TickCount();
    lngSecondShown = 0;
    SetMainLine(MainLine::EstimatedTime, "");
    ShowMainProgress(0);
}

void ShowRunProgress() {
    if (!shareOfRun)
        return;
    const double dblElapsed = static_cast<double>(platform::TickCount() - lngStarted) / 1000;
    const auto lngSecond = static_cast<std::int64_t>(dblElapsed);
    if (lngSecond == lngSecondShown)
        return;
    lngSecondShown = lngSecond;
    const double dblShare = std::clamp(shareOfRun(), 0.0, 1.0);
    std::string strText = "Elapsed: " + SecondsText(lngSecond, false) + ".";
    if (dblElapsed >= dblSecondsBeforeEstimate && dblShare >= dblFractionBeforeEstimate)
        strText += "  Remaining: about " +
                   SecondsText(RoundHalfEven(dblElapsed * (1 - dblShare) / dblShare), false) + ".";
    SetMainLine(MainLine::EstimatedTime, strText);
    ShowMainProgress(dblShare);
}

void EndRunProgress() {
    shareOfRun = nullptr;
    tmrRunProgress.Enabled = false;
    SetMainLine(MainLine::EstimatedTime, "");
    ShowMainProgress(-1);
}

int AskInRun(const std::string& strText, ui::Buttons buttons, ui::Icon icon,
             const std::string& strTitle) {
    const std::uint64_t lngAsked = platform::TickCount();
    tmrRunProgress.Enabled = false;
    const int intAnswer = ui::MsgBox(strText, buttons, icon, strTitle);
    tmrRunProgress.Enabled = shareOfRun != nullptr;
    lngStarted += platform::TickCount() - lngAsked;
    return intAnswer;
}
