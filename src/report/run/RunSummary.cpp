// The closing lines of a listing or a purge run.
#include "report/run/RunSummary.h"

#include "report/run/Run.h"
#include "report/run/RunEvents.h"
#include "report/run/RunRecords.h"
#include "report/run/TimeEstimates.h"
#include "session/Session.h"
#include "support/Numbers.h"

#include "support/SizeText.h"
#include <algorithm>

namespace {

constexpr char strLineEnd[] = "\r\n";

std::string ListingSummary() {
    std::string text;
    const std::int64_t found = currentRun.Counts.lngNumFilesProcessed;
    if (found != 1) {
        text += currentRun.Request.strFilespec == "*.*"
                    ? "Number of files: "
                    : "Number of files " + currentRun.Request.strFilespec + ": ";
        text += GroupedDigits(found) + strLineEnd;
    }
    if (found > 1) {
        text += strLineEnd;
        text += "Sum of file sizes: " + ByteSizeText(currentRun.Counts.dblTotalBytesPurged, 2) +
                strLineEnd;
    }
    if (WasStopped())
        text += std::string(strLineEnd) + "File listing was stopped." + strLineEnd;
    else if (!blnStop && currentRun.Counts.dblTotalBytesPurged > 0)
        text += EstimateText();
    return text;
}

std::string PurgeSummary() {
    const PurgeHow& how = currentRun.Request.How;
    std::string text;
    const std::int64_t purged = currentRun.Counts.lngNumFilesPurged;
    if (currentRun.Counts.lngNumFilesProcessed != 1 || purged != 1) {
        text += how.blnPurgeSlackOnly ? "Number of files with slack area purged: "
                                      : "Number of files purged: ";
        text += GroupedDigits(purged) + strLineEnd;
    }
    if (!how.blnPurgeSlackOnly) {
        if (purged >= 2) {
            text += strLineEnd;
            text += "Sum of sizes of files purged: " +
                    ByteSizeText(currentRun.Counts.dblTotalBytesPurged, 2) + strLineEnd;
        }
        if (how.blnDoNotDeletePurgedFiles && purged >= 1)
            text += std::string("Purged files not deleted.") + strLineEnd;
    }
    if (currentRun.Counts.lngNumFoldersRemoved > 0) // Deliberate oddity: no blank before the count
        text +=
            "Number of folders removed:" + GroupedDigits(currentRun.Counts.lngNumFoldersRemoved) +
            strLineEnd;
    if (currentRun.Counts.lngNumFoldersUnread > 0)
        text += "Folders that could not be read: " +
                GroupedDigits(currentRun.Counts.lngNumFoldersUnread) + strLineEnd;
    if (blnStop)
        text += std::string(strLineEnd) + "Purge operation was stopped." + strLineEnd;
    return text;
}

} // namespace

bool WasStopped() {
    return blnStop && (currentRun.Request.blnPurgeFiles || !ReportIsFull());
}

bool SomethingIsLeft() {
    bool left = currentRun.blnSpaceLeft || currentRun.Counts.lngNumFoldersUnread > 0;
    for (std::size_t i = 0; i < NumRecords() && !left; ++i)
        left = IsLeft(RecordAt(i));
    return left;
}

std::string FailuresText(std::size_t lngMost) {
    const std::vector<RunFailure>& failures = currentRun.Failures;
    if (failures.empty())
        return {};
    const auto count = [](std::size_t number) {
        return GroupedDigits(static_cast<std::int64_t>(number));
    };
    std::string text = "Files that could not be purged: " + count(failures.size()) + strLineEnd;
    const std::size_t shown = std::min(failures.size(), lngMost);
    for (std::size_t i = 0; i < shown; ++i) {
        const FileRecord record = RecordAt(failures[i].Record);
        text += record.Path + ": " + ReasonText(record, failures[i].strHolders) + strLineEnd;
    }
    if (shown < failures.size())
        text += "and " + count(failures.size() - shown) + " more (see Save report)" + strLineEnd;
    return text;
}

std::string SummaryText() {
    return currentRun.Request.blnPurgeFiles ? PurgeSummary() : ListingSummary();
}
