// The questions of a purge run: sensitive extensions, monitoring, other names, confirmation.
#include "report/RunQueries.h"

#include "engine/FileOps.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "report/frmAntiVirusQuery.h"
#include "report/frmConfirmFiles.h"
#include "report/frmPurgeWarning.h"
#include "report/frmReport.h"
#include "report/PurgeWalk.h"
#include "report/ReportProgress.h"
#include "report/ReportText.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace {

// A question to the user, over the report window with all that was written so far. The time that
// he takes for the answer is none of the run's.
void Ask(const std::function<void()>& question) {
    MovePendingText();
    PauseReportProgress(true);
    question();
    PauseReportProgress(false);
}

void ShowOverReport(ui::Form& form, int right, int below) {
    form.Left = frmReport.Left + right;
    form.Top = frmReport.Top + below;
    ui::KeepOnScreen(form);
    Ask([&] { ui::ShowModal(form); });
}

// Whether a name, as the system writes it, is one of the files that this run purges unasked. Case
// counts: there are folders in which "A" and "a" are two files.
bool IsPurgedInRun(const std::string& strPath) {
    const std::string strFolder = FolderWithBackslash(frmReport.strDirPath);
    if (blnConfirmFiles && !blnPurgeRemainingFiles)
        return false;
    if (!(blnSubdirectories ? IsBelow(strPath, strFolder)
                            : IsSamePath(FolderPartOf(strPath), strFolder)))
        return false;
    const std::string strName = FileNameOf(strPath);
    const bool blnPattern = frmReport.strFilespec.find_first_of("?*") != std::string::npos;
    if (blnPattern ? !MatchesFilespec(strName, frmReport.strFilespec)
                   : strName != frmReport.strFilespec)
        return false;
    const std::int16_t code = ClassifyFileForPurge(strPath);
    return code == ClassNoObjection || (code == ClassSystemUndecided && blnOKToPurgeSensitiveFiles);
}

} // namespace

int AskSensitiveExtension(const std::string& strPath) {
    const std::string extension = platform::LowerCase(ExtensionOf(strPath));
    const char first = extension.empty() ? ' ' : extension.front();
    // "an" before e, i and o only, not before a and u: deliberately so.
    const bool blnAn = first == 'e' || first == 'i' || first == 'o';
    int answer = ui::AnswerCancel;
    Ask([&] {
        answer = ui::MsgBox(strPath + "\r\n\r\nYou have requested to purge a file with a" +
                                (blnAn ? "n" : "") + " \"" + extension +
                                "\" extension.\r\nDo you wish to allow all files with this "
                                "extension to be purged?\r\n"
                                "(Permission lasts only during the course of this operation.)",
                            ui::Buttons::YesNoCancel, ui::Icon::Question, "Purge query", 2);
    });
    return answer;
}

bool GivePurgeAdvice(const std::string& strPath) {
    if (!purgeRun.blnMonitoringAsked) {
        ShowOverReport(frmAntiVirusQuery, 1200, 1800);
        if (frmAntiVirusQuery.blnCancel)
            return false;
        purgeRun.blnMonitoringAsked = true;
        purgeRun.blnNoMonitoring = frmAntiVirusQuery.blnNo;
    }
    if (purgeRun.blnNoMonitoring)
        return true;
    SetFileOfAdvice(strPath);
    ShowOverReport(frmPurgeWarning, 1200, 1200);
    return !blnStopPurge;
}

OtherNames LookAtOtherNames(const std::string& strPath) {
    std::vector<std::string> names;
    const bool blnKnown = !platform::Failed(platform::ListNames(strPath, names));
    const auto outside = std::find_if_not(names.begin(), names.end(), [&](const auto& name) {
        return IsSamePath(name, strPath) || IsPurgedInRun(name);
    });
    if (blnKnown && outside == names.end())
        return OtherNames::Chosen;
    if (purgeRun.intOtherNames == 0) {
        const std::string strNames =
            blnKnown ? "another name, which was not chosen to be purged:\r\n" + *outside
                     : "at least one other name, and the system does not tell which.";
        Ask([&] {
            purgeRun.intOtherNames =
                ui::MsgBox(strPath + "\r\n\r\nThe data of this file also belong to " + strNames +
                               "\r\n\r\nIf the file is purged, its data are destroyed under the "
                               "other name, too.\r\nDo you wish to purge this file, and all others "
                               "of this kind in this operation?",
                           ui::Buttons::YesNo, ui::Icon::Question, "Purge query", 2);
        });
    }
    return purgeRun.intOtherNames == ui::AnswerYes ? OtherNames::Agreed : OtherNames::Keep;
}

bool ConfirmFile(const std::string& strPath) {
    if (!blnConfirmFiles || blnPurgeRemainingFiles)
        return true;
    frmConfirmFiles.blnFileConfirmed = false;
    SetFileToConfirm(strPath);
    Ask([] { ui::ShowModal(frmConfirmFiles); });
    return frmConfirmFiles.blnFileConfirmed;
}
