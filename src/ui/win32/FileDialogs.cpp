// The common dialogs for files and folders: the current ones, or the older ones if those are
// unavailable.
#include "ui/win32/Native.h"

#include <cwchar>

#include <commdlg.h>
#include <shlobj.h>
#include <shobjidl.h>

namespace ui::win32 {

bool EnsureCom() {
    static const bool ready = [] {
        const HRESULT result =
            CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
        return SUCCEEDED(result) || result == RPC_E_CHANGED_MODE;
    }();
    return ready;
}

} // namespace ui::win32

namespace ui {

using namespace win32;

namespace {

enum class Purpose { Open, OpenSeveral, Save, Folder };
enum class Outcome { Chosen, Cancelled, Unavailable };

struct Question {
    Purpose For;
    std::wstring Title, FilterName, FilterPattern, StartFolder;
};

/// "nws" for "*.nws"; empty for patterns with an arbitrary extension.
std::wstring ExtensionOfPattern(const std::wstring& pattern) {
    const std::wstring extension = pattern.starts_with(L"*.") ? pattern.substr(2) : L"";
    return extension.find_first_of(L"*?.;") == std::wstring::npos ? extension : L"";
}

void SetStartFolder(IFileDialog& dialog, const std::wstring& folder) {
    IShellItem* item = nullptr;
    if (folder.empty() ||
        FAILED(SHCreateItemFromParsingName(folder.c_str(), nullptr, IID_IShellItem,
                                           reinterpret_cast<void**>(&item))))
        return;
    dialog.SetFolder(item);
    item->Release();
}

bool TakeItem(IShellItem* item, std::vector<std::wstring>& paths) {
    PWSTR name = nullptr;
    const bool named = SUCCEEDED(item->GetDisplayName(SIGDN_FILESYSPATH, &name));
    if (named) {
        paths.emplace_back(name);
        CoTaskMemFree(name);
    }
    item->Release();
    return named;
}

bool TakeResult(IFileDialog& dialog, std::vector<std::wstring>& paths) {
    IShellItem* item = nullptr;
    return SUCCEEDED(dialog.GetResult(&item)) && TakeItem(item, paths);
}

/// Takes all chosen paths or none: only what the user saw as chosen may be purged.
bool TakeResults(IFileDialog& dialog, std::vector<std::wstring>& paths) {
    IShellItemArray* items = nullptr;
    if (FAILED(static_cast<IFileOpenDialog&>(dialog).GetResults(&items)))
        return false;
    DWORD count = 0;
    bool all = SUCCEEDED(items->GetCount(&count)) && count > 0;
    for (DWORD i = 0; i < count && all; ++i) {
        IShellItem* item = nullptr;
        all = SUCCEEDED(items->GetItemAt(i, &item)) && TakeItem(item, paths);
    }
    items->Release();
    return all;
}

Outcome AskByItemDialog(HWND owner, const Question& question, std::vector<std::wstring>& paths) {
    const bool save = question.For == Purpose::Save;
    IFileDialog* dialog = nullptr;
    if (!EnsureCom() || FAILED(CoCreateInstance(save ? CLSID_FileSaveDialog : CLSID_FileOpenDialog,
                                                nullptr, CLSCTX_INPROC_SERVER,
                                                save ? IID_IFileSaveDialog : IID_IFileOpenDialog,
                                                reinterpret_cast<void**>(&dialog))))
        return Outcome::Unavailable;
    DWORD options = 0;
    dialog->GetOptions(&options);
    options |= FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR | FOS_PATHMUSTEXIST | FOS_DONTADDTORECENT;
    options &= ~static_cast<DWORD>(FOS_OVERWRITEPROMPT);
    if (question.For == Purpose::Folder)
        options |= FOS_PICKFOLDERS;
    if (question.For == Purpose::OpenSeveral)
        options |= FOS_ALLOWMULTISELECT;
    if (question.For == Purpose::Open || question.For == Purpose::OpenSeveral)
        // A link is purged as a link, because its target was not chosen.
        options |= FOS_FILEMUSTEXIST | FOS_NODEREFERENCELINKS | FOS_FORCESHOWHIDDEN;
    dialog->SetOptions(options);
    dialog->SetTitle(question.Title.c_str());
    if (question.For != Purpose::Folder) {
        const COMDLG_FILTERSPEC filter{question.FilterName.c_str(), question.FilterPattern.c_str()};
        dialog->SetFileTypes(1, &filter);
        const std::wstring extension = ExtensionOfPattern(question.FilterPattern);
        if (save && !extension.empty())
            dialog->SetDefaultExtension(extension.c_str());
    }
    SetStartFolder(*dialog, question.StartFolder);
    const HRESULT shown = dialog->Show(owner);
    Outcome outcome = Outcome::Cancelled;
    if (SUCCEEDED(shown))
        outcome = (question.For == Purpose::OpenSeveral ? TakeResults(*dialog, paths)
                                                        : TakeResult(*dialog, paths))
                      ? Outcome::Chosen
                      : Outcome::Cancelled;
    else if (shown != HRESULT_FROM_WIN32(ERROR_CANCELLED))
        outcome = Outcome::Unavailable;
    dialog->Release();
    return outcome;
}

/// Splits the folder and its file names, each ended by a null character; or a single whole path.
void TakeNames(const wchar_t* names, std::vector<std::wstring>& paths) {
    const std::wstring first = names;
    const std::wstring folder = first.ends_with(L'\\') ? first : first + L'\\';
    for (names += first.size() + 1; *names != 0; names += std::wcslen(names) + 1)
        paths.push_back(folder + names);
    if (paths.empty())
        paths.push_back(first);
}

bool AskByOldDialog(HWND owner, const Question& question, std::vector<std::wstring>& paths) {
    std::wstring filter = question.FilterName + L'\0' + question.FilterPattern + L'\0' + L'\0';
    std::wstring name(32768, L'\0');
    const std::wstring extension = ExtensionOfPattern(question.FilterPattern);
    OPENFILENAMEW ask{};
    ask.lStructSize = sizeof ask;
    ask.hwndOwner = owner;
    ask.lpstrFilter = filter.c_str();
    ask.lpstrFile = name.data();
    ask.nMaxFile = static_cast<DWORD>(name.size());
    ask.lpstrTitle = question.Title.c_str();
    ask.lpstrInitialDir = question.StartFolder.empty() ? nullptr : question.StartFolder.c_str();
    ask.Flags =
        OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_DONTADDTORECENT;
    BOOL chosen = FALSE;
    if (question.For == Purpose::Save) {
        ask.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
        chosen = GetSaveFileNameW(&ask);
    } else {
        ask.Flags |= OFN_FILEMUSTEXIST | OFN_NODEREFERENCELINKS;
        if (question.For == Purpose::OpenSeveral)
            ask.Flags |= OFN_ALLOWMULTISELECT;
        chosen = GetOpenFileNameW(&ask);
    }
    if (chosen && question.For == Purpose::OpenSeveral)
        TakeNames(name.c_str(), paths);
    else if (chosen)
        paths.emplace_back(name.c_str());
    return chosen != FALSE;
}

bool AskByOldFolderDialog(HWND owner, const Question& question, std::vector<std::wstring>& paths) {
    BROWSEINFOW ask{};
    ask.hwndOwner = owner;
    ask.lpszTitle = question.Title.c_str();
    ask.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    PIDLIST_ABSOLUTE item = SHBrowseForFolderW(&ask);
    if (!item)
        return false;
    std::wstring name(MAX_PATH, L'\0');
    const BOOL named = SHGetPathFromIDListW(item, name.data());
    CoTaskMemFree(item);
    if (named)
        paths.emplace_back(name.c_str());
    return named != FALSE;
}

bool Ask(const Question& question, std::vector<std::string>& paths) {
    if (Quitting())
        return false;
    const BoxOpen box(false, IDCANCEL);
    std::vector<std::wstring> answers;
    const Outcome outcome = AskByItemDialog(box.Owner, question, answers);
    bool chosen = outcome == Outcome::Chosen;
    if (outcome == Outcome::Unavailable)
        chosen = question.For == Purpose::Folder
                     ? AskByOldFolderDialog(box.Owner, question, answers)
                     : AskByOldDialog(box.Owner, question, answers);
    if (chosen) {
        paths.clear();
        for (const std::wstring& answer : answers)
            paths.push_back(platform::NarrowPath(answer));
    }
    return chosen;
}

bool AskForOne(const Question& question, std::string& path) {
    std::vector<std::string> paths;
    const bool chosen = Ask(question, paths);
    if (chosen)
        path = paths.front();
    return chosen;
}

} // namespace

bool OpenFileDialog(const std::string& title, const std::string& filterName,
                    const std::string& filterPattern, const std::string& startFolder,
                    std::string& path) {
    return AskForOne(
        {Purpose::Open, Widen(title), Widen(filterName), Widen(filterPattern), Widen(startFolder)},
        path);
}

bool OpenFilesDialog(const std::string& title, const std::string& filterName,
                     const std::string& filterPattern, const std::string& startFolder,
                     std::vector<std::string>& paths) {
    return Ask({Purpose::OpenSeveral, Widen(title), Widen(filterName), Widen(filterPattern),
                Widen(startFolder)},
               paths);
}

bool SaveFileDialog(const std::string& title, const std::string& filterName,
                    const std::string& filterPattern, const std::string& startFolder,
                    std::string& path) {
    return AskForOne(
        {Purpose::Save, Widen(title), Widen(filterName), Widen(filterPattern), Widen(startFolder)},
        path);
}

std::string BrowseFolderDialog(const std::string& title, const std::string& startFolder) {
    std::string path;
    AskForOne({Purpose::Folder, Widen(title), L"", L"", Widen(startFolder)}, path);
    return path;
}

} // namespace ui
