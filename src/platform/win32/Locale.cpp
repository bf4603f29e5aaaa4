// The user's regional settings, and case mapping, which is independent of them.
#include "platform/System.h"
#include "win32/Wide.h"

#include <algorithm>
#include <cstdio>
#include <windows.h>

namespace platform {
namespace {

std::string Setting(LCTYPE type, const char* fallback) {
    wchar_t text[80] = {}; // the longest of these settings
    return GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text, 80) > 0 ? Narrow(text) : fallback;
}

/// Blocks of letters beyond 16 bits, in which each capital lies a fixed distance before its small
/// letter. The system's mapping omits them.
struct CasedBlock {
    char32_t First;
    char32_t Last;
    char32_t Step;
};
constexpr CasedBlock cased[] = {
    {0x10400, 0x10427, 40}, // Deseret
    {0x104B0, 0x104D3, 40}, // Osage
    {0x10C80, 0x10CB2, 64}, // Old Hungarian
    {0x118A0, 0x118BF, 32}, // Warang Citi
    {0x16E40, 0x16E5F, 32}, // Medefaidrin
    {0x1E900, 0x1E921, 34}  // Adlam
};

/// Maps ASCII letters directly, with the same result as the system's invariant mapping. Most names
/// have no others, and a walk maps very many names.
bool MapPlainCase(std::string& text, bool toUpper) {
    if (std::any_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; }))
        return false;
    const char first = toUpper ? 'a' : 'A';
    for (char& c : text)
        if (c >= first && c <= first + ('Z' - 'A'))
            c = static_cast<char>(c ^ ('a' ^ 'A'));
    return true;
}

std::string MapCase(const std::string& text, bool toUpper) {
    if (std::string plain = text; MapPlainCase(plain, toUpper))
        return plain;
    std::wstring wide = Widen(text);
    std::wstring mapped(wide.size(), L'\0');
    const auto length = static_cast<int>(wide.size());
    if (LCMapStringEx(LOCALE_NAME_INVARIANT, toUpper ? LCMAP_UPPERCASE : LCMAP_LOWERCASE,
                      wide.data(), length, mapped.data(), length, nullptr, nullptr, 0) != length)
        mapped = wide;
    for (std::size_t i = 0; i + 1 < mapped.size(); ++i) {
        if (!IS_SURROGATE_PAIR(mapped[i], mapped[i + 1]))
            continue;
        char32_t point = 0x10000 + (static_cast<char32_t>(mapped[i] - 0xD800) << 10) +
                         static_cast<char32_t>(mapped[i + 1] - 0xDC00);
        for (const CasedBlock& block : cased) {
            const char32_t offset = toUpper ? block.Step : 0;
            if (point < block.First + offset || point > block.Last + offset)
                continue;
            point = toUpper ? point - block.Step : point + block.Step;
            break;
        }
        mapped[i] = static_cast<wchar_t>(0xD800 + ((point - 0x10000) >> 10));
        mapped[++i] = static_cast<wchar_t>(0xDC00 + (point & 0x3FF));
    }
    return Narrow(mapped);
}

} // namespace

std::string IsoTimeText() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char text[32];
    std::snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u:%02u", unsigned{now.wYear},
                  unsigned{now.wMonth}, unsigned{now.wDay}, unsigned{now.wHour},
                  unsigned{now.wMinute}, unsigned{now.wSecond});
    return text;
}

NumberFormat RegionalNumberFormat() {
    // Cached: a report formats numbers on every line. A change of the settings during the run may
    // take effect a second late.
    constexpr ULONGLONG lngKept = 1000; // ms
    static NumberFormat format;
    static ULONGLONG lngRead = 0;
    const ULONGLONG now = GetTickCount64();
    if (lngRead != 0 && now - lngRead < lngKept)
        return format;
    lngRead = now;
    format.Decimal = Setting(LOCALE_SDECIMAL, ".");
    format.Thousands = Setting(LOCALE_STHOUSAND, ",");
    format.Grouping = Setting(LOCALE_SGROUPING, "3;0");
    format.LeadingZero = Setting(LOCALE_ILZERO, "1") != "0";
    return format;
}

std::string DateText() {
    wchar_t text[128] = {};
    const int length = GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr,
                                       text, 128, nullptr);
    return length > 0 ? Narrow(text) : std::string();
}

std::string TimeText() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char text[32];
    std::snprintf(text, sizeof text, "%02u:%02u:%02u", static_cast<unsigned>(now.wHour),
                  static_cast<unsigned>(now.wMinute), static_cast<unsigned>(now.wSecond));
    return text;
}

std::string LowerCase(const std::string& text) {
    return MapCase(text, false);
}

std::string UpperCase(const std::string& text) {
    return MapCase(text, true);
}

} // namespace platform
