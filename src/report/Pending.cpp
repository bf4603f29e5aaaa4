// Provisional definitions, replaced one by one by the modules of this room.
#include "report/BatchDriver.h"
#include "report/frmAntiVirusQuery.h"
#include "report/frmReport.h"
#include "report/TimeEstimates.h"
FrmReport frmReport;
void LoadReportForm() {}
void AppendReport(const std::string&, bool) {}
void CheckPauseStop() {}
void ReportBufferFull() {}
void SetRunButtons() {}
void ShowReportAgain() {}
void ProcessFiles() {}
std::int64_t CountMatchingFiles(const std::string&, const std::string&, std::int32_t, double*) {
    return 0;
}
bool SumFileSizes(const std::string&, const std::string&, std::int64_t&, double&) {
    return false;
}
void InitializeOverwritesForEstimatedPurgeTimes() {}
void EstimatedTimes(float, double, double, std::string&) {}
std::string EstimateText() {
    return {};
}
double AdjustmentFactor(double) {
    return 1;
}
std::string EstimateDurationText(double) {
    return {};
}
std::string SingleFileEstimate(const std::string&) {
    return {};
}
int AntiVirusAdvice(const std::string&, const ui::Form&) {
    return 1;
}
