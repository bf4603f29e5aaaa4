// Which programs have a file open: the Restart Manager, loaded on first use.
#include "platform/System.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <windows.h>

#include <restartmanager.h>

namespace platform {
namespace {

struct Manager {
    decltype(&RmStartSession) Start = nullptr;
    decltype(&RmRegisterResources) Register = nullptr;
    decltype(&RmGetList) List = nullptr;
    decltype(&RmEndSession) End = nullptr;
};

template<typename Function>
bool Find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
}

bool LoadManager(Manager& manager) {
    HMODULE library = LoadLibraryExW(L"rstrtmgr.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return library && Find(library, "RmStartSession", manager.Start) &&
           Find(library, "RmRegisterResources", manager.Register) &&
           Find(library, "RmGetList", manager.List) && Find(library, "RmEndSession", manager.End);
}

} // namespace

Fault ListHolders(const std::string& path, std::vector<std::string>& programs) {
    static Manager manager;
    static const bool loaded = LoadManager(manager);
    DWORD session = 0;
    wchar_t key[CCH_RM_SESSION_KEY + 1] = {};
    if (!loaded || manager.Start(&session, 0, key) != ERROR_SUCCESS)
        return Fault::NotSupported;
    // The Restart Manager accepts plain paths only, without "\\?\".
    const std::wstring wide = Widen(path);
    const wchar_t* files[] = {wide.c_str()};
    RM_PROCESS_INFO found[8];
    UINT count = 8, needed = 0;
    DWORD reasons = 0;
    DWORD error = manager.Register(session, 1, files, 0, nullptr, 0, nullptr);
    if (error == ERROR_SUCCESS)
        error = manager.List(session, &needed, &count, found, &reasons);
    manager.End(session);
    // When there are more programs than fit, the first ones are enough.
    if (error != ERROR_SUCCESS && error != ERROR_MORE_DATA)
        return FaultOfError(error);
    programs.clear();
    for (UINT i = 0; i < count; ++i)
        programs.push_back(Narrow(found[i].strAppName));
    return Fault::None;
}

} // namespace platform
