// The report of the commands on drives: head, steps, sums and failures.
#include "disk/DriveReport.h"

#include "platform/System.h"
#include "report/BatchDriver.h"
#include "report/frmReport.h"
#include "report/run/RunDriver.h"
#include "report/run/RunEvents.h"
#include "report/run/RunRecords.h"
#include "session/Session.h"
#include "support/Numbers.h"
#include "support/SizeText.h"
#include "ui/Interface.h"

#include <utility>

namespace {

bool blnBegun = false;
bool blnOffered = false; ///< the user wants to see the report when the command is over

/// The text with exactly one CR LF at its end.
std::string AsLine(std::string strText) {
    while (strText.ends_with("\r\n"))
        strText.resize(strText.size() - 2);
    return strText + "\r\n";
}

} // namespace

void BeginDriveReport(const std::string& strTitle, const std::string& strWhat,
                      const std::string& strPlace) {
    const bool blnStopped = blnStop;
    if (!blnBegun)
        BeginRun(driveRequest);
    blnStop = blnStopped; // F10 among the questions stops what follows them
    RunRequest& request = currentRun.Request;
    // A disk purge may have begun with a test of the speed.
    if (request.strTitle != strTitle)
        request.strItems = strWhat;
    request.strTitle = frmReport.Caption = strTitle;
    const std::string strRemarks = strPlace.empty() ? "" : HeadRemarks({strPlace});
    if (blnBegun) {
        TellInReport(AsLine(strWhat) + strRemarks);
        return;
    }
    blnBegun = true;
    ResetReportWindow();
    frmReport.cmdPauseContinue.Enabled = false;
    TellInReport(DateAndTime() + AsLine(strWhat) + UsingText() + strRemarks);
}

void TellInReport(const std::string& strText) {
    if (!blnBegun || strText.empty())
        return;
    const std::string strLine = AsLine(strText);
    (NumRecords() == 0 ? currentRun.strHead : currentRun.strSummary) += strLine;
    AppendReport(strLine, true);
}

void EndDriveReport(RunState state) {
    if (blnBegun || currentRun.strStarted.empty())
        currentRun.State = state;
    if (!blnBegun)
        return;
    if (NumRecords() > 0) {
        const RunCounts& counts = currentRun.Counts;
        TellInReport(
            "Number of files purged: " + GroupedDigits(counts.lngNumFilesPurged) +
            "\r\nSum of sizes of files purged: " + ByteSizeText(counts.dblTotalBytesPurged, 2));
    }
    TellFailuresAndTime();
    blnBegun = false;
    ShowEndOfReport();
    if (std::exchange(blnOffered, false))
        ShowReportAgain();
}

void OfferReport(const std::string& strText, const std::string& strTitle) {
    blnOffered = ui::MsgBox(strText + "\r\n\r\nDo you wish to see the report?", ui::Buttons::YesNo,
                            ui::Icon::Information, strTitle, "report") == ui::AnswerYes;
}
