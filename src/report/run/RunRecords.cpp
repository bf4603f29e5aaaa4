// The records of a run's files, and their texts.
#include "report/run/RunRecords.h"

#include "drives/DriveWork.h"
#include "engine/PurgeJob.h"
#include "platform/System.h"
#include "report/run/ResultTexts.h"
#include "report/run/Run.h"
#include "report/run/RunClock.h"
#include "support/Numbers.h"
#include "support/Paths.h"

#include <algorithm>
#include <deque>
#include <map>
#include <utility>
#include <vector>

namespace {

/// A record without strings, kept small: a run may process millions of files.
struct Stored {
    std::uint32_t Folder = 0, Chunk = 0, Offset = 0;
    std::uint16_t NameLength = 0;
    FileFate Fate{};
    std::uint8_t TroubleKind = 0;
    std::int16_t Result = 0, PassesDone = 0;
    std::uint8_t Reach = 0; ///< these bits are few
    ReadBack HasReadBack{};
    std::uint32_t TroubleError = 0, Time = 0;
    std::int64_t Bytes = 0;
};

constexpr std::size_t lngChunk = std::size_t{1} << 20;
/// The query for a file's holders takes tens of milliseconds.
constexpr std::size_t lngMostHoldersAsked = 20;

std::deque<Stored> records;
std::vector<std::string> folders;
std::deque<std::string> names;              ///< many of them in each string
std::map<std::size_t, std::string> remarks; ///< by the record's index; hardly any has one

std::string HoldersOf(const FileRecord& record) {
    if (record.Trouble != platform::Fault::SharingViolation ||
        currentRun.Failures.size() >= lngMostHoldersAsked)
        return {};
    std::vector<std::string> programs;
    RunStepsOnDrive(
        record.Path, ui::Effort::Long,
        [&] {
            (void)platform::ListHolders(record.Path, programs);
            return false;
        },
        [] { return true; });
    std::string text;
    for (const std::string& program : programs)
        text += (text.empty() ? "" : ", ") + program;
    return text;
}

// ": verification failed at byte 4,096, not purged."
std::string OutcomeText(const FileRecord& record) {
    std::string text =
        ResultText(record.Result, currentRun.Request.How.blnPurgeSlackOnly, record.Path);
    if (!record.Remark.empty())
        text.insert(std::min(text.find_first_of(",."), text.size()), record.Remark);
    return text;
}

// A slack-only purge leaves its line at "purging" where nothing more is known.
const char* DoneText(ReadBack readBack, bool slackOnly) {
    switch (readBack) {
    case ReadBack::PastCache:
        return slackOnly ? " slack area purged and verified" : " purged and verified";
    case ReadBack::Cached:
        return slackOnly ? " slack area purged, verified in memory only"
                         : " purged, verified in memory only";
    case ReadBack::None:
        break;
    }
    return slackOnly ? " purging" : " purged";
}

} // namespace

void NoteRecord(FileRecord record) {
    if (IsFailure(record))
        currentRun.Failures.push_back({records.size(), HoldersOf(record)});
    if (!record.Remark.empty())
        remarks[records.size()] = record.Remark;
    const std::string folder = FolderPartOf(record.Path);
    if (folders.empty() || folders.back() != folder)
        folders.push_back(folder);
    const std::string name = record.Path.substr(folder.size());
    if (names.empty() || names.back().size() + name.size() > lngChunk)
        names.emplace_back().reserve(lngChunk);
    records.push_back(
        {static_cast<std::uint32_t>(folders.size() - 1),
         static_cast<std::uint32_t>(names.size() - 1),
         static_cast<std::uint32_t>(names.back().size()), static_cast<std::uint16_t>(name.size()),
         record.Fate, static_cast<std::uint8_t>(record.Trouble.Kind), record.Result,
         record.PassesDone, static_cast<std::uint8_t>(record.Reach), record.HasReadBack,
         record.Trouble.Error, static_cast<std::uint32_t>(ClockElapsed()), record.Bytes});
    names.back() += name;
}

std::size_t NumRecords() {
    return records.size();
}

FileRecord RecordAt(std::size_t index) {
    const Stored& stored = records.at(index);
    FileRecord record;
    record.Path =
        folders[stored.Folder] + names[stored.Chunk].substr(stored.Offset, stored.NameLength);
    record.Fate = stored.Fate;
    record.Bytes = stored.Bytes;
    record.Result = stored.Result;
    record.PassesDone = stored.PassesDone;
    record.Reach = stored.Reach;
    record.Trouble = {stored.TroubleKind, stored.TroubleError};
    record.Time = stored.Time;
    record.HasReadBack = stored.HasReadBack;
    if (const auto remark = remarks.find(index); remark != remarks.end())
        record.Remark = remark->second;
    return record;
}

void ForgetRecords() {
    records.clear();
    folders.clear();
    names.clear();
    remarks.clear();
}

// Results that are no failures: nothing to do, nothing possible, or not wanted by the user. Other
// names of a file's data are no failure either: the user has answered that question, and commands
// on drives report such files separately.
bool IsFailure(const FileRecord& record) {
    if (record.Fate != FileFate::Begun || record.Result >= 0)
        return false;
    constexpr std::int16_t none[] = {PurgeStopped, PurgeNoSlack, PurgeVanished, PurgeNoPasses,
                                     PurgeSeveralNames};
    return std::find(std::begin(none), std::end(none), record.Result) == std::end(none);
}

bool IsLeft(const FileRecord& record) {
    return record.Fate == FileFate::Declined || (record.Reach & ReachName) != 0 ||
           (record.Fate >= FileFate::Refused && record.Result != PurgeDone &&
            record.Result != PurgeVanished && record.Result != PurgeNoSlack);
}

std::string RecordTail(const FileRecord& record) {
    const PurgeHow& how = currentRun.Request.How;
    const std::string size = " (" + GroupedDigits(record.Bytes) + " bytes)";
    const std::string result = OutcomeText(record);
    const std::string passes = "pass " + GroupedDigits(record.PassesDone) + " of " +
                               GroupedDigits(how.intNumberOfPasses) + ", not purged.";
    switch (record.Fate) {
    case FileFate::Listed:
        return size + "   ";
    case FileFate::Link:
        return ": a link, not purged.";
    case FileFate::Declined:
        return " -- not purged.";
    case FileFate::Refused:
        return result;
    case FileFate::Begun:
        break;
    }
    const bool slackOnly = how.blnPurgeSlackOnly;
    switch (record.Result) {
    case PurgeNoSlack:
        return result;
    case PurgeStopped:
    case PurgeNoPasses: // overwritten, but not as often as was asked, and still there
        if (record.PassesDone == 0 && record.Remark.empty())
            return " -- not purged.";
        return size + " purging stopped" +
               (record.PassesDone > 0 ? " after " + passes
                                      : record.Remark + " of " +
                                            GroupedDigits(how.intNumberOfPasses) + ", not purged.");
    case PurgeDone:
        return size + DoneText(record.HasReadBack, slackOnly) + OutOfReachText(record.Reach);
    case PurgeVanished:
        if (record.PassesDone > 0)
            return size + " purging: no longer there after " + passes;
        [[fallthrough]];
    default:
        return size + " purging" + result + ErrorNumberText(record.Trouble);
    }
}

std::string ReasonText(const FileRecord& record, const std::string& strHolders) {
    std::string text = OutcomeText(record);
    text.erase(0, text.find_first_not_of(": "));
    text = text.substr(0, text.find("\r\n"));
    if (text.ends_with('.'))
        text.pop_back();
    if (!strHolders.empty())
        return text + " (in use by " + strHolders + ")";
    if (!Failed(record.Trouble) || record.Result == PurgeDiskFull) // the text says it already
        return text;
    std::string fault = platform::FaultText(record.Trouble);
    fault[0] = static_cast<char>(fault[0] | 0x20);
    return text + " (" + fault + ")";
}
