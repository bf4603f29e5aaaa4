// One listing run or one purge run over a folder, for one file specification.
#pragma once

#include <cstdint>
#include <string>

/// Empties the report window for the operation that frmReport's state describes: before it is
/// shown, lest the last run be seen under this one's caption.
void ResetReportWindow();
/// Runs the operation described by frmReport's state; returns when it is done, stopped or
/// cancelled. The report window is shown by the caller before.
void ProcessFiles();
/// Counting-only walk with blnSubdirectories as it stands: the number of matching files, or −1
/// when there are at least `intLimit` (0: no limit). Links are not counted. `dblBytes`, when
/// given, takes the sum of the sizes of the files counted. Clears blnStop first; when it is set
/// afterwards, the user stopped the count and the number is not complete.
std::int64_t CountMatchingFiles(const std::string& folder, const std::string& filespec,
                                std::int32_t intLimit, double* dblBytes = nullptr);
/// The listing walk without any output, subfolders included: files and the sum of their sizes.
/// False when the user stopped it; blnStop is then set.
bool SumFileSizes(const std::string& folder, const std::string& filespec, std::int64_t& lngFiles,
                  double& dblBytes);
