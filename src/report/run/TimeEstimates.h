// How long a purge would take, from the measured speed.
#pragma once

#include <string>

/// The measured speed of a path's drive in MB/s for one overwrite; 0 when not measured.
float PurgeSpeedOf(const std::string& path);
/// Fills the table of overwrite counts; call it before the first EstimatedTimes.
void InitializeOverwritesForEstimatedPurgeTimes();
/// The table of purge times for various numbers of overwrites; whole drive when blnPurgingDrive.
/// Speed in MB/s for one overwrite, above 0; the factor is AdjustmentFactor's, and blnMeasured is
/// IsSmallFileMeasured's.
void EstimatedTimes(float sngSpeed, double dblTotalBytes, double dblFactor, bool blnMeasured,
                    std::string& strResult);
/// The estimate after a listing, by the run's totals: purge type, time and table; or how to get an
/// estimate if the drive was not measured.
std::string EstimateText();
/// Small files purge more slowly per megabyte than the large file of the speed test. By the time
/// that it has measured for small files on the drive of a path; if it has not, AF = A / (average
/// size in MB ^ B), with dblAF_A and dblAF_B.
double AdjustmentFactor(const std::string& path, double dblAverageMB);
/// Whether AdjustmentFactor goes by what was measured.
bool IsSmallFileMeasured(const std::string& path);
/// Seconds at the measured speed, times the factor; not yet rounded to whole ones.
double AdjustedSeconds(double dblRaw, double dblFactor, bool blnMeasured);
/// The overwrites of a purge as set, and one for reading the last of them back.
int OverwritesToEstimate();
/// The duration text in estimates: short below 300 s, else long.
std::string EstimateDurationText(double dblSeconds);
/// The estimate for a single file, for the main window; "" when the drive was not measured.
std::string SingleFileEstimate(const std::string& path);
