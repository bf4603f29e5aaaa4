// Texts for counts and durations, and procedures on texts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// "No", "One" ... "Twenty", then the digits with thousands separators ("13,391").
std::string NumberInWords(std::int64_t n);
/// Minutes as "2 hours and 5 minutes" (long) or "2h 5m" (short).
std::string MinutesText(std::int64_t lngMinutes, bool blnLong);
/// Seconds as "1 minute and 1 second" (long) or "1m 1s" (short); with blnRoundToMinutes rounded to
/// whole minutes, halves to even.
std::string SecondsText(std::int64_t lngSeconds, bool blnLong, bool blnRoundToMinutes = false);
/// Without the blanks at both ends.
std::string Trimmed(const std::string& text);
/// How often strPart occurs in strText, without overlaps.
int CountOccurrences(const std::string& strText, const std::string& strPart);
/// The non-empty lines of a text in which each line ends with this.
std::vector<std::string> LinesOf(const std::string& strText, const std::string& strEnd = "\r\n");
