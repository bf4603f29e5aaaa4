// The questions of a purge run: sensitive extensions, monitoring, other names, confirmation.
#include "report/run/RunQuestions.h"

#include "drives/DriveWork.h"
#include "engine/FileOps.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "report/run/Run.h"
#include "report/run/RunEvents.h"
#include "session/Session.h"
#include "support/Paths.h"

#include <algorithm>
#include <vector>

namespace {

bool IsOfItem(const std::string& strPath, const RunItem& item, bool blnSubfolders) {
    const std::string strFolder = FolderWithBackslash(item.strFolder);
    const std::string strName = FileNameOf(strPath);
    if (!item.names.empty())
        return IsSamePath(FolderPartOf(strPath), strFolder) &&
               std::find(item.names.begin(), item.names.end(), strName) != item.names.end();
    if (!(blnSubfolders ? IsBelow(strPath, strFolder)
                        : IsSamePath(FolderPartOf(strPath), strFolder)))
        return false;
    return item.strFilespec.find_first_of("?*") != std::string::npos
               ? MatchesFilespec(strName, item.strFilespec)
               : strName == item.strFilespec;
}

// Whether this run purges the file of this name, as the system writes it, without asking. Compares
// with case: in some folders "A" and "a" are two files.
bool IsPurgedInRun(const std::string& strPath) {
    if (blnConfirmFiles && !blnPurgeRemainingFiles)
        return false;
    const RunRequest& request = currentRun.Request;
    const std::vector<RunItem> items = ItemsOf(request);
    if (std::none_of(items.begin(), items.end(), [&](const RunItem& item) {
            return IsOfItem(strPath, item, request.blnSubdirectories);
        }))
        return false;
    const std::int16_t code = ClassifyFileForPurge(strPath);
    return code == ClassNoObjection ||
           (code == ClassSystemUndecided && request.How.blnOKToPurgeSensitiveFiles);
}

} // namespace

int AskSensitiveExtension(const std::string& strPath) {
    const std::string extension = platform::LowerCase(ExtensionOf(strPath));
    const char first = extension.empty() ? ' ' : extension.front();
    // Deliberate oddity: "an" only before e, i and o, not before a and u.
    const bool blnAn = first == 'e' || first == 'i' || first == 'o';
    return AskInReport(strPath + "\r\n\r\nYou have requested to purge a file with a" +
                           (blnAn ? "n" : "") + " \"" + extension +
                           "\" extension.\r\nDo you wish to allow all files with this "
                           "extension to be purged?\r\n"
                           "(Permission lasts only during the course of this operation.)",
                       ui::Buttons::YesNoCancel, "Purge query", "sensitive file", 2);
}

bool GivePurgeAdvice(const std::string& strPath) {
    RunRequest& request = currentRun.Request;
    if (!request.blnMonitoringAsked) {
        if (!AskAboutMonitoring(request.blnNoMonitoring))
            return false;
        request.blnMonitoringAsked = true;
    }
    return request.blnNoMonitoring || ShowPurgeAdvice(strPath);
}

OtherNames LookAtOtherNames(const std::string& strPath) {
    std::vector<std::string> names;
    bool blnKnown = false;
    WorkOnDrive(strPath, [&] { blnKnown = !Failed(platform::ListNames(strPath, names)); });
    const auto outside = std::find_if_not(names.begin(), names.end(), [&](const auto& name) {
        return IsSamePath(name, strPath) || IsPurgedInRun(name);
    });
    if (blnKnown && outside == names.end())
        return OtherNames::Chosen;
    if (currentRun.intOtherNames == 0) {
        const std::string strNames =
            blnKnown ? "another name, which was not chosen to be purged:\r\n" + *outside
                     : "at least one other name, and the system does not tell which.";
        currentRun.intOtherNames =
            AskInReport(strPath + "\r\n\r\nThe data of this file also belong to " + strNames +
                            "\r\n\r\nIf the file is purged, its data are destroyed under the "
                            "other name, too.\r\nDo you wish to purge this file, and all others "
                            "of this kind in this operation?",
                        ui::Buttons::YesNo, "Purge query", "other names", 2);
    }
    return currentRun.intOtherNames == ui::AnswerYes ? OtherNames::Agreed : OtherNames::Keep;
}

bool ConfirmFile(const std::string& strPath) {
    return !blnConfirmFiles || blnPurgeRemainingFiles || AskToPurgeFile(strPath);
}
