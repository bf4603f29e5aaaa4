// One file of a purge run in the report: classification, questions, its passes, and its line.
#include "report/run/ListedFile.h"

#include "drives/DriveWork.h"
#include "engine/FileOps.h"
#include "engine/FileProc.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "report/run/RunEvents.h"
#include "report/run/RunJob.h"
#include "report/run/RunQuestions.h"
#include "report/run/RunRecords.h"
#include "session/Session.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>

namespace {

// A file's line in the report while it is purged: what stands behind its path changes.
struct FileLine {
    std::size_t lngTail = 0; ///< where that begins
    std::string strBegun;    ///< " (4,096 bytes) purging"
    bool blnRuler = false;
};

std::string Ruler(int passesDone, int passes) {
    return std::string("123456789").substr(0, std::min(passesDone, 9)) +
           std::string(passes - passesDone, '_') + " ";
}

FileLine BeginLine(const std::string& path, std::int64_t length, bool blnRuler,
                   bool blnShow = true) {
    if (ReportIsFull())
        return {};
    AppendReport(path, false);
    FileLine line{ReportEnd(), " (" + GroupedDigits(length) + " bytes) purging", blnRuler};
    std::string tail = line.strBegun;
    if (blnRuler) // at first with no more than ten marks, however many passes there are
        tail += "\r\n" +
                std::string(std::min<int>(currentRun.Request.How.intNumberOfPasses, 10), '_') + " ";
    AppendReport(tail, blnShow);
    return line;
}

void RedrawRuler(const FileLine& line, int passesDone) {
    ReplaceReportTail(line.lngTail,
                      line.strBegun + "\r\n" +
                          Ruler(passesDone, currentRun.Request.How.intNumberOfPasses));
}

// Tells and keeps what became of a file. Its line is begun, or is written now.
void EndFile(const FileRecord& record, const FileLine* line) {
    if (!ReportIsFull()) {
        if (line)
            ReplaceReportTail(line->lngTail, RecordTail(record) + "\r\n");
        else
            WriteReportLine(record.Path + RecordTail(record));
    }
    NoteRecord(record);
}

// Runs the passes, with pause, stop and the ruler between them.
void DrivePasses(PurgeJob& job, const FileLine& line) {
    OtherNames names = OtherNames::Keep;
    job.MayPurgeAllNames = [&] {
        names = LookAtOtherNames(job.Path);
        return names != OtherNames::Keep && !blnStop; // F10 while it was asked
    };
    job.GoOn = [&] {
        if (line.blnRuler)
            RedrawRuler(line, job.PassesDone);
        CheckPauseStop();
        return !blnStop;
    };
    ui::DoEvents();
    if (blnStop)
        job.Result = PurgeStopped;
    else
        RunJobOfRun(job);
    if (names == OtherNames::Chosen)
        job.Reach &= ~std::uint32_t{ReachHardLinks};
    ui::DoEvents();
}

bool HasRuler(std::int64_t length) {
    const PurgeHow& how = currentRun.Request.How;
    return how.intNumberOfPasses >= 2 && !how.blnPurgeSlackOnly &&
           static_cast<double>(length) >= currentRun.dblRulerLength;
}

void EndLine(const PurgeJob& job, std::int64_t length, const FileLine& line) {
    // Of a file that no pass has touched, the length that is listed says more than none.
    FileRecord record = RecordOfJob(job);
    if (job.Targets.empty())
        record.Bytes = length;
    EndFile(record, &line);
}

void PurgeAndTell(const std::string& path, std::int64_t length) {
    PurgeJob job = JobOfRun(path);
    const FileLine line = BeginLine(path, length, HasRuler(length));
    NoteFileBegun(length);
    DrivePasses(job, line);
    EndLine(job, length, line);
}

bool AsksForAdvice(const std::string& path) {
    return blnShowPurgeWarning && IsSensitiveFile(path, false);
}

void CancelRun(const std::string& path) {
    EndFile({path, FileFate::Declined}, nullptr);
    blnStop = true;
    // A file may be destroyed without being purged: overwritten half-way, or not deleted.
    ui::MsgBox(currentRun.Counts.blnDataDestroyed ? "Purge operation terminated."
                                                  : "Purge operation cancelled.  No files purged.",
               ui::Buttons::OK, ui::Icon::None, "Purge cancelled");
}

// 0: may be purged; else the code whose text goes on the file's line. False: the run is cancelled.
bool Classify(const std::string& path, std::int16_t& code) {
    code = ClassifyFileForPurge(path);
    if (code != ClassSystemUndecided)
        return true;
    if (currentRun.Request.How.blnOKToPurgeSensitiveFiles) {
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

// Whether there is slack must not hang on a length that was listed a while ago. Of a file whose
// length cannot be read, the purge finds out why.
bool HasNoSlack(const std::string& path, std::int64_t& length, std::int16_t& code) {
    std::uint64_t found = 0;
    auto fault = platform::Fault::None;
    bool gone = false;
    WorkOnDrive(path, [&] {
        fault = platform::ReadFileLength(path, found);
        gone = fault == platform::Fault::NotFound && IsGone(path);
    });
    const std::int32_t cluster = currentRun.lngClusterSize;
    if (!platform::Failed(fault))
        length = static_cast<std::int64_t>(found);
    else if (!gone)
        return false;
    code = gone ? PurgeVanished : PurgeNoSlack;
    return gone || (cluster > 0 && length % cluster == 0);
}

} // namespace

void PurgeListedFile(const std::string& strPath, std::int64_t lngLength) {
    const bool slackOnly = currentRun.Request.How.blnPurgeSlackOnly;
    std::int16_t code = ClassNoObjection;
    const auto refuse = [&](std::int16_t why) {
        EndFile({strPath, FileFate::Refused, lngLength, why}, nullptr);
    };
    if (!Classify(strPath, code)) {
        CancelRun(strPath);
        return;
    }
    if (code != ClassNoObjection) {
        refuse(code);
        return;
    }
    if (slackOnly && HasNoSlack(strPath, lngLength, code)) {
        refuse(code);
        return;
    }
    if (AsksForAdvice(strPath) && !GivePurgeAdvice(strPath)) {
        CancelRun(strPath);
        return;
    }
    if (!ConfirmFile(strPath)) {
        EndFile({strPath, FileFate::Declined, lngLength}, nullptr);
        return;
    }
    PurgeAndTell(strPath, lngLength);
}

bool IsPurgedPlainly(const std::string& strPath, std::int64_t lngLength) {
    if (HasRuler(lngLength) || AsksForAdvice(strPath) ||
        (blnConfirmFiles && !blnPurgeRemainingFiles))
        return false;
    const std::int16_t code = ClassifyFileForPurge(strPath);
    return code == ClassNoObjection ||
           (code == ClassSystemUndecided && currentRun.Request.How.blnOKToPurgeSensitiveFiles);
}

void TellPurgedFile(const PurgeJob& job, std::int64_t lngLength) {
    EndLine(job, lngLength, BeginLine(job.Path, lngLength, false, false));
}
