// Folder searches that keep the windows responsive: message pumping, status text, and F10.
#include "support/FolderSearch.h"
#include "drives/DriveWork.h"
#include "platform/Places.h"
#include "platform/System.h"
#include "session/Session.h"
#include "support/MainWindow.h"
#include "ui/Interface.h"

namespace {

/// A search shorter than this neither disables the main window nor pumps messages, to avoid
/// flicker.
constexpr std::uint64_t intMillisecondsUnseen = 50;
constexpr std::uint64_t intMillisecondsUnsaid = 500;

struct Search {
    std::string strDoing;
    std::uint64_t lngBegan = 0; ///< tick count
    bool blnOutsideRun = false;
    bool blnHeld = false;   ///< the main window is disabled
    CommandsInReach before; ///< what was enabled before
    std::string strSaid;    ///< the text in the status line; "" before it is shown
};
Search searchInHand;

void BeginSearch(const std::string& strDoing, bool blnOutsideRun) {
    searchInHand = {};
    searchInHand.strDoing = strDoing;
    searchInHand.lngBegan = platform::TickCount();
    searchInHand.blnOutsideRun = blnOutsideRun;
}

void EndSearch() {
    if (!searchInHand.strSaid.empty())
        SetMainLine(MainLine::Status, "");
    if (searchInHand.blnHeld)
        GiveCommandsBack(searchInHand.before);
    searchInHand = {};
}

/// Disables the main window outside of a run, before messages are pumped.
void HoldMain() {
    Search& search = searchInHand;
    if (!search.blnOutsideRun || search.blnHeld)
        return;
    search.blnHeld = true;
    search.before = TakeCommandsAway();
}

} // namespace

const std::string& SearchInHand() {
    return searchInHand.strSaid;
}

// SearchFolder calls it between two entries, and while a slow drive returns none.
void YieldInSearch() {
    Search& search = searchInHand;
    const std::uint64_t lngTook = platform::TickCount() - search.lngBegan;
    if (search.blnOutsideRun && !search.blnHeld) {
        if (lngTook < intMillisecondsUnseen)
            return;
        HoldMain();
    }
    if (search.strSaid.empty() && lngTook >= intMillisecondsUnsaid) {
        search.strSaid = search.strDoing + " ...";
        SetMainLine(MainLine::Status, search.strSaid + "  (F10 stops this.)");
        RepaintMain();
    }
    ui::DoEvents();
}

platform::Fault SearchFolder(const std::string& strFolder,
                             const std::function<bool(const platform::FolderEntry&)>& visit) {
    const bool blnAlone = searchInHand.strDoing.empty();
    if (blnAlone)
        BeginSearch("Reading " + strFolder, false);
    if (MayKeepWaiting(strFolder))
        HoldMain();
    const platform::Fault fault = EnumerateOnDrive(
        strFolder,
        [&](const platform::FolderEntry& entry) {
            YieldInSearch();
            return visit(entry) && !blnStop;
        },
        YieldInSearch);
    if (blnAlone)
        EndSearch();
    return fault;
}

bool RunSearch(const std::string& strDoing, const std::function<void()>& search) {
    if (!searchInHand.strDoing.empty()) {
        search();
        return !blnStop;
    }
    ClearStatus();
    blnStop = false;
    BeginSearch(strDoing, true);
    search();
    EndSearch();
    if (!blnStop)
        return true;
    blnStop = false;
    SetMainLine(MainLine::Status, strDoing + " was stopped.");
    return false;
}

void AskOnDrive(const std::string& strPath, const std::function<void()>& question) {
    const bool blnAlone = searchInHand.strDoing.empty();
    if (blnAlone)
        BeginSearch("Reading " + strPath, true);
    if (MayKeepWaiting(strPath))
        HoldMain();
    WorkOnDrive(strPath, question);
    if (blnAlone)
        EndSearch();
}

platform::Fault LookForSubfolders(const std::string& strFolder, bool& blnFound) {
    bool blnAny = false;
    const platform::Fault fault =
        SearchFolder(strFolder, [&blnAny](const platform::FolderEntry& entry) {
            blnAny = entry.IsFolder && !entry.IsLink;
            return !blnAny;
        });
    if (!platform::Failed(fault) && (blnAny || !blnStop))
        blnFound = blnAny;
    return fault;
}

// With several candidates the folder must be case-sensitive, whatever it reports: then none was
// chosen.
bool OtherCaseIsMeant(const std::string& folder, std::size_t candidates) {
    bool tells = candidates != 1;
    if (!tells)
        AskOnDrive(folder, [&] { tells = platform::FolderTellsCase(folder); });
    return !tells;
}
