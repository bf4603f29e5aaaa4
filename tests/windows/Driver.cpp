#include "windows/Driver.h"

#include "platform/win32/Wide.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace driver {

using platform::Narrow;
using platform::Widen;

std::string scratch;

namespace {
PROCESS_INFORMATION program;
HWND mainWindow = nullptr;
bool isSetupAside = false;

std::string Environment(const wchar_t* name) {
    wchar_t value[1024];
    const DWORD length = GetEnvironmentVariableW(name, value, 1024);
    return length > 0 && length < 1024 ? Narrow({value, length}) : std::string();
}

/// A message to a window of the program, which may just be busy: it has its time.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, patience, &result);
    return static_cast<LRESULT>(result);
}

std::string ClassOf(HWND window) {
    wchar_t name[100];
    return Narrow({name, static_cast<std::size_t>(std::max(GetClassNameW(window, name, 100), 0))});
}

BOOL CALLBACK Collect(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

std::vector<HWND> Children(HWND form) {
    std::vector<HWND> windows;
    EnumChildWindows(form, Collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

std::vector<HWND> TopWindows() {
    std::vector<HWND> windows;
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [](HWND window) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        return process != program.dwProcessId || !IsWindowVisible(window);
    });
    return windows;
}

void Fail(const std::string& what) {
    ADD_FAILURE() << what << "\n" << Describe();
}

std::string NameOf(HWND control) {
    const auto atom =
        static_cast<ATOM>(reinterpret_cast<std::uintptr_t>(GetPropW(control, L"NullwrightName")));
    wchar_t name[256];
    const UINT length = atom != 0 ? GlobalGetAtomNameW(atom, name, 256) : 0;
    return Narrow({name, length});
}

bool IsCombo(HWND control) {
    return ClassOf(control) == "ComboBox";
}

/// The numbers of the messages that a drop-down list and a list box have in common.
struct ListMessages {
    UINT Count, TextLength, Text, Chosen, Choose, Find;
    WORD Changed;
};
ListMessages MessagesOf(HWND list) {
    return IsCombo(list)
               ? ListMessages{CB_GETCOUNT,  CB_GETLBTEXTLEN,    CB_GETLBTEXT, CB_GETCURSEL,
                              CB_SETCURSEL, CB_FINDSTRINGEXACT, CBN_SELCHANGE}
               : ListMessages{LB_GETCOUNT,  LB_GETTEXTLEN,      LB_GETTEXT,   LB_GETCURSEL,
                              LB_SETCURSEL, LB_FINDSTRINGEXACT, LBN_SELCHANGE};
}

std::string ItemOf(HWND list, WPARAM index) {
    const ListMessages messages = MessagesOf(list);
    const LRESULT length = Ask(list, messages.TextLength, index);
    if (length < 0)
        return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    Ask(list, messages.Text, index, reinterpret_cast<LPARAM>(text.data()));
    return Narrow(text.substr(0, static_cast<std::size_t>(length)));
}

/// The field for the path in a common dialog: they have different numbers.
HWND PathField(HWND dialog) {
    for (HWND child : Children(dialog)) {
        const int number = GetDlgCtrlID(child);
        if (IsWindowVisible(child) && (number == 1148 || number == 1152) &&
            (ClassOf(child) == "Edit" || IsCombo(child) || ClassOf(child) == "ComboBoxEx32"))
            return child;
    }
    return nullptr;
}

/// A dialog of the system's own class with this title for which `fits` holds, enabled.
HWND WaitForDialog(const std::string& title, const std::function<bool(HWND)>& fits) {
    // Wine gives its folder dialog this title, whatever was asked for.
    const std::string wines = "Select Folder";
    HWND found = nullptr;
    WaitUntil([&] {
        for (HWND window : TopWindows())
            if (ClassOf(window) == "#32770" && IsWindowEnabled(window) && fits(window) &&
                (TextOf(window) == title || TextOf(window) == wines))
                found = window;
        return found != nullptr || !IsRunning();
    });
    if (found == nullptr)
        Fail("No box or dialog \"" + title + "\" came.");
    return found;
}

void PressAndWait(HWND dialog, int button) {
    HWND control = GetDlgItem(dialog, button);
    if (control == nullptr)
        return Fail("\"" + TextOf(dialog) + "\" has no button " + std::to_string(button));
    PostMessageW(control, BM_CLICK, 0, 0);
    if (!WaitUntil([&] { return !IsWindow(dialog) || !IsWindowVisible(dialog); }))
        Fail("The box stays.");
}

INPUT KeyStroke(WORD virtualKey, bool released) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.dwFlags = released ? KEYEVENTF_KEYUP : 0;
    return input;
}
} // namespace

bool WaitUntil(const std::function<bool()>& condition, int milliseconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    while (!condition()) {
        if (GetTickCount64() > end)
            return false;
        Sleep(5);
    }
    return true;
}

// ---- The program -------------------------------------------------------------------------------

HWND StartProgram() {
    std::string path = Environment(L"NW_PROGRAM");
    if (path.empty())
        path = "C:\\Program Files\\Nullwright\\nullwright.exe";
    std::wstring line = L"\"" + Widen(path) + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &program)) {
        ADD_FAILURE() << path << " cannot be started: " << GetLastError();
        return nullptr;
    }
    return mainWindow = Window("Nullwright");
}

bool IsRunning() {
    return program.hProcess != nullptr && WaitForSingleObject(program.hProcess, 0) == WAIT_TIMEOUT;
}

int WaitForEnd() {
    DWORD code = 0;
    if (WaitForSingleObject(program.hProcess, patience) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(program.hProcess, &code)) {
        Fail("The program does not end.");
        return -1;
    }
    return static_cast<int>(code);
}

void KillProgram() {
    if (IsRunning()) {
        TerminateProcess(program.hProcess, 99);
        WaitForSingleObject(program.hProcess, patience);
    }
    if (program.hProcess != nullptr) {
        CloseHandle(program.hThread);
        CloseHandle(program.hProcess);
    }
    program = {};
}

// ---- Windows and controls ----------------------------------------------------------------------

HWND Window(const std::string& caption) {
    HWND found = nullptr;
    WaitUntil([&] {
        for (HWND window : TopWindows())
            if (TextOf(window) == caption)
                found = window;
        return found != nullptr || !IsRunning();
    });
    if (found == nullptr)
        Fail("No window \"" + caption + "\" came.");
    return found;
}

HWND Named(HWND form, const std::string& name) {
    for (HWND child : Children(form))
        if (NameOf(child) == name)
            return child;
    Fail("\"" + TextOf(form) + "\" has no control " + name);
    return nullptr;
}

std::string TextOf(HWND window) {
    const auto length = static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH));
    std::wstring text(length + 1, L'\0');
    const auto copied = static_cast<std::size_t>(
        Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())));
    text.resize(std::min(copied, length));
    return Narrow(text);
}

std::string CaptionOf(HWND window) {
    std::string text = TextOf(window);
    std::erase(text, '&');
    return text;
}

bool IsUsable(HWND control) {
    HWND window = control;
    while (window != GetAncestor(control, GA_ROOT) && IsWindowEnabled(window))
        window = GetAncestor(window, GA_PARENT);
    return IsWindowVisible(control) && IsWindowEnabled(window);
}

void Expect(HWND form, const std::string& name, const std::string& text) {
    HWND control = Named(form, name);
    WaitUntil([&] { return TextOf(control) == text; });
    EXPECT_EQ(text, TextOf(control)) << name;
}

void ExpectGone(HWND form) {
    if (!WaitUntil([&] { return !IsWindowVisible(form); }))
        Fail("The window stays.");
}

bool IsChecked(HWND button) {
    return Ask(button, BM_GETCHECK) == BST_CHECKED;
}

std::vector<std::string> ItemsOf(HWND comboOrList) {
    std::vector<std::string> items;
    const LRESULT count = Ask(comboOrList, MessagesOf(comboOrList).Count);
    for (LRESULT i = 0; i < count; ++i)
        items.push_back(ItemOf(comboOrList, static_cast<WPARAM>(i)));
    return items;
}

std::string ChosenItem(HWND comboOrList) {
    const LRESULT index = Ask(comboOrList, MessagesOf(comboOrList).Chosen);
    return index < 0 ? "" : ItemOf(comboOrList, static_cast<WPARAM>(index));
}

std::string Describe() {
    std::string text = IsRunning() ? "The program's windows:\n" : "The program has ended.\n";
    for (HWND window : TopWindows()) {
        text += "\"" + TextOf(window) + "\" (" + ClassOf(window) +
                (IsWindowEnabled(window) ? ")\n" : ", disabled)\n");
        for (HWND child : Children(window))
            if (IsWindowVisible(child))
                text += "    " + NameOf(child) + " (" + ClassOf(child) +
                        (IsUsable(child) ? ") \"" : ", disabled) \"") +
                        TextOf(child).substr(0, 300) + "\"\n";
    }
    return text;
}

// ---- What a person does ------------------------------------------------------------------------

namespace {
/// What a click on a button that destroys would destroy must lie in the scratch folder.
bool IsHarmless(HWND control) {
    const std::string name = NameOf(control);
    if (name.rfind("cmdLargePurge", 0) == 0) // the drive is chosen later: see Choose
        return std::getenv("NW_SMALL_DRIVE") != nullptr;
    const std::string chosen = TextOf(Named(GetAncestor(control, GA_ROOT), "lblDirectory"));
    return name != "cmdProcessFiles(1)" || chosen == "Not specified" || IsInScratch(chosen);
}
} // namespace

void Click(HWND control) {
    if (NameOf(control).rfind("cmd", 0) == 0 && GetAncestor(control, GA_ROOT) == mainWindow &&
        !IsHarmless(control))
        return Fail(NameOf(control) + " would touch what is not the test's own.");
    // What was just done may still be on its way to enabling it.
    if (WaitUntil([&] { return IsUsable(control); }))
        PostMessageW(control, BM_CLICK, 0, 0);
    else
        Fail(NameOf(control) + " \"" + CaptionOf(control) + "\" cannot be clicked.");
}

void Click(HWND form, const std::string& name) {
    if (HWND control = Named(form, name))
        Click(control);
}

void Type(HWND edit, const std::string& text) {
    if (!IsUsable(edit) || (GetWindowLongW(edit, GWL_STYLE) & ES_READONLY) != 0)
        return Fail(NameOf(edit) + " cannot be typed into.");
    Ask(edit, EM_SETSEL, 0, -1);
    Ask(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(Widen(text).c_str()));
}

void Choose(HWND comboOrList, const std::string& item) {
    const char* drive = std::getenv("NW_SMALL_DRIVE");
    if (NameOf(comboOrList) == "lstDrives" &&
        (drive == nullptr || item.substr(0, 2) != std::string(drive).substr(0, 2)))
        return Fail(item + " is not the drive that may be destroyed.");
    const ListMessages messages = MessagesOf(comboOrList);
    const std::wstring wide = Widen(item);
    const LRESULT index = Ask(comboOrList, messages.Find, static_cast<WPARAM>(-1),
                              reinterpret_cast<LPARAM>(wide.c_str()));
    if (!IsUsable(comboOrList) || index < 0)
        return Fail("\"" + item + "\" cannot be chosen in " + NameOf(comboOrList));
    const bool isMultiple = !IsCombo(comboOrList) && (GetWindowLongW(comboOrList, GWL_STYLE) &
                                                      (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
    if (isMultiple)
        Ask(comboOrList, LB_SETSEL, Ask(comboOrList, LB_GETSEL, static_cast<WPARAM>(index)) <= 0,
            index);
    else
        Ask(comboOrList, messages.Choose, static_cast<WPARAM>(index));
    // Choosing by message tells the parent nothing; choosing by hand does.
    PostMessageW(GetParent(comboOrList), WM_COMMAND,
                 MAKEWPARAM(GetDlgCtrlID(comboOrList), messages.Changed),
                 reinterpret_cast<LPARAM>(comboOrList));
}

void PressKey(HWND form, WORD virtualKey, bool alt, bool shift) {
    SetForegroundWindow(form);
    if (!WaitUntil([&] { return GetForegroundWindow() == form; }))
        return Fail("\"" + TextOf(form) + "\" does not come to the front.");
    std::vector<INPUT> keys = {KeyStroke(virtualKey, false), KeyStroke(virtualKey, true)};
    for (const auto& [held, key] : {std::pair{shift, VK_SHIFT}, std::pair{alt, VK_MENU}})
        if (held) {
            keys.insert(keys.begin(), KeyStroke(static_cast<WORD>(key), false));
            keys.push_back(KeyStroke(static_cast<WORD>(key), true));
        }
    SendInput(static_cast<UINT>(keys.size()), keys.data(), sizeof(INPUT));
}

HWND Focused(HWND form) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(form, nullptr), &info) ? info.hwndFocus
                                                                            : nullptr;
}

void CloseByCross(HWND form) {
    if (IsUsable(form))
        PostMessageW(form, WM_SYSCOMMAND, SC_CLOSE, 0);
    else
        Fail("\"" + TextOf(form) + "\" cannot be closed.");
}

// ---- Boxes and dialogs -------------------------------------------------------------------------

void AnswerBox(const std::string& title, const std::string& text, int button) {
    constexpr int textNumber = 0xFFFF;
    HWND box =
        WaitForDialog(title, [](HWND window) { return GetDlgItem(window, textNumber) != nullptr; });
    if (box == nullptr)
        return;
    if (!text.empty()) {
        EXPECT_EQ(text, TextOf(GetDlgItem(box, textNumber))) << title;
    }
    PressAndWait(box, button);
}

void AnswerDialog(const std::string& title, const std::string& path) {
    HWND dialog = WaitForDialog(title, [](HWND window) { return PathField(window) != nullptr; });
    if (dialog == nullptr)
        return;
    if (!path.empty() && !IsInScratch(path)) {
        Fail(path + " is outside the scratch folder.");
        PressAndWait(dialog, IDCANCEL);
        return;
    }
    if (!path.empty())
        Ask(PathField(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(path).c_str()));
    PressAndWait(dialog, path.empty() ? IDCANCEL : IDOK);
}

// ---- The scratch folder ------------------------------------------------------------------------

namespace {
std::filesystem::path InScratch(const std::string& name) {
    return Widen(scratch + "\\" + name);
}
} // namespace

bool IsInScratch(const std::string& path) {
    return !scratch.empty() && path.rfind(scratch + "\\", 0) == 0 &&
           path.find("..") == std::string::npos;
}

void Put(const std::string& name, const std::string& content) {
    std::filesystem::create_directories(InScratch(name).parent_path());
    std::ofstream(InScratch(name), std::ios::binary) << content;
}

bool Exists(const std::string& name) {
    return std::filesystem::exists(InScratch(name));
}

std::string ContentOf(const std::string& name) {
    std::ifstream file(InScratch(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

namespace {
/// The folder with the setup that the user has saved: put aside while a test runs.
std::filesystem::path SavedSetup(const std::wstring& suffix = {}) {
    return Widen(Environment(L"APPDATA") + "\\Nullwright") + suffix;
}

/// False: the user's folder is still where the test would write, and no test may run.
bool PutSavedSetupAside() {
    std::error_code ignored;
    if (std::filesystem::exists(SavedSetup(L".put-aside")))
        std::filesystem::remove_all(SavedSetup(), ignored); // what a test that broke off has left
    else
        std::filesystem::rename(SavedSetup(), SavedSetup(L".put-aside"), ignored);
    return !std::filesystem::exists(SavedSetup());
}

void BringSavedSetupBack() {
    std::error_code ignored;
    std::filesystem::remove_all(SavedSetup(), ignored);
    std::filesystem::rename(SavedSetup(L".put-aside"), SavedSetup(), ignored);
}
} // namespace

void WindowTest::SetUp() {
    const std::string folder = Environment(L"NW_TEST_FOLDER");
    if (folder.empty() || GetFileAttributesW(Widen(folder).c_str()) == INVALID_FILE_ATTRIBUTES)
        GTEST_SKIP() << "NW_TEST_FOLDER names no folder in which to work.";
    scratch = folder + "\\nullwright-windows-" + std::to_string(GetCurrentProcessId());
    std::error_code ignored;
    std::filesystem::remove_all(Widen(scratch), ignored); // of an earlier process with this number
    ASSERT_TRUE(CreateDirectoryW(Widen(scratch).c_str(), nullptr)) << scratch;
    ASSERT_TRUE(PutSavedSetupAside());
    isSetupAside = true;
    main = StartProgram();
    ASSERT_NE(nullptr, main);
}

void WindowTest::SpecifyData(int all) {
    Click(main, "cmdSpecifyDirectory(0)");
    AnswerDialog("Specify folder containing files to be purged", scratch + "\\data");
    AnswerBox("Specify folder", "Do you wish to purge ALL files in " + scratch + "\\data\\?", all);
    Expect(main, "lblFiles", all == IDYES ? "*.*" : "Not specified");
}

void WindowTest::ExpectReady() {
    if (!WaitUntil([&] { return IsUsable(Named(main, "cmdQuit")); }))
        Fail("The menu cannot be used again.");
}

void WindowTest::TearDown() {
    KillProgram();
    if (isSetupAside)
        BringSavedSetupBack();
    isSetupAside = false;
    if (scratch.empty())
        return;
    std::error_code ignored;
    std::filesystem::remove_all(Widen(scratch), ignored);
    scratch.clear();
}

} // namespace driver
