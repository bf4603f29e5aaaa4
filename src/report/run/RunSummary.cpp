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
#include <functional>

namespace {

constexpr char strLineEnd[] = "\r\n";

std::string UnreadFolders() {
    const std::int64_t unread = currentRun.Counts.lngNumFoldersUnread;
    return unread == 0 ? ""
                       : "Folders that could not be read: " + GroupedDigits(unread) + strLineEnd;
}

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
    text += UnreadFolders();
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
    text += UnreadFolders();
    if (blnStop)
        text += std::string(strLineEnd) + "Purge operation was stopped." + strLineEnd;
    return text;
}

// A heading with the number of lines, up to `most` of these, and how many more there are.
std::string ListOf(const char* heading, std::size_t all, std::size_t most,
                   const std::function<std::string(std::size_t)>& lineAt) {
    if (all == 0)
        return {};
    const auto count = [](std::size_t number) {
        return GroupedDigits(static_cast<std::int64_t>(number));
    };
    std::string text = heading + count(all) + strLineEnd;
    for (std::size_t i = 0; i < std::min(all, most); ++i)
        text += lineAt(i) + strLineEnd;
    if (most < all)
        text += "and " + count(all - most) + " more (see Save report)" + strLineEnd;
    return text;
}

} // namespace

bool WasStopped() {
    return blnStop && (currentRun.Request.blnPurgeFiles || !ReportIsFull());
}

bool SomethingIsLeft() {
    bool left = currentRun.Counts.lngNumFoldersUnread > 0 || !Warnings().empty();
    for (std::size_t i = 0; i < NumRecords() && !left; ++i)
        left = IsLeft(RecordAt(i));
    return left;
}

std::string FailuresText(std::size_t lngMost) {
    const std::vector<RunFailure>& failures = currentRun.Failures;
    return ListOf("Files that could not be purged: ", failures.size(), lngMost, [&](std::size_t i) {
        const FileRecord record = RecordAt(failures[i].Record);
        return record.Path + ": " + ReasonText(record, failures[i].strHolders);
    });
}

std::vector<std::string> Warnings() {
    std::vector<std::string> warnings;
    if (std::string strSpace = currentRun.strSpaceLeft; !strSpace.empty()) {
        std::erase(strSpace, '\n');
        std::ranges::replace(strSpace, '\r', ' ');
        warnings.push_back(strSpace);
    }
    for (const RunNote& note : currentRun.Notes)
        if (note.blnWarning)
            warnings.push_back(note.strLine);
    return warnings;
}

std::string WarningsText(std::size_t lngMost) {
    const std::vector<std::string> warnings = Warnings();
    return ListOf("Warnings: ", warnings.size(), lngMost,
                  [&](std::size_t i) { return warnings[i]; });
}

std::string SummaryText() {
    return currentRun.Request.blnPurgeFiles ? PurgeSummary() : ListingSummary();
}
