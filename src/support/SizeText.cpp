// Sizes in bytes as readable text.
#include "support/SizeText.h"

#include "support/Numbers.h"

namespace {

std::string SizeText(double bytes, int decimals, bool blnWithGB) {
    if (bytes < 1024)
        return FormatNumber(bytes, 0) + " bytes"; // "bytes" also for 0 and 1
    double value = bytes / 1024;
    const char* unit = " KB";
    if (value >= 1024) {
        value /= 1024;
        unit = " MB";
    }
    if (value >= 1024 && blnWithGB) {
        value /= 1024;
        unit = " GB";
    }
    return FormatNumber(value, decimals, false) + unit;
}

} // namespace

std::string ByteSizeText(double bytes, int decimals) {
    return SizeText(bytes, decimals, true);
}

std::string ByteSizeTextUpToMB(double bytes, int decimals) {
    return SizeText(bytes, decimals, false);
}
