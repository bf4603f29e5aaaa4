// One file of a purge run: classification, questions, the loop over its passes, and its line.
#include "report/PurgeOneFile.h"

#include "engine/FileOps.h"
#include "engine/FileProc.h"
#include "engine/FilePurge.h"
#include "platform/System.h"
#include "report/frmReport.h"
#include "report/PurgeWalk.h"
#include "report/ReportProgress.h"
#include "report/ReportText.h"
#include "report/ResultTexts.h"
#include "report/RunQueries.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>

namespace {

// A file's line in the report while it is purged: what stands behind its path changes.
struct FileLine {
    std::size_t lngTail = 0; ///< where that begins
    std::string strSize;     ///< " (4,096 bytes)"
    bool blnRuler = false;
};

std::string Ruler(int passesDone, int passes) {
    return std::string("123456789").substr(0, std::min(passesDone, 9)) +
           std::string(passes - passesDone, '_') + " ";
}

std::string SizeText(std::int64_t length) {
    return " (" + GroupedDigits(length) + " bytes)";
}

FileLine BeginLine(const std::string& path, std::int64_t length, bool blnRuler) {
    if (frmReport.blnBufferFull) // no line is taken any more: none needs to be composed
        return {};
    AppendReport(path, false);
    const FileLine line{ReportEnd(), SizeText(length), blnRuler};
    std::string tail = line.strSize + " purging";
    if (blnRuler) // at first with no more than ten marks, however many passes there are
        tail += "\r\n" + std::string(std::min<int>(purgeRun.intNumberOfPasses, 10), '_') + " ";
    AppendReport(tail, true);
    return line;
}

void RedrawRuler(const FileLine& line, int passesDone) {
    ReplaceReportTail(line.lngTail, line.strSize + " purging\r\n" +
                                        Ruler(passesDone, purgeRun.intNumberOfPasses));
}

void EndLine(const FileLine& line, const std::string& tail) {
    if (!frmReport.blnBufferFull)
        ReplaceReportTail(line.lngTail, line.strSize + tail + "\r\n");
}

std::string PassesDoneText(int passesDone) {
    return "pass " + GroupedDigits(passesDone) + " of " +
           GroupedDigits(purgeRun.intNumberOfPasses) + ", not purged.";
}

void EndWithoutSize(const FileLine& line, const std::string& tail) {
    if (!frmReport.blnBufferFull)
        ReplaceReportTail(line.lngTail, tail + "\r\n");
}

// What the pass loop came to.
struct Passes {
    std::int16_t intResult = PurgeStopped;
    int intDone = 0;
    std::uint32_t lngReach = 0;
};

Passes DrivePasses(const std::string& path, std::int64_t length, bool blnSlackOnly,
                   const FileLine& line) {
    Passes passes;
    bool blnNamesChosen = false, blnNamesSettled = false;
    const int last = purgeRun.intNumberOfPasses;
    NotePasses(0, last, length);
    ui::DoEvents();
    for (int pass = 1; pass <= last && !blnStop; ++pass) {
        // What a pass before has purged was the slack behind another end.
        if (pass > 1 && blnSlackOnly && GetFileLength(path) != LengthOfPurgedFile()) {
            passes.intResult = PurgeFileChanged;
            break;
        }
        const bool blnDelete = pass == last && !blnDoNotDeletePurgedFiles;
        std::int16_t result = 0;
        std::uint32_t reach = 0;
        const auto purge = [&](bool blnRefuseSeveralNames) {
            PurgeFileWithChecks(path, purgeRun.intPurgeType, 1, blnDelete,
                                blnOKToPurgeReadOnlyFiles, blnOKToPurgeSystemFiles, blnSlackOnly,
                                purgeRun.lngClusterSize, result, &reach, blnRefuseSeveralNames);
            purgeRun.blnDataDestroyed = purgeRun.blnDataDestroyed || PurgeHasWritten();
        };
        purge(!blnNamesSettled); // in each pass: it may have got another name meanwhile
        if (result == PurgeSeveralNames) {
            const OtherNames names = LookAtOtherNames(path);
            blnNamesChosen = names == OtherNames::Chosen;
            blnNamesSettled = names != OtherNames::Keep;
            if (blnNamesSettled && !blnStop) // F10 while it was asked
                purge(false);
        }
        if (result == PurgeCannotOpen && IsGone(path))
            result = PurgeVanished;
        if (result == PurgeDone && blnSlackOnly && !PurgeHasWritten())
            result = PurgeNoSlack; // its length has changed since it was looked at
        passes.intResult = result;
        passes.lngReach |= blnNamesChosen ? reach & ~ReachHardLinks : reach;
        if (result == PurgeDone)
            passes.intDone = pass;
        NotePasses(passes.intDone, last, length);
        if (line.blnRuler && pass < last && result == PurgeDone)
            RedrawRuler(line, pass);
        CheckPauseStop();
        if (result != PurgeDone)
            break;
    }
    ui::DoEvents();
    return passes;
}

void PurgeAndTell(const std::string& path, std::int64_t length, bool blnSlackOnly) {
    const bool blnRuler = purgeRun.intNumberOfPasses >= 2 && !blnSlackOnly &&
                          static_cast<double>(length) >= purgeRun.dblRulerLength;
    FileLine line = BeginLine(path, length, blnRuler);
    const Passes passes = DrivePasses(path, length, blnSlackOnly, line);
    if (passes.intResult == PurgeNoSlack) {
        EndWithoutSize(line, ResultText(PurgeNoSlack, blnSlackOnly, path));
    } else if (passes.intResult == PurgeStopped &&
               passes.intDone == 0) { // or no pass was asked for
        EndWithoutSize(line, " -- not purged.");
    } else if (passes.intResult == PurgeVanished && passes.intDone > 0) {
        EndLine(line, " purging: no longer there after " + PassesDoneText(passes.intDone));
    } else if (passes.intResult != PurgeDone) {
        EndLine(line, " purging" + ResultText(passes.intResult, blnSlackOnly, path));
    } else if (passes.intDone < purgeRun.intNumberOfPasses) {
        // Stopped between two passes: overwritten, but not as often as was asked, and still there.
        EndLine(line, " purging stopped after " + PassesDoneText(passes.intDone));
    } else {
        const std::int64_t purgedLength = LengthOfPurgedFile();
        if (purgedLength != length) // the file has changed since it was listed
            line.strSize = SizeText(purgedLength);
        // A slack-only purge leaves its line at "purging".
        EndLine(line, (blnSlackOnly ? " purging" : " purged") + OutOfReachText(passes.lngReach));
        frmReport.dblTotalBytesPurged += static_cast<double>(purgedLength);
        ++frmReport.lngNumFilesPurged;
    }
}

void CancelRun(const std::string& path) {
    WriteReportLine(path + " -- not purged.");
    blnStop = true;
    // A file may be destroyed without being purged: overwritten half-way, or not deleted.
    ui::MsgBox(purgeRun.blnDataDestroyed ? "Purge operation terminated."
                                         : "Purge operation cancelled.  No files purged.",
               ui::Buttons::OK, ui::Icon::None, "Purge cancelled");
}

// 0: may be purged; else the code whose text goes on the file's line. False: the run is cancelled.
bool Classify(const std::string& path, std::int16_t& code) {
    code = ClassifyFileForPurge(path);
    if (code != ClassSystemUndecided)
        return true;
    if (blnOKToPurgeSensitiveFiles) {
        code = ClassNoObjection;
        return true;
    }
    const int answer = AskSensitiveExtension(path);
    if (answer == ui::AnswerCancel)
        return false;
    const std::string extension = platform::LowerCase(ExtensionOf(path));
    SetExtensionVerdict(extension, answer == ui::AnswerYes ? 1 : -1);
    if (answer == ui::AnswerYes)
        code = ClassNoObjection;
    return true;
}

} // namespace

void PurgeOneFile(const std::string& strPath, std::int64_t lngLength, bool blnSlackOnly) {
    std::int16_t code = ClassNoObjection;
    if (!Classify(strPath, code)) {
        CancelRun(strPath);
        return;
    }
    if (code != ClassNoObjection) {
        WriteReportLine(strPath + ResultText(code, blnSlackOnly, strPath));
        return;
    }
    // Whether there is slack must not hang on a length that was listed a while ago.
    if (blnSlackOnly)
        lngLength = GetFileLength(strPath);
    if (blnSlackOnly && lngLength == 0 && IsGone(strPath)) {
        WriteReportLine(strPath + ResultText(PurgeVanished, blnSlackOnly, strPath));
        return;
    }
    if (blnSlackOnly && purgeRun.lngClusterSize > 0 && lngLength % purgeRun.lngClusterSize == 0) {
        WriteReportLine(strPath + ResultText(PurgeNoSlack, blnSlackOnly, strPath));
        return;
    }
    if (blnShowPurgeWarning && IsSensitiveFile(strPath, false) && !GivePurgeAdvice(strPath)) {
        CancelRun(strPath);
        return;
    }
    if (!ConfirmFile(strPath)) {
        WriteReportLine(strPath + " -- not purged.");
        return;
    }
    PurgeAndTell(strPath, lngLength, blnSlackOnly);
}
