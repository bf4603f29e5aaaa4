// The walk over a folder tree: each folder is listed as a whole, then its files, then its
// subfolders.
#include "report/run/TreeWalk.h"

#include "drives/DriveWork.h"
#include "engine/FileOps.h"
#include "platform/Folders.h"
#include "platform/System.h"
#include "session/Session.h"
#include "support/Paths.h"

#include <utility>

namespace {

template<typename... Arguments, typename... Given>
void Tell(const std::function<void(Arguments...)>& function, Given&&... given) {
    if (function)
        function(std::forward<Given>(given)...);
}

template<typename... Arguments, typename... Given>
bool GoesOn(const std::function<bool(Arguments...)>& function, Given&&... given) {
    return !function || function(std::forward<Given>(given)...);
}

// Walks the files of one folder. Puts its subfolders into `subfolders`.
bool WalkFiles(const TreeWalk& walk, const std::string& folder, bool own,
               std::vector<FoundFolder>& subfolders) {
    FolderWish wish{walk.strFilespec, walk.names, walk.blnSubfolders && walk.names.empty(), own,
                    walk.blnPagefile, {}};
    if (walk.onStop)
        wish.onStop = [&] { return walk.onStop(folder); };
    FolderList list;
    if (const platform::Fault fault = TakeFolderList(folder, wish, list); platform::Failed(fault))
        Tell(walk.onUnread, folder, platform::FaultText(fault));
    if (!GoesOn(walk.onFolder, folder, list))
        return false;
    for (const std::string& name : list.Gone)
        Tell(walk.onGone, folder + name);
    for (const FoundFile& file : list.Files) {
        if (blnStop)
            return false;
        const std::string path = folder + file.Name;
        if (file.IsLink)
            Tell(walk.onLink, path, false, false);
        else if (!GoesOn(walk.onFile, path, file))
            return false;
        if (!GoesOn(walk.onTurn, path))
            return false;
    }
    if (!GoesOn(walk.onFilesDone))
        return false;
    subfolders = std::move(list.Subfolders);
    return !blnStop;
}

bool WalkSubfolders(const TreeWalk& walk, const std::string& folder,
                    const std::vector<FoundFolder>& subfolders);

// Enters a folder, and holds it if requested. `chosen`: the folder that it must be, if known.
// `entered` tells whether that worked, independently of the return value.
bool Enter(const TreeWalk& walk, const std::string& folder, const platform::FolderIdentity& chosen,
           bool& entered) {
    platform::FolderHold hold;
    // Compares only the spelling, which costs nothing and is enough for counts.
    bool own = platform::LowerCase(folder) ==
               platform::LowerCase(FolderWithBackslash(platform::ProgramFolder()));
    if (walk.blnHoldFolders) {
        platform::Fault fault;
        WorkOnDrive(folder, [&] { fault = platform::HoldFolder(folder, hold); });
        if (platform::Failed(fault)) {
            Tell(walk.onUnread, folder, platform::FaultText(fault));
            return true;
        }
        if (hold.IsLink) {
            Tell(walk.onLink, folder, true, true);
            return true;
        }
        own = EnterFolder(folder, hold.Identity);
    } else if (chosen.IsKnown()) { // where it cannot be read, the list tells so
        hold.Identity = chosen;
        WorkOnDrive(folder, [&] { (void)platform::ReadFolderIdentity(folder, hold.Identity); });
    }
    if (chosen.IsKnown() && hold.Identity != chosen) {
        platform::LetGo(hold);
        Tell(walk.onReplaced, folder);
        return true;
    }
    entered = true;
    std::vector<FoundFolder> subfolders;
    const bool goesOn =
        WalkFiles(walk, folder, own, subfolders) && WalkSubfolders(walk, folder, subfolders);
    Tell(walk.onFolderDone, folder);
    if (walk.blnHoldFolders)
        platform::LetGo(hold);
    return goesOn;
}

bool WalkSubfolders(const TreeWalk& walk, const std::string& folder,
                    const std::vector<FoundFolder>& subfolders) {
    for (const FoundFolder& found : subfolders) {
        const std::string subfolder = folder + found.Name + "\\";
        bool entered = false;
        // The list was made before everything earlier was walked, so the folder is checked again
        // when it is entered.
        if (found.IsLink)
            Tell(walk.onLink, subfolder, true, false);
        else if (!Enter(walk, subfolder, {}, entered))
            return false;
        if (entered)
            Tell(walk.onSubfolderDone, subfolder);
        // Pump messages here too: folders without matching files must not block the windows.
        if (!GoesOn(walk.onTurn, subfolder) || blnStop)
            return false;
    }
    return true;
}

} // namespace

bool WalkTree(const TreeWalk& walk, const std::string& strFolder) {
    bool entered = false;
    return Enter(walk, FolderWithBackslash(strFolder), walk.Chosen, entered);
}
