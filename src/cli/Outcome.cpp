// What a command came to: its words on the streams, its report file, its exit code.
#include "cli/Outcome.h"

#include "cli/CommandLine.h"
#include "cli/Questions.h"
#include "report/frmReport.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunReport.h"
#include "report/run/RunSummary.h"
#include "report/SaveReport.h"
#include "shell/frmMain.h"
#include "support/Numbers.h"
#include "support/SizeText.h"
#include "ui/console/Console.h"

#include <algorithm>

namespace {

std::size_t lngRecordsPrinted = 0;

/// What the report says already is not told again.
void TellOnce(const std::string& strText) {
    if (!strText.empty() && frmReport.txbText.Text.find(strText) == std::string::npos)
        ui::console::TakeLines(strText + "\r\n");
}

std::string SpeedOfRun() {
    const double seconds = static_cast<double>(ClockElapsed()) / 1000;
    const double bytes = std::max(ClockShare(), 0.0) * currentRun.Request.dblBytesExpected;
    return seconds < 1 || bytes <= 0 ? "" : ByteSizeText(bytes / seconds, 1) + "/s.  ";
}

/// The records that are new since the last time.
void PrintRecords() {
    std::string lines;
    for (; lngRecordsPrinted < NumRecords(); ++lngRecordsPrinted)
        lines += JsonOfRecord(RecordAt(lngRecordsPrinted)) + "\n";
    if (!lines.empty())
        ui::console::Print(lines);
}

} // namespace

void BeginTelling() {
    blnComplained = false;
    lngRecordsPrinted = 0;
}

bool IsAttended() {
    using namespace ui::console;
    return !given.Has("yes") && IsTerminal(Stream::In) && IsTerminal(Stream::Error);
}

bool TellError(const std::string& strLine) {
    blnComplained = true;
    ui::console::PrintError("nullwright-cli: " + strLine + "\r\n");
    return false;
}

int EndTelling() {
    ui::console::PrintRest();
    if (!frmReport.txbText.Text.empty() && !frmReport.txbText.Text.ends_with('\n'))
        ui::console::TakeLines("\r\n");
    TellOnce(frmMain.lblLargePurgeMessage.Caption);
    const bool blnBegun = !currentRun.Request.strTitle.empty();
    if (given.Has("json") && blnBegun) {
        PrintRecords();
        ui::console::Print(JsonOfRun() + "\n");
    } else if (given.Has("quiet")) {
        ui::console::PrintError(FailuresText() + WarningsText());
    }
    const std::string strReport = given.Of("report");
    const bool blnWritten = strReport.empty() || !blnBegun || !Failed(WriteReport(strReport)) ||
                            TellError("The report cannot be written to " + strReport + ".");
    if (!blnWritten || currentRun.State == RunState::Failed)
        return ExitFailed;
    if (currentRun.State == RunState::Done)
        return SomethingIsLeft() ? ExitLeft : ExitDone;
    // What has not begun was refused, unless a person, or a stop, did not let it.
    const bool blnRefused = currentRun.State == RunState::Idle && ui::console::Interrupts() == 0 &&
                            (blnComplained || !IsAttended());
    return blnRefused ? ExitRefused : ExitStopped;
}

namespace ui::console {

std::string AnswerBeforehand(const std::string& question) {
    const Question* row = QuestionOf(question);
    const std::string answer = Ending() ? "none" : AnswerOf(question, IsAttended());
    if (answer == "Cancel" && *row->strOption != '\0') // it ends here; this would let it go on
        TellError(std::string(row->strAsks) + ": " + MeaningOf(*row) + ".");
    return answer;
}

void TellBox(const std::string& strText, ui::Icon icon) {
    if (icon == ui::Icon::Exclamation)
        TellError(strText);
    else
        TellOnce(strText);
}

const std::string& Report() {
    return frmReport.txbText.Text;
}

void TakeLines(const std::string& lines) {
    if (!given.Has("quiet") && !given.Has("json"))
        Print(lines);
}

std::string Sync() {
    if (given.Has("json"))
        PrintRecords();
    if (given.Has("quiet") || !IsTerminal(Stream::Error))
        return {};
    if (!frmMain.lblStatus.Caption.empty())
        return frmMain.lblStatus.Caption + "  " + frmMain.lblEstimatedTime.Caption;
    const double share = ClockShare();
    return !ClockRuns() ? ""
                        : (share < 0 ? "" : FormatNumber(share * 100, 0) + " %  ") + SpeedOfRun() +
                              frmReport.lblProgress.Caption;
}

} // namespace ui::console
