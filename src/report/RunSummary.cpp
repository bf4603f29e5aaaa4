// The lines that close a listing or a purge run.
#include "engine/FileProc.h"
#include "report/frmReport.h"
#include "report/TimeEstimates.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "support/Numbers.h"

namespace {

constexpr char strLineEnd[] = "\r\n";

std::string ListingSummary() {
    std::string text;
    const std::int64_t found = frmReport.lngNumFilesProcessed;
    if (found != 1) {
        text += frmReport.strFilespec == "*.*" ? "Number of files: "
                                               : "Number of files " + frmReport.strFilespec + ": ";
        text += GroupedDigits(found) + strLineEnd;
    }
    if (found > 1) {
        text += strLineEnd;
        text += "Sum of file sizes: " + ByteSizeText(frmReport.dblTotalBytesPurged, 2) + strLineEnd;
    }
    if (WasStopped())
        text += std::string(strLineEnd) + "File listing was stopped." + strLineEnd;
    else if (!blnStop && frmReport.dblTotalBytesPurged > 0)
        text += EstimateText();
    return text;
}

std::string PurgeSummary() {
    std::string text;
    const std::int64_t purged = frmReport.lngNumFilesPurged;
    if (frmReport.lngNumFilesProcessed != 1 || purged != 1) {
        text += blnPurgeSlackOnly ? "Number of files with slack area purged: "
                                  : "Number of files purged: ";
        text += GroupedDigits(purged) + strLineEnd;
    }
    if (!blnPurgeSlackOnly) {
        if (purged >= 2) {
            text += strLineEnd;
            text +=
                "Sum of sizes of files purged: " + ByteSizeText(frmReport.dblTotalBytesPurged, 2) +
                strLineEnd;
        }
        if (blnDoNotDeletePurgedFiles && purged >= 1)
            text += std::string("Purged files not deleted.") + strLineEnd;
    }
    if (frmReport.lngNumFoldersRemoved > 0) // no blank before the count: the text has none
        text += "Number of folders removed:" + GroupedDigits(frmReport.lngNumFoldersRemoved) +
                strLineEnd;
    if (frmReport.lngNumFoldersUnread > 0)
        text += "Folders that could not be read: " + GroupedDigits(frmReport.lngNumFoldersUnread) +
                strLineEnd;
    if (blnStop)
        text += std::string(strLineEnd) + "Purge operation was stopped." + strLineEnd;
    return text;
}

} // namespace

std::string SummaryText() {
    return frmReport.blnPurgeFiles ? PurgeSummary() : ListingSummary();
}
