// The report's text and its limit: appending, replacing the last line, handling a full report.
#include "report/ReportText.h"

#include "report/frmReport.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "session/Session.h"
#include "ui/Interface.h"

#include <string_view>

namespace {

constexpr std::size_t lngCutWhenFull = 1024; // characters cut to make room for the closing lines

// The length of txbText in UTF-16 units. Counting them at each append would take ever longer.
std::size_t lngUnits = 0;

void CaretToEnd() {
    frmReport.txbText.SelStart = frmReport.txbText.Text.size();
    frmReport.txbText.SelLength = 0;
}

void AppendToBox(std::string_view text) {
    frmReport.txbText.Text.append(text);
    lngUnits += ui::UnitsOf(text);
}

void CutBox(std::size_t length) {
    std::string& text = frmReport.txbText.Text;
    lngUnits -= ui::UnitsOf(std::string_view(text).substr(length));
    text.resize(length);
}

// Byte position at which the last `units` units begin.
std::size_t PositionBeforeLast(std::size_t units) {
    const std::string& text = frmReport.txbText.Text;
    std::size_t position = text.size();
    std::size_t passed = 0;
    while (passed < units && position > 0) {
        const auto c = static_cast<unsigned char>(text[--position]);
        if ((c & 0xC0) != 0x80)
            passed += c >= 0xF0 ? 2 : 1;
    }
    return position;
}

} // namespace

void ClearReportText() {
    frmReport.txbText.Text.clear();
    lngUnits = 0;
    frmReport.strTextBuff.clear();
    frmReport.blnBufferFull = false;
    CaretToEnd();
}

void MovePendingText() {
    if (!frmReport.strTextBuff.empty()) {
        AppendToBox(frmReport.strTextBuff);
        frmReport.strTextBuff.clear();
    }
    CaretToEnd();
}

std::size_t ReportEnd() {
    return frmReport.txbText.Text.size() + frmReport.strTextBuff.size();
}

void AppendReport(const std::string& strText, bool blnFlush) {
    if (frmReport.blnBufferFull)
        return;
    frmReport.strTextBuff += strText;
    if (blnFlush) {
        MovePendingText();
        // DoEvents updates the window only after some time: each append to a visible text box would
        // cost milliseconds.
        ui::DoEvents();
    }
    if (lngUnits > lngReportLimit)
        ReportBufferFull();
}

void ReplaceReportTail(std::size_t lngFrom, const std::string& strTail) {
    if (frmReport.blnBufferFull)
        return;
    MovePendingText();
    CutBox(lngFrom);
    AppendToBox(strTail);
    CaretToEnd();
    AppendReport({}, false); // only to enforce the limit
}

bool ReportIsFull() {
    return frmReport.blnBufferFull;
}

bool ReportIsNearlyFull(std::size_t lngMore) {
    return ReportEnd() + lngMore > lngReportLimit;
}

void EndReportLine() {
    const std::string& text =
        frmReport.strTextBuff.empty() ? frmReport.txbText.Text : frmReport.strTextBuff;
    if (!text.empty() && text.back() != '\n')
        AppendReport("\r\n", false);
}

void WriteReportLine(const std::string& strLine) {
    EndReportLine();
    AppendReport(strLine + "\r\n", true);
}

void AppendBeyondLimit(const std::string& strText) {
    MovePendingText();
    AppendToBox(strText);
    CaretToEnd();
}

void ReportBufferFull() {
    MovePendingText();
    std::string& text = frmReport.txbText.Text;
    if (lngUnits > lngCutWhenFull)
        CutBox(PositionBeforeLast(lngCutWhenFull));
    const std::size_t lineEnd = text.rfind("\r\n");
    if (lineEnd != std::string::npos)
        CutBox(lineEnd);
    AppendToBox("\r\n\r\n");
    if (currentRun.Request.blnPurgeFiles) {
        AppendToBox("The report buffer has been filled, so "
                    "this report cannot continue.  The purge operation will continue, "
                    "but without report of results for individual files.\r\n\r\n");
    } else {
        PauseClock(true); // the time until the user answers does not count
        ui::MsgBox("The output report buffer has been filled, so this report cannot continue.",
                   ui::Buttons::OK, ui::Icon::None, "Report buffer full");
        PauseClock(false);
        AppendToBox(
            "The output report buffer was filled.\r\nNote: Some files were not listed.\r\n");
        blnStop = true;
    }
    frmReport.blnBufferFull = true;
    CaretToEnd();
}
