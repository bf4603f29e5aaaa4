// The chosen items: taking them, describing them, and passing them to a run.
#include "shell/ChosenItems.h"

#include "platform/Places.h"
#include "platform/System.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "support/FolderSearch.h"
#include "support/Numbers.h"
#include "support/Paths.h"
#include "ui/Interface.h"

#include <algorithm>
#include <map>

namespace {

struct ChosenItem {
    std::string strPath; ///< a folder's path ends with a backslash
    bool blnFolder = false;
    platform::FolderIdentity Identity{}; ///< the folder's, or that of the file's folder
};
std::vector<ChosenItem> chosenItems;
std::string strFilesOfFolders; ///< the file specification of the folders among them

constexpr std::size_t intMostRefusalsTold = 10;

std::string CountText(std::size_t number, const char* one, const char* many) {
    return GroupedDigits(static_cast<std::int64_t>(number)) + " " + (number == 1 ? one : many);
}

/// What is known of the folders of earlier items, so that each is asked about once.
struct FolderSeen {
    std::string strWhyNot; ///< why no file in it can be taken
    platform::FolderIdentity Identity{};
};
using FoldersSeen = std::map<std::string, FolderSeen>;

/// Settles a path; returns "" or the reason why it cannot be taken. One question to the drive.
std::string TakeItem(const std::string& strPath, ChosenItem& item, FoldersSeen& seen) {
    std::string strWhyNot = WhyNoLetter(strPath);
    if (!strWhyNot.empty())
        return strWhyNot;
    auto kind = PathKind::NotThere;
    const auto askAboutFolder = [&] {
        const std::string strFolder = FolderPartOf(item.strPath);
        const auto [known, isNew] = seen.try_emplace(strFolder);
        FolderSeen& folder = known->second;
        if (isNew) {
            // A folder where a volume is mounted is a link, which no run enters.
            if (PathKind ofFolder{}; !item.blnFolder)
                folder.strWhyNot = WhyNotTaken(strFolder, ofFolder);
            // A fault leaves it unknown: not every file system has such numbers.
            (void)platform::ReadFolderIdentity(strFolder, folder.Identity);
        }
        item.Identity = folder.Identity;
        strWhyNot = item.blnFolder ? "" : folder.strWhyNot;
    };
    bool blnElsewhere = false; // a link on the way, or a substituted letter, leads to another drive
    AskOnDrive(strPath, [&] {
        strWhyNot = WhyNotTaken(strPath, kind);
        if (!strWhyNot.empty() || kind == PathKind::NotThere)
            return;
        item.blnFolder = kind == PathKind::Folder;
        item.strPath = RealPath(strPath);
        if (item.blnFolder)
            item.strPath = FolderWithBackslash(item.strPath);
        blnElsewhere = DriveLetterOf(item.strPath) != DriveLetterOf(strPath);
        if (!blnElsewhere)
            askAboutFolder();
    });
    if (blnElsewhere) // that drive may be slow
        AskOnDrive(item.strPath, askAboutFolder);
    return strWhyNot.empty() && kind == PathKind::NotThere ? strPath + " was not found."
                                                           : strWhyNot;
}

void TellRefused(const std::vector<std::string>& refused, std::size_t intGiven) {
    if (refused.empty())
        return;
    std::string strText = CountText(refused.size(), "of ", "of ") +
                          CountText(intGiven, "item", "items") + " cannot be purged:\r\n";
    for (std::size_t i = 0; i < refused.size() && i < intMostRefusalsTold; ++i)
        strText += refused[i] + "\r\n";
    if (refused.size() > intMostRefusalsTold)
        strText += "and " +
                   GroupedDigits(static_cast<std::int64_t>(refused.size() - intMostRefusalsTold)) +
                   " more.\r\n";
    strText.resize(strText.size() - 2);
    ui::Complain(strText, "Chosen items");
}

/// The paths taken so far, by their lower case, and the answers about case of their folders.
struct PathsTaken {
    std::map<std::string, std::vector<std::string>> paths;
    std::map<std::string, bool> tellsCase;
};

/// Folds the case of names unless the folder is case-sensitive.
std::string KeyOf(const std::string& strPath, PathsTaken& taken) {
    const std::string strFolder = FolderPartOf(FolderWithoutBackslash(strPath));
    const auto [known, isNew] = taken.tellsCase.try_emplace(strFolder, false);
    bool& blnTellsCase = known->second;
    if (isNew)
        AskOnDrive(strFolder, [&] { blnTellsCase = platform::FolderTellsCase(strFolder); });
    return blnTellsCase ? strPath : platform::LowerCase(strPath);
}

/// Adds a path; false if it is among them. A folder is asked about case only if that decides.
bool AddPath(const std::string& strPath, PathsTaken& taken) {
    std::vector<std::string>& others = taken.paths[platform::LowerCase(strPath)];
    for (const std::string& other : others)
        if (other == strPath || KeyOf(other, taken) == KeyOf(strPath, taken))
            return false;
    others.push_back(strPath);
    return true;
}

} // namespace

bool ItemsAreChosen() {
    return !chosenItems.empty();
}

bool ChooseItems(const std::vector<std::string>& paths, const std::string& strFiles) {
    std::vector<ChosenItem> taken;
    std::vector<std::string> refused;
    PathsTaken pathsTaken;
    FoldersSeen seen;
    if (!RunSearch("Looking at the chosen items", [&] {
            for (const std::string& strPath : paths) {
                if (blnStop) // nothing is chosen then
                    return;
                ChosenItem item;
                const std::string strWhyNot = TakeItem(strPath, item, seen);
                if (!strWhyNot.empty())
                    refused.push_back(strWhyNot);
                else if (AddPath(item.strPath, pathsTaken))
                    taken.push_back(std::move(item));
                YieldInSearch();
            }
        }))
        return false;
    TellRefused(refused, paths.size());
    if (taken.empty())
        return false;
    chosenItems = std::move(taken);
    strFilesOfFolders = strFiles;
    return true;
}

void ForgetChosenItems() {
    chosenItems.clear();
}

bool FoldersAreChosen() {
    return std::any_of(chosenItems.begin(), chosenItems.end(),
                       [](const ChosenItem& item) { return item.blnFolder; });
}

std::string ChosenItemsText() {
    const auto folders = static_cast<std::size_t>(
        std::count_if(chosenItems.begin(), chosenItems.end(),
                      [](const ChosenItem& item) { return item.blnFolder; }));
    const std::size_t files = chosenItems.size() - folders;
    std::string strParts = files > 0 ? CountText(files, "file", "files") : "";
    if (folders > 0)
        strParts += (files > 0 ? ", " : "") + CountText(folders, "folder", "folders");
    return CountText(chosenItems.size(), "chosen item", "chosen items") + " (" + strParts + ")";
}

std::string ChosenItemsList(std::size_t lngMost) {
    std::string strText;
    for (std::size_t i = 0; i < chosenItems.size() && i < lngMost; ++i)
        strText += (i == 0 ? "" : "\r\n") + chosenItems[i].strPath;
    if (chosenItems.size() > lngMost)
        strText += "\r\nand " +
                   GroupedDigits(static_cast<std::int64_t>(chosenItems.size() - lngMost)) + " more";
    return strText;
}

std::vector<RunItem> ChosenRunItems(bool blnSubfolders) {
    // Whether another chosen folder already includes this one's files. It does not include those on
    // a volume that is mounted in a folder below it: links are not followed.
    const auto isBrought = [blnSubfolders](const std::string& strFolder, const ChosenItem& below,
                                           bool blnItself) {
        return std::any_of(chosenItems.begin(), chosenItems.end(), [&](const ChosenItem& item) {
            return item.blnFolder && ((!blnItself && IsSamePath(item.strPath, strFolder)) ||
                                      (blnSubfolders && !IsSamePath(item.strPath, strFolder) &&
                                       item.Identity.Volume == below.Identity.Volume &&
                                       IsBelow(strFolder, item.strPath)));
        });
    };
    std::vector<RunItem> items;
    std::map<std::string, std::size_t> placeOfFolder; ///< index of the item with a folder's files
    std::map<std::string, bool> brought;
    for (const ChosenItem& chosen : chosenItems) {
        if (chosen.blnFolder) {
            if (!isBrought(chosen.strPath, chosen, true))
                items.push_back({chosen.strPath, strFilesOfFolders, {}, chosen.Identity});
            continue;
        }
        const std::string strFolder = FolderPartOf(chosen.strPath);
        const auto [known, first] = brought.emplace(strFolder, false);
        if (first)
            known->second = strFilesOfFolders == "*.*" && isBrought(strFolder, chosen, false);
        if (known->second)
            continue;
        const auto place = placeOfFolder.emplace(strFolder, items.size());
        if (place.second)
            items.push_back({strFolder, "*.*", {}, chosen.Identity});
        items[place.first->second].names.push_back(FileNameOf(chosen.strPath));
    }
    return items;
}
