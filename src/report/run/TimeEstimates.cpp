// How long a purge would take: the estimate after a listing, the table, and the estimate for a
// single file.
#include "report/run/TimeEstimates.h"

#include "engine/FileProc.h"
#include "report/run/Run.h"
#include "session/Session.h"
#include "settings/frmPurgeConfirmation.h"
#include "settings/frmTypeOfPurge.h"
#include "support/FolderSearch.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "support/SizeText.h"
#include "support/StrProc.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace {

constexpr int intNumEntries = 12;
constexpr std::int64_t lngShortestShown = 20; // s
constexpr std::int64_t lngDay = 86400;        // s

std::array<std::int16_t, intNumEntries + 1> intOverwrites{}; // entry 0 is not used

// Rounds to whole seconds, halves to even; limits excessive times to a printable number.
std::int64_t WholeSeconds(double seconds) {
    return RoundHalfEven(std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, 1e15));
}

double SmallFileSecondsOf(const std::string& path) {
    const int drive = DriveIndexOf(path);
    return drive >= 0 ? dblSmallFileSeconds[static_cast<std::size_t>(drive)] : 0;
}

std::string TableDuration(std::int64_t seconds) {
    if (seconds < lngDay)
        return EstimateDurationText(static_cast<double>(seconds));
    const std::int64_t hours = RoundHalfEven(static_cast<double>(seconds) / 60 / 60);
    return SecondsText(hours * 3600, true, true);
}

} // namespace

float PurgeSpeedOf(const std::string& path) {
    const int drive = DriveIndexOf(path);
    return drive >= 0 ? sngPurgeSpeeds[static_cast<std::size_t>(drive)] : 0.0F;
}

int OverwritesToEstimate() {
    return GetNumOverwrites() + (purgeOptions.Verify ? 1 : 0);
}

void InitializeOverwritesForEstimatedPurgeTimes() {
    intOverwrites = {0, 1, 2, 4, 6, 8, 12, 16, 18, 20, 24, 28, 30};
}

double AdjustmentFactor(const std::string& path, double dblAverageMB) {
    if (const double small = SmallFileSecondsOf(path); small > 0)
        return 1 + small * PurgeSpeedOf(path) / dblAverageMB;
    return dblAF_A / std::pow(dblAverageMB, dblAF_B);
}

bool IsSmallFileMeasured(const std::string& path) {
    return SmallFileSecondsOf(path) > 0;
}

double AdjustedSeconds(double dblRaw, double dblFactor, bool blnMeasured) {
    // Deliberate oddity: rounded before a factor by the formula. A measured one may be in the
    // hundreds, and would make minutes of that.
    return (blnMeasured ? dblRaw : static_cast<double>(WholeSeconds(dblRaw))) * dblFactor;
}

std::string EstimateDurationText(double dblSeconds) {
    const std::int64_t seconds = WholeSeconds(dblSeconds);
    return SecondsText(seconds, seconds >= 300);
}

void EstimatedTimes(float sngSpeed, double dblTotalBytes, double dblFactor, bool blnMeasured,
                    std::string& strResult) {
    const double sizeMB = dblTotalBytes / dblBytesPerMB;
    std::string text = "Estimated purge times ";
    if (blnPurgingDrive)
        text += "for the entire disk\r\n";
    text += "for various numbers of overwrites\r\nusing a purge speed (as measured) of " +
            FormatNumber(sngSpeed, 2) + " MB/sec\r\nand an adjustment factor of " +
            FormatNumber(dblFactor, 2) + ":\r\n";
    for (int i = 1; i <= intNumEntries; ++i) {
        const std::int16_t n = intOverwrites[static_cast<std::size_t>(i)];
        const int all = n + (purgeOptions.Verify ? 1 : 0);
        const std::int64_t seconds =
            WholeSeconds(AdjustedSeconds(sizeMB / sngSpeed * all, dblFactor, blnMeasured));
        if (seconds < lngShortestShown)
            continue;
        text += std::to_string(n) + (i == 1 ? " overwrite:  " : " overwrites: ") +
                TableDuration(seconds) + "\r\n";
    }
    // Deliberate oddity: the header above never equals this text, so a table without lines consists
    // of its header alone.
    if (text == "Estimated purge times for various numbers of overwrites:\r\n")
        text += "All less than " + std::to_string(lngShortestShown) + " seconds\r\n";
    strResult = text;
}

std::string EstimateText() {
    const float speed = PurgeSpeedOf(currentRun.Request.strDirPath);
    if (!(speed > 0)) {
        const char letter = DriveLetterOf(currentRun.Request.strDirPath);
        return std::string("For an estimate of the purge time test the purge speed for Drive ") +
               (letter ? std::string(1, letter) : std::string()) + "\r\nthen relist the files.";
    }
    std::string text =
        "Purge type: " + PurgeTypeNumPasses(GetPurgeType(), GetNumberOfPasses()) + "\r\n";
    const double total = currentRun.Counts.dblTotalBytesPurged;
    const double raw = total / dblBytesPerMB / speed * OverwritesToEstimate();
    const auto files = static_cast<double>(currentRun.Counts.lngNumFilesProcessed);
    const std::string& path = currentRun.Request.strDirPath;
    const bool measured = IsSmallFileMeasured(path);
    const double factor = AdjustmentFactor(path, total / files / dblBytesPerMB);
    const std::int64_t seconds = WholeSeconds(AdjustedSeconds(raw, factor, measured));
    if ((measured ? seconds : WholeSeconds(raw)) < 60)
        return text + "Estimated purge time: less than a minute.\r\n";
    text +=
        "Estimated purge time: " + EstimateDurationText(static_cast<double>(seconds)) + "\r\n\r\n";
    InitializeOverwritesForEstimatedPurgeTimes();
    std::string table;
    EstimatedTimes(speed, total, factor, measured, table);
    return text + table;
}

std::string SingleFileEstimate(const std::string& path) {
    const float speed = PurgeSpeedOf(path);
    if (!(speed > 0))
        return {};
    std::int64_t length = 0;
    AskOnDrive(path, [&] { length = GetFileLength(path); });
    const double sizeMB = static_cast<double>(length) / dblBytesPerMB;
    const double raw = sizeMB / speed * OverwritesToEstimate();
    const std::int64_t seconds =
        sizeMB > 0 ? WholeSeconds(AdjustedSeconds(raw, AdjustmentFactor(path, sizeMB),
                                                  IsSmallFileMeasured(path)))
                   : 0;
    return seconds >= 60 ? SecondsText(seconds, true) : "Less than a minute.";
}
