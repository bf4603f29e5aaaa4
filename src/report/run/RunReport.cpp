// The whole report of a run: as text, and as JSON lines.
#include "report/run/RunReport.h"

#include "engine/PurgeJob.h"
#include "engine/PurgeTypes.h"
#include "report/run/ResultTexts.h"
#include "report/run/Run.h"
#include "report/run/RunSummary.h"
#include "support/Paths.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

constexpr std::size_t lngPiece = 65536; // size of the pieces passed to `put`

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto byte = static_cast<unsigned char>(c);
        // A name may hold half a surrogate pair, which is no UTF-8.
        const bool half = byte == 0xED && i + 2 < text.size() && (text[i + 1] & 0x20) != 0;
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (byte < 0x20 || half) {
            char code[8];
            const unsigned unit =
                half ? 0xD000U | ((text[i + 1] & 0x3FU) << 6) | (text[i + 2] & 0x3FU)
                     : unsigned{byte};
            std::snprintf(code, sizeof code, "\\u%04x", unit & 0xFFFFU);
            quoted += code;
            i += half ? 2 : 0;
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

std::string Member(const char* name, const std::string& value) {
    return Quoted(name) + ":" + value;
}

std::string Member(const char* name, std::int64_t value) {
    return Member(name, std::to_string(value));
}

/// With a point, whatever the user's own separator is.
std::string WithDecimals(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string Flag(const char* name, bool value) {
    return Member(name, std::string(value ? "true" : "false"));
}

const char* ResultWord(const FileRecord& record) {
    switch (record.Fate) {
    case FileFate::Listed:
        return "listed";
    case FileFate::Link:
        return "link";
    case FileFate::Declined:
        return "declined";
    case FileFate::Refused:
    case FileFate::Begun:
        break;
    }
    switch (record.Result) {
    case PurgeDone:
        return "purged";
    case PurgeStopped:
    case PurgeNoPasses:
        return "stopped";
    case PurgeVanished:
        return "gone";
    case PurgeNoSlack:
        return "no slack";
    case PurgeSeveralNames:
        return "declined";
    default:
        return record.Fate == FileFate::Refused ? "refused" : "failed";
    }
}

// What the report's line says of a file beside the result and the reason: "encrypted: older ...".
std::string RemarkText(const FileRecord& record) {
    if (record.Result == PurgeStopped)
        return record.Remark.substr(
            std::min(record.Remark.find_first_not_of(", "), record.Remark.size()));
    if (record.Fate != FileFate::Begun || record.Result != PurgeDone)
        return {};
    std::string text = record.HasReadBack == ReadBack::Cached ? "verified in memory only" : "";
    const std::string reach = OutOfReachText(record.Reach);
    if (!reach.empty()) // without its brackets
        text += (text.empty() ? "" : "; ") + reach.substr(2, reach.size() - 3);
    return text;
}

// Collects text until it is large enough to pass on.
struct Pieces {
    const PutText& Put;
    std::string Text;

    bool Add(const std::string& text) {
        Text += text;
        return Text.size() < lngPiece || Flush();
    }
    bool Flush() {
        const bool goesOn = Text.empty() || Put(Text);
        Text.clear();
        return goesOn;
    }
};

} // namespace

std::string JsonOfRecord(const FileRecord& record) {
    const char* word = ResultWord(record);
    std::string line = "{" + Member("path", Quoted(record.Path)) + "," +
                       Member("bytes", record.Bytes) + "," + Member("result", Quoted(word));
    if (IsFailure(record) || record.Fate == FileFate::Refused)
        line += "," + Member("reason", Quoted(ReasonText(record, "")));
    if (const std::string remark = RemarkText(record); !remark.empty())
        line += "," + Member("remark", Quoted(remark));
    return line + "," + Member("passes", record.PassesDone) + "," +
           Member("error", std::int64_t{record.Trouble.Error}) + "," +
           Member("time", WithDecimals(static_cast<double>(record.Time) / 1000, 3)) +
           (record.HasReadBack == ReadBack::PastCache ? "," + Flag("verified", true) : "") + "}";
}

std::string JsonOfRun() {
    const Run& run = currentRun;
    const PurgeHow& how = run.Request.How;
    const RunCounts& counts = run.Counts;
    std::string line = "{" + Member("run", Quoted(run.Request.strTitle)) + "," +
                       Member("items", Quoted(WhatIsRun(run.Request)));
    if (how.intNumberOfPasses > 0 && run.Request.blnPurgeFiles) // 0: nothing to do
        line += "," + Member("type", Quoted(purgeTypes[how.intPurgeType].strName)) + "," +
                Member("passes", how.intNumberOfPasses) + "," +
                Flag("slackOnly", how.blnPurgeSlackOnly) + "," +
                Flag("kept", how.blnDoNotDeletePurgedFiles);
    if (run.Request.blnPurgeFiles)
        line += "," + Member("purged", counts.lngNumFilesPurged);
    std::string warnings;
    for (const std::string& warning : Warnings())
        warnings += (warnings.empty() ? "" : ",") + Quoted(warning);
    return line + "," + Member("files", static_cast<std::int64_t>(NumRecords())) + "," +
           Member("failed", static_cast<std::int64_t>(run.Failures.size())) + "," +
           Member("bytes", static_cast<std::int64_t>(counts.dblTotalBytesPurged)) + "," +
           Member("foldersRemoved", counts.lngNumFoldersRemoved) + "," +
           Member("foldersUnread", counts.lngNumFoldersUnread) + "," +
           Flag("stopped", run.State == RunState::Stopped || run.State == RunState::Idle) + "," +
           (run.dblSpeed > 0 ? Member("speed", WithDecimals(run.dblSpeed, 2)) + "," : "") +
           (warnings.empty() ? "" : Member("warnings", "[" + warnings + "]") + ",") +
           Member("started", Quoted(run.strStarted)) + "," + Member("ended", Quoted(run.strEnded)) +
           "}";
}

bool WriteReportAsText(const PutText& put) {
    Pieces pieces{put, currentRun.strHead};
    std::string folder;
    auto note = currentRun.Notes.cbegin();
    const auto addNotesBefore = [&](std::size_t record) {
        for (; note != currentRun.Notes.cend() && note->Record <= record; ++note)
            if (!pieces.Add(note->strLine + "\r\n"))
                return false;
        return true;
    };
    for (std::size_t i = 0; i < NumRecords(); ++i) {
        const FileRecord record = RecordAt(i);
        std::string line = record.Path + RecordTail(record) + "\r\n";
        if (FolderPartOf(record.Path) != folder) {
            folder = FolderPartOf(record.Path);
            line = "\r\n" + folder + "\r\n\r\n" + line;
        }
        if (!addNotesBefore(i) || !pieces.Add(line))
            return false;
    }
    if (!addNotesBefore(NumRecords()))
        return false;
    const std::string failures = FailuresText();
    return pieces.Add("\r\n" + currentRun.strSummary + (failures.empty() ? "" : "\r\n" + failures) +
                      currentRun.strFoot) &&
           pieces.Flush();
}

bool WriteReportAsJson(const PutText& put) {
    Pieces pieces{put, {}};
    for (std::size_t i = 0; i < NumRecords(); ++i)
        if (!pieces.Add(JsonOfRecord(RecordAt(i)) + "\n"))
            return false;
    return pieces.Add(JsonOfRun() + "\n") && pieces.Flush();
}
