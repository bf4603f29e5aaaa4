// Finds windows and controls by their captions, clicks, types and reads.
#include "windows/Driver.h"

#include "windows/Environment.h"

#include <algorithm>
#include <shellapi.h>

namespace driver {

using platform::Narrow;
using platform::Widen;

std::string scratch;

namespace {
PROCESS_INFORMATION program;
bool areItemsOurs = false; ///< the chosen items were given by StartProgram

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

/// The visible ones of the program, or all.
std::vector<HWND> TopWindows(bool all = false) {
    std::vector<HWND> windows;
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [=](HWND window) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        return process != program.dwProcessId || !(all || IsWindowVisible(window));
    });
    return windows;
}

bool IsRunning() {
    return program.hProcess != nullptr && WaitForSingleObject(program.hProcess, 0) == WAIT_TIMEOUT;
}

void Fail(const std::string& what) {
    ADD_FAILURE() << what << "\n" << Describe();
}

/// The window of the program for which `fits` holds; waits for it.
HWND WaitForWindow(const std::string& caption, const std::function<bool(HWND)>& fits) {
    HWND found = nullptr;
    WaitUntil([&] {
        for (HWND window : TopWindows())
            if (fits(window))
                found = window;
        return found != nullptr || !IsRunning();
    });
    if (found == nullptr)
        Fail("No window \"" + caption + "\" came.");
    return found;
}

/// A dialog of the system's own class with this title that has such a child, enabled.
HWND WaitForDialog(const std::string& title, HWND (*child)(HWND)) {
    return WaitForWindow(title, [&](HWND window) {
        // Wine gives its folder dialog a title of its own, whatever was asked for.
        return ClassOf(window) == "#32770" && IsWindowEnabled(window) && child(window) != nullptr &&
               (TextOf(window) == title || TextOf(window) == "Select Folder");
    });
}

/// The text of a message box.
HWND TextField(HWND box) {
    return GetDlgItem(box, 0xFFFF);
}

/// The field for the path in a common dialog: they have different numbers.
HWND PathField(HWND dialog) {
    for (HWND child : Children(dialog)) {
        const int number = GetDlgCtrlID(child);
        if (IsWindowVisible(child) && (number == 1148 || number == 1152) &&
            ClassOf(child) != "Static")
            return child;
    }
    return nullptr;
}

void PressAndWait(HWND dialog, int button) {
    HWND control = GetDlgItem(dialog, button);
    if (control == nullptr)
        return Fail("\"" + TextOf(dialog) + "\" has no button " + std::to_string(button));
    PostMessageW(control, BM_CLICK, 0, 0);
    ExpectGone(dialog);
}

bool IsInScratch(const std::string& path) {
    return !scratch.empty() && path.rfind(scratch + "\\", 0) == 0 &&
           path.find("..") == std::string::npos;
}

/// What a click in the main window would destroy must lie in the scratch folder.
bool IsHarmless(HWND form, const std::string& button) {
    if (button == "cmdLargePurge(0)") // writes and purges a file of its own
        return true;
    if (button.rfind("cmdLargePurge", 0) == 0) // the drive is chosen later: see Choose
        return !Environment(L"NW_SMALL_DRIVE").empty();
    if (button != "cmdProcessFiles(1)")
        return true;
    const std::string chosen = TextOf(Named(form, "lblDirectory"));
    return chosen.find(':') == std::string::npos ? areItemsOurs : IsInScratch(chosen);
}

/// The paths as arguments; the test fails when one is not its own.
std::wstring AsArguments(const std::vector<std::string>& paths) {
    std::wstring line;
    const std::string drive = Environment(L"NW_SMALL_DRIVE");
    areItemsOurs = !paths.empty();
    for (const std::string& path : paths) {
        const bool isOurs = IsInScratch(path) || (!drive.empty() && path.rfind(drive, 0) == 0);
        EXPECT_TRUE(isOurs) << path << " is not the test's own.";
        areItemsOurs = areItemsOurs && isOurs;
        line += L" \"" + Widen(path) + L"\"";
    }
    return line;
}
} // namespace

bool WaitUntil(const std::function<bool()>& condition) {
    const ULONGLONG end = GetTickCount64() + patience;
    while (!condition()) {
        if (GetTickCount64() > end)
            return false;
        Sleep(5);
    }
    return true;
}

HWND StartProgram(const std::vector<std::string>& items) {
    program = Execute(L"\"" + Widen(Environment(L"NW_PROGRAM")) + L"\"" + AsArguments(items));
    return Window("Nullwright");
}

HWND Drop(HWND form, const std::vector<std::string>& paths) {
    const std::string command = Environment(L"NW_DROP");
    if (command.empty()) {
        KillProgram();
        return StartProgram(paths);
    }
    Execute(Widen(command + " \"" + TextOf(form) + "\"") + AsArguments(paths));
    return form;
}

HWND StartByShell(const std::string& file, const wchar_t* itemClass,
                  const std::string& parameters) {
    const std::wstring wideFile = Widen(file), wideParameters = Widen(parameters);
    SHELLEXECUTEINFOW what = {};
    what.cbSize = sizeof what;
    what.fMask = SEE_MASK_FLAG_NO_UI | (itemClass != nullptr ? SEE_MASK_CLASSNAME : 0);
    what.lpFile = wideFile.c_str();
    what.lpVerb = itemClass != nullptr ? L"Nullwright" : nullptr;
    what.lpClass = itemClass;
    what.lpParameters = wideParameters.c_str();
    what.nShow = SW_SHOWNORMAL;
    EXPECT_TRUE(ShellExecuteExW(&what)) << file << " cannot be opened: " << GetLastError();
    // Not every system tells which process came of it, and with a link it need not be the first.
    HWND main = nullptr;
    EXPECT_TRUE(WaitUntil([&main] {
        main = FindWindowW(L"NullwrightForm", L"Nullwright");
        return main != nullptr && IsWindowVisible(main);
    })) << file
        << " did not start the program.";
    GetWindowThreadProcessId(main, &program.dwProcessId);
    program.hProcess =
        OpenProcess(PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE,
                    program.dwProcessId);
    return main;
}

int WaitForEnd() {
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(program.hProcess, patience);
    GetExitCodeProcess(program.hProcess, &code);
    return static_cast<int>(code);
}

void KillProgram() {
    if (program.hProcess == nullptr)
        return;
    TerminateProcess(program.hProcess, 99); // refused when it has ended
    WaitForSingleObject(program.hProcess, patience);
    if (program.hThread != nullptr)
        CloseHandle(program.hThread);
    CloseHandle(program.hProcess);
    program = {};
}

void EndSession() {
    for (const UINT message : {WM_QUERYENDSESSION, WM_ENDSESSION})
        for (HWND window : TopWindows(true))
            Ask(window, message, message == WM_ENDSESSION);
    KillProgram();
}

HWND Window(const std::string& caption) {
    return WaitForWindow(caption, [&](HWND window) { return TextOf(window) == caption; });
}

HWND Named(HWND form, const std::string& name) {
    if (form == nullptr) // the test has failed already
        return nullptr;
    for (HWND child : Children(form))
        if (NameOf(child) == name)
            return child;
    Fail("\"" + TextOf(form) + "\" has no control " + name);
    return nullptr;
}

std::string NameOf(HWND control) {
    const auto atom =
        static_cast<ATOM>(reinterpret_cast<std::uintptr_t>(GetPropW(control, L"NullwrightName")));
    wchar_t name[256];
    const UINT length = atom != 0 ? GlobalGetAtomNameW(atom, name, 256) : 0;
    return Narrow({name, length});
}

std::string TextOf(HWND window) {
    const auto length = static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH));
    std::wstring text(length + 1, L'\0');
    const auto copied = static_cast<std::size_t>(
        Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())));
    text.resize(std::min(copied, length));
    return Narrow(text);
}

bool IsUsable(HWND control) {
    HWND window = control;
    while (window != GetAncestor(control, GA_ROOT) && IsWindowEnabled(window))
        window = GetAncestor(window, GA_PARENT);
    return IsWindowVisible(control) && IsWindowEnabled(window);
}

bool IsChecked(HWND button) {
    return Ask(button, BM_GETCHECK) == BST_CHECKED;
}

void Expect(HWND form, const std::string& name, const std::string& text) {
    HWND control = Named(form, name);
    if (control != nullptr && !WaitUntil([&] { return TextOf(control) == text; }))
        Fail(name + " does not say \"" + text + "\" but \"" + TextOf(control) + "\".");
}

void ExpectUsable(HWND form, const std::string& name) {
    HWND control = Named(form, name);
    if (control != nullptr && !WaitUntil([&] { return IsUsable(control); }))
        Fail(name + " cannot be used.");
}

void ExpectFocus(HWND form, const std::string& name) {
    HWND control = Named(form, name);
    if (control != nullptr && !WaitUntil([&] { return Focused(form) == control; }))
        Fail(name + " has no focus.");
}

void ExpectGone(HWND form) {
    if (!WaitUntil([&] { return !IsWindowVisible(form); }))
        Fail("The window stays.");
}

std::string Describe() {
    std::string text = IsRunning() ? "The program's windows:\n" : "The program has ended.\n";
    for (HWND window : TopWindows()) {
        text += "\"" + TextOf(window) + (IsWindowEnabled(window) ? "\"\n" : "\", disabled\n");
        for (HWND child : Children(window))
            if (IsWindowVisible(child))
                text += "    " + NameOf(child) + (IsUsable(child) ? " \"" : ", disabled \"") +
                        TextOf(child).substr(0, 300) + "\"\n";
    }
    return text;
}

void Click(HWND form, const std::string& name) {
    if (!IsHarmless(form, name))
        return Fail(name + " would touch what is not the test's own.");
    ExpectUsable(form, name); // what was just done may still be on its way to enabling it
    if (HWND control = Named(form, name); IsUsable(control))
        PostMessageW(control, BM_CLICK, 0, 0);
}

void Type(HWND edit, const std::string& text) {
    if (!IsUsable(edit) || (GetWindowLongW(edit, GWL_STYLE) & ES_READONLY) != 0)
        return Fail(NameOf(edit) + " cannot be typed into.");
    Ask(edit, EM_SETSEL, 0, -1);
    Ask(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(Widen(text).c_str()));
}

void Choose(HWND form, const std::string& comboOrList, const std::string& item) {
    const bool isMeasured = TextOf(form) == "Test purge speed on which drive?";
    const std::string drive = Environment(L"NW_SMALL_DRIVE");
    if (comboOrList == "lstDrives" && (drive.empty() || item.substr(0, 2) != drive.substr(0, 2)) &&
        !(isMeasured && item.substr(0, 2) == scratch.substr(0, 2)))
        return Fail(item + " is not the drive that may be destroyed.");
    ExpectUsable(form, comboOrList);
    HWND list = Named(form, comboOrList);
    const bool combo = ClassOf(list) == "ComboBox";
    const auto index =
        static_cast<WPARAM>(Ask(list, combo ? CB_FINDSTRING : LB_FINDSTRING, ~WPARAM{0},
                                reinterpret_cast<LPARAM>(Widen(item).c_str())));
    if (!IsUsable(list) || static_cast<LRESULT>(index) < 0)
        return Fail("\"" + item + "\" cannot be chosen in " + comboOrList);
    if (combo)
        Ask(list, CB_SETCURSEL, index);
    else if ((GetWindowLongW(list, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0)
        Ask(list, LB_SETSEL, Ask(list, LB_GETSEL, index) <= 0, static_cast<LPARAM>(index));
    else
        Ask(list, LB_SETCURSEL, index);
    // Choosing by message tells the parent nothing; choosing by hand does.
    static_assert(CBN_SELCHANGE == LBN_SELCHANGE);
    PostMessageW(GetParent(list), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
}

void PressKey(HWND form, BYTE virtualKey, BYTE held) {
    SetForegroundWindow(form);
    if (!WaitUntil([&] { return form != nullptr && GetForegroundWindow() == form; }))
        return Fail("\"" + TextOf(form) + "\" does not come to the front.");
    if (held != 0)
        keybd_event(held, 0, 0, 0);
    keybd_event(virtualKey, 0, 0, 0);
    keybd_event(virtualKey, 0, KEYEVENTF_KEYUP, 0);
    if (held != 0)
        keybd_event(held, 0, KEYEVENTF_KEYUP, 0);
}

HWND Focused(HWND form) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(form, nullptr), &info) ? info.hwndFocus
                                                                            : nullptr;
}

void CloseByCross(HWND form) {
    if (!IsUsable(form))
        return Fail("\"" + TextOf(form) + "\" cannot be closed.");
    PostMessageW(form, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void AnswerBox(const std::string& title, const std::string& text, int button) {
    HWND box = WaitForDialog(title, TextField);
    if (!text.empty()) {
        EXPECT_EQ(text, TextOf(TextField(box))) << title;
    }
    PressAndWait(box, button);
}

void AnswerDialog(const std::string& title, const std::string& path, const std::string& type) {
    if (!IsInScratch(path))
        return Fail(path + " is outside the scratch folder.");
    HWND dialog = WaitForDialog(title, PathField);
    if (dialog == nullptr)
        return;
    Ask(PathField(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(path).c_str()));
    for (HWND child : Children(dialog))
        if (!type.empty() && TextOf(child).ends_with(")")) {
            PostMessageW(child, WM_KEYDOWN, VK_DOWN, 0);
            EXPECT_TRUE(WaitUntil([&] { return TextOf(child) == type; })) << TextOf(child);
        }
    PressAndWait(dialog, IDOK);
}

} // namespace driver
