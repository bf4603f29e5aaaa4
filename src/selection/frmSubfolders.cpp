// The subfolder chooser: the list with its counts, and the texts that tell how the choice is used.
#include "selection/frmSubfolders.h"

#include "drives/DriveWork.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "session/Session.h"
#include "support/FolderSearch.h"
#include "support/MainWindow.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "support/StrProc.h"
#include "ui/Interface.h"

#include <algorithm>

FrmSubfolders frmSubfolders;

namespace {

FrmSubfolders& frm = frmSubfolders;

/// Counting runs in slices so that the dialog stays responsive: one slice before the dialog opens,
/// then one between two messages. Also the time limit for a single subfolder.
constexpr std::uint64_t intMillisecondsAtOnce = 300;
constexpr std::uint64_t intMillisecondsPerSlice = 40;

std::string Counted(std::int64_t count, const char* one, const char* several) {
    return (count == 0 ? "no" : GroupedDigits(count)) + (count == 1 ? one : several);
}

/// The counts after a subfolder's name: the files and folders directly in it. A count that takes
/// too long ends with "more than".
std::string CountsText(const std::string& path, std::uint64_t millisecondsAllowed) {
    std::int64_t files = 0, folders = 0;
    bool blnAll = true;
    const std::uint64_t start = platform::TickCount();
    auto fault = platform::Fault::None;
    WorkOnDrive(path, [&] {
        fault = platform::EnumerateFolder(path, [&](const platform::FolderEntry& entry) {
            ++(entry.IsFolder ? folders : files);
            blnAll = platform::TickCount() - start <= millisecondsAllowed;
            return blnAll;
        });
    });
    if (platform::Failed(fault))
        return "(cannot be read)";
    return std::string(blnAll ? "(" : "(more than ") + Counted(files, " file, ", " files, ") +
           Counted(folders, " subfolder)", " subfolders)");
}

/// Shows which subfolders are kept and also how many that leaves to be purged.
void ShowChosen() {
    const auto& items = frm.lstSubfolders.Items;
    const auto chosen = std::count_if(items.begin(), items.end(),
                                      [](const ui::ListItem& item) { return item.Selected; });
    frm.lblChosen.Caption =
        frm.Use == SubfolderUse::Keep
            ? "Kept: " + Counted(chosen, " folder", " folders") +
                  ".  Purged: " + Counted(std::ssize(items) - chosen, " folder.", " folders.")
            : NumberInWords(chosen) +
                  (chosen == 1 ? " subfolder is chosen." : " subfolders are chosen.");
}

/// Counts for a while; true when all subfolders have their counts, or the dialog was closed while
/// messages were pumped.
bool CountForAWhile(std::uint64_t milliseconds) {
    const std::uint64_t start = platform::TickCount();
    while (frm.lngNextToCount < frm.strNames.size()) {
        if (platform::TickCount() - start > milliseconds)
            return false;
        const std::size_t index = frm.lngNextToCount++;
        const std::string& name = frm.strNames[index];
        frm.lstSubfolders.Items[index].Text =
            name + "  " + CountsText(frm.strFolder + name + "\\", milliseconds);
    }
    return true;
}

/// Sorted for the reader: the file system's order is arbitrary.
void SortNames() {
    std::vector<std::pair<std::string, std::string>> keyed;
    for (const std::string& name : frm.strNames)
        keyed.emplace_back(platform::LowerCase(name), name);
    std::sort(keyed.begin(), keyed.end());
    for (std::size_t i = 0; i < keyed.size(); ++i)
        frm.strNames[i] = keyed[i].second;
}

/// False, with a message, when the folder could not be read completely: subfolders missing in the
/// list could not be chosen to be kept.
bool ReadNames() {
    frm.strNames.clear();
    auto fault = platform::Fault::None;
    if (!RunSearch("Reading " + frm.strFolder, [&] {
            fault = SearchFolder(frm.strFolder, [](const platform::FolderEntry& entry) {
                if (entry.IsFolder && !entry.IsLink) // a link's target was not chosen
                    frm.strNames.push_back(entry.Name);
                return true;
            });
        })) {
        SetMainLine(MainLine::LargePurgeMessage, "Reading " + frm.strFolder + " was stopped.");
        return false;
    }
    if (platform::Failed(fault)) {
        ui::Complain(
            "The folder " + frm.strFolder +
            " could not be read completely: " + platform::FaultText(fault) +
            ".\r\nA list from which some of its subfolders may be missing is not offered.");
        return false;
    }
    SortNames();
    return true;
}

void FillList() {
    frm.lstSubfolders.Items.clear();
    for (const std::string& name : frm.strNames)
        frm.lstSubfolders.Items.push_back({name + "  (not counted)", 0, false});
    frm.lstSubfolders.ListIndex = frm.strNames.empty() ? -1 : 0; // start for the keyboard
    frm.lngNextToCount = 0;
    frm.Clock1.Enabled = !CountForAWhile(intMillisecondsAtOnce);
}

void Clock1_Tick() {
    if (blnStop) { // F10 ends the counting for good
        blnStop = false;
        frm.Clock1.Enabled = false;
        return;
    }
    frm.Clock1.Enabled = false; // no tick within a tick, while a slow drive is waited for
    frm.Clock1.Enabled = !CountForAWhile(intMillisecondsPerSlice);
}

void ChooseAll(bool blnChosen) {
    for (ui::ListItem& item : frm.lstSubfolders.Items)
        item.Selected = blnChosen;
    ShowChosen();
    ui::SetFocus(frm.lstSubfolders);
}

void CloseWith(bool blnAccepted) {
    frm.blnAccepted = blnAccepted;
    frm.Clock1.Enabled = false;
    frm.lngNextToCount = frm.strNames.size(); // also ends a count around this
    ui::Hide(frm);
}

void cmdOK_Click() {
    CloseWith(true);
}

void cmdCancel_Click() {
    CloseWith(false);
}

} // namespace

void LoadSubfoldersForm() {
    frm.Name = "frmSubfolders";
    frm.Width = 7200;
    frm.Height = 5400;

    ui::PutWords({{&frm.lblMessage,
                   "Click on a subfolder, or press the space bar, to choose it or to let it go."},
                  {&frm.lblUse, ""},
                  {&frm.cmdChooseAll, "All", 'A', [] { ChooseAll(true); }},
                  {&frm.cmdChooseNone, "None", 'N', [] { ChooseAll(false); }},
                  {&frm.cmdOK, "OK", 0, cmdOK_Click},
                  {&frm.cmdCancel, "Cancel", 0, cmdCancel_Click}});
    frm.cmdOK.Default = frm.cmdCancel.Cancel = true;
    frm.lstSubfolders.MultiSelect = true;
    frm.Clock1.Interval = 15;
    frm.Timers = {&frm.Clock1};
    frm.lblUse.Bold = true;

    ui::Bind(frm, {
                      {&frm.lblMessage, "lblMessage", 120, 120, 6960, 285},
                      {&frm.lblUse, "lblUse", 120, 405, 6960, 285},
                      {&frm.lstSubfolders, "lstSubfolders", 120, 750, 6960, 3645},
                      {&frm.lblChosen, "lblChosen", 120, 4470, 6960, 285},
                      {&frm.cmdChooseAll, "cmdChooseAll", 120, 4905, 1080, 375},
                      {&frm.cmdChooseNone, "cmdChooseNone", 1320, 4905, 1080, 375},
                      {&frm.cmdOK, "cmdOK", 3960, 4905, 1500, 375},
                      {&frm.cmdCancel, "cmdCancel", 5580, 4905, 1500, 375},
                  });

    frm.Activate = [] { ui::SetFocus(frm.lstSubfolders); };
    frm.Close = cmdCancel_Click;
    frm.Clock1.Tick = Clock1_Tick;
    frm.lstSubfolders.Click = ShowChosen;
}

// The names are kept beside the list, so that names with "(" or a leading blank are returned
// unchanged, whatever counts follow them in the list.
SubfolderChoice SelectSubfolders(const std::string& strFolder, const std::string& strTitle,
                                 SubfolderUse use, std::string& strChosen) {
    strChosen.clear();
    frm.strFolder = FolderWithBackslash(strFolder);
    frm.Caption = strTitle;
    frm.Use = use;
    frm.lblUse.Caption = use == SubfolderUse::Keep
                             ? "Folders chosen here are KEPT.  All other folders are purged."
                             : "Folders chosen here are PURGED, with all folders below them.";
    frm.blnAccepted = false;
    if (!ReadNames())
        return SubfolderChoice::NotOffered;
    FillList();
    ShowChosen();
    ui::ShowModal(frm);
    if (!frm.blnAccepted)
        return SubfolderChoice::Cancelled;
    for (std::size_t i = 0; i < frm.strNames.size(); ++i) {
        if (frm.lstSubfolders.Items[i].Selected)
            strChosen += frm.strNames[i] + "\r\n";
    }
    return strChosen.empty() ? SubfolderChoice::NoneChosen : SubfolderChoice::Chosen;
}
