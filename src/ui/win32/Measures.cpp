// Twips, pixels and fonts.
#include "ui/win32/Native.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace ui::win32 {

namespace {

constexpr int lngTwipsPerInch = 1440;
constexpr int lngPointsPerInch = 72;
/// The text size for which the forms are designed.
constexpr int lngTextPoints = 9;

std::map<std::tuple<int, bool, bool, bool>, HFONT> fonts;

LOGFONTW MessageFont(int dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                                   static_cast<UINT>(dpi)))
        return metrics.lfMessageFont;
    LOGFONTW font{};
    font.lfCharSet = DEFAULT_CHARSET;
    lstrcpynW(font.lfFaceName, L"MS Shell Dlg 2", LF_FACESIZE);
    return font;
}

} // namespace

int ToPixels(int twips, int scale) {
    return MulDiv(twips, scale, lngTwipsPerInch);
}

int ToTwips(int pixels, int scale) {
    return MulDiv(pixels, lngTwipsPerInch, scale);
}

int SystemScale() {
    return static_cast<int>(GetDpiForSystem());
}

// The whole form grows with the user's text size, so that nothing is cut.
int TextScale(int dpi) {
    const int usual = MulDiv(lngTextPoints, dpi, lngPointsPerInch);
    const int asked = std::abs(static_cast<int>(MessageFont(dpi).lfHeight));
    return MulDiv(dpi, std::clamp(asked, usual, 3 * usual), usual);
}

SIZE OuterSize(const NativeForm& form, int width, int height, DWORD style, DWORD extended) {
    RECT box{0, 0, ToPixels(width, form.Scale), ToPixels(height, form.Scale)};
    const auto dpi = static_cast<UINT>(form.Dpi);
    AdjustWindowRectExForDpi(&box, style, FALSE, extended, dpi);
    if (form.Which->ContentHeight > height) // it scrolls
        box.right += GetSystemMetricsForDpi(SM_CXVSCROLL, dpi);
    return {box.right - box.left, box.bottom - box.top};
}

HFONT FontFor(int scale, bool bold, bool fixedPitch, bool underlined) {
    HFONT& font = fonts[{scale, bold, fixedPitch, underlined}];
    if (font)
        return font;
    LOGFONTW shape = MessageFont(96);
    shape.lfHeight = -MulDiv(lngTextPoints, scale, lngPointsPerInch);
    shape.lfWidth = 0;
    shape.lfUnderline = underlined;
    if (bold)
        shape.lfWeight = FW_BOLD;
    if (fixedPitch) {
        shape.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
        shape.lfQuality = DEFAULT_QUALITY;
        lstrcpynW(shape.lfFaceName, L"Courier New", LF_FACESIZE);
    }
    font = CreateFontIndirectW(&shape);
    return font;
}

// Callers must give new fonts at once to the windows that use these: see SyncForm.
void ForgetFonts() {
    for (const auto& [key, font] : fonts)
        DeleteObject(font);
    fonts.clear();
}

} // namespace ui::win32
