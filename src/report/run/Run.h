// A run as a value: the request, the counts, the failures. Windows that show a run read it here; no
// window holds the state of a run.
#pragma once

#include "engine/PurgeJob.h"
#include "platform/Places.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// How files are purged: type, passes and options as set when the run begins.
struct PurgeHow {
    std::int16_t intPurgeType = 0;
    std::int16_t intNumberOfPasses = 0;
    bool blnPurgeSlackOnly = false;
    bool blnDoNotDeletePurgedFiles = false;
    bool blnOKToPurgeReadOnlyFiles = false;
    bool blnOKToPurgeSystemFiles = false;
    bool blnOKToPurgeSensitiveFiles = false;
    bool blnDeleteEmptyFolders = false;
    PurgeOptions Options;
};
/// How files are purged by the current settings.
PurgeHow PurgeHowInForce();

/// One of several places in a run.
struct RunItem {
    std::string strFolder;            ///< with trailing backslash
    std::string strFilespec = "*.*";  ///< "*.*" means all files
    std::vector<std::string> names{}; ///< files of the folder by exact name; empty: all
    /// Of the folder as it was chosen; unknown: whatever is there now is meant.
    platform::FolderIdentity Identity{};
};

/// The request for a listing or a purge.
struct RunRequest {
    std::string strDirPath;  ///< top folder, with trailing backslash
    std::string strFilespec; ///< "*.*" means all files
    /// If not empty, the items replace strDirPath and strFilespec.
    std::vector<RunItem> Items;
    std::string strItems; ///< describes the items: "7 chosen items (5 files, 2 folders)"
    bool blnSubdirectories = false;
    bool blnPurgeFiles = false; ///< false: the files are listed
    bool blnDisplayFolderNames = false;
    bool blnDisplayFileNames = false;
    std::string strTitle;    ///< of the command: "Purge files"
    bool blnInReport = true; ///< the report window shows the run and its buttons control it
    PurgeHow How;
    /// Whether the file-monitoring question was asked before the run, and whether the answer was
    /// No.
    bool blnMonitoringAsked = false, blnNoMonitoring = false;
    /// The number of files counted before a purge, for the progress; 0 = unknown.
    std::int64_t lngNumFilesExpected = 0;
    double dblBytesExpected = 0;

    /// Whether a listing without names shows by dots that it goes on. They go at its end, with
    /// whatever stands between them.
    bool WritesDots() const { return !blnPurgeFiles && !blnDisplayFolderNames; }
};

/// The items of a run; without items, the folder with its file specification as the only one.
std::vector<RunItem> ItemsOf(const RunRequest& request);

/// Describes the target in a few words: a path with file specification, or the items.
std::string WhatIsRun(const RunRequest& request);

/// The counts of a run so far.
struct RunCounts {
    std::int64_t lngNumFilesProcessed = 0; ///< files that matched and were processed
    std::int64_t lngNumFilesPurged = 0;
    std::int64_t lngNumFoldersRemoved = 0;
    std::int64_t lngNumFoldersUnread = 0;
    double dblTotalBytesPurged = 0; ///< of purged files; in a listing, of listed files
    bool blnDataDestroyed = false;  ///< the data of some file were overwritten at least in part
};

/// A file that could not be purged.
struct RunFailure {
    std::size_t Record = 0; ///< index in the records
    std::string strHolders; ///< the programs that hold the file, if the system tells
};

/// A line of the report that belongs to no single file.
struct RunNote {
    std::size_t Record = 0;  ///< it comes before this record
    std::string strLine;     ///< without line end
    bool blnWarning = false; ///< a name, a file or a folder was to go and may still be there
};

enum class RunState {
    Idle, ///< nothing has begun: refused, or declined before anything was touched
    Running,
    Paused, ///< requested: the run halts at its next poll
    Done,
    Stopped,
    Failed ///< of a command on a drive: it could not go on, and has told why
};

struct Run {
    RunRequest Request;
    RunCounts Counts;
    std::vector<RunFailure> Failures;
    std::vector<RunNote> Notes; ///< in the order in which they were told
    RunState State = RunState::Idle;
    std::string strSpaceLeft; ///< free space that was not filled, or not purged to the end
    double dblSpeed = 0;      ///< measured in this run: MB per second, for one overwrite

    // Texts of the whole report: before the files, after them, at the end.
    std::string strHead, strSummary, strFoot;
    std::string strStarted, strEnded; ///< in machine-readable form

    // Determined at the start of the run or by answers during it.
    std::int32_t lngClusterSize = 0; ///< bytes, of the current drive
    double dblRulerLength = 0;       ///< files of at least this many bytes get the progress ruler
    int intOtherNames = 0;           ///< answer about other names (hard links); 0: not asked yet

    bool IsUnderWay() const { return State == RunState::Running || State == RunState::Paused; }
};
/// The current run, or the last one. A command on a drive is also a run.
inline Run currentRun;

/// Replaces the last run by a new run of this request.
void BeginRun(const RunRequest& request);
