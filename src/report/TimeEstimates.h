// How long a purge would take, from the measured speed.
#pragma once

#include <string>

void InitializeOverwritesForEstimatedPurgeTimes();
/// The table of purge times for various numbers of overwrites; whole drive when blnPurgingDrive.
void EstimatedTimes(float sngSpeed, double dblTotalBytes, double dblFactor, std::string& strResult);
/// The estimate after a listing, by frmReport's totals, appended to the report.
void AppendEstimate();
/// AF = A / (average size in MB ^ B).
double AdjustmentFactor(double dblAverageMB);
/// The duration text that the estimates use: short below 300 s, then long.
std::string EstimateDurationText(double dblSeconds);
/// The estimate of a single file, for the main window; "" when the drive was not measured.
std::string SingleFileEstimate(const std::string& path);
