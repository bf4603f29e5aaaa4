// The report that the commands on drives write; "Report" shows it afterwards.
#pragma once

#include "report/run/Run.h"

#include <string>

/// Of the command on drives under way. Becomes the current run's when the report begins.
inline RunRequest driveRequest;
/// Starts the run of a command and its report: clears those of the last run and writes the head. A
/// command that is part of another one only adds its head to that one's report. With the place of a
/// purge, the head also tells what HeadRemarks knows of it.
void BeginDriveReport(const std::string& strTitle, const std::string& strWhat,
                      const std::string& strPlace = "");
/// Adds one or several lines. Does nothing before BeginDriveReport.
void TellInReport(const std::string& strText);
/// Ends run and report: state, sums, failures, the time. A command that never called
/// BeginDriveReport leaves the last run as it is; if there was none, its state is kept.
void EndDriveReport(RunState state);
/// Shows what was left undone and asks whether to show the report.
void OfferReport(const std::string& strText, const std::string& strTitle);
