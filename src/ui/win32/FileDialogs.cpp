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

enum class Outcome { Chosen, Cancelled, Unavailable };

struct Question {
    Choose For;
    std::wstring Title, StartFolder;
    /// Name and pattern of each type of file; none for folders.
    std::vector<std::array<std::wstring, 2>> Types;
};

struct Choice {
    std::vector<std::wstring> Paths;
    UINT Type = 1; ///< counts from 1
};

/// "nws" for "*.nws"; empty for patterns with an arbitrary extension.
std::wstring ExtensionOfPattern(const std::wstring& pattern) {
    const std::wstring extension = pattern.starts_with(L"*.") ? pattern.substr(2) : L"";
    return extension.find_first_of(L"*?.;") == std::wstring::npos ? extension : L"";
}

/// What a dialog may append; nothing where there is a choice, since it would go to every name.
std::wstring UsualExtension(const Question& question) {
    return question.Types.size() == 1 ? ExtensionOfPattern(question.Types[0][1]) : L"";
}

/// Some systems append the extension of the type that is chosen even to a name with another type's.
void TakeSecondExtensionOff(const Question& question, std::wstring& path) {
    const auto endsIn = [](const std::wstring& name, const std::wstring& extension) {
        return name.size() > extension.size() &&
               CompareStringOrdinal(name.c_str() + name.size() - extension.size(), -1,
                                    extension.c_str(), -1, TRUE) == CSTR_EQUAL;
    };
    for (const auto& added : question.Types)
        for (const auto& typed : question.Types) {
            const std::wstring first = L"." + ExtensionOfPattern(typed[1]),
                               second = L"." + ExtensionOfPattern(added[1]);
            if (first != second && endsIn(path, first + second)) {
                path.resize(path.size() - second.size());
                return;
            }
        }
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

Outcome AskByItemDialog(HWND owner, const Question& question, Choice& choice) {
    const bool save = question.For == Choose::NewFile;
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
    if (question.For == Choose::Folder)
        options |= FOS_PICKFOLDERS;
    if (question.For == Choose::Files)
        options |= FOS_ALLOWMULTISELECT;
    if (question.For == Choose::File || question.For == Choose::Files)
        // A link is purged as a link, because its target was not chosen.
        options |= FOS_FILEMUSTEXIST | FOS_NODEREFERENCELINKS | FOS_FORCESHOWHIDDEN;
    dialog->SetOptions(options);
    dialog->SetTitle(question.Title.c_str());
    if (question.For != Choose::Folder) {
        std::vector<COMDLG_FILTERSPEC> filters;
        for (const auto& [name, pattern] : question.Types)
            filters.push_back({name.c_str(), pattern.c_str()});
        dialog->SetFileTypes(static_cast<UINT>(filters.size()), filters.data());
        const std::wstring extension = UsualExtension(question);
        if (save && !extension.empty())
            dialog->SetDefaultExtension(extension.c_str());
    }
    SetStartFolder(*dialog, question.StartFolder);
    const HRESULT shown = dialog->Show(owner);
    Outcome outcome = Outcome::Cancelled;
    if (SUCCEEDED(shown))
        outcome = (question.For == Choose::Files ? TakeResults(*dialog, choice.Paths)
                                                 : TakeResult(*dialog, choice.Paths))
                      ? Outcome::Chosen
                      : Outcome::Cancelled;
    else if (shown != HRESULT_FROM_WIN32(ERROR_CANCELLED))
        outcome = Outcome::Unavailable;
    dialog->GetFileTypeIndex(&choice.Type); // a dialog for folders has none
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

bool AskByOldDialog(HWND owner, const Question& question, Choice& choice) {
    std::wstring filter;
    for (const auto& [typeName, pattern] : question.Types)
        filter += typeName + L'\0' + pattern + L'\0';
    std::wstring name(32768, L'\0');
    const std::wstring extension = UsualExtension(question);
    OPENFILENAMEW ask{};
    ask.lStructSize = sizeof ask;
    ask.hwndOwner = owner;
    ask.lpstrFilter = filter.c_str();
    ask.nFilterIndex = choice.Type;
    ask.lpstrFile = name.data();
    ask.nMaxFile = static_cast<DWORD>(name.size());
    ask.lpstrTitle = question.Title.c_str();
    ask.lpstrInitialDir = question.StartFolder.empty() ? nullptr : question.StartFolder.c_str();
    ask.Flags =
        OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_DONTADDTORECENT;
    BOOL chosen = FALSE;
    if (question.For == Choose::NewFile) {
        ask.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
        chosen = GetSaveFileNameW(&ask);
    } else {
        ask.Flags |= OFN_FILEMUSTEXIST | OFN_NODEREFERENCELINKS;
        if (question.For == Choose::Files)
            ask.Flags |= OFN_ALLOWMULTISELECT;
        chosen = GetOpenFileNameW(&ask);
    }
    choice.Type = ask.nFilterIndex;
    if (chosen && question.For == Choose::Files)
        TakeNames(name.c_str(), choice.Paths);
    else if (chosen)
        choice.Paths.emplace_back(name.c_str());
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

} // namespace

std::vector<std::string> ChoosePaths(const PathQuestion& asked, std::size_t* type) {
    if (Quitting())
        return {};
    Question question{asked.What, Widen(asked.Title), Widen(asked.StartFolder), {}};
    if (asked.What != Choose::Folder)
        for (const FileType& each : asked.Types)
            question.Types.push_back({Widen(each.Name), Widen(each.Pattern)});
    const BoxOpen box(false, IDCANCEL);
    Choice choice;
    const Outcome outcome = AskByItemDialog(box.Owner, question, choice);
    bool chosen = outcome == Outcome::Chosen;
    if (outcome == Outcome::Unavailable)
        chosen = question.For == Choose::Folder
                     ? AskByOldFolderDialog(box.Owner, question, choice.Paths)
                     : AskByOldDialog(box.Owner, question, choice);
    if (!chosen)
        return {};
    if (question.Types.size() > 1)
        TakeSecondExtensionOff(question, choice.Paths.front());
    if (type)
        *type = choice.Type - 1;
    std::vector<std::string> paths;
    for (const std::wstring& path : choice.Paths)
        paths.push_back(platform::NarrowPath(path));
    return paths;
}

} // namespace ui
