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
#include "support/SizeText.h"
#include "ui/console/Console.h"

namespace {

/// What the report says already is not told again.
void TellOnce(const std::string& strText) {
    if (!strText.empty() && frmReport.txbText.Text.find(strText) == std::string::npos)
        ui::console::TakeLines(strText + "\r\n");
}

/// The share that is done, the speed, and what the report window shows. Unknown ones are left out.
std::string ProgressOfRun() {
    const double share = ClockShare(), seconds = static_cast<double>(ClockElapsed()) / 1000;
    const double bytes = share * currentRun.Request.dblBytesExpected;
    return (share < 0 ? "" : std::to_string(static_cast<int>(share * 100)) + " %  ") +
           (bytes <= 0 || seconds < 1 ? "" : ByteSizeText(bytes / seconds, 1) + "/s.  ") +
           frmReport.lblProgress.Caption;
}

/// The records that are new since the last time.
void PrintRecords() {
    std::string lines;
    for (; told.lngRecords < NumRecords(); ++told.lngRecords)
        lines += JsonOfRecord(RecordAt(told.lngRecords)) + "\n";
    if (!lines.empty())
        ui::console::Print(lines);
}

} // namespace

bool TellError(const std::string& strLine) {
    told.blnComplained = true;
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
                            (told.blnComplained || !ui::console::IsAttended());
    return blnRefused ? ExitRefused : ExitStopped;
}

namespace ui::console {

bool IsAttended() {
    return !given.Has("yes") && IsTerminal(Stream::In) && IsTerminal(Stream::Error);
}

std::string AnswerBeforehand(const std::string& question) {
    const Question* row = QuestionOf(question);
    // A stop ends what nobody watches. Only a question about the stop is answered then.
    const bool blnOfStop = row != nullptr && std::string(row->strAsks).starts_with("Ctrl+C");
    const bool blnEnds = Ending() || (Interrupts() > 0 && !IsAttended() && !blnOfStop);
    const std::string answer = blnEnds ? "none" : AnswerOf(question, IsAttended());
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
    return ClockRuns() ? ProgressOfRun() : "";
}

} // namespace ui::console
