// Adapts to the user's Windows appearance: high contrast, dark title bars, icons.
#include "ui/win32/Native.h"

#include <map>

namespace ui::win32 {

namespace {

constexpr int intIconResource = 1;

using SetWindowAttribute = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);

/// Loaded from the system folder only; nullptr when it is missing.
SetWindowAttribute WindowAttributeSetter() {
    static const SetWindowAttribute setter = [] {
        const HMODULE library =
            LoadLibraryExW(L"dwmapi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
        const FARPROC found = library ? GetProcAddress(library, "DwmSetWindowAttribute") : nullptr;
        return reinterpret_cast<SetWindowAttribute>(reinterpret_cast<void*>(found));
    }();
    return setter;
}

bool AreApplicationsDark() {
    DWORD light = 1, size = sizeof light;
    return RegGetValueW(HKEY_CURRENT_USER,
                        L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                        L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light,
                        &size) == ERROR_SUCCESS &&
           light == 0;
}

HICON IconOf(int side) {
    static std::map<int, HICON> icons;
    HICON& icon = icons[side];
    if (!icon)
        icon = static_cast<HICON>(LoadImageW(Instance(), MAKEINTRESOURCEW(intIconResource),
                                             IMAGE_ICON, side, side, LR_DEFAULTCOLOR));
    return icon;
}

} // namespace

bool IsHighContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

void ColourTitleBar(HWND window) {
    const SetWindowAttribute set = WindowAttributeSetter();
    if (!set)
        return;
    constexpr DWORD lngDarkMode = 20, lngDarkModeBefore2004 = 19;
    const BOOL dark = AreApplicationsDark() && !IsHighContrast();
    if (FAILED(set(window, lngDarkMode, &dark, sizeof dark)))
        set(window, lngDarkModeBefore2004, &dark, sizeof dark);
}

void GiveIcons(HWND window, int dpi) {
    const auto resolution = static_cast<UINT>(dpi);
    for (const auto& [kind, metric] : {std::pair{ICON_BIG, SM_CXICON}, {ICON_SMALL, SM_CXSMICON}})
        if (const HICON icon = IconOf(GetSystemMetricsForDpi(metric, resolution)))
            SendMessageW(window, WM_SETICON, static_cast<WPARAM>(kind),
                         reinterpret_cast<LPARAM>(icon));
}

} // namespace ui::win32
