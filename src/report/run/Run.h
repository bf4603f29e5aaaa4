// A run as a value: what is asked for, what was counted on the way, what failed. Whoever shows a
// run reads it here; no window is asked what the run is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// How files are purged: type, passes and options, as the user has set them when the run begins.
struct PurgeHow {
    std::int16_t intPurgeType = 0;
    std::int16_t intNumberOfPasses = 0;
    bool blnPurgeSlackOnly = false;
    bool blnDoNotDeletePurgedFiles = false;
    bool blnOKToPurgeReadOnlyFiles = false;
    bool blnOKToPurgeSystemFiles = false;
    bool blnOKToPurgeSensitiveFiles = false;
    bool blnDeleteEmptyFolders = false;
    bool blnVerifyPurge = false;
    bool blnOverwriteNames = false;
};
/// How files are purged by the settings in force.
PurgeHow PurgeHowInForce();

/// One of several places that a run works on.
struct RunItem {
    std::string strFolder;            ///< with trailing backslash
    std::string strFilespec = "*.*";  ///< "*.*" means all files
    std::vector<std::string> names{}; ///< files of the folder, each by its very name; empty: all
};

/// What is to be run: a listing, or a purge.
struct RunRequest {
    std::string strDirPath;  ///< top folder, with trailing backslash
    std::string strFilespec; ///< "*.*" means all files
    /// Instead of the two, when it is not empty.
    std::vector<RunItem> Items;
    std::string strItems; ///< what they are: "7 chosen items (5 files, 2 folders)"
    bool blnSubdirectories = false;
    bool blnPurgeFiles = false; ///< else the files are listed
    bool blnDisplayFolderNames = false;
    bool blnDisplayFileNames = false;
    std::string strTitle;    ///< of the command: "Purge files"
    bool blnInReport = true; ///< the report window shows the run, and its buttons steer it
    PurgeHow How;
    /// The file-monitoring question was asked before the run, and the answer was No.
    bool blnMonitoringAsked = false, blnNoMonitoring = false;
    /// What a count before a purge found, for the progress; 0 = not known.
    std::int64_t lngNumFilesExpected = 0;
    double dblBytesExpected = 0;
};

/// What a run works on: the items, or the folder and its files as the only one.
std::vector<RunItem> ItemsOf(const RunRequest& request);

/// What that is, in a few words: a path with its file specification, or what the items are.
std::string WhatIsRun(const RunRequest& request);

/// What was met and done so far.
struct RunCounts {
    std::int64_t lngNumFilesProcessed = 0; ///< files that matched and were visited
    std::int64_t lngNumFilesPurged = 0;
    std::int64_t lngNumFoldersRemoved = 0;
    std::int64_t lngNumFoldersUnread = 0;
    double dblTotalBytesPurged = 0; ///< of the files purged; in a listing of those listed
    bool blnDataDestroyed = false;  ///< of some file at least in part, whatever became of it
};

/// A file that could not be purged.
struct RunFailure {
    std::size_t Record = 0; ///< its index among the records
    std::string strHolders; ///< the programs that hold it, where the system tells
};

enum class RunState {
    Idle,
    Running,
    Paused, ///< asked for: the run halts where it polls next
    Done,
    Stopped
};

struct Run {
    RunRequest Request;
    RunCounts Counts;
    std::vector<RunFailure> Failures;
    RunState State = RunState::Idle;

    // What is told of it as a whole: before its files, behind them, at the end.
    std::string strHead, strSummary, strFoot;
    std::string strStarted, strEnded; ///< as programs read a time

    // What it has settled at its start, and was told on its way.
    std::int32_t lngClusterSize = 0; ///< bytes, of the current drive
    double dblRulerLength = 0;       ///< bytes from which a file gets the progress ruler
    int intOtherNames = 0;           ///< answer to the question about other names; 0 not asked yet

    bool IsUnderWay() const { return State == RunState::Running || State == RunState::Paused; }
};
/// The run under way, or the last one. A command on a drive is one, too.
inline Run currentRun;

/// A new run of this request takes the place of the last one.
void BeginRun(const RunRequest& request);
