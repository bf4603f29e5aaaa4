// Opens links and documents without elevated rights: a browser with administrator's rights would be
// a danger on every page it shows.
#include "platform/System.h"
#include "platform/win32/LastFault.h"
#include "win32/Wide.h"

#include <windows.h>

#include <exdisp.h>
#include <servprov.h>
#include <shellapi.h>
#include <shldisp.h>
#include <shlguid.h>
#include <shlobj.h>

namespace platform {
namespace {

bool IsElevated() {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token))
        return false;
    TOKEN_ELEVATION elevation{};
    DWORD size = 0;
    const bool blnTold =
        GetTokenInformation(token, TokenElevation, &elevation, sizeof elevation, &size) != FALSE;
    CloseHandle(token);
    return blnTold && elevation.TokenIsElevated != 0;
}

/// A reference to a COM object, released by the destructor.
template<typename Interface>
struct Reference {
    Interface* To = nullptr;
    Reference() = default;
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    ~Reference() {
        if (To)
            To->Release();
    }
    void** Out() { return reinterpret_cast<void**>(&To); }
};

/// The desktop's window, which belongs to the user's shell.
bool FindDesktop(Reference<IDispatch>& desktop) {
    Reference<IShellWindows> windows;
    if (FAILED(CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_LOCAL_SERVER, IID_IShellWindows,
                                windows.Out())))
        return false;
    VARIANT place{}, none{};
    place.vt = VT_I4;
    place.lVal = CSIDL_DESKTOP;
    long window = 0;
    return windows.To->FindWindowSW(&place, &none, SWC_DESKTOP, &window, SWFO_NEEDDISPATCH,
                                    &desktop.To) == S_OK &&
           desktop.To;
}

/// Makes the user's shell, which is not elevated, open the target.
bool OpenByShell(const std::wstring& target) {
    Reference<IDispatch> desktop, background, application;
    Reference<IServiceProvider> services;
    Reference<IShellBrowser> browser;
    Reference<IShellView> view;
    Reference<IShellFolderViewDual> folderView;
    Reference<IShellDispatch2> shell;
    if (!FindDesktop(desktop) ||
        FAILED(desktop.To->QueryInterface(IID_IServiceProvider, services.Out())) ||
        FAILED(services.To->QueryService(SID_STopLevelBrowser, IID_IShellBrowser, browser.Out())) ||
        FAILED(browser.To->QueryActiveShellView(&view.To)) ||
        FAILED(view.To->GetItemObject(SVGIO_BACKGROUND, IID_IDispatch, background.Out())) ||
        FAILED(background.To->QueryInterface(IID_IShellFolderViewDual, folderView.Out())) ||
        FAILED(folderView.To->get_Application(&application.To)) || !application.To ||
        FAILED(application.To->QueryInterface(IID_IShellDispatch2, shell.Out())))
        return false;
    const BSTR file = SysAllocString(target.c_str());
    VARIANT none{};
    AllowSetForegroundWindow(ASFW_ANY);
    const bool blnOpened = file && SUCCEEDED(shell.To->ShellExecute(file, none, none, none, none));
    SysFreeString(file);
    return blnOpened;
}

bool OpenUnelevated(const std::wstring& target) {
    const HRESULT ready =
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    const bool blnOpened = (SUCCEEDED(ready) || ready == RPC_E_CHANGED_MODE) && OpenByShell(target);
    if (SUCCEEDED(ready))
        CoUninitialize();
    return blnOpened;
}

} // namespace

Fault OpenLink(const std::string& target) {
    const std::wstring wide = Widen(target);
    // Without a suitable shell (another shell, no desktop), open it from this process.
    if (IsElevated() && OpenUnelevated(wide))
        return Fault::None;
    // A result above 32 means success; other values are old error numbers.
    const auto result = reinterpret_cast<std::intptr_t>(
        ShellExecuteW(nullptr, L"open", wide.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    if (result > 32)
        return Fault::None;
    switch (result) {
    case SE_ERR_FNF:
    case SE_ERR_PNF:
    case SE_ERR_NOASSOC:
        return Fault::NotFound;
    case SE_ERR_ACCESSDENIED:
        return Fault::AccessDenied;
    case SE_ERR_SHARE:
        return Fault::SharingViolation;
    default:
        return Fault::Other;
    }
}

} // namespace platform
