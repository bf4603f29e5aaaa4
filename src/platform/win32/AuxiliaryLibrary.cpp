// nwaux6.dll, the program's auxiliary library.
#include "platform/Files.h"
#include "platform/System.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <windows.h>

namespace platform {
namespace {

using ChangeFileSize64 = std::int32_t (*)(const char* path, std::int64_t newLength);
using FlushFileOf = std::int32_t (*)(const char* path);

ChangeFileSize64 change_filesize64 = nullptr;
FlushFileOf flush_file = nullptr;

/// Converts the path to the ANSI code page that the library expects. That is UTF-8 if the system
/// obeys the program's manifest; then every name can be converted. False when the code page cannot
/// express the name.
bool AnsiPath(const std::string& path, std::string& ansi) {
    if (GetACP() == CP_UTF8) {
        ansi = path;
        return true;
    }
    const std::wstring wide = Widen(path);
    std::string text(wide.size() * 4 + 1, '\0');
    BOOL replaced = FALSE;
    const int length = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(),
                                           static_cast<int>(wide.size()), text.data(),
                                           static_cast<int>(text.size()), nullptr, &replaced);
    if (length <= 0 || replaced)
        return false;
    text.resize(static_cast<std::size_t>(length));
    ansi = text;
    return true;
}

template<typename Function>
Function ExportOf(HMODULE library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(library, name)));
}

} // namespace

Fault LoadAuxiliaryLibrary() {
    if (change_filesize64 != nullptr)
        return Fault::None;
    const std::string path = ProgramFolder() + "\\nwaux6.dll";
    if (!FileExists(path))
        return Fault::NotFound;
    // Load by full path, with dependencies from the system's folder only, so that no library of the
    // same name from another folder can slip in.
    HMODULE library = LoadLibraryExW(Widen(path).c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr) {
        const DWORD error = GetLastError();
        return error == ERROR_BAD_EXE_FORMAT || error == ERROR_MOD_NOT_FOUND ||
                       error == ERROR_PROC_NOT_FOUND
                   ? Fault::NotSupported
                   : FaultOfError(error);
    }
    const auto change = ExportOf<ChangeFileSize64>(library, "_change_filesize64");
    const auto flush = ExportOf<FlushFileOf>(library, "_flush_file");
    if (change == nullptr || flush == nullptr ||
        GetProcAddress(library, "_change_filesize") == nullptr) {
        FreeLibrary(library);
        return Fault::NotSupported;
    }
    change_filesize64 = change;
    flush_file = flush;
    return Fault::None;
}

std::int32_t AuxiliaryChangeFileSize(const std::string& path, std::int64_t newLength) {
    std::string ansi;
    return change_filesize64 != nullptr && AnsiPath(path, ansi)
               ? change_filesize64(ansi.c_str(), newLength)
               : -1;
}

std::int32_t AuxiliaryFlushFile(const std::string& path) {
    std::string ansi;
    return flush_file != nullptr && AnsiPath(path, ansi) ? flush_file(ansi.c_str()) : -1;
}

} // namespace platform
