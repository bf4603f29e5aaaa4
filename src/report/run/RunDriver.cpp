// A run from its header to its closing lines.
#include "report/run/RunDriver.h"

#include "drives/ClusterSizes.h"
#include "drives/DriveNature.h"
#include "engine/FileOps.h"
#include "platform/System.h"
#include "report/run/ListWalk.h"
#include "report/run/PurgeWalk.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "report/run/RunSummary.h"
#include "report/run/TimeEstimates.h"
#include "session/Session.h"
#include "settings/frmTypeOfPurge.h"
#include "support/MainWindow.h"
#include "support/SizeText.h"

namespace {

// A file gets a progress ruler when one overwrite takes at least this long: by the measured speed,
// or else above a size that takes about this long on a slow drive.
constexpr double dblRulerSeconds = 2;
constexpr double dblRulerBytesUnmeasured = 64 * dblBytesPerMB;

constexpr std::size_t lngMostNamed = 15; // failures listed at the end of the report

// Prepares for each item separately, because items may lie on different drives.
void PrepareItem(const RunItem& item) {
    const float speed = PurgeSpeedOf(item.strFolder);
    currentRun.dblRulerLength =
        speed > 0 ? dblRulerSeconds * speed * dblBytesPerMB : dblRulerBytesUnmeasured;
    SettleVolume(item.strFolder);
    currentRun.lngClusterSize = GetCoveredClusterSize(item.strFolder);
}

// Counts the files of the run for the progress, unless the caller has done so. A single folder
// needs no count: its list is complete before its first file is processed.
void CountForProgress() {
    RunRequest& request = currentRun.Request;
    if (request.lngNumFilesExpected > 0 || (!request.blnSubdirectories && request.Items.empty()))
        return;
    ShowCounting();
    const FilesToPurge found = CountItems(ItemsOf(request), request.blnSubdirectories);
    request.lngNumFilesExpected = found.lngFiles;
    request.dblBytesExpected = found.dblBytes;
}

std::string RunHeader() {
    const RunRequest& request = currentRun.Request;
    const std::string slack = request.How.blnPurgeSlackOnly ? "the slack area of " : "";
    std::string text = "Purging " + slack;
    if (!request.Items.empty()) {
        text += request.strItems;
        if (request.blnSubdirectories)
            text += "\r\n(including all files in subfolders) ";
    } else if (request.strFilespec == "*.*") {
        text += "all files in " + request.strDirPath;
        if (request.blnSubdirectories)
            text += "\r\n(including all files in subfolders) ";
    } else {
        text += "files " + request.strDirPath + request.strFilespec + " ";
        if (request.blnSubdirectories)
            text += "\r\n(including " + request.strFilespec + " files in subfolders) ";
    }
    std::vector<std::string> places;
    for (const RunItem& item : ItemsOf(request))
        places.push_back(item.strFolder);
    return text + "\r\n" + UsingText() + HeadRemarks(places) + "\r\n";
}

void RunPurge() {
    InitSystemExtensions(0);
    currentRun.strHead = DateAndTime() + RunHeader();
    AppendReport(currentRun.strHead, true);
    CountForProgress();
    if (blnStop) // stopped before or while counting
        return;
    BeginClock(ShareOfRun, ShowReportProgress);
    for (const RunItem& item : ItemsOf(currentRun.Request)) {
        if (blnStop)
            break;
        PrepareItem(item);
        PurgeItem(item);
    }
}

void RunListing() {
    SetMainLine(MainLine::Status, "");
    BeginClock(ShareOfRun, ShowReportProgress);
    for (const RunItem& item : ItemsOf(currentRun.Request))
        if (!blnStop)
            ListItem(item);
}

} // namespace

std::string UsingText() {
    const PurgeHow& how = currentRun.Request.How;
    return "using " + PurgeTypeNumPasses(how.intPurgeType, how.intNumberOfPasses) + ".\r\n";
}

std::string HeadRemarks(const std::vector<std::string>& places) {
    const PurgeHow& how = currentRun.Request.How;
    std::string text;
    if (how.Options.Verify)
        text = "\"Verify by reading back\"";
    if (how.Options.OverwriteNames)
        text += std::string(text.empty() ? "" : " and ") + "\"Overwrite file names and dates\"";
    if (!text.empty())
        text = "With " + text + ".\r\n";
    const std::string remarks = DriveRemarksOn(places);
    return text + remarks + (remarks.empty() ? "" : "\r\n");
}

std::string DateAndTime() {
    return platform::DateText() + ", " + platform::TimeText() + "\r\n";
}

void TellFailuresAndTime() {
    currentRun.strFoot = currentRun.Request.blnPurgeFiles ? DateAndTime() : std::string();
    currentRun.strEnded = platform::IsoTimeText();
    const std::string failures = FailuresText(lngMostNamed);
    // The lines between the files told them, as long as there was room.
    const std::string warnings = ReportIsFull() || currentRun.Request.WritesDots()
                                     ? WarningsText(lngMostNamed)
                                     : std::string();
    AppendBeyondLimit((failures.empty() ? "" : "\r\n" + failures) +
                      (warnings.empty() ? "" : "\r\n" + warnings) + currentRun.strFoot);
}

void PerformRun() {
    if (currentRun.Request.blnPurgeFiles)
        RunPurge();
    else
        RunListing();
    ShowRunEnd();
    EndClock();
    EndReportLine();
    currentRun.strSummary = SummaryText();
    AppendBeyondLimit(currentRun.strSummary);
    TellFailuresAndTime();
    // F10 also stops a run. A pause requested at the very end stays visible.
    if (WasStopped())
        currentRun.State = RunState::Stopped;
    else if (currentRun.State == RunState::Running)
        currentRun.State = RunState::Done;
}
