// What the commands on drives write into the report: "Report" shows it afterwards.
#pragma once

#include <string>

/// The work of a command begins: the report of the last run goes, and this one gets its head. A
/// command that is part of another one adds the head to that one's report.
void BeginDriveReport(const std::string& strTitle, const std::string& strWhat);
/// A line of it, or several. Nothing when the report has not begun.
void TellInReport(const std::string& strText);
/// The command is over: sums, failures, the time. Nothing when the report has not begun.
void EndDriveReport();
/// Asks, behind what was left undone, whether the report is to be shown.
void OfferReport(const std::string& strText, const std::string& strTitle);
