// Looking through folders with the windows alive: what yields, what is said, and how F10 ends it.
#include "support/FolderSearch.h"

#include "platform/System.h"
#include "shell/frmMain.h"
#include "shell/Session.h"
#include "support/MainWindow.h"
#include "ui/Interface.h"

#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

namespace {

constexpr std::uint64_t intMillisecondsUnsaid = 500;

struct Search {
    std::string strDoing;
    std::uint64_t lngBegan = 0; ///< tick count
    bool blnFirst = false;      ///< its first folder is still to be read
    std::string strSaid;        ///< what stands in the status line, "" before it does
};
Search searchInHand;

void BeginSearch(const std::string& strDoing, bool blnOutsideRun) {
    searchInHand = {strDoing, platform::TickCount(), blnOutsideRun, {}};
}

void EndSearch() {
    if (!searchInHand.strSaid.empty())
        SetMainLine(MainLine::Status, "");
    searchInHand = {};
}

void SayWhatIsDone() {
    Search& search = searchInHand;
    if (!search.strSaid.empty() || platform::TickCount() - search.lngBegan < intMillisecondsUnsaid)
        return;
    search.strSaid = search.strDoing + " ...";
    SetMainLine(MainLine::Status, search.strSaid + "  (F10 stops this.)");
    RepaintMain();
}

using Visitor = std::function<bool(const platform::FolderEntry&)>;

/// False when there is enough.
bool Visit(const Visitor& visit, const platform::FolderEntry& entry) {
    SayWhatIsDone();
    ui::DoEvents();
    return visit(entry) && !blnStop;
}

/// Reads on the I/O thread and visits here: a disk that spins up, or a share that does not answer,
/// keeps the first call waiting for seconds. To hand over costs too much for every folder of a
/// tree.
platform::Fault ReadAside(const std::string& strFolder, const Visitor& visit) {
    std::mutex mutex;
    std::vector<platform::FolderEntry> waiting;
    std::atomic<bool> blnEnough{false};
    auto fault = platform::Fault::None;
    const auto VisitWaiting = [&] {
        std::vector<platform::FolderEntry> taken;
        {
            const std::scoped_lock lock(mutex);
            taken.swap(waiting);
        }
        SayWhatIsDone();
        for (const platform::FolderEntry& entry : taken)
            if (!blnEnough && !Visit(visit, entry))
                blnEnough = true;
        blnEnough = blnEnough || blnStop;
        return !blnEnough;
    };
    ui::RunSteps(
        ui::Effort::Long,
        [&] {
            fault = platform::EnumerateFolder(strFolder, [&](const platform::FolderEntry& entry) {
                const std::scoped_lock lock(mutex);
                waiting.push_back(entry);
                return !blnEnough;
            });
            return false;
        },
        VisitWaiting);
    // What was read beyond the point of enough was not asked for.
    return VisitWaiting() ? fault : platform::Fault::None;
}

} // namespace

const std::string& SearchInHand() {
    return searchInHand.strSaid;
}

platform::Fault SearchFolder(const std::string& strFolder, const Visitor& visit) {
    if (std::exchange(searchInHand.blnFirst, false))
        return ReadAside(strFolder, visit);
    const bool blnAlone = searchInHand.strDoing.empty();
    if (blnAlone)
        BeginSearch("Reading " + strFolder, false);
    const platform::Fault fault = platform::EnumerateFolder(
        strFolder, [&](const platform::FolderEntry& entry) { return Visit(visit, entry); });
    if (blnAlone)
        EndSearch();
    return fault;
}

bool RunSearch(const std::string& strDoing, const std::function<void()>& search) {
    if (!searchInHand.strDoing.empty()) {
        search();
        return !blnStop;
    }
    const bool blnMenu = frmMain.fraMenu.Enabled, blnSetup = frmMain.fraSetup.Enabled;
    ClearStatus();
    EnableMain(false);
    blnStop = false;
    BeginSearch(strDoing, true);
    search();
    EndSearch();
    frmMain.fraSetup.Enabled = blnSetup;
    EnableMenu(blnMenu);
    if (!blnStop)
        return true;
    blnStop = false;
    SetMainLine(MainLine::Status, strDoing + " was stopped.");
    return false;
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
