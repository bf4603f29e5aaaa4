// Counts in words, durations, and small procedures on texts.
#include "support/StrProc.h"

#include "support/Numbers.h"

#include <algorithm>

namespace {

constexpr const char* strNumberWords[] = {
    "No",       "One",     "Two",     "Three",     "Four",     "Five",     "Six",
    "Seven",    "Eight",   "Nine",    "Ten",       "Eleven",   "Twelve",   "Thirteen",
    "Fourteen", "Fifteen", "Sixteen", "Seventeen", "Eighteen", "Nineteen", "Twenty"};

constexpr const char* strAnd = "and";

/// A duration names at most two units: of two occurrences of "and", cut at the last.
std::string AtMostTwoUnits(const std::string& text) {
    return CountOccurrences(text, strAnd) > 1 ? Trimmed(text.substr(0, text.rfind(strAnd))) : text;
}

/// A count with its unit: "2 hours", "1 hour", or "2h" in the short form.
std::string Units(std::int64_t count, const char* unit, bool blnLong) {
    const std::string digits = std::to_string(count);
    if (!blnLong)
        return digits + unit[0];
    return digits + " " + unit + (count == 1 ? "" : "s");
}

} // namespace

std::string NumberInWords(std::int64_t n) {
    return n >= 0 && n <= 20 ? strNumberWords[n] : GroupedDigits(n);
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

int CountOccurrences(const std::string& strText, const std::string& strPart) {
    if (strPart.empty())
        return 0;
    int intCount = 0;
    for (std::size_t at = strText.find(strPart); at != std::string::npos;
         at = strText.find(strPart, at + strPart.size()))
        ++intCount;
    return intCount;
}

std::string MinutesText(std::int64_t lngMinutes, bool blnLong) {
    const std::int64_t lngDays = lngMinutes / 1440, lngHours = lngMinutes % 1440 / 60;
    const std::int64_t lngRest = lngMinutes % 60;
    const char* strBetween = blnLong ? " and " : " ";
    std::string strText;
    const auto append = [&](std::int64_t count, const char* unit) {
        if (count > 0)
            strText += (strText.empty() ? "" : strBetween) + Units(count, unit, blnLong);
    };
    append(lngDays, "day");
    append(lngHours, "hour");
    append(lngRest, "minute");
    if (strText.empty())
        strText = Units(0, "minute", blnLong);
    return AtMostTwoUnits(strText);
}

std::string SecondsText(std::int64_t lngSeconds, bool blnLong, bool blnRoundToMinutes) {
    std::int64_t lngRest = lngSeconds % 60, lngMinutes = lngSeconds / 60;
    if (lngMinutes == 0)
        return Units(lngRest, "second", blnLong);
    if (blnRoundToMinutes) {
        lngMinutes = RoundHalfEven(static_cast<double>(lngSeconds) / 60);
        lngRest = 0;
    }
    std::string strText = MinutesText(lngMinutes, blnLong);
    if (lngRest > 0)
        strText += (blnLong ? " and " : " ") + Units(lngRest, "second", blnLong);
    return AtMostTwoUnits(strText);
}

std::vector<std::string> LinesOf(const std::string& strText, const std::string& strEnd) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < strText.size();) {
        const auto end = std::min(strText.find(strEnd, at), strText.size());
        if (end > at)
            lines.push_back(strText.substr(at, end - at));
        at = end + strEnd.size();
    }
    return lines;
}
