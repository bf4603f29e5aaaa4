// The report that the commands on drives write; "Report" shows it afterwards.
#pragma once

#include <string>

/// Starts the report of a command: clears the last run's report and writes the head. A command that
/// is part of another one only adds its head to that one's report. With the place of a purge, the
/// head also tells what HeadRemarks knows of it.
void BeginDriveReport(const std::string& strTitle, const std::string& strWhat,
                      const std::string& strPlace = "");
/// Adds one or several lines. Does nothing before BeginDriveReport.
void TellInReport(const std::string& strText);
/// Ends the report: sums, failures, the time. Does nothing before BeginDriveReport.
void EndDriveReport();
/// Shows what was left undone and asks whether to show the report.
void OfferReport(const std::string& strText, const std::string& strTitle);
