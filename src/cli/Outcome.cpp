// What a command came to: its words on the streams, its report file, its exit code.
#include "cli/Outcome.h"

#include "cli/Questions.h"
#include "engine/PurgeJob.h"
#include "report/frmReport.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunReport.h"
#include "report/run/RunSummary.h"
#include "settings/TextFiles.h"
#include "shell/frmMain.h"
#include "support/Numbers.h"
#include "support/SizeText.h"
#include "ui/console/Terminal.h"

#include <algorithm>
#include <limits>

namespace {

/// What a command on a drive tells, and what it means. Of several the worst counts.
constexpr struct {
    const char* strPart;
    ExitCode code;
} endings[] = {{"There are no files", ExitDone},
               {"There are no other files", ExitDone},
               {"There are no non-excluded files", ExitDone},
               {"The disk has been purged", ExitDone},
               {"The free space has been purged.", ExitDone},
               {"The purge speed is approximately", ExitDone},
               {"is required for this test", ExitFailed}, // before the next one
               {"There is no free space on the disk", ExitDone},
               {"could not be filled", ExitLeft},
               {"not purged to the end", ExitLeft},
               {"not be purged.", ExitLeft},
               {"not be read completely.", ExitLeft},
               {"not purged, as ", ExitLeft},
               {"is a network drive", ExitRefused},
               {"is read-only.", ExitRefused},
               {"cancelled.", ExitStopped},
               {"was stopped.", ExitStopped},
               {"the free space was not purged", ExitFailed},
               {"The free space was not purged", ExitFailed},
               {"nwaux6.dll", ExitFailed}};
constexpr ExitCode codeUnknown{-1};

struct {
    const CommandLine* line = nullptr;
    bool blnAttended = false;
    std::string strTranscript; ///< for the report file
    std::size_t lngRecordsPrinted = 0;
    bool blnComplained = false;
    ExitCode code = codeUnknown;
} told;

/// The codes of all that a text says.
ExitCode CodeOf(const std::string& strText) {
    ExitCode code = codeUnknown;
    for (const auto& ending : endings)
        if (strText.find(ending.strPart) != std::string::npos) {
            code = std::max(code, ending.code);
            if (ending.code == ExitFailed)
                break;
        }
    return code;
}

/// What the report says already is not told again.
void TellOnce(const std::string& strText) {
    if (!strText.empty() && frmReport.txbText.Text.find(strText) == std::string::npos)
        Tell(strText);
}

std::string SpeedOfRun() {
    const double seconds = static_cast<double>(ClockElapsed()) / 1000;
    const double bytes = std::max(ClockShare(), 0.0) * currentRun.Request.dblBytesExpected;
    return seconds < 1 || bytes <= 0 ? "" : ByteSizeText(bytes / seconds, 1) + "/s.  ";
}

/// Whether it was to be purged, and was not.
bool IsLeft(const FileRecord& record) {
    return record.Fate == FileFate::Declined ||
           (record.Fate >= FileFate::Refused && record.Result != PurgeDone &&
            record.Result != PurgeVanished && record.Result != PurgeNoSlack);
}

ExitCode CodeOfFiles() {
    bool blnLeft = currentRun.Counts.lngNumFoldersUnread > 0;
    for (std::size_t i = 0; i < NumRecords() && !blnLeft; ++i)
        blnLeft = IsLeft(RecordAt(i));
    return blnLeft ? ExitLeft : ExitDone;
}

/// The records that are new since the last time.
void PrintRecords() {
    std::string lines;
    for (; told.lngRecordsPrinted < NumRecords(); ++told.lngRecordsPrinted)
        lines += JsonOfRecord(RecordAt(told.lngRecordsPrinted)) + "\n";
    if (!lines.empty())
        ui::console::Print(lines);
}

/// Of a command that did not begin, or ended without a word.
ExitCode CodeWithoutEnd() {
    return !ui::console::StopWanted() && (told.blnComplained || !told.blnAttended) ? ExitRefused
                                                                                   : ExitStopped;
}

/// What every command ends with: the records, the failures by name, the report file.
int End(const CommandLine& line, int code) {
    ui::console::PrintRest();
    if (!told.strTranscript.empty() && told.strTranscript.back() != '\n')
        ui::console::TakeLines("\r\n");
    if (line.Has("json") && !currentRun.Request.strTitle.empty()) {
        PrintRecords();
        ui::console::Print(JsonOfRun() + "\n");
    } else if (line.Has("quiet")) {
        ui::console::PrintError(FailuresText(std::numeric_limits<std::size_t>::max()));
    }
    const std::string strReport = line.Of("report");
    const auto write = [&](const PutText& put) {
        return strReport.ends_with(".json") ? WriteReportAsJson(put) : put(told.strTranscript);
    };
    if (strReport.empty() || !Failed(WriteLongTextFile(strReport, write)))
        return code;
    TellError("The report cannot be written to " + strReport + ".");
    return ExitFailed;
}

} // namespace

std::string ExitCodesText() {
    return "  0  all was done\r\n  1  something was not purged\r\n"
           "  2  wrong usage, or refused: nothing was touched\r\n"
           "  3  stopped: by Ctrl+C, by an answer, or as nobody took the output\r\n"
           "  4  a drive or the program failed\r\n";
}

void BeginTelling(const CommandLine& line, bool blnAttended) {
    told = {};
    told.line = &line;
    told.blnAttended = blnAttended;
}

void Tell(const std::string& strLine) {
    ui::console::TakeLines(strLine + "\r\n");
}

void TellError(const std::string& strLine) {
    if (strLine.empty())
        return;
    told.blnComplained = true;
    ui::console::PrintError("nullwright-cli: " + strLine + "\r\n");
}

bool HasComplained() {
    return told.blnComplained;
}

int EndRun(const CommandLine& line) {
    if (currentRun.State == RunState::Idle) // it did not begin
        return End(line, told.code != codeUnknown ? told.code : CodeWithoutEnd());
    return End(line, currentRun.State == RunState::Stopped ? ExitStopped : CodeOfFiles());
}

int EndDriveCommand(const CommandLine& line) {
    const std::string& strLast = frmMain.lblLargePurgeMessage.Caption;
    TellOnce(strLast);
    told.code = std::max(told.code, CodeOf(strLast));
    if (told.code == codeUnknown)
        return End(line, told.blnComplained ? ExitFailed : CodeWithoutEnd());
    return End(line, std::max(told.code, CodeOfFiles()));
}

namespace ui::console {

std::string AnswerBeforehand(const Asked& asked) {
    return Ending() ? "none" : AnswerOf(asked, *told.line, told.blnAttended);
}

void TellBox(const std::string& strText, ui::Icon icon) {
    const ExitCode code = CodeOf(strText);
    told.code = std::max(told.code, code);
    if (icon != ui::Icon::Exclamation)
        TellOnce(strText);
    else if (code == ExitDone)
        PrintError(strText + "\r\n");
    else
        TellError(strText);
}

const std::string& Report() {
    return frmReport.txbText.Text;
}

void TakeLines(const std::string& lines) {
    told.strTranscript += lines;
    if (!told.line->Has("quiet") && !told.line->Has("json"))
        Print(lines);
}

std::string Sync() {
    if (told.line->Has("json"))
        PrintRecords();
    if (told.line->Has("quiet") || !IsTerminal(Stream::Error))
        return {};
    if (!frmMain.lblStatus.Caption.empty())
        return frmMain.lblStatus.Caption + "  " + frmMain.lblEstimatedTime.Caption;
    const double share = ClockShare();
    return !ClockRuns() ? ""
                        : (share < 0 ? "" : FormatNumber(share * 100, 0) + " %  ") + SpeedOfRun() +
                              frmReport.lblProgress.Caption;
}

} // namespace ui::console
